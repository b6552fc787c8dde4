import assert from "node:assert/strict";
import { readdirSync, readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";
import { before, test } from "node:test";
import { examples, explained, folder, manifest, output, uriOf, velc, withServer } from "./support.mjs";

const require = createRequire(import.meta.url);
const oniguruma = require("vscode-oniguruma");
const { INITIAL, parseRawGrammar, Registry } = require("vscode-textmate");

let grammar;
let markdown;

before(async () => {
  await oniguruma.loadWASM(readFileSync(require.resolve("vscode-oniguruma/release/onig.wasm")).buffer);
  const registry = new Registry({
    onigLib: Promise.resolve({
      createOnigScanner: (patterns) => new oniguruma.OnigScanner(patterns),
      createOnigString: (text) => new oniguruma.OnigString(text),
    }),
    loadGrammar: async (scope) => {
      const path = join(folder, manifest.contributes.grammars.find(({ scopeName }) => scopeName === scope).path);
      return parseRawGrammar(readFileSync(path, "utf8"), path);
    },
  });
  markdown = await registry.loadGrammar("markdown.st.codeblock");
  grammar = await registry.loadGrammar("source.st");
});

/** By line: pieces with `begin`, `end` and the innermost scope. */
function pieces(text, by = grammar) {
  let stack = INITIAL;
  return text.split("\n").map((line) => {
    const { tokens, ruleStack } = by.tokenizeLine(line, stack);
    stack = ruleStack;
    return tokens.map(({ startIndex, endIndex, scopes }) => {
      // The marks of comments and strings belong to them.
      const inner = scopes.filter((scope) => !scope.startsWith("punctuation.definition")).at(-1);
      return { begin: startIndex, end: endIndex, scope: inner, text: line.slice(startIndex, endIndex) };
    });
  });
}

test("scopes", async () => {
  const names = readdirSync(join(folder, "test/grammar")).map((name) => `test/grammar/${name}`);
  const runner = require.resolve("vscode-tmgrammar-test/dist/unit.js");
  const said = await output(process.execPath, [runner, ...names], { cwd: folder });
  assert.equal(said.match(/run success/g)?.length, names.length, said);
});

// Which scopes may stand where the server has a token of this type.
const expected = {
  keyword: /^(keyword|storage|constant\.language|variable\.parameter\.task)/,
  type: /^(storage\.type|entity\.name\.type|support\.(type|function))/,
  function: /^(entity\.name\.function|support\.function|keyword\.operator\.word|variable\.other)/,
  class: /^(entity\.name\.(class|type|namespace)|support\.class)/,
  // Instances can be named and called like standard functions.
  variable: /^(variable|entity\.name|support\.function)/,
  parameter: /^variable/,
  property: /^variable/,
  enumMember: /^(variable\.other|constant\.language)/,
  number: /^(constant\.numeric|storage\.type\.literal|keyword\.other\.unit|punctuation\.separator\.literal)/,
  string: /^(string|constant\.character|storage\.type\.literal)/,
  comment: /^(comment|meta\.preprocessor|keyword\.control\.directive|punctuation\.section\.pragma)/,
  operator: /^(keyword\.operator|punctuation)/,
};

test("colours mean what the language server says", { timeout: 60000 }, async () => {
  const programs = [...examples(), ...explained()];
  assert.ok(programs.length > 60, `${programs.length} programs`);
  let compared = 0;
  const differences = [];
  await withServer(async (connection, capabilities) => {
    const { tokenTypes } = capabilities.semanticTokensProvider.legend;
    for (const [number, { name, text }] of programs.entries()) {
      const uri = uriOf(`/nowhere/${number}/a.st`);
      await connection.sendNotification("textDocument/didOpen", {
        textDocument: { uri, languageId: "st", version: 1, text },
      });
      const { data } = await connection.sendRequest("textDocument/semanticTokens/full", {
        textDocument: { uri },
      });
      await connection.sendNotification("textDocument/didClose", { textDocument: { uri } });
      const lines = pieces(text);
      let line = 0;
      let begin = 0;
      for (let i = 0; i < data.length; i += 5) {
        begin = data[i] === 0 ? begin + data[i + 1] : data[i + 1];
        line += data[i];
        const type = tokenTypes[data[i + 3]];
        for (const piece of lines[line]) {
          const end = begin + data[i + 2];
          if (piece.begin < begin || piece.begin >= end || piece.text.trim() === "") continue;
          // A program in front of a path of VAR_CONFIG.
          if (type === "class" && text.split("\n")[line][end] === ".") continue;
          ++compared;
          if (!expected[type].test(piece.scope)) {
            differences.push(`${name}:${line + 1}: ${piece.text}: ${type}, ${piece.scope}`);
          }
        }
      }
    }
  });
  assert.deepEqual(differences, []);
  assert.ok(compared > 4000, `${compared} tokens`);
});

test("blocks in Markdown", () => {
  const text = "IF x\n```st\nIF x THEN (* open\n```\nIF x\n```stone\nIF x\n```";
  const found = pieces(text, markdown).flat().filter(({ scope }) => scope.endsWith(".st"));
  assert.deepEqual(found.map(({ text }) => text.trim()).filter((piece) => piece !== ""), ["IF", "x", "THEN", "(*", "open"]);
});

test("nothing in the examples is marked as wrong", () => {
  for (const { name, text } of [...examples(), ...explained()]) {
    const wrong = pieces(text).flat().filter(({ scope }) => scope.startsWith("invalid"));
    assert.deepEqual(wrong, [], name);
  }
});

// Where a word that is no word everywhere can stand.
const places = [
  (word) => word,
  (word) => `a := ${word}(1);`,
  (word) => `VAR a : ${word}; END_VAR`,
  (word) => `VAR a : INT ${word}; END_VAR`,
  (word) => `VAR a : ${word} TO INT; END_VAR`,
  (word) => `${word} 'name'`,
  (word) => `{${word}}`,
  (word) => `f(${word} := a);`,
  (word) => `CONFIGURATION c ${word} a`,
  (word) => `CONFIGURATION c TASK t(${word} := 1);`,
  (word) => `CONFIGURATION c RESOURCE r ${word} p`,
];

test("every word that velc explains is coloured", async () => {
  const listed = (await output(velc, ["explain"])).split("\n\n")[0].split("\n");
  const words = [...new Set(listed.map((line) => line.split(" ")[0]).filter((word) => /^[A-Z_]/.test(word)))];
  assert.ok(words.length > 180, `${words.length} words`);
  const coloured = /^(keyword|storage|support|constant\.language|variable\.parameter\.(task|enabling))/;
  const isColoured = (word, text) =>
    pieces(text).flat().some((piece) => piece.text.trim() === word && coloured.test(piece.scope));
  for (const word of words) {
    for (const spelling of [word, word.toLowerCase()]) {
      assert.ok(places.some((place) => isColoured(spelling, place(spelling))), spelling);
    }
  }
  assert.ok(!places.some((place) => isColoured("level", place("level"))));
});
