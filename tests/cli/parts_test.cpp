// The parts of velc; how processes end is seen by robustness_test and run_test.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/process.h"
#include "cli/temporary_folder.h"
#include "cli/unified_diff.h"
#include "refhost/value_format.h"

namespace velc {
namespace {

using namespace std::chrono_literals;

namespace fs = std::filesystem;

class OutputFile : public testing::Test {
 protected:
  auto entries() const {
    return std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator());
  }

  TemporaryFolder folder;
  const std::string path = folder.path() / "out.c";
};

TEST_F(OutputFile, HasTheModeAndLinkOfTheFileItReplacesOrTheUsualMode) {
  const mode_t mask = umask(022);
  writeFile(path, "old");
  umask(mask);
  EXPECT_EQ(fs::status(path).permissions(), fs::perms(0644));
  fs::permissions(path, fs::perms(0640));
  const fs::path link = folder.path() / "link";
  fs::create_symlink("out.c", link);
  writeFile(link, "new");
  EXPECT_TRUE(fs::is_symlink(link));
  std::string text;
  std::ifstream(path) >> text;
  EXPECT_EQ(text, "new");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
  EXPECT_EQ(entries(), 2);
}

TEST_F(OutputFile, LeavesNothingBehindWhenItFails) {
  EXPECT_THROW(writeFile(folder.path() / "missing" / "out.c", "x"), Failure);
  EXPECT_THROW(writeFile(folder.path(), "x"), Failure);
  EXPECT_EQ(entries(), 0);
  EXPECT_THROW(writeFile("/dev/full", "x"), Failure);
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

// How processes end is seen by robustness_test and run_test.

using End = ProcessResult::End;

TEST(UnifiedDiff, ShowsLinesThatChangeWithThoseAround) {
  const std::string text = "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12\n13";
  const std::vector<refhost::LayoutEdit> near = {{{0, 0}, "0\n"}, {{2, 6}, ""}, {{16, 17}, "a"}};
  EXPECT_EQ(unifiedDiff("t", text, near),
            "--- t\n+++ t\n@@ -1,12 +1,11 @@\n+0\n 1\n-2\n-3\n 4\n 5\n 6\n 7\n 8\n-9\n+a\n 10\n "
            "11\n 12\n");
  const std::vector<refhost::LayoutEdit> far = {{{2, 3}, "b\nc"}, {{29, 29}, "\n"}};
  EXPECT_EQ(unifiedDiff("t", text, far),
            "--- t\n+++ t\n@@ -1,5 +1,6 @@\n 1\n-2\n+b\n+c\n 3\n 4\n 5\n@@ -10,4 +11,4 @@\n 10\n "
            "11\n 12\n"
            "-13\n\\ No newline at end of file\n+13\n");
  EXPECT_EQ(unifiedDiff("t", "", {{{0, 0}, "1\n"}}), "--- t\n+++ t\n@@ -0,0 +1,1 @@\n+1\n");
}

TEST(Process, KeepsBothOutputsAndGivesNoInput) {
  const TerminationGuard guard;
  EXPECT_EQ(runProcess({"sh", "-c", "echo a; echo b >&2; cat"}, guard).output, "a\nb\n");
  EXPECT_EQ(runProcess({"printf", "%s", "$(echo x);*"}, guard).output, "$(echo x);*");
  const ProcessResult longOutput = runProcess({"head", "-c", "1000000", "/dev/zero"}, guard);
  EXPECT_TRUE(longOutput.succeeded());
  EXPECT_EQ(longOutput.output.size(), 65536u);
}

TEST(Process, EndsWithAllItStarted) {
  struct Row {
    const char* script;
    End end;
    const char* output;
  };
  const TerminationGuard guard;
  const TemporaryFolder folder;
  const std::string left = folder.path() / "left";
  const auto start = std::chrono::steady_clock::now();
  for (const Row& row : {Row{"(sleep 1; : >$0) & echo x", End::Exited, "x\n"},
                         {"(sleep 1; : >$0) & sleep 30", End::TimedOut, ""},
                         {"exec >&- 2>&-; sleep 30", End::TimedOut, ""},
                         {"while :; do echo; done & kill -9 $$", End::Signalled, nullptr}}) {
    const ProcessResult result = runProcess({"sh", "-c", row.script, left}, guard, 200ms);
    EXPECT_EQ(result.end, row.end) << row.script;
    if (row.output != nullptr) {
      EXPECT_EQ(result.output, row.output) << row.script;
    }
  }
  EXPECT_EQ(runProcess({"sh", "-c", "while :; do echo x; done"}, guard, 50ms).end, End::TimedOut);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
  runProcess({"sleep", "1.2"}, guard);
  EXPECT_FALSE(fs::exists(left));
}

// The runtime prints all other values; run_test.cpp has one of every type.

std::string wide(std::u16string_view units) {
  return refhost::valueText(
      vel::BasicDataType::WString, "WSTRING",
      {reinterpret_cast<const char*>(units.data()), units.size() * sizeof units[0]});
}

TEST(ValueFormat, StringsEscapeWhatTheirLiteralsNeedEscaped) {
  const auto narrow = [](std::string_view bytes) {
    return refhost::valueText(vel::BasicDataType::String, "STRING", bytes);
  };
  EXPECT_EQ(narrow(""), "''");
  EXPECT_EQ(narrow(std::string_view("ab\0cd", 5)), "'ab'");
  EXPECT_EQ(narrow("it's $5 \"x\""), "'it$'s $$5 \"x\"'");
  EXPECT_EQ(narrow("\t\n\f\r\x01\x7F"), "'$T$L$P$R$01$7F'");
  EXPECT_EQ(narrow("\xC3\xA4\xE2\x82\xAC"), "'\xC3\xA4\xE2\x82\xAC'");
  EXPECT_EQ(narrow("\xE4 \xC3"), "'$E4 $C3'");
  EXPECT_EQ(narrow("\xED\x9F\xBF\xEE\x80\x80"), "'\xED\x9F\xBF\xEE\x80\x80'");
  EXPECT_EQ(narrow("\xC0\x80\xED\xA0\x80"), "'$C0$80$ED$A0$80'");

  EXPECT_EQ(wide(u"it's \"x\""), "\"it's $\"x$\"\"");
  EXPECT_EQ(wide(u"\u00E4\u20AC\U0001F600\x01"), "\"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80$0001\"");
  constexpr char16_t halves[] = {0xD83D, 'x', 0xDE00, 0xD7FF, 0xD800, 0xDFFF, 0xE000, 0xDFFF, 0};
  EXPECT_EQ(wide(halves), "\"$D83Dx$DE00\xED\x9F\xBF\xF0\x90\x8F\xBF\xEE\x80\x80$DFFF\"");
}

}  // namespace
}  // namespace velc
