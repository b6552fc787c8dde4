#include "refhost/syntax/source.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

using refhost::SourceManager;

TEST(Source, CountsLinesAndCharacters) {
  SourceManager sources;
  sources.add("a.st",
              "\xEF\xBB\xBF"
              "x\r\n\t\xC3\xA9 y\n\nlast");
  const struct {
    std::uint32_t offset, line, column;
    const char* text;
  } rows[] = {{0, 1, 1, "x"},
              {1, 1, 2, "x"},
              {3, 2, 1, "\t\xC3\xA9 y"},
              {4, 2, 2, "\t\xC3\xA9 y"},
              {7, 2, 4, "\t\xC3\xA9 y"},
              {9, 3, 1, ""},
              {10, 4, 1, "last"},
              {14, 4, 5, "last"},
              {99, 4, 5, "last"}};
  for (const auto& row : rows) {
    const vel::TextLocation location(0, row.offset);
    EXPECT_EQ(sources.position(location).line, row.line) << row.offset;
    EXPECT_EQ(sources.position(location).column, row.column) << row.offset;
    EXPECT_EQ(sources.line(location), row.text) << row.offset;
  }
  sources.add("latin1.st", "a\xB0 b\rc\n");
  EXPECT_EQ(sources.position(vel::TextLocation(1, 3)).column, 4U);
  EXPECT_EQ(sources.position(vel::TextLocation(1, 5)).line, 2U);
  EXPECT_EQ(sources.line(vel::TextLocation(1, 5)), "c");
  sources.add("empty.st", "");
  EXPECT_EQ(sources.position(vel::TextLocation(2, 0)).line, 1U);
  EXPECT_EQ(sources.line(vel::TextLocation(2, 0)), "");
}

TEST(Source, LoadsFilesOrSaysWhyNot) {
  const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "velops_source";
  std::filesystem::create_directories(folder);
  const std::string path = (folder / "a.st").string();
  const std::string text(3'000'000, 'x');
  std::ofstream(path, std::ios::binary) << text;
  SourceManager sources;
  std::string error;
  ASSERT_EQ(sources.load(path, error), 0) << error;
  EXPECT_EQ(sources.text(0), text);
  EXPECT_EQ(sources.path(0), path);
  EXPECT_EQ(sources.load((folder / "none.st").string(), error), -1);
  EXPECT_EQ(error, "No such file or directory");
  EXPECT_EQ(sources.load(folder.string(), error), -1);
  EXPECT_EQ(error, "Is a directory");
  EXPECT_EQ(sources.count(), 1);
  std::filesystem::remove_all(folder);
}

}  // namespace
