#include "zu/core/zuAtom_str.h"

#include <gtest/gtest.h>

#include <string>

#include "zu/core/zuAtomTable.h"
#include "zu/core/zuFormat.h"
#include "zu/core/zuFormatPos.h"

namespace {

TEST(zuAtom_strTest, EqualityComparesAtomsOverTheAtomsBytes) {
  // Two records with the same text that were never entered: distinct atoms.
  zuAtomStore leftRecord = {"same"};
  zuAtomStore rightRecord = {"same"};
  zuAtom_str left(&leftRecord);
  zuAtom_str right(&rightRecord);
  EXPECT_TRUE(left.Equals(right));  // as strings
  EXPECT_FALSE(left == right);
  EXPECT_TRUE(left != &rightRecord);
  zuAtom_str byName("zuAtom_strTest.name");
  EXPECT_TRUE(byName == zuAtomTable::getAtom("zuAtom_strTest.name", 0));
  EXPECT_TRUE(zuAtom_str() == aUT_EmptyString);

  // The text is the atom's bytes, not a copy.
  zuAtom_str one(aUT_One);
  EXPECT_EQ(static_cast<const char*>(one), aUT_One->text);
  EXPECT_TRUE(one.IsLiteral());

  EXPECT_TRUE(zuAtom_str(static_cast<zuAtomStore*>(nullptr)).IsNull());

  // Editing detaches the text; the atom stays.
  one += "2";
  EXPECT_STREQ(aUT_One->text, "1");
  EXPECT_TRUE(one == aUT_One);
}

TEST(zuAtom_strTest, FormattersStreamTheAtomsText) {
  zuAtomStore* name = zuAtomTable::getAtom("width", 0);
  zuFormat format(zuString("%s=%s;"));
  format << name << aUT_Asterisk;
  EXPECT_STREQ(static_cast<const char*>(format), "width=*;");

  zuFormatPos positional(zuString("%2 before %1"), name);
  positional << aUT_Zero;
  EXPECT_STREQ(static_cast<const char*>(positional), "0 before width");
  zuFormatPos nullAtom(zuString("[%1]"), static_cast<zuAtomStore*>(nullptr));
  EXPECT_STREQ(static_cast<const char*>(nullAtom), "[]");
}

}  // namespace
