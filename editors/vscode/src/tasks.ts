// Tasks that call velc.
import * as vscode from "vscode";
import { findVelc, hasProject, pluginOptions } from "./velc";

interface Definition extends vscode.TaskDefinition {
  command: string;
  files?: string[];
  args?: string[];
  cwd?: string;
}

const commands = ["check", "build", "run", "test", "fmt"] as const;

const groups: Record<string, vscode.TaskGroup> = {
  build: vscode.TaskGroup.Build,
  test: vscode.TaskGroup.Test,
};

const matchers: Record<string, string[]> = {
  run: ["$velc", "$velc-crash"],
  test: ["$velc", "$velc-test"],
};

function taskOf(definition: Definition, scope: vscode.WorkspaceFolder | vscode.TaskScope) {
  const { command, files = [], args = [], cwd } = definition;
  const plugins = command === "fmt" ? [] : pluginOptions();
  const task = new vscode.Task(
    definition,
    scope as vscode.WorkspaceFolder,
    command,
    "velc",
    // Files first: some options take all names behind them.
    new vscode.ProcessExecution(
      findVelc() ?? "velc",
      [command, ...files, ...args, ...plugins],
      cwd === undefined ? {} : { cwd },
    ),
    matchers[command] ?? ["$velc"],
  );
  const group = groups[command];
  if (group !== undefined) task.group = group;
  return task;
}

export const tasks: vscode.TaskProvider = {
  provideTasks() {
    return (vscode.workspace.workspaceFolders ?? []).flatMap((folder) => {
      const files = hasProject(folder.uri.fsPath) ? {} : { files: ["${file}"] };
      return commands.map((command) => {
        const program = ["-g", "-o", "${workspaceFolder}/${workspaceFolderBasename}.out"];
        const args = command === "build" ? { args: program } : {};
        return taskOf({ type: "velc", command, ...files, ...args }, folder);
      });
    });
  },
  resolveTask(task) {
    const definition = task.definition as Definition;
    return taskOf(definition, task.scope ?? vscode.TaskScope.Workspace);
  },
};
