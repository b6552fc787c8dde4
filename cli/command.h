// A command of velc and its options. The library that parses command lines stands behind these
// classes, so that commands do not compile it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace velc {

// Refers to an option or argument that its command owns. All functions return the same option.
class Option {
 public:
  explicit Option(CLI::Option& option) : option_(&option) {}

  // The name of the value in --help.
  Option& value(const char* name);
  // The same, and instead of all that --help would say by itself, as that it is required.
  Option& text(const char* text);
  Option& required(bool is = true);
  Option& needs(const Option& other);
  Option& excludes(const Option& other);
  // The value may not be empty, as the name of a file.
  Option& notEmpty();
  // The same, and it may not be `-`, which is standard output for other options.
  Option& file();
  Option& multipleOf(std::uint32_t divisor);
  // Shows the present value of the variable as the default in --help.
  Option& showDefault();
  // Takes one value each time it is given, not all arguments that follow.
  Option& oneAtATime();
  // Allows commas between values.
  Option& commas();
  // Sets `given` when the option is given.
  Option& tells(bool& given);

 private:
  CLI::Option* option_;
};

class Command {
 public:
  // Returns what is wrong with a value, or an empty string.
  using Use = std::function<std::string(const std::string&)>;
  using UseAll = std::function<std::string(const std::vector<std::string>&)>;
  // Names of values, in the order of --help.
  template <typename Value>
  using Names = std::vector<std::pair<const char*, Value>>;

  explicit Command(CLI::App& app) : app_(&app) {}

  // `use` is called when the command line is parsed and names this command.
  void whenGiven(std::function<void()> use);

  // True once the command line is parsed, if it names this command.
  bool isGiven() const;

  // The variables and functions that options are bound to must live until the command line is
  // parsed, which may happen twice. `names` are those of an option, "-o,--output", or of an
  // argument, "FILE".

  Option flag(const char* names, bool& value, const char* description);
  // `Value` is std::string or std::vector<std::string>.
  template <typename Value>
  Option option(const char* names, Value& value, const char* description);
  // A number, which may not be outside `low` and `high`.
  template <typename Variable, typename Value>
  Option number(const char* names, Variable& value, Value low, Value high, const char* description);
  // Whole seconds, at least one.
  Option seconds(const char* names, std::chrono::seconds& value, const char* description);
  // Calls `use` with the value; what it returns ends the command line as an error.
  Option call(const char* names, Use use, const char* description);
  Option callWithAll(const char* names, UseAll use, const char* description);
  // One of several names, each of which stands for a value.
  template <typename Value>
  Option choice(const char* names, Value& value, Names<Value> choices, const char* description) {
    std::vector<std::string> known;
    for (const auto& choice : choices) known.emplace_back(choice.first);
    return oneOf(
        names, known,
        [&value, choices = std::move(choices)](std::size_t index) {
          value = choices[index].second;
        },
        description);
  }

 private:
  Option oneOf(const char* names, const std::vector<std::string>& known,
               std::function<void(std::size_t)> choose, const char* description);

  CLI::App* app_;
};

}  // namespace velc
