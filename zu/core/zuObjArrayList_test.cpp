#include "zu/core/zuObjArrayList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "zu/core/zuExAssert.h"
#include "zu/core/zuException.h"
#include "zu/runtime/zuThreadLocalStorage.h"

namespace {

int gLiveBodies = 0;

class Body : public zuObjImpl {
 public:
  explicit Body(char name) : name_(name) { ++gLiveBodies; }
  ~Body() override { --gLiveBodies; }
  char name() const { return name_; }

 private:
  char name_;
};

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
    list.add(a);
    list.add(b);
    list.add(c);
  }
};

TEST(zuObjArrayListTest, OperationsOnAThreeElementList) {
  struct Case {
    const char* what;
    std::function<int(Fixture&)> operation;  // its result, or -2 when it threw 16984
    int result;
    const char* after;
  };
  const auto listIndexError = [](const std::function<int(Fixture&)>& operation) {
    return [operation](Fixture& f) {
      try {
        return operation(f);
      } catch (const zuExFull& error) {
        return error.HasResId(16984) ? -2 : -3;
      }
    };
  };
  const Case cases[] = {
      {"append", [](Fixture& f) { return f.list.add(f.d); }, 1, "abcd"},
      {"append null", [](Fixture& f) { return f.list.add(zuObjWrap()); }, 1, "abc."},
      {"insert front", [](Fixture& f) { f.list.add(0, f.d); return 0; }, 0, "dabc"},
      {"insert at size", [](Fixture& f) { f.list.add(3, f.d); return 0; }, 0, "abcd"},
      {"insert past size", listIndexError([](Fixture& f) { f.list.add(4, f.d); return 0; }), -2,
       "abc"},
      {"checked get past size", listIndexError([](Fixture& f) { return f.list.get(5, 1).isNull(); }),
       -2, "abc"},
      {"checked impl past size",
       listIndexError([](Fixture& f) { return f.list.getIndexImpl(3) != nullptr; }), -2, "abc"},
      {"unchecked get past size", [](Fixture& f) { return f.list.get(5, 0).isNull(); }, 1, "abc"},
      {"unchecked impl past size",
       [](Fixture& f) { return f.list.getIndexImpl(3, 0) == nullptr ? 1 : 0; }, 1, "abc"},
      {"set returns old", [](Fixture& f) { return f.list.set(1, f.d) == f.b ? 1 : 0; }, 1, "adc"},
      {"set past size", listIndexError([](Fixture& f) { return f.list.set(3, f.d).isNull(); }), -2,
       "abc"},
      {"set own element back", [](Fixture& f) { return f.list.set(0, f.list.get(0)) == f.a; }, 1,
       "abc"},
      {"replace", [](Fixture& f) { f.list.replace(2, zuObjWrap()); return 0; }, 0, "ab."},
      {"replace past size",
       listIndexError([](Fixture& f) { f.list.replace(3, f.d); return 0; }), -2, "abc"},
      {"remove index", [](Fixture& f) { return f.list.remove(1u) == f.b ? 1 : 0; }, 1, "ac"},
      {"remove index past size", [](Fixture& f) { return f.list.remove(7u).isNull(); }, 1, "abc"},
      {"remove element", [](Fixture& f) { return f.list.remove(f.c); }, 1, "ab"},
      {"remove absent element", [](Fixture& f) { return f.list.remove(f.d); }, 0, "abc"},
      {"removeAll ignores its argument",
       [](Fixture& f) { return f.list.removeAll(zuObjArrayList()); }, 1, ""},
      {"removeAll twice", [](Fixture& f) { f.list.removeAll(f.list); return f.list.removeAll(f.list); },
       0, ""},
      {"indexOf", [](Fixture& f) { return f.list.indexOf(f.c); }, 2, "abc"},
      {"indexOf by identity",
       [](Fixture& f) { return f.list.indexOf(zuObjWrap(new Body('a'))); }, -1, "abc"},
      {"contains", [](Fixture& f) { return f.list.contains(f.b) + f.list.contains(f.d); }, 1,
       "abc"},
      {"extendSize", [](Fixture& f) { f.list.extendSize(5); return 0; }, 0, "abc.."},
      {"extendSize smaller", [](Fixture& f) { f.list.extendSize(2); return 0; }, 0, "abc"},
      {"clear", [](Fixture& f) { f.list.clear(); return f.list.isEmpty(); }, 1, ""},
      {"null element found",
       [](Fixture& f) { f.list.add(zuObjWrap()); return f.list.indexOf(zuObjWrap()); }, 3, "abc."},
  };
  for (const Case& c : cases) {
    gLiveBodies = 0;
    {
      Fixture f;
      EXPECT_EQ(c.operation(f), c.result) << c.what;
      EXPECT_EQ(contents(f.list), c.after) << c.what;
      // Each body: the fixture's handle plus one per element.
      for (const zuObjWrap* handle : {&f.a, &f.b, &f.c, &f.d}) {
        unsigned int held = 1;
        for (unsigned int index = 0; index < f.list.size(); ++index) {
          held += f.list.getIndexImpl(index) == handle->getImpl() ? 1 : 0;
        }
        EXPECT_EQ(handle->getImpl()->getRefCount(), held) << c.what;
      }
    }
    EXPECT_EQ(gLiveBodies, 0) << c.what;
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
  EXPECT_EQ(early.size(), 0u);
  EXPECT_EQ(alias.size(), 2u);
  EXPECT_EQ(list.size(), 2u);
  EXPECT_EQ(clone.size(), 3u);
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
  EXPECT_LE(body->capacity(), 40u + 128u);
  EXPECT_EQ(body->increment(), 80u);
  EXPECT_EQ(body->ownerThreadId(), zuThreadLocalStorage::getThreadId());
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
  EXPECT_LE(growths, 12u);  // 40, 80, 160 ... : doubling, not a fixed step

  zuObjArrayList small;
  small.ensureCapacity(3);
  EXPECT_GE(static_cast<const zuObjArrayListImpl*>(small.getImpl())->capacity(), 16u);

  // 2^29 elements need 2^32 bytes: refused, list unchanged.
  EXPECT_THROW(list.ensureCapacity(1u << 29), zuExMemory);
  EXPECT_EQ(list.size(), 100000u);
  EXPECT_EQ(body->capacity(), capacity);
  list.clear();  // back to the first increment
  EXPECT_EQ(body->capacity(), 0u);
  EXPECT_EQ(body->increment(), 40u);
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

// Random operations against a model, a vector of shared pointers to shadows
// of the bodies: after each step the list holds the model's bodies, each
// body's count equals its shadow's use count, and as many bodies as shadows
// are alive.
TEST(zuObjArrayListTest, RandomOperationsMatchAModel) {
  // A shadow stands for one body in the model; it does not own the body.
  struct Shadow {
    zuObjImpl* body;
  };
  constexpr int kSlots = 6;
  gLiveBodies = 0;
  int liveShadows = 0;
  const auto makeShadow = [&liveShadows](zuObjImpl* body) {
    ++liveShadows;
    return std::shared_ptr<Shadow>(new Shadow{body}, [&liveShadows](Shadow* shadow) {
      --liveShadows;
      delete shadow;
    });
  };
  const auto bodyOf = [](const std::shared_ptr<Shadow>& shadow) {
    return shadow ? shadow->body : nullptr;
  };
  std::vector<zuObjWrap> pool;
  std::vector<std::shared_ptr<Shadow>> shadows;
  for (int slot = 0; slot < kSlots; ++slot) {
    pool.emplace_back(new Body(static_cast<char>('a' + slot)));
    shadows.push_back(makeShadow(pool.back().getImpl()));
  }

  std::mt19937 random(20240521);
  zuObjArrayList list;
  std::vector<std::shared_ptr<Shadow>> model;
  for (int step = 0; step < 100000; ++step) {
    const int slot = static_cast<int>(random() % (kSlots + 1));  // kSlots: null
    const zuObjWrap element = slot < kSlots ? pool[slot] : zuObjWrap();
    const std::shared_ptr<Shadow> shadow = slot < kSlots ? shadows[slot] : nullptr;
    const auto size = static_cast<unsigned int>(model.size());
    const unsigned int index = static_cast<unsigned int>(random() % (size + 2));
    // Past 48 elements only removals, so that the list stays short.
    switch (size > 48 ? 4 : random() % 10) {
      case 0:
      case 1:
        EXPECT_EQ(list.add(element), 1);
        model.push_back(shadow);
        break;
      case 2:
        if (index <= size) {
          list.add(index, element);
          model.insert(model.begin() + index, shadow);
        } else {
          EXPECT_THROW(list.add(index, element), zuExFull);
        }
        break;
      case 3:
        if (index < size) {
          EXPECT_EQ(list.set(index, element).getImpl(), bodyOf(model[index]));
          model[index] = shadow;
        } else {
          EXPECT_THROW(list.replace(index, element), zuExFull);
        }
        break;
      case 4:
      case 5:
        EXPECT_EQ(list.remove(index).getImpl(), index < size ? bodyOf(model[index]) : nullptr);
        if (index < size) model.erase(model.begin() + index);
        break;
      case 6: {
        const auto found = std::find(model.begin(), model.end(), shadow);
        EXPECT_EQ(list.remove(element), found != model.end() ? 1 : 0);
        if (found != model.end()) model.erase(found);
        break;
      }
      case 7:
        if (random() % 20 == 0) {
          list.clear();
          model.clear();
        } else {
          list.extendSize(size + 1);
          model.push_back(nullptr);
        }
        break;
      case 8:
        // Retires a pool body: it lives on while the list holds it.
        pool[slot % kSlots] = zuObjWrap(new Body('z'));
        shadows[slot % kSlots] = makeShadow(pool[slot % kSlots].getImpl());
        break;
      default: {
        const auto found = std::find(model.begin(), model.end(), shadow);
        EXPECT_EQ(list.indexOf(element), found != model.end() ? found - model.begin() : -1);
        break;
      }
    }
    ASSERT_EQ(list.size(), model.size()) << step;
    for (unsigned int position = 0; position < model.size(); ++position) {
      ASSERT_EQ(list.getIndexImpl(position), bodyOf(model[position])) << step;
    }
    ASSERT_EQ(gLiveBodies, liveShadows) << step;
    for (int each = 0; each < kSlots; ++each) {
      ASSERT_EQ(static_cast<long>(pool[each].getImpl()->getRefCount()), shadows[each].use_count())
          << step;
    }
  }
  list.clear();
  pool.clear();
  EXPECT_EQ(gLiveBodies, 0);
}

}  // namespace
