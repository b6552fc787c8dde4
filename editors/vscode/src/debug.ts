// Builds programs for gdb, which the C/C++ extension drives.
import { mkdir } from "node:fs/promises";
import { dirname, join } from "node:path";
import * as vscode from "vscode";
import { hasProject, pluginOptions, runVelc, substitute } from "./velc";

const cpptools = "ms-vscode.cpptools";

interface Wanted extends vscode.DebugConfiguration {
  files?: string[];
  scans?: number;
  cycle?: string;
  stopAtEntry?: boolean;
  compiler?: string;
  gdb?: string;
}

async function askForDebugger(): Promise<void> {
  const show = "Show Extension";
  const chosen = await vscode.window.showErrorMessage(
    `Debugging needs the extension C/C++ (${cpptools}), which drives gdb.`,
    show,
  );
  if (chosen === show) {
    await vscode.commands.executeCommand("workbench.extensions.search", `@id:${cpptools}`);
  }
}

export class Debugging implements vscode.DebugConfigurationProvider {
  /** `program` is where programs are built, `printers` has gdb print values of Structured Text. */
  constructor(
    private readonly program: string,
    private readonly printers: string,
  ) {}

  async resolveDebugConfiguration(
    folder: vscode.WorkspaceFolder | undefined,
    given: vscode.DebugConfiguration,
  ): Promise<vscode.DebugConfiguration | undefined> {
    const wanted = given as Wanted;
    const file = vscode.window.activeTextEditor?.document;
    const open = file?.languageId === "st" ? file.uri.fsPath : undefined;
    const root = folder?.uri.fsPath;
    const beside = open === undefined ? root : dirname(open);
    const cwd = (wanted.files === undefined ? undefined : root) ?? beside;
    if (cwd === undefined) return undefined;
    if (vscode.extensions.getExtension(cpptools) === undefined) {
      void askForDebugger();
      return undefined;
    }
    const files =
      wanted.files?.map((name) => substitute(name, folder)) ??
      (hasProject(cwd) || open === undefined ? [] : [open]);
    if (!(await this.build(files, wanted.compiler, cwd))) return undefined;
    return {
      name: wanted.name || "Structured Text",
      type: "cppdbg",
      request: "launch",
      program: this.program,
      args: ["--scans", String(wanted.scans ?? 1000), "--cycle", wanted.cycle ?? "T#10ms"],
      cwd,
      stopAtEntry: wanted.stopAtEntry ?? false,
      MIMode: "gdb",
      miDebuggerPath: wanted.gdb ?? "gdb",
      setupCommands: [
        { text: "-enable-pretty-printing", ignoreFailures: true },
        { text: `source ${this.printers}`, ignoreFailures: true },
        { text: "skip -gfile /velc/*", ignoreFailures: true },
        { text: "skip -gfile */velrt/*", ignoreFailures: true },
      ],
    };
  }

  private async build(files: string[], compiler: string | undefined, cwd: string) {
    await mkdir(dirname(this.program), { recursive: true });
    const options = compiler === undefined ? [] : ["--compiler", compiler];
    const args = ["build", ...files, "-g", "-o", this.program, ...options, ...pluginOptions()];
    const output = await runVelc(args, cwd);
    if (output.code === 0) return true;
    void vscode.window.showErrorMessage("velc build failed", {
      modal: true,
      detail: output.stderr,
    });
    return false;
  }
}

export function registerDebugging(context: vscode.ExtensionContext): vscode.Disposable {
  const storage = context.storageUri ?? context.globalStorageUri;
  const printers = join(context.extensionPath, "dist", "velops_gdb.py");
  return vscode.debug.registerDebugConfigurationProvider(
    "velc",
    new Debugging(join(storage.fsPath, "program"), printers),
  );
}
