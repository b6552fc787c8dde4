import assert from "node:assert/strict";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, test } from "node:test";
import { manifest, output, velc } from "./support.mjs";

const work = mkdtempSync(join(tmpdir(), "velops-tasks-"));
after(() => rmSync(work, { recursive: true }));

/** What the named patterns find in the output of a command, as the editor reads it: the first that fits. */
async function found(names, args, text, file = "main unit.st") {
  writeFileSync(join(work, file), text);
  const patterns = names.map((name) => manifest.contributes.problemPatterns.find((row) => row.name === name));
  const lines = (await output(velc, args, { cwd: work })).split("\n");
  return lines.flatMap((line) => {
    for (const pattern of patterns) {
      const match = new RegExp(pattern.regexp).exec(line);
      if (match === null) continue;
      const parts = ["file", "line", "column", "severity", "code", "message"];
      return [Object.fromEntries(parts.filter((part) => part in pattern).map((part) => [part, match[pattern[part]]]))];
    }
    return [];
  });
}

const at = (line, column, severity, code, message, file = "main unit.st") => ({
  file, line: String(line), column: String(column), severity, code, message,
});

test("messages", async () => {
  const check = (text) => found(["velc"], ["check", "main unit.st"], text);
  const [warning, note] = await check("PROGRAM P\n  RETURN;\n  RETURN;\nEND_PROGRAM\n");
  assert.deepEqual([warning.line, warning.column, warning.severity, warning.code], ["3", "3", "warning", "0xF00E3"]);
  assert.deepEqual([note.line, note.column, note.severity], ["2", "3", "note"]);
  const messages = await check("PROGRAM P\nVAR a : INT; r : REAL; END_VAR\n  a := r;\n  a := [1];\nEND_PROGRAM\n");
  assert.deepEqual(messages.slice(0, 2), [
    at(3, 8, "error", "0xC0032", "'REAL' cannot convert to 'INT' type;"),
    at(3, 8, "note", undefined, "REAL_TO_INT converts it"),
  ]);
  assert.match(messages[2].message, /Syntax error: found '\['/);
  assert.equal(messages.length, 3);
  assert.deepEqual(await found(["velc"], ["check"], '{\n  "soruces": ["src"] }', "velops.json"), [
    at(2, 3, "error", undefined, "unknown key 'soruces', did you mean 'sources'?", "velops.json"),
  ]);
  rmSync(join(work, "velops.json"));
});

test("failed tests", async () => {
  const text = "TEST 'a'\n  ASSERT_EQ(1 + 1, 3, 'sum: two');\nEND_TEST\nTEST 'b'\n  ASSERT_TRUE(TRUE);\nEND_TEST\n";
  const args = ["test", "main unit.st"];
  assert.deepEqual(await found(["velc", "velc-test"], args, text), [
    { file: "main unit.st", line: "2", column: "3", message: "ASSERT_EQ(1 + 1, 3, 'sum: two'): sum: two" },
  ]);
  const [fault] = await found(["velc", "velc-test"], args, "TEST 'a'\n  x := 1;\nEND_TEST\n");
  assert.deepEqual([fault.line, fault.severity, fault.code], ["2", "error", "0xF0020"]);
});

test("tests that crash or do not end, and values that look like places", async () => {
  const text = `TEST 'crash' VAR p : POINTER TO INT; END_VAR
  p^ := 4;
END_TEST
TEST 'endless'
  WHILE TRUE DO ; END_WHILE
END_TEST
TEST 'values' VAR s : STRING := 'a.st:1:2: error: b'; END_VAR
  ASSERT_EQ(s, 'x', 'm');
END_TEST
`;
  const problems = await found(["velc", "velc-test"], ["test", "main unit.st", "--timeout", "0.3"], text);
  assert.deepEqual(problems.map(({ line, column }) => [line, column]), [["2", undefined], ["5", undefined], ["8", "3"]]);
  assert.match(problems[0].message, /^crashed with signal 11/);
  assert.match(problems[1].message, /^did not end within/);
});

test("crashes", async () => {
  const text = "PROGRAM P\nVAR p : POINTER TO INT; END_VAR\n  p^ := 4;\nEND_PROGRAM\n";
  assert.deepEqual(await found(["velc", "velc-crash"], ["run", "main unit.st"], text), [
    { file: "main unit.st", line: "3", message: "the program was ended by signal 11 (Segmentation fault)" },
  ]);
});
