import assert from "node:assert/strict";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, test } from "node:test";
import { pathToFileURL } from "node:url";
import { loadExtension, makeVscode } from "./fake_vscode.mjs";
import { folder, manifest, output, velc, withServer } from "./support.mjs";

const work = mkdtempSync(join(tmpdir(), "velops-vscode-"));
after(() => rmSync(work, { recursive: true }));

const program = `PROGRAM Main
VAR
  level : INT;
  name  : STRING[8] := 'pump';
END_VAR
  level := level + 1;
END_PROGRAM

TEST 'good'
  ASSERT_TRUE(TRUE);
END_TEST

TEST 'bad $'n$' old'
  ASSERT_EQ(1, 2, 'one');
END_TEST
`;

async function until(condition, what) {
  for (let i = 0; i < 500; ++i) {
    if (condition()) return;
    await new Promise((resolve) => setTimeout(resolve, 20));
  }
  assert.fail(`no ${what} within 10 s`);
}

/** Starts the extension for a file of that text, does something with it, and stops it. */
async function withExtension(options, use) {
  const path = join(work, "a.st");
  writeFileSync(path, options.text);
  const fake = makeVscode({ folder: work, path, settings: { "velc.path": velc }, ...options });
  const extension = loadExtension(join(folder, "dist/extension.js"), fake.vscode);
  const storageUri = fake.vscode.Uri.file(join(work, "storage"));
  const context = { subscriptions: [], extensionPath: folder, storageUri };
  await extension.activate(context);
  try {
    await use({ ...fake, path, uri: fake.opened.uri });
  } finally {
    await extension.deactivate();
    for (const subscription of context.subscriptions) subscription.dispose();
  }
}

test("shows what the server says", { timeout: 60000 }, async () => {
  writeFileSync(join(work, "velops.json"), '{ "sources": ["a.st"], "soruces": [] }');
  await withExtension({ text: program.replace("level + 1", "levle") }, async (fake) => {
    const project = pathToFileURL(join(work, "velops.json")).href;
    await until(() => fake.shown.diagnostics.get(project)?.length > 0, "fault of velops.json");
    rmSync(join(work, "velops.json"));
    const found = () => fake.shown.diagnostics.get(fake.uri.toString()) ?? [];
    await until(() => found().length > 0, "diagnostic");
    const [{ message, range, code }] = found();
    assert.match(message, /Unknown identifier 'levle'/);
    assert.deepEqual([range.start.line, range.start.character, range.end.character], [5, 11, 16]);
    assert.match(fake.shown.status.text, new RegExp(`^velc ${manifest.version}$`));
    // The code leads to its page.
    const page = await fake.contents.get(code.target.scheme).provideTextDocumentContent(code.target);
    assert.match(page, /^## 0xF0020 Unknown identifier/);
    await fake.commands.get("velc.explain")("**");
    assert.deepEqual(fake.shown.executed.map(([name, { query }]) => [name, query]), [["markdown.showPreview", "**"]]);
    await fake.commands.get("velc.explain")("levle");
    assert.match(fake.shown.messages[0].message, /'levle' is neither/);
  });
});

test("all that package.json names exists", async () => {
  await withExtension({ text: program }, async ({ commands, taskProviders, debugProviders }) => {
    const { contributes } = manifest;
    for (const { command } of [...contributes.commands, ...contributes.menus["editor/context"]]) {
      assert.ok(commands.has(command), command);
    }
    assert.deepEqual(taskProviders.map(({ type }) => type), contributes.taskDefinitions.map(({ type }) => type));
    assert.deepEqual([...debugProviders.keys()], contributes.debuggers.map(({ type }) => type));
    const tasks = taskProviders[0].provider.provideTasks();
    assert.deepEqual(tasks.map(({ name }) => name), contributes.taskDefinitions[0].properties.command.enum);
    const matchers = contributes.problemMatchers.map(({ name }) => `$${name}`);
    for (const name of tasks.flatMap(({ problemMatchers }) => problemMatchers)) assert.ok(matchers.includes(name), name);
    const resolved = (cwd) => {
      const scope = { uri: { fsPath: work } };
      return taskProviders[0].provider.resolveTask({ definition: { type: "velc", command: "check", cwd }, scope });
    };
    // Names relative to another folder would be found in the wrong one.
    assert.deepEqual([work, join(work, "sub")].map((cwd) => resolved(cwd).problemMatchers), [["$velc"], []]);
    for (const { execution } of tasks) {
      const help = await output(velc, [execution.args[0], "--help"]);
      for (const option of execution.args.filter((arg) => /^-/.test(arg))) assert.ok(help.includes(option), option);
    }
    const files = [contributes.languages[0].configuration, contributes.jsonValidation[0].url];
    for (const file of [manifest.main, ...files, ...contributes.grammars.map(({ path }) => path)]) {
      assert.ok(readFileSync(join(folder, file)).length > 0, file);
    }
  });
  await withServer(async (_, { executeCommandProvider, semanticTokensProvider }) => {
    assert.deepEqual(executeCommandProvider.commands, ["velc.runTests"]);
    const types = Object.keys(manifest.contributes.semanticTokenScopes[0].scopes).map((name) => name.split(".")[0]);
    for (const type of semanticTokensProvider.legend.tokenTypes) assert.ok(types.includes(type), type);
  });
});

test("runs unit tests", { timeout: 60000 }, async () => {
  await withExtension({ text: program }, async ({ controller, shown, commands, uri, path, opened, open }) => {
    opened.isDirty = true;
    open("notes.md", "markdown").isDirty = true;
    const items = () => [...(controller.items.get(uri.toString())?.children.keys() ?? [])];
    await until(() => items().length === 2, "test");
    const bad = "bad 'n' old";
    assert.deepEqual(items(), ["good", bad]);
    const failure = [bad, "failed", ["ASSERT_EQ(1, 2, 'one'): one\n1\n2", 13, 2]];
    const token = { onCancellationRequested() {} };
    await controller.run({ include: undefined }, token);
    assert.deepEqual(shown.runs[0].results, [["good", "passed"], failure]);
    assert.deepEqual(shown.runs[0].started, ["good", bad]);
    const test = controller.items.get(uri.toString()).children.get(bad);
    await controller.run({ include: [test] }, token);
    assert.deepEqual(shown.runs[1].results, [failure]);
    // As a lens does.
    await commands.get("velc.runTests")(uri.toString(), "go?d");
    assert.deepEqual(shown.runs[2].results, [["good", "passed"]]);
    writeFileSync(path, "nonsense");
    await controller.run({ include: [test] }, token);
    assert.equal(shown.runs[3].results[0][1], "errored");
    await controller.run({ include: [test] }, { onCancellationRequested: (cancel) => setImmediate(cancel) });
    assert.deepEqual(shown.runs[4].results, []);
    writeFileSync(path, program);
    await controller.run({ include: undefined, exclude: [test] }, token);
    assert.deepEqual(shown.runs[5].results, [["good", "passed"]]);
    assert.deepEqual(shown.saved, ["a.st"]);
    assert.ok(shown.runs.every(({ ended }) => ended));
  });
});

test("tells what to do if velc is missing, and starts nothing in folders that are not trusted", async () => {
  await withExtension({ text: program, settings: { "velc.path": "~/no/velc" } }, async ({ shown }) => {
    assert.match(shown.messages[0].message, /velc was not found: the setting velc.path is "~\/no\/velc"/);
    assert.match(shown.status.text, /not found/);
  });
  await withExtension({ text: program, settings: { "velc.path": "/bin/false" } }, async ({ shown }) => {
    assert.deepEqual(shown.messages.map(({ message }) => message), ["/bin/false is no velc with a language server."]);
  });
  await withExtension({ text: program, isTrusted: false }, async ({ shown, events }) => {
    assert.equal(shown.status.text, undefined);
    events.Trust.fire();
    await until(() => shown.status.text !== undefined, "server");
  });
});

test("builds programs for gdb, which stops at lines and prints strings", { timeout: 60000 }, async () => {
  const extensions = ["ms-vscode.cpptools"];
  await withExtension({ text: program, extensions }, async ({ debugProviders, vscode, path }) => {
    const resolve = (given) =>
      debugProviders.get("velc").resolveDebugConfiguration(vscode.workspace.workspaceFolders[0], given);
    const made = await resolve({ type: "velc", name: "", scans: 3 });
    assert.deepEqual([made.cwd, made.args], [work, ["--scans", "3", "--cycle", "T#10ms"]]);
    assert.equal(made.type, "cppdbg");
    const setup = made.setupCommands.flatMap(({ text }) => ["-ex", text.replace(/^-(.*)/, 'interpreter-exec mi "-$1"')]);
    const lines = [`break ${path}:6`, "run", "continue", "print self->level", "print self->name"];
    const said = await output(made.miDebuggerPath, [
      "-nx", "-batch", ...setup, ...lines.flatMap((text) => ["-ex", text]), "--args", made.program, ...made.args,
    ]);
    assert.match(said, /\$1 = 1\n\$2 = "pump"/);
    assert.doesNotMatch(said, /Undefined|No such file/);
  });
  await withExtension({ text: "PROGRAM", extensions }, async ({ debugProviders, shown, vscode }) => {
    const given = { type: "velc", name: "" };
    assert.equal(await debugProviders.get("velc").resolveDebugConfiguration(undefined, given), undefined);
    assert.match(shown.messages[0].options.detail, /a\.st:1:8: error/);
  });
});
