#include <filesystem>

#include "cli/depfile.h"
#include "cli/failure.h"
#include "velc_fixture.h"

namespace velc {
namespace {

TEST(Depfiles, SpellNamesAsMakeDoes) {
  EXPECT_EQ(depfileText("o", {"a b.st", "c#$:.st", R"(d\ e\f)"}),
            "o: \\\n  a\\ b.st \\\n  c\\#$$\\:.st \\\n  d\\\\\\ e\\f\n"
            "\na\\ b.st:\n\nc\\#$$\\:.st:\n\nd\\\\\\ e\\f:\n");
  EXPECT_THROW(depfileText("o", {"a\nb"}), Failure);
}

TEST_F(Velc, FormatsFilesInPlace) {
  const std::string good = "\xEF\xBB\xBFPROGRAM p\r\n  // \xE4\r\n  q();\r\nEND_PROGRAM\r\n";
  write("good.st", good);
  write("bad.st", "\xEF\xBB\xBFprogram p\r\n// \xE4\r\nq();end_program");
  write("faulty.st", "program p x = end_program");
  std::filesystem::permissions(folder.path() / "bad.st", std::filesystem::perms(0640));
  const auto before = std::filesystem::last_write_time(folder.path() / "good.st");
  const Outcome check = velc("fmt --check .");
  EXPECT_EQ(check.code, 1);
  EXPECT_EQ(check.out, "bad.st\n");
  EXPECT_EQ(check.err.substr(0, 22), "faulty.st:1:13: error:");
  const Outcome diff = velc("fmt --diff bad.st good.st");
  EXPECT_EQ(diff.code, 1);
  EXPECT_EQ(diff.out,
            "--- bad.st\n+++ bad.st\n@@ -1,3 +1,4 @@\n-\xEF\xBB\xBFprogram p\r\n-// \xE4\r\n"
            "-q();end_program\n\\ No newline at end of file\n+\xEF\xBB\xBFPROGRAM p\r\n"
            "+  // \xE4\r\n+  q();\r\n+END_PROGRAM\r\n");
  std::filesystem::create_symlink("bad.st", folder.path() / "link.st");
  EXPECT_EQ(velc("fmt link.st faulty.st missing.st").code, 2);
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "link.st"));
  EXPECT_EQ(read("bad.st"), good);
  EXPECT_EQ(std::filesystem::status(folder.path() / "bad.st").permissions(),
            std::filesystem::perms(0640));
  EXPECT_EQ(std::filesystem::last_write_time(folder.path() / "good.st"), before);
  EXPECT_EQ(read("faulty.st"), "program p x = end_program");
  EXPECT_EQ(velc("fmt --check good.st bad.st").code, 0);
  EXPECT_EQ(velc("fmt - < good.st").out, good);
  EXPECT_EQ(velc("fmt /dev/null").err, "velc: /dev/null is not a file that can be replaced\n");
}

class Files : public Velc {
 protected:
  void SetUp() override {
    write("a.st", "FUNCTION A : INT A := 1; END_FUNCTION");
    write("b.st", "FUNCTION B : INT B := 2; END_FUNCTION");
  }
  std::string listed() const {
    std::string names;
    for (const auto& file : std::filesystem::directory_iterator(folder.path() / "g")) {
      names += file.path().filename().native() + ' ';
    }
    return names;
  }
};

TEST_F(Files, AreReplacedAndRemovedOnlyIfVelcWroteThem) {
  ASSERT_EQ(velc("translate a.st b.st --split g").code, 0);
  EXPECT_EQ(read("g/vel_files.txt"), "A.c\nA.h\nB.c\nB.h\nvel_all.h\nvel_program.h\n");
  write("g/mine.c", read("g/A.c"));
  write("g/B.h", "// mine");
  write("outside.c", read("g/A.c"));
  ASSERT_EQ(velc("translate a.st --split g").code, 0);
  EXPECT_EQ(read("g/vel_files.txt"), "A.c\nA.h\nvel_all.h\nvel_program.h\n");
  EXPECT_EQ(listed().find("B.c"), std::string::npos);
  EXPECT_EQ(read("g/B.h"), "// mine");
  EXPECT_NE(read("g/mine.c"), "");

  const std::string all = read("g/vel_all.h");
  const Outcome refused = velc("translate a.st b.st --split g");
  EXPECT_EQ(refused.code, 2);
  EXPECT_EQ(refused.err, "velc: g/B.h was not written by velc, which does not replace it\n");
  EXPECT_EQ(read("g/vel_all.h"), all);
  EXPECT_EQ(listed().find("B.c"), std::string::npos);

  write("g/vel_files.txt", "../outside.c\nmine.c\n");
  ASSERT_EQ(velc("translate a.st --split g").code, 0);
  EXPECT_NE(read("outside.c"), "");
  EXPECT_NE(read("g/mine.c"), "");
}

TEST_F(Files, OfAProgramWithErrorsStay) {
  ASSERT_EQ(velc("translate a.st --split g --depfile d").code, 0);
  write("bad.st", "FUNCTION C : INT C := LIMIT(1); END_FUNCTION");
  EXPECT_EQ(velc("translate a.st bad.st --split g --depfile e").code, 1);
  EXPECT_EQ(read("g/vel_files.txt"), "A.c\nA.h\nvel_all.h\nvel_program.h\n");
  EXPECT_EQ(read("e"), "");
  EXPECT_EQ(read("d").substr(0, 27), "g/vel_files.txt: \\\n  a.st \\");
}

TEST_F(Files, AreNamedOnceAndAreNoSources) {
  write("folder", "a file");
  const std::pair<const char*, const char*> rows[] = {
      {"a.st -o x.c --split g", "--output excludes --split"},
      {"a.st --header x.h --split g", "--header excludes --split"},
      {"a.st --depfile d", "--depfile: standard output is no file"},
      {"a.st -o x.c --depfile - --call-tree", "standard output cannot be two outputs"},
      {"a.st -o x.c --header -", "--header: standard output is no file"},
      {"a.st --header ./a.st", "a.st is a source"},
      {"a.st -o x.c --depfile a.st", "a.st is a source"},
      {"a.st -o x.c --header 'x\".h'", "C cannot include a file named x\".h"},
      {"a.st --split folder", "cannot make the folder folder"},
  };
  for (const auto& [arguments, message] : rows) {
    const Outcome outcome = velc(std::string("translate ") + arguments);
    EXPECT_EQ(outcome.code, 2) << arguments;
    EXPECT_NE(outcome.err.find(message), std::string::npos) << arguments << outcome.err;
  }
}

// Case-insensitive file systems, long names, and names that other tools have.
TEST_F(Files, HaveNamesOfTheirOwn) {
  const std::string longName(300, 'n');
  write("names.st",
        "TYPE x : STRUCT i : INT; END_STRUCT; stdio : STRUCT i : INT; END_STRUCT; END_TYPE "
        "FUNCTION VELRT : INT VELRT := 1; END_FUNCTION FUNCTION aux : INT aux := 1; "
        "END_FUNCTION FUNCTION " +
            longName +
            " : INT END_FUNCTION PROGRAM globals VAR a : x; b : stdio; END_VAR "
            "END_PROGRAM VAR_GLOBAL Globals_ : INT; END_VAR");
  ASSERT_EQ(velc("translate --no-warn all names.st --split g").code, 0);
  const std::string names = '\n' + read("g/vel_files.txt");
  for (const char* const name :
       {"VELRT_.c", "aux_.c", "stdio_.h", "globals.c", "globals_.c", "x.h"}) {
    EXPECT_NE(names.find('\n' + std::string(name) + '\n'), std::string::npos) << name << '\n'
                                                                              << names;
  }
  for (std::size_t at = 1; at < names.size(); at = names.find('\n', at) + 1) {
    EXPECT_LT(names.find('\n', at) - at, 110U);
  }
}

}  // namespace
}  // namespace velc
