#include "cli/program_driver.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "cli/failure.h"
#include "cli/shape_tables.h"
#include "cli/value_parts.h"
#include "hostkit/folding.h"

namespace velc {

namespace {

using hostkit::equalIgnoringCase;
using refhost::ProgramVariable;
using refhost::Session;

std::string_view trim(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

ProgramVariable findVariable(const Session& session, const std::string& name) {
  std::vector<ProgramVariable> found;
  for (const auto& variables : {session.programVariables(), session.globalVariables()}) {
    for (const ProgramVariable& variable : variables) {
      for (const std::string& known : {variable.name, variable.qualifiedName()}) {
        if (!equalIgnoringCase(known, name.substr(0, known.size()))) continue;
        auto part = partOf(variable, std::string_view(name).substr(known.size()));
        if (!part) continue;
        found.push_back(std::move(*part));
        break;
      }
    }
  }
  ProgramVariable address;
  if (found.empty() && session.addressVariable(name, address)) return address;
  if (found.empty()) throw Failure(fmt::format("--set: no program has a variable '{}'", name));
  if (found.size() > 1) {
    throw Failure(fmt::format("--set: '{}' is ambiguous; write {} or {}", name,
                              found[0].qualifiedName(), found[1].qualifiedName()));
  }
  return found[0];
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

}  // namespace

std::vector<ProgramVariable> printedVariables(const Session& session,
                                              const std::vector<std::string>& places) {
  std::vector<ProgramVariable> result;
  for (ProgramVariable& variable : session.programVariables()) {
    if (variable.shape != nullptr) result.push_back(std::move(variable));
  }
  const std::vector<ProgramVariable> globals = session.globalVariables();
  for (const std::string& shown : places) {
    const auto global = std::find_if(globals.begin(), globals.end(), [&](const auto& variable) {
      return equalIgnoringCase(variable.name, shown) && variable.shape != nullptr;
    });
    ProgramVariable place;
    if (global != globals.end()) {
      place = *global;
    } else if (!session.addressVariable(shown, place)) {
      throw Failure(fmt::format("--show: '{}' is no device address and no global variable", shown));
    }
    result.push_back(std::move(place));
  }
  return result;
}

std::string settingStatement(const Session& session, const std::string& setting) {
  const std::size_t mark = setting.find('=');
  if (mark == std::string::npos) {
    throw Failure(fmt::format("--set: '{}' is not NAME=VALUE", setting));
  }
  const std::string_view view = setting;
  const std::string name(trim(view.substr(0, mark)));
  const std::string value(trim(view.substr(mark + 1)));
  const ProgramVariable variable = findVariable(session, name);
  if (!variable.settable || variable.shape->hasParts()) {
    throw Failure(fmt::format("--set: '{}' cannot be set", name));
  }
  std::string statement;
  std::string error;
  if (!session.assignmentText(variable, value, statement, error)) {
    throw Failure(fmt::format("--set {}: {}", setting, error));
  }
  return statement;
}

std::string driverText(const Session& session, const std::vector<std::string>& settingStatements,
                       const std::vector<ProgramVariable>& printed, bool traceIo,
                       const std::vector<ProgramVariable>& retained) {
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
      visits("vel_run_values", printed) + visits("vel_run_retained", retained);
  return text + "}\n\n" + tables.text() + functions;
}

std::string valueLines(const Session& session, const std::vector<ProgramVariable>& printed,
                       const std::string& bytes) {
  const bool qualified = !session.taskTable().empty() || session.programs().size() > 1;
  std::string text;
  std::string_view rest = bytes;
  for (const ProgramVariable& variable : printed) {
    text += qualified && !variable.program.empty() ? variable.qualifiedName() : variable.name;
    text += " = " + partsText(*variable.shape, rest) + '\n';
  }
  return text;
}

}  // namespace velc
