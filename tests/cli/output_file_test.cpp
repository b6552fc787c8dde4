#include "cli/output_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "cli/failure.h"
#include "cli/temporary_folder.h"

namespace velc {
namespace {

namespace fs = std::filesystem;

class OutputFile : public testing::Test {
 protected:
  std::string contents(const char* name) const {
    std::ifstream file(folder.path() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  auto entries() const {
    return std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator());
  }

  TemporaryFolder folder;
  const std::string path = folder.path() / "out.c";
};

TEST_F(OutputFile, IsMadeWithTheUsualMode) {
  const mode_t mask = umask(022);
  writeFile(path, "a\n");
  umask(mask);
  EXPECT_EQ(contents("out.c"), "a\n");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms(0644));
  EXPECT_EQ(entries(), 1);
}

TEST_F(OutputFile, KeepsModeAndLinkOfTheFileItReplaces) {
  writeFile(path, "old");
  fs::permissions(path, fs::perms(0640));
  fs::create_symlink("out.c", folder.path() / "link");
  writeFile(folder.path() / "link", "new");
  EXPECT_TRUE(fs::is_symlink(folder.path() / "link"));
  EXPECT_EQ(contents("out.c"), "new");
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

}  // namespace
}  // namespace velc
