// As much of VS Code as the extension needs to start the real server and to show what it says. What
// is not modelled here can be called and constructed, and does nothing.
import Module, { createRequire } from "node:module";
import { basename, join } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";

const nothing = () => ({ dispose() {} });

function anything(name) {
  return new Proxy(class { dispose() {} }, {
    apply: nothing,
    get: (target, key) => (key in target ? target[key] : anything(`${name}.${String(key)}`)),
  });
}

// By the prototype, which bundlers keep when they copy the members of a module.
const withDefaults = (name, object) =>
  Object.setPrototypeOf(object, new Proxy({}, { get: (_, key) => anything(`${name}.${String(key)}`) }));

class EventEmitter {
  listeners = new Set();
  event = (listener, self) => {
    const bound = self === undefined ? listener : listener.bind(self);
    this.listeners.add(bound);
    return { dispose: () => this.listeners.delete(bound) };
  };
  fire(value) {
    for (const listener of [...this.listeners]) listener(value);
  }
  dispose() {
    this.listeners.clear();
  }
}

class Uri {
  constructor(parts) {
    Object.assign(this, { scheme: "file", authority: "", path: "", query: "", fragment: "" }, parts);
  }
  static from = (parts) => new Uri(parts);
  static file = (path) => new Uri({ path });
  static parse = (text) =>
    text.startsWith("file:") ? Uri.file(fileURLToPath(text.split("#")[0])) : new Uri({ scheme: text.split(":")[0] });
  get fsPath() {
    return this.path;
  }
  with = (parts) => new Uri({ ...this, ...parts });
  toString = () => (this.scheme === "file" ? pathToFileURL(this.path).href : `${this.scheme}:${this.path}?${this.query}`);
}

class Position {
  constructor(line, character) {
    Object.assign(this, { line, character });
  }
}

class Range {
  constructor(a, b, c, d) {
    const places = typeof a === "number" ? [new Position(a, b), new Position(c, d)] : [a, b];
    [this.start, this.end] = places;
  }
  isEmpty = false;
}

const plain = (...names) =>
  class {
    constructor(...values) {
      names.forEach((name, i) => (this[name] = values[i]));
    }
  };

class CancellationTokenSource {
  token = { isCancellationRequested: false, onCancellationRequested: nothing };
  cancel() {}
  dispose() {}
}

class Items extends Map {
  add = (item) => this.set(item.id, item);
}

const failureOf = ({ message, location: { range } }) => [message, range.line, range.character];

function document(path, text, saved, languageId = "st") {
  return {
    uri: Uri.file(path), fileName: path, languageId, version: 1, isDirty: false, isUntitled: false,
    isClosed: false, getText: () => text, notebook: undefined,
    getWordRangeAtPosition: () => undefined,
    async save() {
      saved.push(basename(path));
      this.isDirty = false;
    },
  };
}

/** A fake that shows `path`, and what the extension has made of it. */
export function makeVscode({ folder, path, text, settings = {}, extensions = [], isTrusted = true }) {
  const shown = { diagnostics: new Map(), messages: [], executed: [], runs: [], saved: [] };
  const commands = new Map();
  const taskProviders = [];
  const debugProviders = new Map();
  const contents = new Map();
  const events = {};
  const on = (name) => (events[name] ??= new EventEmitter()).event;
  const say = async (message, options) => void shown.messages.push({ message, options });
  const opened = document(path, text, shown.saved);
  const textDocuments = [opened];
  const open = (name, languageId) => {
    textDocuments.push(document(join(folder, name), "", shown.saved, languageId));
    return textDocuments.at(-1);
  };
  const controller = {
    items: new Items(),
    createRunProfile: (_label, _kind, handler) => (controller.run = handler),
    createTestItem: (id, label, uri) => ({ id, label, uri, children: new Items() }),
    createTestRun(request) {
      const run = { request, started: [], results: [] };
      shown.runs.push(run);
      return {
        started: (item) => run.started.push(item.id),
        passed: (item) => run.results.push([item.id, "passed"]),
        failed: (item, messages) => run.results.push([item.id, "failed", ...messages.map(failureOf)]),
        errored: (item, message) => run.results.push([item.id, "errored", message]),
        end: () => (run.ended = true),
      };
    },
    dispose() {},
  };

  const vscode = withDefaults("vscode", {
    version: "1.82.0",
    Uri, Position, Range, EventEmitter, CancellationTokenSource,
    Diagnostic: plain("range", "message", "severity"),
    DiagnosticRelatedInformation: plain("location", "message"),
    Location: plain("uri", "range"),
    TestMessage: plain("message"),
    TestRunRequest: plain("include", "exclude"),
    Task: plain("definition", "scope", "name", "source", "execution", "problemMatchers"),
    ProcessExecution: plain("process", "args"),
    TaskGroup: { Build: "build", Test: "test" },
    DiagnosticSeverity: { Error: 0, Warning: 1, Information: 2, Hint: 3 },
    workspace: withDefaults("workspace", {
      isTrusted,
      textDocuments,
      notebookDocuments: [],
      workspaceFolders: [{ uri: Uri.file(folder), name: basename(folder), index: 0 }],
      getConfiguration: (section = "") => ({
        get: (key, fallback) => settings[section === "" ? key : `${section}.${key}`] ?? fallback,
      }),
      asRelativePath: (uri) => basename(uri.path),
      registerTextDocumentContentProvider: (scheme, provider) => (contents.set(scheme, provider), nothing()),
      ...Object.fromEntries(
        ["OpenTextDocument", "ChangeTextDocument", "CloseTextDocument", "SaveTextDocument", "ChangeConfiguration", "ChangeWorkspaceFolders"]
          .map((name) => [`onDid${name}`, on(name)]),
      ),
      onDidGrantWorkspaceTrust: on("Trust"),
    }),
    window: withDefaults("window", {
      activeTextEditor: { document: opened, selection: { active: new Position(0, 0) } },
      visibleTextEditors: [],
      tabGroups: { all: [], onDidChangeTabs: nothing, onDidChangeTabGroups: nothing },
      showErrorMessage: say, showInformationMessage: say, showWarningMessage: say,
      createOutputChannel: () => ({ append() {}, appendLine() {}, show() {}, dispose() {}, clear() {} }),
    }),
    languages: withDefaults("languages", {
      match: (selector, { languageId, uri }) =>
        [selector].flat().some((filter) => filter.language === languageId && filter.scheme === uri.scheme) ? 10 : 0,
      getDiagnostics: (uri) => shown.diagnostics.get(uri.toString()) ?? [],
      createLanguageStatusItem: () => (shown.status = { dispose() {} }),
      createDiagnosticCollection: () => ({
        set: (uri, list) => shown.diagnostics.set(uri.toString(), list),
        delete: (uri) => shown.diagnostics.delete(uri.toString()),
        clear() {}, dispose() {},
      }),
    }),
    commands: {
      registerCommand: (name, run) => (commands.set(name, run), nothing()),
      executeCommand: async (...call) => void shown.executed.push(call),
    },
    tests: { createTestController: () => controller },
    tasks: { registerTaskProvider: (type, provider) => taskProviders.push({ type, provider }) && nothing() },
    debug: { registerDebugConfigurationProvider: (type, provider) => (debugProviders.set(type, provider), nothing()) },
    extensions: { getExtension: (id) => (extensions.includes(id) ? {} : undefined), onDidChange: nothing, all: [] },
    env: withDefaults("env", { language: "en", appName: "fake" }),
  });
  return { vscode, shown, commands, taskProviders, debugProviders, contents, controller, events, opened, open };
}

/** Loads the extension with the fake in the place of VS Code. */
export function loadExtension(file, vscode) {
  const load = Module._load;
  Module._load = (request, ...rest) => (request === "vscode" ? vscode : load(request, ...rest));
  try {
    const require = createRequire(import.meta.url);
    delete require.cache[require.resolve(file)];
    return require(file);
  } finally {
    Module._load = load;
  }
}
