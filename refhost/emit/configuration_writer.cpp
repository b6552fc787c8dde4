#include "refhost/emit/configuration_writer.h"

#include <fmt/format.h>

#include "refhost/emit/function_writer.h"

namespace refhost {

void ConfigurationWriter::append(std::string& out) {
  const Configuration& configuration = file_.services.configuration;
  if (configuration.instances.empty()) return;
  appendInits(out);
  for (const ProgramInstance& instance : configuration.instances) {
    FunctionWriter(file_, nullptr).appendScan(instance, out);
  }
  appendTasks(out);
}

void ConfigurationWriter::appendInits(std::string& out) {
  const SymbolNames& names = file_.names;
  std::string all;
  for (const ProgramInstance& instance : file_.services.configuration.instances) {
    FunctionWriter(file_, nullptr).appendInit(instance, out);
    all += fmt::format("  {}();\n", names.of(instance).init);
  }
  out += fmt::format("\nvoid {}(void) {{\n{}}}\n", names.configuration.init, all);
}

void ConfigurationWriter::appendTasks(std::string& out) {
  const ConfigurationNames& names = file_.names.configuration;
  std::string table;
  auto row = names.rows.begin();
  for (const TaskRow& scheduled : file_.services.configuration.schedule()) {
    out += fmt::format("\nstatic void {}(void) {{\n", row->run);
    for (const ProgramInstance* const instance : scheduled.instances) {
      out += fmt::format("  {}();\n", file_.names.of(*instance).scan);
    }
    out += "}\n";
    std::string name = scheduled.resource;
    std::string times = "0, VEL_NO_TASK";
    if (const Task* const task = scheduled.task) {
      name += (name.empty() ? "" : ".") + task->name;
      times = fmt::format("{}, {}", task->interval, task->priority);
      if (task->single != nullptr)
        FunctionWriter(file_, nullptr).appendCondition(*task, row->single, out);
    }
    table += fmt::format("  {{\"{}\", {}, {}, {}}},\n", name, times,
                         row->single.empty() ? "NULL" : row->single, row->run);
    ++row;
  }
  out += fmt::format("\nconst vel_task {}[] = {{\n{}  {{NULL, 0, 0, NULL, NULL}},\n}};\n",
                     names.tasks, table);
}

}  // namespace refhost
