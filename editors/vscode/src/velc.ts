// Where velc is, and how it is called.
import { execFile } from "node:child_process";
import { accessSync, constants, existsSync, statSync } from "node:fs";
import { homedir } from "node:os";
import { delimiter, dirname, isAbsolute, join } from "node:path";
import * as vscode from "vscode";

export interface Output {
  code: number;
  stdout: string;
  stderr: string;
}

function isCommand(path: string): boolean {
  try {
    accessSync(path, constants.X_OK);
    return statSync(path).isFile();
  } catch {
    return false;
  }
}

/** Replaces `${workspaceFolder}`, `${file}` and `~/` at the begin. */
export function substitute(text: string, folder?: vscode.WorkspaceFolder): string {
  const root = folder ?? vscode.workspace.workspaceFolders?.[0];
  return text
    .replace(/^~(?=\/)/, homedir())
    .replaceAll("${workspaceFolder}", root?.uri.fsPath ?? ".")
    .replaceAll("${file}", vscode.window.activeTextEditor?.document.uri.fsPath ?? "");
}

/** The file that the setting `velc.path` means, if there is one. */
export function findVelc(): string | undefined {
  const name = substitute(vscode.workspace.getConfiguration("velc").get("path", "velc"));
  if (name.includes("/")) {
    const root = vscode.workspace.workspaceFolders?.[0]?.uri.fsPath ?? "";
    const path = isAbsolute(name) ? name : join(root, name);
    return isCommand(path) ? path : undefined;
  }
  const folders = (process.env["PATH"] ?? "").split(delimiter).filter((entry) => entry !== "");
  return folders.map((entry) => join(entry, name)).find(isCommand);
}

/** Says that velc is missing and what can be done. */
export async function reportMissing(): Promise<void> {
  const name = vscode.workspace.getConfiguration("velc").get("path", "velc");
  const settings = "Open Settings";
  const chosen = await vscode.window.showErrorMessage(
    `The command velc was not found: the setting velc.path is "${name}". ` +
      "Install velops, or set velc.path to the file of the command.",
    settings,
  );
  if (chosen === settings) {
    await vscode.commands.executeCommand("workbench.action.openSettings", "velc.path");
  }
}

/** The options `--plugin` that the settings ask for. */
export function pluginOptions(): string[] {
  const paths = vscode.workspace.getConfiguration("velc").get<string[]>("plugin", []);
  return paths.flatMap((path) => ["--plugin", substitute(path)]);
}

/** True if a velops.json in the folder or above it names the sources. */
export function hasProject(folder: string): boolean {
  for (let at = folder; ; at = dirname(at)) {
    if (existsSync(join(at, "velops.json"))) return true;
    if (at === dirname(at)) return false;
  }
}

/** Runs velc to its end. Rejects if it cannot be started. */
export function runVelc(args: string[], cwd?: string): Promise<Output> {
  const velc = findVelc();
  if (velc === undefined) {
    void reportMissing();
    return Promise.reject(new Error("velc was not found"));
  }
  return new Promise((resolve, reject) => {
    execFile(velc, args, { cwd, maxBuffer: 1 << 24 }, (error, stdout, stderr) => {
      if (error !== null && typeof error.code !== "number") reject(error);
      else resolve({ code: Number(error?.code ?? 0), stdout, stderr });
    });
  });
}
