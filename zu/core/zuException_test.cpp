#include "zu/core/zuException.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>
#include <vector>

#include "zu/core/zuExAssert.h"
#include "zu/core/zuExDeleterFunctionHolder.h"
#include "zu/core/zuExErrItem.h"
#include "zu/core/zuExResourceFailure.h"
#include "zu/core/zuExVersionMismatch.h"
#include "zu/core/zuFormat.h"
#include "zu/core/zuFormatPos.h"
#include "zu/testing/zuTestText.h"
#include "zu/testing/zuThrown.h"

using zu::testing::str;
using zu::testing::thrown;

namespace {

std::vector<unsigned short> ids(const zuExFull& error) {
  std::vector<unsigned short> result;
  for (unsigned int i = 0; i < error.Count(); ++i) result.push_back(error[i].ResId());
  return result;
}

TEST(zuExFullTest, StringJoinsResolvedTextsAndIsOwnedByCaller) {
  // No catalogue text for id 5: its line stays empty.
  EXPECT_EQ(str(*std::unique_ptr<zuString>(zuExFull(5, 0).String())), "\n");

  zuExFull two(1, zuString("first"), 0);
  two.Insert(zuExFull(2, zuString("second"), 0), 1);
  EXPECT_EQ(str(*std::unique_ptr<zuString>(two.String())), "first\nsecond\n");
  EXPECT_EQ(zuExFull().String(), nullptr);
}

TEST(zuExFullTest, InsertAtFrontReversesAtEndKeepsOrder) {
  zuExFull other(1, 0);
  other.Insert(zuExFull(2, 0), 1);
  zuExFull front(3, 0);
  front.Insert(other, 0);
  EXPECT_EQ(ids(front), (std::vector<unsigned short>{2, 1, 3}));

  zuExFull back(3, 0);
  back.Insert(other, 1);
  EXPECT_EQ(ids(back), (std::vector<unsigned short>{3, 1, 2}));
  back.Insert(back, 1);
  EXPECT_EQ(ids(back), (std::vector<unsigned short>{3, 1, 2, 3, 1, 2}));
}

TEST(zuExFullTest, IdQueriesReportedFlagAndBounds) {
  const zuExFull empty;
  EXPECT_EQ(empty.FirstResId(), 0);

  zuExFull error(16479, 1);
  error.Insert(zuExFull(17107, 0), 1);
  EXPECT_TRUE(error.GetResId(1) == 17107 && error.GetResId(error.Count()) == 0);
  EXPECT_TRUE(error.HasResId(17107) && !error.HasResId(5));
  EXPECT_EQ(error[error.Count()].ResId(), 0);

  const zuExFull flagOnly(error, 0);
  EXPECT_EQ(flagOnly.WasReported(), 1);
  EXPECT_EQ(flagOnly.Count(), 0u);
  zuExFull copy(error);
  copy.WasReported(0);
  EXPECT_EQ(error.WasReported(), 1);
}

TEST(zuExFullTest, ThrownFormsKeepIdTextAndParameters) {
  const zuExFull byId = thrown([] { ZuExThrow(16479); });
  EXPECT_EQ(byId.FirstResId(), 16479);
  EXPECT_EQ(byId.WasReported(), 0);
  EXPECT_EQ(thrown([] { ZuExThrow(16479, 1); }).WasReported(), 1);

  const zuExFull percent = thrown([] { ZuExThrow(zuString("100%% sure")); });
  EXPECT_EQ(str(percent[0].Text()), "100% sure");
  const zuExFull cut = thrown([] { ZuExThrow(zuString("before %d after"), 1); });
  EXPECT_EQ(str(cut[0].Text()), "before ");

  const zuExFull formatted =
      thrown([] { ZuExThrow(zuFormat(zuString("day %d of %s")) << 32 << "May"); });
  EXPECT_EQ(str(formatted[0].Text()), "day 32 of May");
  EXPECT_EQ(formatted[0].FormatType(), zuExErrItem::eFormat);

  const zuExFull positional = thrown([] { ZuExThrow(zuFormatPos(zuString("%2 %1")) << 1 << 2); });
  EXPECT_EQ(str(positional[0].Text()), "2 1");
  EXPECT_EQ(positional[0].FormatType(), zuExErrItem::eFormatPos);

  EXPECT_EQ(str(zuExFull(17186, zuFormat(zuString("%d")) << 13, 0)[0].Text()), "13");
}

TEST(zuExErrItemTest, ResolveEqualityAndFormatterCopies) {
  zuExErrItem unresolved(5);
  EXPECT_EQ(unresolved.Resolve(), 0);  // no message text: retried next time
  EXPECT_FALSE(unresolved.IsResolved());

  const zuExErrItem lower(3, zuString("bad value"));
  EXPECT_TRUE(lower == zuExErrItem(3, zuString("BAD Value")));
  EXPECT_TRUE(lower != zuExErrItem(4, zuString("bad value")));
  EXPECT_TRUE(zuExErrItem(3) != zuExErrItem(3, zuString("")));  // resolved bits differ

  zuExErrItem item;
  {
    zuFormat format(zuString("%d/%d"));
    format << 1 << 2;
    item.FormatObject(&format, zuExErrItem::eFormat);
  }
  const zuExErrItem copy(item);
  item.FormatObject(nullptr, zuExErrItem::eNoFormat);
  EXPECT_EQ(item.getParmCount(), 0u);
  ASSERT_EQ(copy.getParmCount(), 2u);
  EXPECT_EQ(str(copy.getParm(1)), "2");
  EXPECT_EQ(str(copy.getParm(2)), "");  // the count itself is a valid index

  item.FormatObject(&copy, static_cast<zuExErrItem::tFormatType>(3));
  EXPECT_EQ(item.getParmCount(), 0u);
}

TEST(zuExMemoryTest, IsABadAllocWithOneOutOfMemoryItem) {
  const zuExMemory memory;
  const std::bad_alloc& error = memory;  // caught as such: zuNewHandler_test
  EXPECT_STREQ(error.what(), "bad allocation");
  EXPECT_EQ(memory.Count(), 1u);
  EXPECT_EQ(memory[0].ResId(), 16583);
  EXPECT_EQ(&memory[0], &memory[9]);
}

TEST(zuExAssertTest, ThreeOrFourItems) {
  try {
    zuExAssertFailure("size <= capacity", "zuThing.cpp", 42, nullptr);
  } catch (const zuException& error) {
    ASSERT_EQ(error.Count(), 3u);
    EXPECT_EQ(str(error[0].Text()), "Internal error: assertion failure");
    EXPECT_EQ(str(error[1].Text()), "size <= capacity");
    EXPECT_EQ(str(error[2].Text()), "At file: zuThing.cpp, line: 42");
  }
  const zuExAssert withMessage(nullptr, nullptr, -1, "details");
  ASSERT_EQ(withMessage.Count(), 4u);
  EXPECT_EQ(str(withMessage[2].Text()), "At file: , line: -1");
  EXPECT_EQ(str(withMessage[3].Text()), "details");
}

TEST(zuExResourceFailureTest, NamesTheMissingFile) {
  const zuExResourceFailure error(zuString("ResourcesEn.msg"));
  EXPECT_EQ(str(error[0].Text()), "Unable to locate resource file: ResourcesEn.msg");
}

TEST(zuExVersionMismatchTest, KeepsTextsCutToThirtyTwoBytes) {
  const zuExVersionMismatchImpl error(std::string(40, '9').c_str(), "forms designer");
  const zuExVersionMismatch& base = error;
  EXPECT_EQ(std::string(base.GetVersion()), std::string(32, '9'));

  // A two-byte character straddling the limit is dropped whole.
  const std::string accented = std::string(31, 'a') + "\xC3\xA9";
  const zuExVersionMismatchImpl cut(nullptr, accented.c_str());
  EXPECT_STREQ(cut.GetVersion(), "");
  EXPECT_EQ(std::string(cut.GetComponent()), std::string(31, 'a'));
}

struct ThrowingReleasable : zuExDeleterFunctionHolder::Releasable {
  void Release() override {
    ++releases;
    throw zuExFull(1, 0);
  }
  int releases = 0;
};

TEST(zuExDeleterFunctionHolderTest, ReleasesOnceAndSwallowsErrors) {
  ThrowingReleasable throwing;
  zuExDeleterFunctionHolder holder(&throwing);
  EXPECT_NO_THROW(holder.Delete());
  EXPECT_EQ(holder.Memory(), nullptr);
  holder.Delete();
  EXPECT_EQ(throwing.releases, 1);
}

}  // namespace
