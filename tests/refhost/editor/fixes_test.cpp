#include "refhost/editor/fixes.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "tests/refhost/editor/queried.h"

namespace refhost {
namespace {

std::string applied(std::string text, const Fix& fix) {
  std::vector<TextEdit> edits = fix.edits;
  std::stable_sort(edits.begin(), edits.end(), [](const TextEdit& a, const TextEdit& b) {
    return a.range.begin.offset() > b.range.begin.offset();
  });
  for (const TextEdit& edit : edits) {
    text.replace(edit.range.begin.offset(), edit.range.length, edit.text);
  }
  return text;
}

class Fixes : public testing::Test {
 protected:
  std::vector<Diagnostic> messagesOf(const std::string& text) {
    queried_.analyse({{"test.st", text}});
    std::vector<Diagnostic> messages = queried_.session().messages();
    for (Diagnostic& message : messages) message.fixes = queried_.session().fixes(message);
    return messages;
  }

  void expectFixes(const std::string& text, const std::string& expected) {
    EXPECT_EQ(fixed(text), expected) << text;
    expectMended(text);
  }

  // Expects that each fix removes its message and adds no error. Returns their number.
  int expectMended(const std::string& text) {
    int fixes = 0;
    const auto isError = [](const Diagnostic& any) { return any.severity == Severity::Error; };
    const std::vector<Diagnostic> messages = messagesOf(text);
    for (const Diagnostic& message : messages) {
      const auto isSame = [&message](const Diagnostic& any) {
        return any.code == message.code && any.text == message.text;
      };
      for (const Fix& fix : message.fixes) {
        const std::string mended = applied(text, fix);
        const std::vector<Diagnostic> left = messagesOf(mended);
        const auto lost = [&](const auto& matches) {
          return std::count_if(messages.begin(), messages.end(), matches) -
                 std::count_if(left.begin(), left.end(), matches);
        };
        EXPECT_GT(lost(isSame), 0) << message.text << '\n' << fix.title << '\n' << mended;
        EXPECT_GE(lost(isError), isError(message) ? 1 : 0) << fix.title << '\n' << mended;
        ++fixes;
      }
    }
    return fixes;
  }

  // The new part of the text for each fix of each message, or "-" and what is removed; with "?"
  // behind one that is not likely, and with its line if that is not line 2.
  std::string fixed(const std::string& text) {
    std::string all;
    for (const Diagnostic& message : messagesOf(text)) {
      for (const Fix& fix : message.fixes) {
        const std::string mended = applied(text, fix);
        const auto begin = fix.edits.front().range.begin.offset();
        const SourceRange& last = fix.edits.back().range;
        const std::size_t behind = text.size() - last.begin.offset() - last.length;
        const auto line = 1 + std::count(text.begin(), text.begin() + begin, '\n');
        std::string changed = mended.substr(begin, mended.size() - behind - begin);
        if (changed.empty()) changed = "-" + text.substr(begin, last.length);
        all += (all.empty() ? "" : "; ") + (line == 2 ? "" : std::to_string(line) + ": ") +
               changed + (fix.likely ? "" : "?");
      }
    }
    return all;
  }

 private:
  Queried queried_{"all"};
};

TEST_F(Fixes, ConvertWhatIsRefused) {
  const std::string rows[][2] = {
      {"i := r; i := (lr); i := d; u := i; b := i + 1; s := i; t := i; bt := i; w := si; i := -r; "
       "i := c; c := r; s := ws; i := 1.5; i := 2 * 1.5;",
       "REAL_TO_INT(r); LREAL_TO_INT; DINT_TO_INT(d); INT_TO_UINT(i); INT_TO_BOOL(i + 1); "
       "INT_TO_STRING(i); INT_TO_TIME(i); INT_TO_BYTE(i); SINT_TO_WORD(si); REAL_TO_INT(-r); "
       "REAL_TO_INT(2 * 1.5)"},
      {"IF i THEN ; END_IF; a[r] := 1; CASE r OF 1: ; END_CASE; FOR i := r TO lr BY b DO ; "
       "END_FOR; REPEAT ; UNTIL w END_REPEAT; pt.x := r; a2[0, 0] := i; rf^ := r; lv := d;",
       "INT_TO_BOOL(i); REAL_TO_DINT(r); REAL_TO_DINT(r); REAL_TO_INT(r); LREAL_TO_INT(lr); "
       "BOOL_TO_INT(b); WORD_TO_BOOL(w); REAL_TO_INT(r); INT_TO_BOOL(i); REAL_TO_INT(r); "
       "DINT_TO_INT(d)"},
      {"i := LIMIT(0, r, 100); i := MAX(r, r); r := LIMIT(i, r, d); i := SEL(i, 1, 2); i := "
       "INT_TO_REAL(d); r := "
       "INT_TO_REAL(l); s := INT_TO_STRING(r); i := STRING_TO_INT(ws);",
       "REAL_TO_INT(LIMIT(0, r, 100)); REAL_TO_INT(MAX(r, r)); DINT_TO_REAL(d); INT_TO_BOOL(i); "
       "LINT_TO_REAL; "
       "REAL_TO_STRING"},
      {"r := SQRT(i); w := SHL(w, r); w := SHL(r, 1); i := MUX(r, i, j); w := ROR(w, s); i := F(a "
       ":= r, b := d); fb(i := r, io := r); i := fb.o + r;",
       "LREAL_TO_REAL(SQRT(i)); REAL_TO_INT(r); REAL_TO_WORD(r); REAL_TO_INT(r); STRING_TO_INT(s); "
       "REAL_TO_INT(r); DINT_TO_INT(d); REAL_TO_INT(r); REAL_TO_INT(fb.o + r)"},
      {"i := i + s; i := b + 1; r := b * 2.5; b := i AND b; b := s = i; b := b > i; i := t + i; t "
       ":= t + i; r := r MOD i; b "
       ":= i OR_ELSE b; i := ADD(i, b); b := GT(i, s); s := CONCAT(s, i); r := MUL(t, s);",
       "STRING_TO_INT(s); BOOL_TO_INT(b); BOOL_TO_REAL(b); INT_TO_BOOL(i); STRING_TO_INT(s)?; "
       "INT_TO_STRING(i)?; BOOL_TO_INT(b)?; "
       "INT_TO_BOOL(i)?; INT_TO_TIME(i); REAL_TO_DINT(r); INT_TO_BOOL(i); "
       "BOOL_TO_INT(b); INT_TO_STRING(i)?; STRING_TO_INT(s)?; INT_TO_STRING(i)"},
      {"b := NOT i; IF NOT (i AND w) THEN ; END_IF; b := w AND 16#4; b := t > 5000; t := t + 5; t "
       ":= "
       "5; b := d < t; CASE s OF 1: ; END_CASE; CASE t OF 1: ; END_CASE; CASE r OF 1.5: ; "
       "END_CASE;",
       "INT_TO_BOOL(i); INT_TO_BOOL(i) AND WORD_TO_BOOL(w); WORD_TO_BOOL(w AND 16#4); "
       "TIME_TO_DINT(t)?; T#5000ms?; T#5ms; T#5ms; DINT_TO_TIME(d)?; TIME_TO_DINT(t)?; "
       "TIME_TO_DINT(t)"},
      {"dt1 := da; ul := l; lr := ul; x2 := t; ip := r; r := i / j; r := 1 / i + r;",
       "DATE_TO_DT(da); LINT_TO_ULINT(l); ULINT_TO_LREAL(ul); TIME_TO_STRING(t); INT_TO_REAL(i); "
       "INT_TO_REAL(i)"},
  };
  for (const auto& [statements, expected] : rows) {
    expectFixes(withEverything(statements), expected);
  }
}

TEST_F(Fixes, AddWhatIsMissing) {
  const std::string rows[][2] = {
      {"PROGRAM P VAR b : BOOL; x,y:INT END_VAR\nx = 5; IF x := 5 THEN y := (1 + 2; END_IF x := "
       "MAX(1, 2;\nx := y\ny := 1; IF b x := 1; END_IF; FOR x := 1 TO 5 y := 1; x := x y := 1; "
       "END_FOR\nCASE x 1: y := 1; END_CASE WHILE (b DO ; END_WHILE IF b ; END_IF; "
       "END_PROGRAM\nFUNCTION F INT VAR_INPUT a : INT\n  b : INT\nEND_VAR\n  F := a;\nEND_FUNCTION",
       "1: ;; :=; =; ); ); 3: ;; 4:  THEN; 4:  DO; 4: ;; 5:  OF; 5: ); 5:  THEN; 6:  :; 6: ;; 7: "
       ";"},
      {"PROGRAM P\nVAR b : BOOL;\n  x : INT;\n// of P\nIF b THEN\n  WHILE b DO\n    x := 1;\n    "
       "// more\nEND_IF; // END_WHILE\nIF b THEN\n  IF NOT b THEN\n    x := 1;\n  ELSE x := 2; (* "
       "two\n  lines *)\n  x := 3;\nEND_IF;\nREPEAT\n  CASE x OF\n  1: IF b THEN\n    x := 2;\n  "
       "2: x := 3;\n  b := FALSE;\nUNTIL b END_REPEAT;\nEND_PROGRAM",
       "3: \nEND_VAR; 7: \n  END_WHILE; 20: \n  END_IF; 21: \n  END_CASE; 15:   END_IF\n"},
      {"TYPE T : STRUCT a\nb : INT; END_STRUCT; END_TYPE PROGRAM P VAR x : BOOL; z INT; w : INT 5; "
       "str : STRING 'a'; u\nv : INT; fb : TON; END_VAR u 5; x NOT x; fb(IN := x PT := "
       "T#1s); fb(IN x); 5 := u; IWRBIT %QX0.0, x); foo; fb(IN := x u := 2;\nEND_PROGRAM",
       "1: ,;  :;  :=;  :=; ,; 3:  :=; 3:  :=; 3: ,"},
      {"TYPE T : STRUCT\n  a : INT;\nEND_TYPE\nPROGRAM P VAR b : BOOL; END_VAR\nIF b THEN b := "
       "FALSE;END_PROGRAM\nFUNCTION_BLOCK B\nVAR a : INT; END_VAR\na := 1; // one\n\n(* Next. "
       "*)\nFUNCTION_BLOCK C VAR a : INT; END_VAR\nFOR a := 1 TO 2 DO\n;\nEND_FUNCTION_BLOCK",
       "\nEND_STRUCT; 5:  END_IF ; 8: \nEND_FUNCTION_BLOCK; 13: \nEND_FOR"},
      {"PROGRAM P VAR i : INT; b : BOOL; a : ARRAY[1..3] OF INT; END_VAR\ni == 3; i =: 3; i :== 3; "
       "IF i == 3 THEN ; END_IF; b := i => 3; b := i =< 3; i := a[3; a[2 := i; CASE i OF 1: i := "
       "2\n"
       "2: i := 3; END_CASE; FOR i := 1 TO 3 DO ; END_WHILE;\n END_IF;\nEND_FUNCTION\nPROGRAM Q\n"
       "END_PROGRAM\nEND_PROGRAM\n",
       ":=; :=; :=; =; >=; <=; ]; ]; ;; 3: END_FOR; 5: END_PROGRAM"},
  };
  for (const auto& [text, expected] : rows) expectFixes(text, expected);
}

TEST_F(Fixes, DeclareWhatIsUnknown) {
  const std::string rows[][2] = {
      {withEverything(
           "rate := 2.5; flag := i > bound; IF ready AND NOT halt THEN ; END_IF; FOR m := 1 TO "
           "last DO ; END_FOR; i := a[index] + offset * 2; name := s; hue := Green; fb(i := first, "
           "io := total); pump(i := 1, io := i); i := MAX(i, most); i := SEL(gate, 1, i); r := "
           "REAL_TO_INT(real1); w := SHL(bits, count); i := LEN(text); none9.y := 1; one := two; "
           "none(1); CASE i OF case1: ; END_CASE;"),
       "1: rate : REAL; ; 1: flag : BOOL; ; 1: bound : INT; ; 1: ready : BOOL; ; 1: halt : BOOL; ; "
       "1: m : INT; ; 1: last : INT; ; 1: index : INT; ; 1: offset : INT; ; 1: name : STRING[5]; ; "
       "1: hue : Color; ; 1: first : INT; ; 1: total : INT; ; 1: pump : B; ; 1: most : INT; ; 1: "
       "gate : BOOL; ; 1: real1 : REAL; ; 1: bits : WORD; ; 1: count : INT; ; 1: text : STRING; "},
      {withEverything(
           "FOR m := 0 TO 100000 DO ; END_FOR; FOR n1 := 1 TO l DO ; END_FOR; nothing := NULL; "
           "i := F(q = i); fb(io = i);"),
       "1: m : DINT; ; 1: n1 : LINT; ; =>; :="},
      {"PROGRAM P (* c *) // foo\n  i := 1;\nEND_PROGRAM PROGRAM Q (* d *) j := 1; END_PROGRAM",
       "1: \nVAR\n  i : INT;\nEND_VAR; 3: VAR j : INT; END_VAR "},
      {"FUNCTION F : INT // one\nVAR_INPUT\n  a : INT;\nEND_VAR\n  F := a + "
       "more;\nEND_FUNCTION\nFUNCTION G\n  x := 1;\nEND_FUNCTION\nFUNCTION H : INT; H := 1; z := "
       "H; END_FUNCTION\n  FUNCTION_BLOCK B\n  VAR_INPUT on : BOOL; END_VAR\n  VAR\n      t : "
       "TIME; (* two *)\n  END_VAR\n  timer2 := t;\n  END_FUNCTION_BLOCK\nPROGRAM P\r\nVAR RETAIN "
       "r : INT; END_VAR\r\nblock(on := TRUE);\r\nr := 1;\r\nEND_PROGRAM\r\n",
       "4: \nVAR\n  more : INT;\nEND_VAR; 7: \nVAR\n  x : INT;\nEND_VAR; 10:  VAR z : INT; "
       "END_VAR; 15:       timer2 : TIME;\n; 19: \r\nVAR\r\n  block : B;\r\nEND_VAR"},
      {"TEST 'one'\n\tADVANCE_TIME(interval); ASSERT_TRUE(good);\nEND_TEST TEST 'two' VAR l : "
       "LREAL; "
       "END_VAR "
       "l := 1.0; ASSERT_EQ(l, wanted); ASSERT_NEAR(near, l, eps, note1); END_TEST\n",
       "1: \nVAR\n\tinterval : TIME;\nEND_VAR; 1: \nVAR\n\tgood : BOOL;\nEND_VAR; 3: wanted : "
       "LREAL; ; 3: near : LREAL; ; 3: note1 : STRING; "},
  };
  for (const auto& [text, expected] : rows) expectFixes(text, expected);
}

TEST_F(Fixes, RemoveWhatIsUnused) {
  // What else the declaration gives is needed, or has an effect.
  expectFixes(
      "VAR_GLOBAL g : INT; END_VAR FUNCTION N : INT g := g + 1; N := g; END_FUNCTION "
      "FUNCTION_BLOCK "
      "B VAR i : INT := N(); END_VAR i := i + 1; END_FUNCTION_BLOCK FUNCTION F : INT VAR a : (X, "
      "Y); c : ARRAY[1..2] OF (Z, W); e : (V); d : INT := N(); b : B; m : INT := MAX(1, 2); "
      "END_VAR VAR k : INT; END_VAR k := Y; k := W; F := k; END_FUNCTION",
      "1: -e : (V); ; 1: -m : INT := MAX(1, 2); ");
  expectFixes(
      "FUNCTION F : INT\nVAR\n  a,  // one\n  b   // two\n  : INT;\n  c, // three\n  d : INT;\n"
      "  e, h, // four\n  g : INT;\nEND_VAR\n  F := a + d + h;\nEND_FUNCTION",
      "3:   // one\n; 6: -  c, // three\n; 8: -e, ; 8:  // four\n  ");
  expectFixes(
      "FUNCTION F : INT\nVAR\n  x : INT; // gone\n  y, z : INT;\n  q, z2, p : INT;\n  u : INT; v : "
      "INT := 1; (* a *)\n  str : STRUCT\n    m : INT;\n  END_STRUCT;\nEND_VAR\nVAR one : INT; "
      "END_VAR\n  y := 1; F := y + q + p;\nEND_FUNCTION\n",
      "3: -  x : INT; // gone\n; 4: -, z; 5: -z2, ; 6: -u : INT; ; 6: -v : INT := 1; ; 7: -  str : "
      "STRUCT\n    m : INT;\n  END_STRUCT;\n; 11: -one : INT; ");
}

TEST_F(Fixes, SayOfWhichEnumeration) {
  expectFixes(
      "TYPE A : (Off, On); B : (Off, Up); END_TYPE PROGRAM P VAR CONSTANT RETAIN b : B := On; a : "
      "A; x : INT; END_VAR VAR_TEMP RETAIN k : INT; END_VAR\n"
      "a := Off; x := Off; k := 1; k := k + 1;\nEND_PROGRAM",
      "1: -RETAIN ; 1: -RETAIN ; B#Off?; A#Off?");
}

TEST_F(Fixes, NameAndCompleteArguments) {
  const std::string rows[][2] = {
      {"i := F(b := 1, 2); fb(i := 1, io = j); i := LIMIT(IN := i, 1, 2); i := LIMIT(MN := 0, i, "
       "2); fb(i := 1, j); "
       "fb(o := i, i => j); i "
       ":= LIMIT(0, 1, 2, IN := 3, 4);",
       "a := ; :=; ip; MN := 1, MX := ; IN := i, MX := ; io := ; =>; :="},
      {"i := LIMIT(0, i); i := LIMIT(MN := 0, MX := i); i := SEL(b); r := MAX(); r := MUX(i); w := "
       "SHL(w); i := REAL_TO_INT(); t := MOVE(); s := LEFT(s); s := LEFT(L := 2); s := CONCAT(); i "
       ":= ADD(1); da := CONCAT_DATE(1, 2); b := GT(i); i := LIMIT(1, 2, 3, 4); i := SIZEOF(); ",
       ", MX := 0; , IN := 0; , IN0 := 0, IN1 := 0; IN1 := 0.0, IN2 := 0.0; , IN0 := 0.0, IN1 := "
       "0.0; , N := 0; IN := 0.0; IN := T#0s; , L := 0; , IN := ''; IN1 := '', IN2 := ''; , IN2 := "
       "0; , DAY := 0"},
  };
  for (const auto& [statements, expected] : rows) {
    expectFixes(withEverything(statements), expected);
  }
}

// The programs of the documents, most of which raise a message.
TEST_F(Fixes, MendTheExamplesOfMessages) {
  namespace fs = std::filesystem;
  int count = 0;
  for (const auto& page : fs::directory_iterator(fs::path(VELOPS_SOURCE) / "docs" / "messages")) {
    std::ifstream file(page.path());
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    for (std::size_t at = text.find("```st\n"); at != std::string::npos;
         at = text.find("```st\n", at)) {
      at += 6;
      std::string program = text.substr(at, text.find("```", at) - at);
      const std::size_t end = program.find(" *)\n");
      if (program.compare(0, 7, "(* VAR ") == 0) {
        program =
            "PROGRAM P " + program.substr(3, end - 3) + program.substr(end + 3) + "END_PROGRAM";
      }
      count += expectMended(program);
    }
  }
  EXPECT_GE(count, 40);
}

TEST_F(Fixes, SilenceWarnings) {
  const std::string text =
      "PROGRAM P VAR i : INT; d : DINT; s : STRING; END_VAR\ni := d; // {nowarn\ns := '//$'(*'; (* "
      "a "
      "*) i := d; (* b *) (* c\n*) i := d;\nd := LEN(s); i := d {nowarn xx};\ni := d; {note\n"
      "more} END_PROGRAM\n";
  std::string mended = text;
  for (int left = 6; left >= 0; --left) {
    const std::vector<Diagnostic> messages = messagesOf(mended);
    ASSERT_EQ(messages.size(), left) << mended;
    if (left == 0) break;
    SourceManager sources;
    sources.add("test.st", mended);
    mended = applied(mended, silencing(sources, messages.front()));
  }
}

}  // namespace
}  // namespace refhost
