#include "cli/program_driver.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "cli/excerpt.h"
#include "cli/failure.h"
#include "cli/shape_tables.h"
#include "cli/shared_storage.h"
#include "cli/value_parse.h"

namespace velc {

namespace {

using refhost::ProgramVariable;
using refhost::Session;

std::string_view trim(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Local names begin with "vel_", which names of the program never do.
std::string visitStatement(const ProgramVariable& variable, ShapeTables& tables) {
  const std::string& shape = tables.nameOf(*variable.shape);
  if (!variable.memoryBit.empty()) {
    return fmt::format(
        "  {{\n    u8 vel_bit_ = gbit({0});\n    vel_visit_(&{1}, &vel_bit_);\n"
        "    sbit({0}, vel_bit_);\n  }}\n",
        variable.memoryBit, shape);
  }
  const std::string size = variable.shape->hasParts() ? "sizeof(" + variable.shape->cType + ")"
                                                      : std::to_string(variable.byteSize);
  return fmt::format(
      "  _Static_assert(sizeof({0}) == {1}, \"size of {2}\");\n  vel_visit_(&{3}, "
      "(void*)&({0}));\n",
      variable.reference, size, variable.name, shape);
}

// `bytes` is the value in memory.
std::string storeStatement(const ProgramVariable& variable, std::string_view bytes) {
  if (!variable.memoryBit.empty()) {
    return fmt::format("sbit({}, {});", variable.memoryBit, static_cast<int>(bytes.front()));
  }
  std::string list;
  for (const char byte : bytes) {
    list += fmt::format("{}{}", list.empty() ? "" : ",", static_cast<unsigned char>(byte));
  }
  return fmt::format("__builtin_memcpy((void*)&({}), (const unsigned char[]){{{}}}, {});",
                     variable.reference, list, bytes.size());
}

}  // namespace

std::vector<ProgramVariable> printedVariables(const Session& session,
                                              const std::vector<std::string>& places) {
  std::vector<ProgramVariable> result;
  for (ProgramVariable& variable : session.programVariables()) {
    if (variable.shape != nullptr) result.push_back(std::move(variable));
  }
  if (places.empty()) return result;
  const Places known(session);
  for (const std::string& shown : places) {
    for (ProgramVariable& place : known.matching("--show", shown)) {
      const auto printed = std::find_if(result.begin(), result.end(), [&place](const auto& other) {
        return other.name == place.name && other.program == place.program;
      });
      // What was asked for may have more parts: function block instances.
      if (printed == result.end()) {
        result.push_back(std::move(place));
      } else {
        *printed = std::move(place);
      }
    }
  }
  return result;
}

bool isSettable(const ProgramVariable& place) {
  return place.settable && !place.shape->hasParts() && place.type != vel::BasicDataType::Pointer;
}

std::vector<std::string> settingStatements(const Places& places,
                                           const std::vector<std::string>& settings) {
  std::vector<std::string> statements;
  std::vector<ProgramVariable> variables;
  const auto nameOf = [](std::string_view setting) {
    return trim(setting.substr(0, setting.find('=')));
  };
  for (const std::string& setting : settings) {
    const std::size_t mark = setting.find('=');
    if (mark == std::string::npos) {
      throw Failure(fmt::format("--set: '{}' is not NAME=VALUE", setting));
    }
    ProgramVariable variable = places.named("--set", nameOf(setting));
    if (!isSettable(variable)) {
      throw Failure(fmt::format("--set: '{}' cannot be set", variable.name));
    }
    const std::string_view value = std::string_view(setting).substr(mark + 1);
    std::string bytes;
    std::string error;
    if (!parseValue(*variable.shape, std::string(trim(value)), bytes, error)) {
      throw Failure(fmt::format("--set {}: {}", shortened(printable(setting)), error));
    }
    statements.push_back(storeStatement(variable, bytes));
    variables.push_back(std::move(variable));
  }
  for (const SharedStorage& shared : sharedStorage(variables)) {
    throw Failure(fmt::format("--set: '{}' and '{}' share storage", nameOf(settings[shared.first]),
                              nameOf(settings[shared.second])));
  }
  return statements;
}

std::string driverText(const Session& session, const std::vector<std::string>& settingStatements,
                       const std::vector<ProgramVariable>& printed, bool traceIo,
                       const WatchedVariables& watched) {
  const std::vector<Session::Program> programs = session.programs();
  const std::string tasks = session.taskTable();
  std::string text =
      "#include \"program.c\"\n\n#include <velrun.h>\n\nvoid vel_run_prepare(void) {\n";
  if (traceIo) {
    text +=
        "  __platform_api.UPDATEINPUT = vel_run_trace_input;\n"
        "  __platform_api.UPDATEOUTPUT = vel_run_trace_output;\n";
  }
  for (const Session::Program& program : programs) text += fmt::format("  {}();\n", program.init);
  text += "}\n\nvoid vel_run_settings(void) {\n";
  for (const std::string& statement : settingStatements) text += "  " + statement + '\n';
  text += "}\n\nvoid vel_run_step(uint64_t now) {\n";
  if (tasks.empty()) {
    text += "  (void)now;\n";
    for (const Session::Program& program : programs) {
      text += fmt::format("  {}();\n", program.scan);
    }
  } else {
    text += fmt::format(
        "  static vel_task_state vel_states_[sizeof {0} / sizeof *{0}];\n"
        "  vel_tasks_run({0}, vel_states_, now);\n",
        tasks);
  }
  ShapeTables tables;
  const auto visits = [&tables](const char* name, const std::vector<ProgramVariable>& variables) {
    std::string visit =
        fmt::format("\nvoid {}(vel_run_visit vel_visit_) {{\n  (void)vel_visit_;\n", name);
    for (const ProgramVariable& variable : variables) visit += visitStatement(variable, tables);
    return visit + "}\n";
  };
  const std::string functions =
      visits("vel_run_values", printed) + visits("vel_run_retained", watched.retained) +
      visits("vel_run_traced", watched.traced) + visits("vel_run_stimulated", watched.stimulated);
  return text + "}\n\n" + tables.text() + functions;
}

}  // namespace velc
