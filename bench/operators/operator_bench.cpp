// Times the plugin's operations, their requests to the host alone, and the registry.
#include <benchmark/benchmark.h>
#include <strings.h>

#include <memory>
#include <string>
#include <unordered_map>

#include "bench/operators/workload.h"
#include "bench/support/allocations.h"

namespace {

// Times `step` under the name `name|part` and counts the allocations of one step. The first step
// is not counted, since it may allocate memory that is kept.
template <class Step>
void add(const std::string& name, const char* part, Step step) {
  benchmark::RegisterBenchmark((name + "|" + part).c_str(), [step](benchmark::State& state) {
    step();
    const std::size_t before = allocations();
    for ([[maybe_unused]] auto iteration : state) step();
    const auto taken = static_cast<double>(allocations() - before);
    state.counters["allocations"] = benchmark::Counter(taken, benchmark::Counter::kAvgIterations);
  });
}

// A registry written by hand for comparison: a std::unordered_map of names.
struct NameHash {
  std::size_t operator()(const std::string& name) const {
    std::size_t hash = 0xCBF29CE484222325;
    for (const char c : name) hash = (hash ^ static_cast<std::size_t>(c | 0x20)) * 0x100000001B3;
    return hash;
  }
};
struct SameName {
  bool operator()(const std::string& a, const std::string& b) const {
    return strcasecmp(a.c_str(), b.c_str()) == 0;
  }
};
// The objects consist of a name only, as operators do.
using Objects = std::unordered_map<std::string, std::unique_ptr<std::string>, NameHash, SameName>;

Objects registryByHand(hostkit::Services& services, const std::vector<std::string>& names,
                       const std::vector<std::string>& units) {
  Objects objects;
  for (const std::string& name : names) objects.emplace(name, std::make_unique<std::string>(name));
  for (const std::string& name : units) {
    services.addPOU(new vel::SymbolPOU(&services, name, vel::POUType::Operator, nullptr), -1);
  }
  return objects;
}

}  // namespace

int main(int argc, char** argv) {
  ReadyAnswers answers;
  hostkit::Services services(&answers);
  const std::unique_ptr<vel::OpManagerAPI> registry(CreateOpManager(&services));
  std::vector<std::string> names;
  registry->operatorNames(names);
  std::vector<std::string> units;
  for (const std::string& name : names) {
    if (!registry->isFCOperator(name)) units.push_back(name);
  }
  const Objects objects = registryByHand(services, names, units);

  add("construct and destroy||registry", "plugin", [&] { delete CreateOpManager(&services); });
  add("construct and destroy||registry", "by hand",
      [&] { benchmark::DoNotOptimize(registryByHand(services, names, units).size()); });
  for (const char* name : {"INT_TO_REAL", "lreal_to_ulint", "Limit", "NO_SUCH_OPERATOR"}) {
    const std::string wanted = name;
    const std::string lookUp = "look-up|" + wanted + "|registry";
    add(lookUp, "plugin",
        [&, wanted] { benchmark::DoNotOptimize(registry->findOperator(wanted)); });
    add(lookUp, "by hand", [&, wanted] { benchmark::DoNotOptimize(objects.find(wanted)); });
  }

  Symbols symbols;
  std::vector<std::unique_ptr<Bench>> benches;
  for (const Workload& workload : workloads(symbols)) {
    Bench* const bench = benches.emplace_back(std::make_unique<Bench>(*registry, workload)).get();
    for (std::size_t i = 0; i < kOperations.size(); ++i) {
      const std::string name =
          std::string(workload.family) + "|" + workload.name + "|" + kOperations[i];
      add(name, "all", [=] { bench->run(i); });
      add(name, "host", [=] { bench->askHost(i); });
    }
  }

  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
