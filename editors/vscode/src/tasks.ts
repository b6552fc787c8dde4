// Tasks that call velc.
import { resolve } from "node:path";
import * as vscode from "vscode";
import { findVelc, hasProject, pluginOptions, substitute } from "./velc";

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
  const folder = typeof scope === "object" ? scope : undefined;
  // The matchers take names of files for relative to the folder of the workspace.
  const elsewhere = cwd !== undefined && resolve(substitute(cwd, folder)) !== folder?.uri.fsPath;
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
    elsewhere ? [] : (matchers[command] ?? ["$velc"]),
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
