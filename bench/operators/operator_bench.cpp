// What the plugin costs a host, beside the floor of each of its operations.
#include <benchmark/benchmark.h>
#include <strings.h>

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

#include "bench/operators/workload.h"
#include "bench/support/allocations.h"
#include "host/symbol_manager.h"

namespace {

// Times `step` and counts what one takes from the heap. What the first allocates once and
// for all is left out.
template <class Step>
void measure(benchmark::State& state, Step step) {
  step();
  const Allocations before = Allocations::now();
  for ([[maybe_unused]] auto iteration : state) step();
  const auto taken = static_cast<double>((Allocations::now() - before).count);
  state.counters["allocations"] = benchmark::Counter(taken, benchmark::Counter::kAvgIterations);
}

// `step` is of the benched plugin or, with `floor`, of the floor.
template <class Step>
void add(const std::string& name, Step step) {
  for (const bool floor : {false, true}) {
    benchmark::RegisterBenchmark(
        (name + (floor ? "|floor" : "|plugin")).c_str(),
        [step, floor](benchmark::State& state) { measure(state, [&] { step(floor); }); });
  }
}

void addOperator(CannedHost& host, const Workload& workload) {
  // Only the workload that runs may set the host's answers.
  const auto with = [&host, &workload](auto step) {
    return [&host, &workload, step](benchmark::State& state, bool floor) {
      Bench bench(host, workload);
      measure(state, [&] { step(bench, floor); });
    };
  };
  const std::string name = std::string(workload.family) + "|" + workload.name + "|";
  const auto each = [&](const char* operation, auto step) {
    for (const bool floor : {false, true}) {
      benchmark::RegisterBenchmark((name + operation + (floor ? "|floor" : "|plugin")).c_str(),
                                   with(step), floor);
    }
  };
  each("check, accepted", [](Bench& bench, bool floor) {
    benchmark::DoNotOptimize(floor ? bench.checkFloor(true) : bench.check(true));
  });
  each("check, refused", [](Bench& bench, bool floor) {
    benchmark::DoNotOptimize(floor ? bench.checkFloor(false) : bench.check(false));
  });
  each("generate", [](Bench& bench, bool floor) {
    benchmark::DoNotOptimize(floor ? bench.generateFloor() : bench.generate());
  });
  each("staticCode", [](Bench& bench, bool floor) {
    benchmark::DoNotOptimize(floor ? bench.staticCodeFloor() : bench.staticCode());
  });
}

// The registry by hand: a hash table of the C++ library over names of ASCII letters.
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
struct Object {
  explicit Object(const std::string& objectName) : name(objectName) {}
  virtual ~Object() = default;
  std::string name;
};
using Objects = std::unordered_map<std::string, std::unique_ptr<Object>, NameHash, SameName>;

Objects registryByHand(CannedHost& host, const std::vector<std::pair<std::string, bool>>& names) {
  Objects objects;
  for (const auto& [name, hasUnit] : names) {
    auto object = std::make_unique<Object>(name);
    if (hasUnit) {
      host.symbolManager()->addPOU(new vel::SymbolPOU(&host, name, vel::POUType::Operator, nullptr),
                                   -1);
    }
    objects.emplace(name, std::move(object));
  }
  return objects;
}

}  // namespace

int main(int argc, char** argv) {
  CannedHost host;
  const CreateRegistry create = loadPlugin();
  std::vector<std::string> names;
  host.units = &names;
  const std::unique_ptr<vel::OpManagerAPI> registry(create(&host));
  host.units = nullptr;
  host.registry = registry.get();
  const Symbols symbols(&host);
  const std::vector<Workload> all = workloads(symbols);

  // In the order of registration, but for those that have no unit.
  std::vector<std::pair<std::string, bool>> units;
  units.reserve(static_cast<std::size_t>(registry->operatorCount()));
  for (const std::string& name : names) units.emplace_back(name, true);
  names.clear();
  registry->operatorNames(names);
  for (const std::string& name : names) {
    if (registry->isFCOperator(name)) units.emplace_back(name, false);
  }
  const Objects objects = registryByHand(host, units);

  add("registry||construct and destroy", [&](bool floor) {
    if (floor) {
      benchmark::DoNotOptimize(registryByHand(host, units).size());
    } else {
      delete create(&host);
    }
  });
  for (const char* name : {"INT_TO_REAL", "lreal_to_ulint", "Limit", "NO_SUCH_OPERATOR"}) {
    const std::string wanted = name;
    add(std::string("lookup|") + name + "|findOperator", [&, wanted](bool floor) {
      if (floor) {
        benchmark::DoNotOptimize(objects.find(wanted));
      } else {
        benchmark::DoNotOptimize(registry->findOperator(wanted));
      }
    });
  }
  for (const Workload& workload : all) addOperator(host, workload);

  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
