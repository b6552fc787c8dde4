// Tasks and program instances: what a configuration says about running the program.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "hostkit/folding.h"
#include "refhost/services/unit_symbol.h"

namespace refhost {

// What TASK takes in brackets.
struct TaskProperty {
  std::string_view name;
  BasicDataType type;
};
inline constexpr std::array<TaskProperty, 3> kTaskProperties{{{"INTERVAL", BasicDataType::Time},
                                                              {"SINGLE", BasicDataType::Bool},
                                                              {"PRIORITY", BasicDataType::UInt}}};

struct Task {
  std::string resource;  // empty for one that is declared outside of resources
  std::string name;
  std::int64_t interval = 0;  // milliseconds from one run to the next; 0 if it is not periodic
  std::int64_t priority = 0;  // 0 runs first
  Expr* single = nullptr;     // the BOOL whose rising edges it runs on; null for none
  const ConfigurationItem* node = nullptr;
};

struct ProgramInstance {
  std::string resource;  // empty for one that is declared outside of resources
  std::string name;
  UnitSymbol* program = nullptr;
  const Task* task = nullptr;  // null for none: it runs behind all tasks
  Call* connections = nullptr;
  Retention retention = Retention::Unsaid;
  const ConfigurationItem* node = nullptr;
};

// Instances that run one after the other whenever their task is due.
struct TaskRow {
  std::string resource;
  const Task* task;  // null for those without a task, which run in every scan
  std::vector<const ProgramInstance*> instances;
};

// The one configuration that has program instances.
struct Configuration {
  // Null when there is none.
  const Task* task(std::string_view resource, std::string_view wanted) const {
    return find(tasks, resource, wanted);
  }
  const ProgramInstance* instance(std::string_view resource, std::string_view wanted) const {
    return find(instances, resource, wanted);
  }
  // The name by which values tell the instance from others: with its resource if there are several.
  std::string displayName(const ProgramInstance& instance) const;

  // In the order in which they run when all are due: the resources in source order, their tasks by
  // priority and then in source order, the instances without a task last.
  std::vector<TaskRow> schedule() const;

  std::string name;
  // In source order. Elements keep their addresses.
  std::deque<Task> tasks;
  std::deque<ProgramInstance> instances;  // those whose PROGRAM exists

 private:
  template <typename T>
  static const T* find(const std::deque<T>& items, std::string_view resource,
                       std::string_view wanted) {
    for (const T& item : items) {
      if (equalIgnoringCase(item.name, wanted) && equalIgnoringCase(item.resource, resource)) {
        return &item;
      }
    }
    return nullptr;
  }
};

}  // namespace refhost
