#include "zu/core/zuObjArrayList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "zu/core/zuExAssert.h"
#include "zu/core/zuException.h"
#include "zu/runtime/zuThreadLocalStorage.h"
#include "zu/testing/zuCountedBody.h"

namespace {

using Body = zu::testing::CountedBody;

// The list's elements as letters, "." for a null element.
std::string contents(const zuObjArrayList& list) {
  std::string text;
  for (unsigned int index = 0; index < list.size(); ++index) {
    const auto* body = static_cast<const Body*>(list.getIndexImpl(index, 0));
    text += body != nullptr ? body->name() : '.';
  }
  return text;
}

struct Fixture {
  zuObjWrap a{new Body('a')}, b{new Body('b')}, c{new Body('c')}, d{new Body('d')};
  zuObjArrayList list;
  Fixture() {
    for (const zuObjWrap* element : {&a, &b, &c}) list.add(*element);
  }
};

// What RandomOperationsMatchAModel does not reach: the boundaries of
// insertion, the checked and unchecked reads, and the operations it never
// makes.
TEST(zuObjArrayListTest, OperationsOnAThreeElementList) {
  using F = Fixture;
  struct Case {
    const char* what;
    std::function<int(Fixture&)> operation;  // its result; -2 when it threw 16984
    int result;
    const char* after;
  };
  const Case cases[] = {
      {"insert past size", [](F& f) { return f.list.add(4, f.d), 0; }, -2, "abc"},
      {"checked get", [](F& f) { return f.list.get(5, 1).isNull(); }, -2, "abc"},
      {"unchecked get", [](F& f) { return f.list.get(5, 0).isNull(); }, 1, "abc"},
      {"unchecked impl", [](F& f) { return f.list.getIndexImpl(3, 0) == nullptr; }, 1, "abc"},
      {"set past size", [](F& f) { return f.list.set(3, f.d).isNull(); }, -2, "abc"},
      {"set own element", [](F& f) { return f.list.set(0, f.list.get(0)) == f.a; }, 1, "abc"},
      {"removeAll clears all", [](F& f) { return f.list.removeAll(zuObjArrayList()); }, 1, ""},
      {"removeAll empty", [](F& f) { return f.list.clear(), f.list.removeAll(f.list); }, 0, ""},
      {"contains", [](F& f) { return f.list.contains(f.b) * 2 + f.list.contains(f.d); }, 2, "abc"},
      {"extendSize smaller", [](F& f) { return f.list.extendSize(2), 0; }, 0, "abc"},
  };
  for (const Case& c : cases) {
    Body::live = 0;
    {
      Fixture f;
      int result = -3;
      try {
        result = c.operation(f);
      } catch (const zuExFull& error) {
        result = error.HasResId(16984) ? -2 : -4;
      }
      EXPECT_EQ(result, c.result) << c.what;
      EXPECT_EQ(contents(f.list), c.after) << c.what;
    }
    EXPECT_EQ(Body::live, 0) << c.what;  // counts per step: RandomOperationsMatchAModel
  }
}

TEST(zuObjArrayListTest, CopiesShareOneBodyAndCloneIsIndependent) {
  const zuObjWrap a(new Body('a'));
  zuObjArrayList list;
  const zuObjArrayList early = list;  // taken before the body exists
  list.add(a);
  const zuObjArrayList alias = list;
  list.add(a);
  zuObjArrayList clone = list.clone();
  clone.add(zuObjWrap());
  EXPECT_EQ(early.size() * 100 + alias.size() * 10 + clone.size(), 23u);
  EXPECT_EQ(a.getImpl()->getRefCount(), 5u);
  EXPECT_EQ(alias, list);
  EXPECT_NE(clone, list);
  EXPECT_TRUE(zuObjArrayList().clone().isNull());
}

TEST(zuObjArrayListTest, GrowthTakesWholeBlocksAndDoublesTheIncrement) {
  zuObjArrayList list(40);
  list.add(zuObjWrap());
  const auto* body = static_cast<const zuObjArrayListImpl*>(list.getImpl());
  EXPECT_GE(body->capacity(), 40u);
  EXPECT_LE(body->capacity(), 40u + 128u);  // a block of up to 1,024 bytes more
  EXPECT_EQ(body->increment(), 80u);
  unsigned int growths = 0;
  unsigned int capacity = body->capacity();
  for (unsigned int count = 1; count < 100000; ++count) {
    if (body->capacity() != capacity) {
      ++growths;
      EXPECT_GE(body->capacity(), capacity + body->increment() / 2);
      capacity = body->capacity();
    }
    list.add(zuObjWrap());
  }
  EXPECT_LE(growths, 12u);                                  // doubling, not a fixed step
  EXPECT_THROW(list.ensureCapacity(1u << 29), zuExMemory);  // 2^32 bytes
  EXPECT_EQ(body->capacity(), capacity);
  list.clear();
  EXPECT_EQ(body->capacity() + body->increment(), 40u);  // the first increment again

  zuObjArrayList small;
  small.ensureCapacity(3);
  EXPECT_GE(static_cast<const zuObjArrayListImpl*>(small.getImpl())->capacity(), 16u);
}

TEST(zuObjArrayListTest, GrowthOffTheOwnerThreadThrowsAssert) {
  const unsigned int self = zuThreadLocalStorage::getThreadId();
  zuObjWrap foreign(zuObjArrayListImpl::NEW(self + 1));
  auto* body = static_cast<zuObjArrayListImpl*>(foreign.getImpl());
  EXPECT_THROW(body->append(nullptr), zuExAssert);
  EXPECT_EQ(body->size(), 0u);
  zuObjArrayList list;
  EXPECT_THROW(list.ensureCapacity(4, self + 1), zuExAssert);
  EXPECT_EQ(static_cast<const zuObjArrayListImpl*>(list.getImpl())->capacity(), 0u);
}

// Random operations against a model, a vector of the bodies the list
// should hold: after each step the list holds them in order, each pool body
// counts the pool's handle and its places in the model, and the bodies alive
// are those of the pool and of the model (a retired body lives on while the
// list holds it).
TEST(zuObjArrayListTest, RandomOperationsMatchAModel) {
  constexpr int kSlots = 6;  // a seventh choice is the null element
  Body::live = 0;
  std::vector<zuObjWrap> pool;
  for (int slot = 0; slot < kSlots; ++slot) pool.emplace_back(new Body('p'));
  std::mt19937 random(20240521);
  zuObjArrayList list;
  std::vector<zuObjImpl*> model;
  for (int step = 0; step < 100000; ++step) {
    const int slot = static_cast<int>(random() % (kSlots + 1));
    const auto size = static_cast<unsigned int>(model.size());
    const auto index = static_cast<unsigned int>(random() % (size + 2));
    zuObjWrap element = slot < kSlots ? pool[slot] : zuObjWrap();
    zuObjImpl* const shadow = element.getImpl();
    const auto found = std::find(model.begin(), model.end(), shadow);
    switch (size > 48 ? 4 : random() % 10) {  // past 48 elements only removals
      case 0:
      case 1:
        EXPECT_EQ(list.add(element), 1);
        model.push_back(shadow);
        break;
      case 2:
        if (index > size) {
          EXPECT_THROW(list.add(index, element), zuExFull);
          break;
        }
        list.add(index, element);
        model.insert(model.begin() + index, shadow);
        break;
      case 3:
        if (index >= size) {
          EXPECT_THROW(list.replace(index, element), zuExFull);
          break;
        }
        EXPECT_EQ(list.set(index, element).getImpl(), model[index]);
        model[index] = shadow;
        break;
      case 4:
      case 5:
        EXPECT_EQ(list.remove(index).getImpl(), index < size ? model[index] : nullptr);
        if (index < size) model.erase(model.begin() + index);
        break;
      case 6:
        EXPECT_EQ(list.remove(element), found != model.end() ? 1 : 0);
        if (found != model.end()) model.erase(found);
        break;
      case 7:
        list.extendSize(size + 1);
        model.push_back(nullptr);
        if (random() % 20 == 0) {
          list.clear();
          model.clear();
        }
        break;
      case 8:  // retires a pool body: it lives on while the list holds it
        pool[slot % kSlots] = zuObjWrap(new Body('p'));
        break;
      default:
        EXPECT_EQ(list.indexOf(element), found != model.end() ? found - model.begin() : -1);
    }
    element = zuObjWrap();
    ASSERT_EQ(list.size(), model.size()) << step;
    for (unsigned int position = 0; position < model.size(); ++position) {
      ASSERT_EQ(list.getIndexImpl(position), model[position]) << step;
    }
    std::set<zuObjImpl*> alive(model.begin(), model.end());
    for (const zuObjWrap& held : pool) {
      alive.insert(held.getImpl());
      ASSERT_EQ(static_cast<long>(held.getImpl()->getRefCount()),
                1 + std::count(model.begin(), model.end(), held.getImpl()))
          << step;
    }
    alive.erase(nullptr);
    ASSERT_EQ(static_cast<std::size_t>(Body::live), alive.size()) << step;
  }
  list.clear();
  pool.clear();
  EXPECT_EQ(Body::live, 0);
}

}  // namespace
