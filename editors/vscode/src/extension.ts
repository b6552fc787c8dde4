import * as vscode from "vscode";
import type { Middleware } from "vscode-languageclient/node";
import { registerDebugging } from "./debug";
import { explanationUri, registerExplanations } from "./explain";
import { Server } from "./server";
import { tasks } from "./tasks";
import { runCommand, Testing } from "./testing";

// Milliseconds without an edit before the tests of a document are looked for.
const pause = 400;

let server: Server | undefined;

function middleware(testing: () => Testing): Middleware {
  return {
    // The page of a code is shown here, not in a browser.
    handleDiagnostics(uri, messages, next) {
      for (const message of messages) {
        const code = typeof message.code === "object" ? message.code.value : message.code;
        if (code !== undefined) message.code = { value: code, target: explanationUri(`${code}`) };
      }
      next(uri, messages);
    },
    executeCommand(command, args: unknown[], next) {
      const [uri, ...filters] = args;
      if (command !== runCommand || typeof uri !== "string") return next(command, args);
      return testing().run(vscode.Uri.parse(uri), filters.map(String));
    },
  };
}

export async function activate(context: vscode.ExtensionContext): Promise<void> {
  const started: Server = new Server(middleware(() => testing));
  const testing: Testing = new Testing(started);
  server = started;

  const refreshAll = () => {
    for (const document of vscode.workspace.textDocuments) testing.refresh(document);
  };
  const restart = async () => {
    await started.restart();
    refreshAll();
  };
  started.onStart = (client) => testing.listen(client);
  started.onStop = () => testing.abandon();

  context.subscriptions.push(
    started,
    testing,
    ...registerExplanations(),
    registerDebugging(context),
    vscode.tasks.registerTaskProvider("velc", tasks),
    vscode.commands.registerCommand("velc.restart", restart),
    vscode.commands.registerCommand("velc.showLog", () => started.showLog()),
    vscode.workspace.onDidOpenTextDocument((document) => testing.refresh(document, pause)),
    vscode.workspace.onDidChangeTextDocument(({ document }) => testing.refresh(document, pause)),
    vscode.workspace.onDidChangeConfiguration((change) => {
      const affects = (name: string) => change.affectsConfiguration(name);
      if (["velc.path", "velc.plugin"].some(affects)) void restart();
    }),
    vscode.workspace.onDidGrantWorkspaceTrust(() => void restart()),
  );
  if (vscode.workspace.isTrusted) await restart();
}

export function deactivate(): Promise<void> | undefined {
  return server?.stop();
}
