import assert from "node:assert/strict";
import { test } from "node:test";
import { examples, readJson } from "./support.mjs";

const configuration = readJson("language-configuration.json");
const pattern = ({ pattern, flags = "" }) => new RegExp(pattern, flags);
const columnOf = (line) => line.length - line.trimStart().length;

test("new lines are indented as velc fmt does it", () => {
  const { increaseIndentPattern, decreaseIndentPattern } = configuration.indentationRules;
  const [increase, decrease] = [pattern(increaseIndentPattern), pattern(decreaseIndentPattern)];
  const label = pattern(configuration.onEnterRules[0].beforeText);
  // The columns of labels, and of what belongs to a line before, cannot be told by these rules.
  const whole = /;$|^\s*(?:END_\w+|ELSE|REPEAT|TYPE|VAR[\w ]*|SETUP|[A-Z_]+ \w+|TEST '.*'|FUNCTION .*)$|\b(?:THEN|DO)$/;
  let compared = 0;
  for (const { name, text } of examples()) {
    let [before, beginsThere, inCase] = ["", true, false];
    for (const line of text.replaceAll(/\(\*.*?\*\)/gs, "").split("\n")) {
      const code = line.replace(/\s*\/\/.*/, "");
      if (code.trim() === "") continue;
      inCase ||= /^\s*CASE\b/.test(code);
      const beginsHere = whole.test(before);
      if (beginsHere && beginsThere && !inCase) {
        const column = columnOf(before) + (increase.test(before) ? 2 : 0) - (decrease.test(code) ? 2 : 0);
        assert.equal(columnOf(code), Math.max(column, 0), `${name}: ${before}\n${line}`);
        ++compared;
      }
      inCase &&= !/^\s*END_CASE\b/.test(code);
      [before, beginsThere] = [code, beginsHere];
    }
  }
  assert.ok(compared > 250, `${compared} lines`);
  for (const line of ["  1:", "  Red, 3..5:", "  Color#Red:"]) assert.match(line, label);
  for (const line of ["  a := 1;", "  1: a := 2;", "a : INT;", "VAR_OUTPUT"]) assert.doesNotMatch(line, label);
});

test("words", () => {
  const text = "Color#Red := T#1m30.5s + INT#-5 + 16#FF - %QX0.1 * level2 / 1.5 + a[1..3].x D#2024-02-29";
  assert.deepEqual(text.match(new RegExp(configuration.wordPattern.pattern, "g")), [
    "Color", "Red", "T#1m30.5s", "INT#-5", "16#FF", "%QX0.1", "level2", "1.5", "a", "1", "3", "x", "D#2024-02-29",
  ]);
});
