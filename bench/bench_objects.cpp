// Counted objects and their list against std::shared_ptr and std::vector:
// appending 1,000 handles, walking them (by copies and in place), and making
// and releasing one object.
#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "zu/core/zuObjArrayList.h"

namespace {

constexpr unsigned int kElements = 1000;

class Body : public zuObjImpl {
 public:
  int value = 7;
};

struct PlainBody {
  virtual ~PlainBody() = default;
  int value = 7;
};

// 1,000 distinct objects, made beforehand, appended to a new list.
void appendOurs(benchmark::State& state) {
  std::vector<zuObjWrap> bodies;
  for (unsigned int index = 0; index < kElements; ++index) bodies.emplace_back(new Body);
  for (auto _ : state) {
    zuObjArrayList list;
    for (const zuObjWrap& body : bodies) list.add(body);
    benchmark::DoNotOptimize(list.getImpl());
  }
}

void appendSharedPtr(benchmark::State& state) {
  std::vector<std::shared_ptr<PlainBody>> bodies;
  for (unsigned int index = 0; index < kElements; ++index) {
    bodies.push_back(std::make_shared<PlainBody>());
  }
  for (auto _ : state) {
    std::vector<std::shared_ptr<PlainBody>> list;
    for (const auto& body : bodies) list.push_back(body);
    benchmark::DoNotOptimize(list.data());
  }
}

// One object appended 1,000 times: every count change hits the same word.
void appendOneOurs(benchmark::State& state) {
  const zuObjWrap body(new Body);
  for (auto _ : state) {
    zuObjArrayList list;
    for (unsigned int index = 0; index < kElements; ++index) list.add(body);
    benchmark::DoNotOptimize(list.getImpl());
  }
}

void appendOneSharedPtr(benchmark::State& state) {
  const auto body = std::make_shared<PlainBody>();
  for (auto _ : state) {
    std::vector<std::shared_ptr<PlainBody>> list;
    for (unsigned int index = 0; index < kElements; ++index) list.push_back(body);
    benchmark::DoNotOptimize(list.data());
  }
}

zuObjArrayList ourList() {
  zuObjArrayList list;
  for (unsigned int index = 0; index < kElements; ++index) list.add(zuObjWrap(new Body));
  return list;
}

std::vector<std::shared_ptr<PlainBody>> sharedList() {
  std::vector<std::shared_ptr<PlainBody>> list;
  for (unsigned int index = 0; index < kElements; ++index) {
    list.push_back(std::make_shared<PlainBody>());
  }
  return list;
}

void iterateOursCopies(benchmark::State& state) {
  const zuObjArrayList list = ourList();
  for (auto _ : state) {
    int sum = 0;
    for (unsigned int index = 0; index < kElements; ++index) {
      const zuObjWrap element = list.get(index, 0);
      sum += static_cast<const Body*>(element.getImpl())->value;
    }
    benchmark::DoNotOptimize(sum);
  }
}

void iterateSharedPtrCopies(benchmark::State& state) {
  const auto list = sharedList();
  for (auto _ : state) {
    int sum = 0;
    for (unsigned int index = 0; index < kElements; ++index) {
      const std::shared_ptr<PlainBody> element = list[index];
      sum += element->value;
    }
    benchmark::DoNotOptimize(sum);
  }
}

void iterateOursInPlace(benchmark::State& state) {
  const zuObjArrayList list = ourList();
  for (auto _ : state) {
    int sum = 0;
    for (unsigned int index = 0; index < kElements; ++index) {
      sum += static_cast<const Body*>(list.getIndexImpl(index, 0))->value;
    }
    benchmark::DoNotOptimize(sum);
  }
}

void iterateSharedPtrInPlace(benchmark::State& state) {
  const auto list = sharedList();
  for (auto _ : state) {
    int sum = 0;
    for (const std::shared_ptr<PlainBody>& element : list) sum += element->value;
    benchmark::DoNotOptimize(sum);
  }
}

// A thread that holds any object of the size keeps its cache's pool for the
// size, as a working program does; alone, each release gives the pool back
// and each make takes it again, which ObjNewReleaseAlone measures.
void newReleaseOurs(benchmark::State& state) {
  const zuObjWrap neighbour(new Body);
  for (auto _ : state) {
    const zuObjWrap body(new Body);
    benchmark::DoNotOptimize(body.getImpl());
  }
}

void newReleaseOursAlone(benchmark::State& state) {
  for (auto _ : state) {
    const zuObjWrap body(new Body);
    benchmark::DoNotOptimize(body.getImpl());
  }
}

void newReleaseMakeShared(benchmark::State& state) {
  for (auto _ : state) {
    const auto body = std::make_shared<PlainBody>();
    benchmark::DoNotOptimize(body.get());
  }
}

}  // namespace

BENCHMARK(appendOurs)->Name("ObjListAppend1000/ours");
BENCHMARK(appendSharedPtr)->Name("ObjListAppend1000/vector_shared_ptr");
BENCHMARK(appendOneOurs)->Name("ObjListAppendOne1000/ours");
BENCHMARK(appendOneSharedPtr)->Name("ObjListAppendOne1000/vector_shared_ptr");
BENCHMARK(iterateOursCopies)->Name("ObjListIterate1000/ours");
BENCHMARK(iterateSharedPtrCopies)->Name("ObjListIterate1000/shared_ptr_copies");
BENCHMARK(iterateOursInPlace)->Name("ObjListIterate1000InPlace/ours");
BENCHMARK(iterateSharedPtrInPlace)->Name("ObjListIterate1000InPlace/const_ref_walk");
BENCHMARK(newReleaseOurs)->Name("ObjNewRelease/ours");
BENCHMARK(newReleaseMakeShared)->Name("ObjNewRelease/make_shared");
BENCHMARK(newReleaseOursAlone)->Name("ObjNewReleaseAlone/ours");
BENCHMARK(newReleaseMakeShared)->Name("ObjNewReleaseAlone/make_shared");
