// The pages of `velc explain` as documents that can be previewed.
import * as vscode from "vscode";
import { runVelc } from "./velc";

const scheme = "velc-explain";

/** The document that explains a word, an operator or the code of a message. */
export function explanationUri(topic: string): vscode.Uri {
  return vscode.Uri.from({
    scheme,
    path: `/${topic.replaceAll(/\W/g, "_")}.md`,
    query: topic,
  });
}

// Links to other pages lead nowhere from here.
function withoutLinks(text: string): string {
  return text.replaceAll(/\[([^\]]*)\]\((?!https?:)[^)]*\)/g, "$1");
}

export const explanations: vscode.TextDocumentContentProvider = {
  async provideTextDocumentContent(uri) {
    const output = await runVelc(["explain", "--", uri.query]);
    return output.code === 0 ? withoutLinks(output.stdout) : output.stderr;
  },
};

function codeAt(editor: vscode.TextEditor): string | undefined {
  for (const message of vscode.languages.getDiagnostics(editor.document.uri)) {
    if (message.source !== "velc" || !message.range.contains(editor.selection.active)) continue;
    const code = message.code;
    if (code !== undefined) return String(typeof code === "object" ? code.value : code);
  }
  return undefined;
}

function wordAt(editor: vscode.TextEditor): string | undefined {
  const range = editor.document.getWordRangeAtPosition(editor.selection.active);
  return range && editor.document.getText(range);
}

/** Opens the page of the topic or, without one, of the message or word at the cursor. */
export async function explain(topic?: unknown): Promise<void> {
  const editor = vscode.window.activeTextEditor;
  const wanted =
    (typeof topic === "string" ? topic : undefined) ??
    (editor && (codeAt(editor) ?? wordAt(editor))) ??
    (await vscode.window.showInputBox({ prompt: "A word, an operator or the code of a message" }));
  if (wanted === undefined || wanted === "") return;
  const output = await runVelc(["explain", "--", wanted]);
  if (output.code !== 0) {
    void vscode.window.showInformationMessage(output.stderr.trim());
    return;
  }
  await vscode.commands.executeCommand("markdown.showPreview", explanationUri(wanted));
}

export function registerExplanations(): vscode.Disposable[] {
  return [
    vscode.workspace.registerTextDocumentContentProvider(scheme, explanations),
    vscode.commands.registerCommand("velc.explain", explain),
  ];
}
