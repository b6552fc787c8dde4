// Unit tests: those of open documents in the view of tests, and the results of each run.
import { basename, resolve } from "node:path";
import * as vscode from "vscode";
import type { CodeLens, DocumentSymbol, LanguageClient, Range } from "vscode-languageclient/node";
import type { Server } from "./server";

export const runCommand = "velc.runTests";

interface Failure {
  file: string;
  line: number;
  column?: number;
  assertion?: string;
  text?: string;
  values: { expression: string; value: string }[];
}

interface Result {
  name: string;
  file: string;
  line: number;
  status: string;
  seconds: number;
  failures: Failure[];
}

interface Results {
  folder: string;
  tests: Result[];
  error?: string;
}

function messageOf(failure: Failure, folder: string): vscode.TestMessage {
  const said = [failure.assertion, failure.text].filter((text) => text !== undefined && text !== "");
  const values = failure.values.map(({ expression, value }) =>
    expression === value ? value : `${expression} = ${value}`,
  );
  const message = new vscode.TestMessage([said.join(": "), ...values].join("\n"));
  message.location = new vscode.Location(
    vscode.Uri.file(resolve(folder, failure.file)),
    new vscode.Position(failure.line - 1, (failure.column ?? 1) - 1),
  );
  return message;
}

// True of changed documents that can be a part of a program: its sources may be in any folder.
function isOfPrograms({ isDirty, languageId, uri }: vscode.TextDocument): boolean {
  const isProject = basename(uri.fsPath) === "velops.json";
  return isDirty && uri.scheme === "file" && (languageId === "st" || isProject);
}

function startsEqually(a: Range, b: Range): boolean {
  return a.start.line === b.start.line && a.start.character === b.start.character;
}

// The item, or those below it, if some of them are excluded.
function without(item: vscode.TestItem, excluded: readonly vscode.TestItem[]): vscode.TestItem[] {
  if (excluded.includes(item)) return [];
  const children: vscode.TestItem[] = [];
  item.children.forEach((child) => children.push(child));
  const left = children.filter((child) => !excluded.includes(child));
  return left.length === children.length ? [item] : left;
}

export class Testing implements vscode.Disposable {
  private readonly controller = vscode.tests.createTestController("velc", "Structured Text");
  private readonly filters = new WeakMap<vscode.TestItem, string>();
  private readonly changed = new Map<string, NodeJS.Timeout>();
  // Ends the wait for the results of the run that goes on.
  private take: ((results: Results | undefined) => void) | undefined;

  constructor(private readonly server: Server) {
    this.controller.createRunProfile(
      "Run",
      vscode.TestRunProfileKind.Run,
      (request, token) => {
        token.onCancellationRequested(() => this.abandon());
        return this.runRequested(request);
      },
      true,
    );
  }

  /** Takes the results that the server of the client sends. */
  listen(client: LanguageClient): void {
    client.onNotification("velc/testResults", (results: Results) => this.take?.(results));
  }

  /** Waits no longer for results. */
  abandon(): void {
    this.take?.(undefined);
  }

  /** Looks for the tests of the document when it has not changed for `delay` milliseconds. */
  refresh(document: vscode.TextDocument, delay = 0): void {
    if (document.languageId !== "st" || document.uri.scheme !== "file") return;
    const key = document.uri.toString();
    clearTimeout(this.changed.get(key));
    this.changed.set(
      key,
      setTimeout(() => {
        this.changed.delete(key);
        void this.discover(document).catch(() => undefined);
      }, delay),
    );
  }

  /** Runs the tests that match one of the filters, or all tests of the program of the file. */
  async run(uri: vscode.Uri, filters: string[], request?: vscode.TestRunRequest): Promise<void> {
    this.abandon();
    // The server runs tests on the files as they are on disk.
    await Promise.all(vscode.workspace.textDocuments.filter(isOfPrograms).map((it) => it.save()));
    const run = this.controller.createTestRun(request ?? new vscode.TestRunRequest());
    for (const item of this.itemsOf(uri, filters)) run.started(item);
    const results = await new Promise<Results | undefined>((take) => {
      this.take = take;
      const client = this.server.running;
      if (client === undefined) return take(undefined);
      const fail = (error: unknown) => take({ folder: "", tests: [], error: String(error) });
      const params = { command: runCommand, arguments: [uri.toString(), ...filters] };
      client.sendRequest("workspace/executeCommand", params).then(undefined, fail);
      return undefined;
    });
    if (results?.error !== undefined) {
      for (const item of this.itemsOf(uri, filters)) {
        run.errored(item, new vscode.TestMessage(results.error));
      }
    }
    for (const result of results?.tests ?? []) this.report(run, result, results?.folder ?? "");
    run.end();
  }

  dispose(): void {
    for (const timer of this.changed.values()) clearTimeout(timer);
    this.abandon();
    this.controller.dispose();
  }

  private async runRequested(request: vscode.TestRunRequest): Promise<void> {
    const included: vscode.TestItem[] = [...(request.include ?? [])];
    if (request.include === undefined) this.controller.items.forEach((item) => included.push(item));
    const wanted = included.flatMap((item) => without(item, request.exclude ?? []));
    // By file. Without filters the server would run the tests of all files of the program.
    const files = new Map<string, { uri: vscode.Uri; filters: string[] }>();
    for (const item of wanted) {
      if (item.uri === undefined) continue;
      const known = files.get(item.uri.toString()) ?? { uri: item.uri, filters: [] };
      const tests = [item];
      item.children.forEach((test) => tests.push(test));
      for (const test of tests) {
        const filter = this.filters.get(test);
        if (filter !== undefined) known.filters.push(filter);
      }
      files.set(item.uri.toString(), known);
    }
    for (const { uri, filters } of files.values()) {
      if (filters.length > 0) await this.run(uri, filters, request);
    }
  }

  private fileItem(uri: vscode.Uri): vscode.TestItem {
    const known = this.controller.items.get(uri.toString());
    if (known !== undefined) return known;
    const label = vscode.workspace.asRelativePath(uri);
    const item = this.controller.createTestItem(uri.toString(), label, uri);
    this.controller.items.add(item);
    return item;
  }

  private testItem(file: vscode.TestItem, name: string, line: number): vscode.TestItem {
    const known = file.children.get(name);
    const item = known ?? this.controller.createTestItem(name, name, file.uri);
    item.range = new vscode.Range(line, 0, line, 0);
    if (known === undefined) file.children.add(item);
    return item;
  }

  private itemsOf(uri: vscode.Uri, filters: string[]): vscode.TestItem[] {
    const items: vscode.TestItem[] = [];
    this.controller.items.get(uri.toString())?.children.forEach((item) => {
      const filter = this.filters.get(item);
      if (filters.length === 0 || (filter !== undefined && filters.includes(filter))) {
        items.push(item);
      }
    });
    return items;
  }

  // A test is a symbol with a lens that runs it.
  private async discover(document: vscode.TextDocument): Promise<void> {
    const client = this.server.running;
    if (client === undefined) return;
    const params = { textDocument: { uri: document.uri.toString() } };
    const [lenses, symbols] = await Promise.all([
      client.sendRequest<CodeLens[] | null>("textDocument/codeLens", params),
      client.sendRequest<DocumentSymbol[] | null>("textDocument/documentSymbol", params),
    ]);
    const found = new Set<string>();
    for (const { range, command } of lenses ?? []) {
      const filter: unknown = command?.arguments?.[1];
      const symbol = symbols?.find(({ selectionRange }) => startsEqually(selectionRange, range));
      if (typeof filter !== "string" || symbol === undefined) continue;
      const item = this.testItem(this.fileItem(document.uri), symbol.name, range.start.line);
      this.filters.set(item, filter);
      found.add(item.id);
    }
    const file = this.controller.items.get(document.uri.toString());
    if (found.size === 0) this.controller.items.delete(document.uri.toString());
    file?.children.forEach((item) => {
      if (!found.has(item.id)) file.children.delete(item.id);
    });
  }

  private report(run: vscode.TestRun, result: Result, folder: string): void {
    const file = this.fileItem(vscode.Uri.file(resolve(folder, result.file)));
    const item = this.testItem(file, result.name, result.line - 1);
    const messages = result.failures.map((failure) => messageOf(failure, folder));
    const milliseconds = result.seconds * 1000;
    if (result.status === "passed") run.passed(item, milliseconds);
    else if (result.status === "failed") run.failed(item, messages, milliseconds);
    else run.errored(item, messages, milliseconds);
  }
}
