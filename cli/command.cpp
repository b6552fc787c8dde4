#include "cli/command.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <optional>

namespace velc {

Option& Option::value(const char* name) {
  option_->type_name(name);
  return *this;
}

Option& Option::text(const char* text) {
  option_->option_text(text);
  return *this;
}

Option& Option::required(bool is) {
  option_->required(is);
  return *this;
}

Option& Option::needs(const Option& other) {
  option_->needs(other.option_);
  return *this;
}

Option& Option::excludes(const Option& other) {
  option_->excludes(other.option_);
  return *this;
}

Option& Option::notEmpty() {
  option_->check(CLI::Validator(
      [](std::string& file) { return file.empty() ? std::string("no file") : std::string(); }, ""));
  return *this;
}

Option& Option::file() {
  option_->check(CLI::Validator(
      [](std::string& file) {
        return file == "-" ? std::string("goes to a file, not to standard output") : std::string();
      },
      ""));
  return notEmpty();
}

Option& Option::multipleOf(std::uint32_t divisor) {
  option_->check(CLI::Validator(
      [divisor](std::string& text) {
        return std::strtoul(text.c_str(), nullptr, 10) % divisor == 0
                   ? std::string()
                   : fmt::format("not a multiple of {}", divisor);
      },
      ""));
  return *this;
}

Option& Option::showDefault() {
  option_->capture_default_str();
  return *this;
}

Option& Option::oneAtATime() {
  option_->allow_extra_args(false);
  return *this;
}

Option& Option::commas() {
  option_->delimiter(',');
  return *this;
}

Option& Option::tells(bool& given) {
  option_->each([&given](const std::string&) { given = true; });
  return *this;
}

void Command::whenGiven(std::function<void()> use) { app_->callback(std::move(use)); }

bool Command::isGiven() const { return app_->parsed(); }

Option Command::flag(const char* names, bool& value, const char* description) {
  return Option(*app_->add_flag(names, value, description));
}

template <typename Value>
Option Command::option(const char* names, Value& value, const char* description) {
  return Option(*app_->add_option(names, value, description));
}

template Option Command::option(const char*, std::string&, const char*);
template Option Command::option(const char*, std::vector<std::string>&, const char*);

template <typename Variable, typename Value>
Option Command::number(const char* names, Variable& value, Value low, Value high,
                       const char* description) {
  return Option(*app_->add_option(names, value, description)->check(CLI::Range(low, high)));
}

template Option Command::number(const char*, std::uint32_t&, std::uint32_t, std::uint32_t,
                                const char*);
template Option Command::number(const char*, std::size_t&, std::size_t, std::size_t, const char*);
template Option Command::number(const char*, std::int64_t&, std::int64_t, std::int64_t,
                                const char*);
template Option Command::number(const char*, std::optional<std::int64_t>&, std::int64_t,
                                std::int64_t, const char*);
template Option Command::number(const char*, double&, double, double, const char*);

Option Command::seconds(const char* names, std::chrono::seconds& value, const char* description) {
  const auto set = [&value](int count) { value = std::chrono::seconds(count); };
  return Option(*app_->add_option_function<int>(names, set, description)
                     ->type_name("SECONDS")
                     ->check(CLI::Range(1, 1'000'000)));
}

Option Command::call(const char* names, Use use, const char* description) {
  const auto checked = [names, use = std::move(use)](const std::string& value) {
    const std::string fault = use(value);
    if (!fault.empty()) throw CLI::ValidationError(names, fault);
  };
  return Option(*app_->add_option_function<std::string>(names, checked, description));
}

Option Command::callWithAll(const char* names, UseAll use, const char* description) {
  const auto checked = [names, use = std::move(use)](const std::vector<std::string>& values) {
    const std::string fault = use(values);
    if (!fault.empty()) throw CLI::ValidationError(names, fault);
  };
  return Option(*app_->add_option_function<std::vector<std::string>>(names, checked, description));
}

Option Command::oneOf(const char* names, const std::vector<std::string>& known,
                      std::function<void(std::size_t)> choose, const char* description) {
  const auto chosen = [known, choose = std::move(choose)](const std::string& name) {
    const auto found = std::find(known.begin(), known.end(), name);
    choose(static_cast<std::size_t>(found - known.begin()));
  };
  return Option(*app_->add_option_function<std::string>(names, chosen, description)
                     ->check(CLI::IsMember(known)));
}

}  // namespace velc
