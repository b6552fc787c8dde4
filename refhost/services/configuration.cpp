#include "refhost/services/configuration.h"

#include <algorithm>
#include <limits>

namespace refhost {

std::string Configuration::displayName(const ProgramInstance& instance) const {
  const bool several = std::any_of(instances.begin(), instances.end(), [&](const auto& other) {
    return other.resource != instances.front().resource;
  });
  return several && !instance.resource.empty() ? instance.resource + '.' + instance.name
                                               : instance.name;
}

std::vector<TaskRow> Configuration::schedule() const {
  std::vector<TaskRow> rows;
  std::vector<std::string> resources;
  for (const ProgramInstance& instance : instances) {
    const bool known =
        std::find(resources.begin(), resources.end(), instance.resource) != resources.end();
    if (!known) resources.push_back(instance.resource);
  }
  for (const std::string& resource : resources) {
    const auto first = static_cast<std::ptrdiff_t>(rows.size());
    for (const Task& task : tasks) rows.push_back({resource, &task, {}});
    rows.push_back({resource, nullptr, {}});
    std::stable_sort(rows.begin() + first, rows.end(), [](const TaskRow& a, const TaskRow& b) {
      const auto rank = [](const TaskRow& row) {
        return row.task != nullptr ? row.task->priority : std::numeric_limits<std::int64_t>::max();
      };
      return rank(a) < rank(b);
    });
  }
  for (TaskRow& row : rows) {
    for (const ProgramInstance& instance : instances) {
      if (instance.resource != row.resource || instance.task != row.task) continue;
      row.instances.push_back(&instance);
    }
  }
  rows.erase(std::remove_if(rows.begin(), rows.end(),
                            [](const TaskRow& row) { return row.instances.empty(); }),
             rows.end());
  return rows;
}

}  // namespace refhost
