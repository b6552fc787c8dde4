#include "cli/paths.h"

#include <fmt/format.h>

#include <initializer_list>

#include "cli/failure.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

fs::path installationFolder() {
  std::error_code error;
  const fs::path executable = fs::read_symlink("/proc/self/exe", error);
  if (error) throw Failure(fmt::format("cannot find the place of velc: {}", error.message()));
  return executable.parent_path().parent_path();
}

fs::path find(std::initializer_list<const char*> folders, const char* name, const char* hint) {
  const fs::path base = installationFolder();
  for (const char* folder : folders) {
    fs::path path = base / folder / name;
    std::error_code error;
    if (fs::exists(path, error)) return path;
  }
  throw Failure(fmt::format("{} is not in {}{}", name, (base / *folders.begin()).native(), hint));
}

}  // namespace

fs::path pluginPath() {
  return find({VELC_LIBDIR, "lib"}, "libvelops.so", "; give its place with --plugin");
}

fs::path libraryPath(const char* name) { return find({VELC_LIBDIR, "lib"}, name, ""); }

fs::path includeFolder() {
  return find({VELC_INCLUDEDIR "/velops", "include/velops"}, "velrt.h", "").parent_path();
}

fs::path messagesPage() {
  const fs::path page = installationFolder() / VELC_DOCDIR / "docs/reference.html";
  std::error_code error;
  return fs::exists(page, error) ? page : fs::path();
}

}  // namespace velc
