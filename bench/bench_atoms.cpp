// Atom lookup of an existing name: zuAtomTable::getAtom against a lookup in
// std::unordered_set<std::string>, over the same names in the same order.
//
// The names look like the ones a forms library interns: element and
// attribute names, dotted property paths, some with a numeric suffix. The
// peer is given ready-made std::string keys (its best case); ours gets the
// const char* that callers hold.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

#include "zu/core/zuAtomTable.h"

namespace {

std::vector<std::string> makeNames(size_t count) {
  static const char* const kStems[] = {"font",    "border",    "margin",    "fill",   "caption",
                                       "para",    "value",     "items",     "bind",   "event",
                                       "script",  "edge",      "corner",    "draw",   "field",
                                       "subform", "exclGroup", "traversal", "assist", "keep"};
  static const char* const kLeaves[] = {"thickness", "typeface", "size",    "weight", "presence",
                                        "hAlign",    "vAlign",   "colSpan", "ref",    "match",
                                        "access",    "layout",   "name",    "use",    "usehref"};
  std::mt19937 random(12345);
  std::vector<std::string> names;
  std::unordered_set<std::string> seen;
  while (names.size() < count) {
    std::string name = kStems[random() % std::size(kStems)];
    switch (random() % 3) {
      case 0:
        name += kLeaves[random() % std::size(kLeaves)];
        break;
      case 1:
        name += ".";
        name += kLeaves[random() % std::size(kLeaves)];
        break;
      default:
        name += std::to_string(random() % 400);
        name += ".";
        name += kLeaves[random() % std::size(kLeaves)];
    }
    if (seen.insert(name).second) names.push_back(name);
  }
  return names;
}

// A fixed pseudo-random visiting order, so that both sides miss the same
// caches in the same way.
std::vector<uint32_t> makeOrder(size_t count) {
  std::mt19937 random(54321);
  std::vector<uint32_t> order(4096);
  for (uint32_t& index : order) index = static_cast<uint32_t>(random() % count);
  return order;
}

void lookUpOurs(benchmark::State& state, size_t count) {
  const std::vector<std::string> names = makeNames(count);
  const std::vector<uint32_t> order = makeOrder(count);
  for (const std::string& name : names) zuAtomTable::getAtom(name.c_str(), 0);
  size_t next = 0;
  for (auto _ : state) {
    zuAtomStore* atom = zuAtomTable::getAtom(names[order[next]].c_str(), 0);
    benchmark::DoNotOptimize(atom);
    next = (next + 1) & (order.size() - 1);
  }
}

void lookUpUnorderedSet(benchmark::State& state, size_t count) {
  const std::vector<std::string> names = makeNames(count);
  const std::vector<uint32_t> order = makeOrder(count);
  const std::unordered_set<std::string> set(names.begin(), names.end());
  size_t next = 0;
  for (auto _ : state) {
    auto found = set.find(names[order[next]]);
    benchmark::DoNotOptimize(found);
    next = (next + 1) & (order.size() - 1);
  }
}

// A module's vocabulary, and a large table that has grown twice.
constexpr size_t kTypicalCount = 1000;
constexpr size_t kLargeCount = 20000;

BENCHMARK_CAPTURE(lookUpOurs, typical, kTypicalCount)->Name("AtomLookup/ours");
BENCHMARK_CAPTURE(lookUpUnorderedSet, typical, kTypicalCount)->Name("AtomLookup/std_unordered_set");
BENCHMARK_CAPTURE(lookUpOurs, large, kLargeCount)->Name("AtomLookupLarge/ours");
BENCHMARK_CAPTURE(lookUpUnorderedSet, large, kLargeCount)
    ->Name("AtomLookupLarge/std_unordered_set");

}  // namespace
