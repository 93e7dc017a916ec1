#include "zu/core/zuObj.h"

#include <gtest/gtest.h>

#include <utility>

#include "zu/core/zuExAssert.h"
#include "zu/core/zuObjArrayList.h"
#include "zu/core/zuObjIter.h"
#include "zu/core/zuObjWrap.h"
#include "zu/testing/zuCountedBody.h"

namespace {

using Body = zu::testing::CountedBody;

unsigned int countOf(const zuObjWrap& handle) {
  return handle.getImpl()->getRefCount();
}

TEST(zuObjTest, HandlesCountReferencesAndTheLastDestroys) {
  Body::live = 0;
  {
    zuObjWrap first(new Body);
    {
      zuObjWrap second = first;
      zuObjWrap third;
      third = second;
      third = third;  // self-assignment keeps the count
      EXPECT_EQ(countOf(first), 3u);
      zuObjWrap moved = std::move(second);
      EXPECT_TRUE(second.isNull());
      EXPECT_EQ(countOf(first), 3u);
      moved = zuNullObj::getNULL();
      EXPECT_EQ(countOf(first), 2u);
    }
    EXPECT_EQ(countOf(first), 1u);
    zuPeer peer(first.getImpl());
    zuPeer other = peer;
    other = nullptr;
    EXPECT_EQ(countOf(first), 2u);
    first = zuNullObj::getNULL();
    EXPECT_EQ(Body::live, 1);  // the peer still holds it
    peer = other;
    EXPECT_EQ(Body::live, 0);
  }
  // A reassigned handle drops its old body.
  zuObjWrap handle(new Body);
  handle = zuObjWrap(new Body);
  EXPECT_EQ(Body::live, 1);
}

TEST(zuObjTest, NullHandleAndTypeQueries) {
  const zuObjWrap null;
  EXPECT_EQ(null.isNull(), 1);
  EXPECT_EQ(null.Type(), 0);
  EXPECT_EQ(null.IsDerivedFrom(zuObj::kTypeId), 0);
  EXPECT_STREQ(null.toString(), "");
  EXPECT_TRUE(null == zuObjWrap(zuNullObj::getNULL()));

  struct Case {
    zuObjWrap handle;
    unsigned short type;
    unsigned short derivedFrom;
    int expected;
  };
  const zuObjWrap body(new Body);
  const zuObjWrap list(zuObjArrayListImpl::NEW(0));
  const Case cases[] = {
      {body, Body::kTypeId, 16445, 1},
      {body, Body::kTypeId, 16696, 0},
      {list, 16696, 16696, 1},
      {list, 16696, 16445, 1},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.handle.Type(), c.type);
    EXPECT_EQ(c.handle.IsDerivedFrom(c.derivedFrom), c.expected) << c.derivedFrom;
  }
}

TEST(zuObjTest, RemovingAReferenceFromAFreeBodyThrowsAssert) {
  Body::live = 0;
  Body* body = new Body;
  EXPECT_THROW(zuObjImpl::removeRef(body, 1), zuExAssert);
  zuObjImpl::addRef(body);
  zuObjImpl::removeRef(body, 0);  // 1 to 0 without destroying
  EXPECT_EQ(Body::live, 1);
  EXPECT_EQ(body->getRefCount(), 0u);
  zuObjImpl::addRef(nullptr);
  zuObjImpl::removeRef(nullptr, 1);
  delete body;
  EXPECT_EQ(Body::live, 0);
}

class CountingIter : public zuAbstractObjIter {
 public:
  explicit CountingIter(int& deleted) : deleted_(deleted) {}
  ~CountingIter() override { ++deleted_; }
  int hasNext() override { return 0; }
  zuObjWrap next() override { return zuObjWrap(); }
  void remove() override {}
  int& deleted_;
};

TEST(zuObjIterTest, WalksAndRemovesTheLastResultOnce) {
  const zuObjWrap a(new Body), b(new Body);
  zuStorage<zuObjWrap> storage;
  storage.Add(a);
  storage.Add(zuObjWrap());
  storage.Add(b);
  zuObjIter walk(new zuArrayObjIter(storage));
  walk.remove();  // nothing returned yet
  EXPECT_EQ(storage.GetSize(), 3u);
  EXPECT_EQ(walk.next(), a);
  EXPECT_TRUE(walk.next().isNull());
  walk.remove();
  walk.remove();  // once only
  EXPECT_EQ(storage.GetSize(), 2u);
  EXPECT_EQ(walk.hasNext(), 1);
  EXPECT_EQ(walk.next(), b);
  EXPECT_EQ(walk.hasNext(), 0);
  EXPECT_TRUE(walk.next().isNull());
  walk.remove();  // after the end: nothing
  ASSERT_EQ(storage.GetSize(), 2u);
  EXPECT_EQ(storage[0], a);
  EXPECT_EQ(storage[1], b);

  int deleted = 0;
  {
    zuObjIter owner(new CountingIter(deleted));
    zuObjIter moved = std::move(owner);
    EXPECT_EQ(owner.hasNext(), 0);
    EXPECT_TRUE(owner.next().isNull());
    moved = zuObjIter(new CountingIter(deleted));
    EXPECT_EQ(deleted, 1);
  }
  EXPECT_EQ(deleted, 2);
}

}  // namespace
