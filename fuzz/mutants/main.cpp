// source_mutants: changes one token of programs that are accepted, and counts what is said of each.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <regex>

#include "fuzz/programs/programs.h"
#include "fuzz/programs/tree.h"
#include "refhost/session.h"

namespace {

struct Token {
  std::size_t begin;
  std::size_t end;
};

// White space, comments and pragmas are no tokens. `1..2` is a range of two numbers.
std::vector<Token> tokensOf(const std::string& text) {
  static const std::regex piece(R"((\s+|\(\*[^]*?\*\)|/\*[^]*?\*/|//.*|\{[^}]*\})|'[^']*'|"[^"]*"|)"
                                R"([0-9%](?:[\w#]|\.(?!\.))*|[\w#]+|:=|=>|<=|>=|<>|\*\*|\.\.|[^])");
  std::vector<Token> tokens;
  for (std::sregex_iterator at(text.begin(), text.end(), piece), end; at != end; ++at) {
    const auto begin = static_cast<std::size_t>(at->position());
    if (!(*at)[1].matched)
      tokens.push_back({begin, begin + static_cast<std::size_t>(at->length())});
  }
  return tokens;
}

// The programs of the file: its whole text, or the blocks of code in a page of the documents.
std::vector<std::string> programsIn(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  if (path.size() < 3 || path.compare(path.size() - 3, 3, ".md") != 0) return {text};
  constexpr std::string_view kOpen = "```st\n";
  std::vector<std::string> programs;
  for (std::size_t at = text.find(kOpen); at != std::string::npos; at = text.find(kOpen, at)) {
    at += kOpen.size();
    programs.push_back(text.substr(at, text.find("```", at) - at));
  }
  return programs;
}

class Mutants {
 public:
  Mutants(refhost::Session& session, bool shows) : session_(session), shows_(shows) {}

  bool accepts(const std::string& text) {
    session_.restart();
    session_.sources().add("mutant.st", text);
    return session_.analyse();
  }

  void tryOne(const std::string& text, std::mt19937_64& random) {
    const std::vector<Token> tokens = tokensOf(text);
    if (tokens.size() < 3) return;
    const std::size_t chosen = random() % (tokens.size() - 1);
    const Token first = tokens[chosen];
    const Token second = tokens[chosen + 1];
    const std::string one = text.substr(first.begin, first.end - first.begin);
    const std::string other = text.substr(second.begin, second.end - second.begin);
    std::string mutant = text;
    std::string what;
    switch (random() % 3) {
      case 0:
        what = fmt::format("without {}", one);
        mutant.replace(first.begin, one.size(), one.size(), ' ');
        break;
      case 1:
        what = fmt::format("{} twice", one);
        mutant.insert(first.end, ' ' + one);
        break;
      default:
        if (one == other) return;
        what = fmt::format("{} and {} swapped", one, other);
        mutant.replace(second.begin, other.size(), ' ' + one + ' ');
        mutant.replace(first.begin, one.size(), ' ' + other + ' ');
        break;
    }
    if (!accepts(mutant)) count(text, mutant, first, second, what);
  }

  std::string summary() const {
    return fmt::format(
        "{} mutants refused: {:.3f} errors each, the first in the line of the fault in "
        "{:.2f} %",
        refused_, errorsOfEach(), inLine());
  }
  std::size_t refused() const { return refused_; }
  double errorsOfEach() const {
    return static_cast<double>(errors_) / static_cast<double>(refused_);
  }
  double inLine() const { return 100 * static_cast<double>(hits_) / static_cast<double>(refused_); }

 private:
  static std::size_t lineOf(const std::string& text, std::size_t offset) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(offset);
    return static_cast<std::size_t>(std::count(text.begin(), end, '\n')) + 1;
  }

  // A token that is missing is noticed at the next one, so its line counts, too.
  void count(const std::string& text, const std::string& mutant, Token first, Token second,
             const std::string& what) {
    std::size_t errors = 0;
    std::size_t line = 0;
    for (const refhost::Diagnostic& message : session_.messages()) {
      if (message.severity != refhost::Severity::Error) continue;
      if (++errors == 1) line = session_.sources().position(message.range.begin).line;
    }
    const std::size_t low = lineOf(text, first.begin);
    const std::size_t high = lineOf(text, second.end);
    const bool hit = line >= low && line <= high;
    ++refused_;
    errors_ += errors;
    hits_ += hit ? 1 : 0;
    if (!shows_ || (hit && errors == 1)) return;
    fmt::print("--- line {}: {}: {} errors{}\n", low, what, errors,
               hit ? "" : ", the first elsewhere");
    std::size_t start = mutant.rfind('\n', first.begin);
    start = start == std::string::npos ? 0 : start + 1;
    fmt::print("    {}\n", mutant.substr(start, mutant.find('\n', first.begin) - start));
    for (const refhost::Diagnostic& message : session_.messages()) {
      const refhost::LineColumn at = session_.sources().position(message.range.begin);
      fmt::print("  {}:{} {:X} {}\n", at.line, at.column, message.code, message.text);
    }
  }

  refhost::Session& session_;
  bool shows_;
  std::size_t refused_ = 0;
  std::size_t errors_ = 0;
  std::size_t hits_ = 0;
};

int execute(int argc, char** argv) {
  std::size_t wanted = 500;
  std::uint64_t seed = 1;
  std::uint64_t generated = 10;
  double mostErrors = 0;
  double leastInLine = 0;
  bool shows = false;
  std::string summary;
  std::vector<std::string> files;
  CLI::App app("Changes one token of accepted programs and counts what is said of each mutant.");
  app.add_option("--count", wanted, "refused mutants")->capture_default_str();
  app.add_option("--seed", seed, "of the choices")->capture_default_str();
  app.add_option("--random", generated, "random programs beside the files")->capture_default_str();
  app.add_option("--most-errors", mostErrors, "errors for each mutant; 0: any number");
  app.add_option("--least-in-line", leastInLine, "percentage of first errors in the line");
  app.add_option("--summary", summary, "a file for the closing line");
  app.add_flag("--show", shows,
               "print the mutants that draw more than one error, or one elsewhere");
  app.add_option("FILE", files, "a program, or a page with programs");
  CLI11_PARSE(app, argc, argv);

  refhost::Options options;
  options.pluginPath = VELOPS_PLUGIN;
  options.localIo = "I:0-1023;Q:0-1023;";
  refhost::Session session(options);
  std::string error;
  if (!session.start(error)) throw std::runtime_error(error);
  Mutants mutants(session, shows);
  std::vector<std::string> programs;
  const auto keep = [&](const std::string& text) {
    if (mutants.accepts(text)) programs.push_back(text);
  };
  for (const std::string& path : files) {
    for (const std::string& text : programsIn(path)) keep(text);
  }
  for (std::uint64_t i = 0; i < generated; ++i) keep(text(generated::generate(seed + i, "")));
  if (programs.empty()) throw std::runtime_error("no program is accepted");
  std::mt19937_64 random(seed);
  while (mutants.refused() < wanted) mutants.tryOne(programs[random() % programs.size()], random);
  const std::string line = fmt::format("{} of {} programs", mutants.summary(), programs.size());
  fmt::print("{}\n", line);
  if (!summary.empty()) std::ofstream(summary) << line << '\n';
  const bool few = mostErrors == 0 || mutants.errorsOfEach() <= mostErrors;
  return few && mutants.inLine() >= leastInLine ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return execute(argc, argv);
  } catch (const std::exception& error) {
    fmt::print(stderr, "source_mutants: {}\n", error.what());
    return 1;
  }
}
