// velops.json: what it says, what the command line says instead, and what is wrong with it.
#include <fmt/format.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <regex>

#include "refhost/warnings.h"
#include "velc_fixture.h"

namespace velc {
namespace {

class Projects : public Velc {
 protected:
  void SetUp() override {
    for (const char* name : {"src/deep", "lib", "none", ".l[ib]"}) {
      std::filesystem::create_directories(folder.path() / name);
    }
    write("src/main.st", "PROGRAM p VAR x : INT; u : INT; END_VAR x := F() + G(); END_PROGRAM");
    write("src/deep/f.st", "FUNCTION F : INT F := 1; END_FUNCTION");
    write("lib/g.st", "FUNCTION G : INT G := 2; END_FUNCTION");
    write(".l[ib]/g.st", "FUNCTION G : INT G := 2; END_FUNCTION");
    write("lib/.hidden.st", "nonsense");
    write("lib/x.txt", "nonsense");
  }
};

TEST_F(Projects, GiveFilesAndSettings) {
  const struct {
    const char* project;
    const char* command;
    int code;
    const char* output;  // a part of either
  } rows[] = {
      {"{}", "check", 0, ""},
      {R"({"sources": ["src", "lib"]})", "run", 0, "x = 3\n"},
      {R"({"sources": ["src", "lib"]})", "run --set x=1 --trace x --trace u", 0, "0,3,0\n"},
      {R"({})", "build --outptu x", 2, "did you mean '--output'?"},
      {R"({})", "build", 2, "--output is required"},
      {R"({"sources": ["**/f.st", "./lib/?.s[st]", "src/*"]})", "run", 0, "x = 3\n"},
      {R"({"sources": ["src/**/*.st", "src", "lib"]})", "check", 0, ""},
      {R"({"sources": ["src/main.st", "lib"]})", "check", 1, "Unknown identifier 'F';"},
      {R"({"sources": ["src"]})", "check lib", 0, ""},
      {R"({"warnings": {"warn": ["unused-in-programs"]}})", "check", 0, "src/main.st:1:24: warn"},
      {R"({"warnings": {"warn": ["unused-in-programs"], "werror": true}})", "check", 1, "0xF00EA"},
      {R"({"warnings": {"warn": ["all"], "noWarn": ["0xf00ea"]}})", "check --werror", 0, ""},
      {R"({"warnings": {"noWarn": ["all"]}})", "check --werror -W all", 1, "0xF00EA"},
      {R"({"memory": {"markers": 64}})", "memory", 0, "%MB0..%MB63 "},
      {R"({"memory": {"markers": 64}})", "memory --memory-markers 72", 0, "%MB0..%MB71 "},
      {R"({"notation": "letters"})", "memory", 0, "D0"},
      {R"({"notation": "letters"})", "memory --notation iec", 0, "%MB0"},
      {R"({"sources": ["src/**", ".l[ib]/g.st"]})", "run", 0, "x = 3\n"},
      {R"({"sources": ["src/**", ".l[[]ib]/*"]})", "run", 0, "x = 3\n"},
      {R"({"sources": [".l[ib]"]})", "check", 0, ""},
      {R"({"sources": ["lib/*.t?t"]})", "check", 1, "lib/x.txt:1:1: error"},
      {R"({"addOns": ["src/main.st"]})", "check", 2, "velops.json:1:13: error: /"},
      {R"({"plugin": "src/main.st"})", "check", 2, "velops.json:1:12: error: /"},
      {R"({"addOns": ["no.so"]})", "check", 2, "1:13: error: there is no file 'no.so'"},
      {R"({"addOns": ["no.so"]})", "memory", 0, "%MB0"},
      {R"({"addOns": ["no.so"]})", "fmt --check", 1, "src/main.st\n"},
      {R"({"addOns": ["no.so"]})", "check --plugin no2.so", 2, "velc: ./no2.so: cannot open"},
  };
  for (const auto& row : rows) {
    write("velops.json", row.project);
    const Outcome outcome = velc(row.command);
    EXPECT_EQ(outcome.code, row.code) << row.project << row.command << outcome.err;
    const std::string all = outcome.out + outcome.err;
    EXPECT_NE(all.find(row.output), std::string::npos) << row.project << row.command << "\n" << all;
    EXPECT_EQ(all.empty(), *row.output == '\0') << row.project << row.command << "\n" << all;
  }
  // From a folder below, by paths that lead there; a nearer project goes first.
  write("velops.json", R"({"sources": ["src/main.st"]})");
  EXPECT_EQ(velc("check", "cd lib;").code, 1);
  EXPECT_EQ(read("lib/stderr").find("../src/main.st:1:"), 0);
  write("lib/velops.json", "{}");
  EXPECT_EQ(velc("check", "cd lib;").code, 0);
}

TEST_F(Projects, TellTheirFaultsWithPlaces) {
  const std::pair<const char*, const char*> rows[] = {
      {R"({"soruces": []})",
       "1:2: error: unknown key 'soruces', did you mean 'sources'?\n"
       "{\"soruces\": []}\n ^~~~~~~~~\nvelc: velops.json cannot be used\n"},
      {"{\r\n\t\"ä\": {},\n \"memory\": {\"input\" : 8}}",
       "2:2: error: unknown key 'ä'\n\t\"ä\": {},\n\t^~~\n"
       "velops.json:3:13: error: unknown key 'input', did you mean 'inputs'?"},
      {R"({"sources": "src"})", "1:13: error: a text stands here, but a list is needed\n"},
      {R"({"sources": ["src", 12]})", "1:21: error: a number stands here, but a text"},
      {R"({"sources": []})", "1:13: error: there is no source"},
      {R"({"sources": ["a.st\u0000"]})", "1:14: error: this contains a zero character"},
      {R"({"sources": ["sr/a"]})", "1:14: error: there is no file or folder 'sr/a'"},
      {R"({"sources": ["src/*.sx"]})", "1:14: error: no file matches 'src/*.sx'"},
      {R"({"sources": [""]})", "1:14: error: this names no file; '.' is the folder of"},
      {R"({"sources": ["none"]})", "1:14: error: there is no *.st in "},
      {R"({"localio": "I:1"})", "1:13: error: 'I:1' does not have the form"},
      {R"({"localio": "", "localio": ""})", "1:17: error: 'localio' stands here for the second"},
      {R"({"notation": "IEC"})", "1:14: error: the notation is 'iec' or 'letters', not 'IEC'"},
      {R"({"memory": {"inputs": 12}})", "1:23: error: an area has from 8 to 16777216 bytes"},
      {R"({"memory": {"inputs": 8e9}})", "1:23: error: an area has"},
      {R"({"memory": {"inputs": -8 }})", "1:23: error: an area has"},
      {R"({"warnings": {"warn": ["unusd"]}})", "did you mean 'unused'?"},
      {R"({"warnings": {"werror": null}})", "1:25: error: null stands here, but true or false"},
      {R"({"warnings": {"maxErrors": 0}})", "1:28: error: a number from 1 to 1073741824"},
      {R"({"plugin": "no.so", "addOns": ["b"]})", "1:12: error: there is no file 'no.so'"},
      {"[{}]", "1:1: error: a list stands here, but an object is needed"},
      {"{\"a\": }", "1:7: error: this is not JSON: unexpected '}'; expected"},
      {"{} x", "1:4: error: this is not JSON: "},
      {"", "1:1: error: this is not JSON: unexpected end of input"},
  };
  for (const auto& [project, message] : rows) {
    write("velops.json", project);
    const Outcome outcome = velc("check");
    EXPECT_EQ(outcome.code, 2) << project;
    EXPECT_NE(outcome.err.find(message), std::string::npos) << project << "\n" << outcome.err;
  }
  write("velops.json", std::string(100'000, '['));
  EXPECT_NE(velc("check").err.find("1:101: error: this is not JSON: this is nested too deeply"),
            std::string::npos);
}

// The schema names the keys and the groups of warnings that velc knows.
TEST_F(Projects, AreDescribedByTheSchema) {
  std::ifstream file(SCHEMA);
  const auto schema = nlohmann::json::parse(file);
  const auto expectKnown = [this](const nlohmann::json& keys, const char* outer) {
    for (const auto& [key, value] : keys.items()) {
      nlohmann::json project = {{key, nullptr}};
      if (*outer != '\0') project = {{outer, project}};
      write("velops.json", project.dump());
      EXPECT_NE(velc("check").err.find("null stands here"), std::string::npos) << project;
    }
  };
  const auto& keys = schema["properties"];
  expectKnown(keys, "");
  expectKnown(keys["memory"]["properties"], "memory");
  expectKnown(keys["warnings"]["properties"], "warnings");
  nlohmann::json groups = nlohmann::json::array();
  for (const auto& group : refhost::warningGroups()) groups.push_back(group.name);
  groups.insert(groups.begin(), "all");
  const auto& names = schema["definitions"]["warnings"]["items"]["anyOf"];
  EXPECT_EQ(names[1]["enum"], groups);
  const std::regex code(names[0]["pattern"].get<std::string>());
  for (const unsigned int first :
       {0x9FF00U, 0xAFF00U, 0xC0000U, 0xC0100U, 0xC0200U, 0xF0000U, 0xF0100U}) {
    for (unsigned int number = first; number < first + 0x200; ++number) {
      const std::string text = fmt::format(number % 2 == 0 ? "0x{:x}" : "0X{:X}", number);
      EXPECT_EQ(std::regex_search(text, code), !refhost::warningsNamed(text).empty()) << text;
    }
  }
}

}  // namespace
}  // namespace velc
