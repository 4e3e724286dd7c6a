#include <gtest/gtest.h>

#include <memory>

#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/schema/ListItemText.h"
#include "DataMgr/schema/ListItemTextDesc.h"
#include "tests/DataMgr/schema/SchemaArchiveWriter.h"
#include "tests/support/LocaleTestSupport.h"

using schema_test::DoubleEntry;
using schema_test::NumberEntry;
using schema_test::TextDescEntry;
using schema_test::TextEntry;
using test_support::ByteWriter;
using test_support::Bytes;
using test_support::ExpectArchiveForm;
using test_support::Load;

namespace {

class ListItemTest : public test_support::UsLocaleTest {};

}  // namespace

// Counted per use, never below zero.
TEST_F(ListItemTest, UsageCountNeverGoesBelowZero) {
  ListItemText item;
  item.UnregisterUsage();
  item.RegisterUsage();
  item.RegisterUsage();
  item.UnregisterUsage();
  EXPECT_EQ(item.GetUsageCount(), 1);
  item.UnregisterUsage();
  item.UnregisterUsage();
  EXPECT_EQ(item.GetUsageCount(), 0);
}

TEST_F(ListItemTest, TextsCompareIgnoringCaseButACaseChangeIsAChange) {
  ListItemText lower;
  ListItemText upper;
  EXPECT_TRUE(lower.SetTextRepresentation("abc"));
  EXPECT_FALSE(lower.SetTextRepresentation("abc"));
  upper.SetTextRepresentation("ABC");
  EXPECT_TRUE(lower == upper);
  EXPECT_FALSE(lower < upper);
  EXPECT_TRUE(lower.SetTextRepresentation("ABC"));
  EXPECT_EQ(lower.GetTextRepresentation(), "ABC");

  ListItemText b;
  b.SetTextRepresentation("b");
  EXPECT_TRUE(upper < b);
}

// Each class compares by its own key: the base by ID, numbers by value.
TEST_F(ListItemTest, NumbersCompareByValueAndTheBaseByID) {
  ListItemNumber n3;
  ListItemNumber n5;
  n3.SetNumber(3);
  n3.SetID(9);
  n5.SetNumber(5);
  n5.SetID(1);
  EXPECT_TRUE(n3 < n5);
  EXPECT_FALSE(n3 == n5);
  const ListItem& base3 = n3;
  const ListItem& base5 = n5;
  EXPECT_TRUE(base5 < base3);
  n5.SetID(9);
  EXPECT_TRUE(base3 == base5);

  ListItemDouble a;
  ListItemDouble b;
  a.SetNumber(0.1 + 0.2);
  b.SetNumber(0.3);
  EXPECT_FALSE(a == b);
  EXPECT_TRUE(b < a);
  b.SetNumber(0.1 + 0.2);
  EXPECT_TRUE(a == b);
}

TEST_F(ListItemTest, DescriptionTakesNoPartInEqualityOrText) {
  ListItemTextDesc a;
  ListItemTextDesc b;
  a.SetTextRepresentation("Red");
  a.SetDesc("warm");
  b.SetTextRepresentation("red");
  b.SetDesc("cold");
  EXPECT_TRUE(a == b);
  EXPECT_EQ(a.GetTextRepresentation(), "Red");
}

TEST_F(ListItemTest, NumbersReadAndWriteTheirText) {
  ListItemNumber number;
  EXPECT_TRUE(number.SetTextRepresentation("1234"));
  EXPECT_EQ(number.GetNumber(), 1234);
  EXPECT_EQ(number.GetTextRepresentation(), "1234");
  EXPECT_FALSE(number.SetTextRepresentation(" 1234"));

  ListItemDouble decimal;
  EXPECT_TRUE(decimal.SetTextRepresentation("1234.5"));
  EXPECT_EQ(decimal.GetNumber(), 1234.5);
  EXPECT_EQ(decimal.GetTextRepresentation(), "1,234.50");
  EXPECT_FALSE(decimal.SetTextRepresentation("1,234.50"));
}

// Copies keep the ID and the usage count, as the archive form shows.
TEST_F(ListItemTest, ArchiveFormOfEachClass) {
  ListItemNumber number;
  number.SetID(3);
  number.RegisterUsage();
  number.SetNumber(-2);
  ExpectArchiveForm(number, NumberEntry(3, 1, -2));

  ListItemDouble decimal;
  decimal.SetID(0);
  decimal.SetNumber(2.5);
  ExpectArchiveForm(decimal, DoubleEntry(0, 0, 2.5));

  ListItemText text;
  text.SetID(1);
  text.SetTextRepresentation("Blue");
  ExpectArchiveForm(text, TextEntry(1, 0, "Blue"));

  ListItemTextDesc desc;
  desc.SetID(2);
  desc.SetTextRepresentation("S");
  desc.SetDesc("small");
  ExpectArchiveForm(desc, TextDescEntry(2, 0, "S", "small"),
                    [](const ListItemTextDesc& loaded) { EXPECT_EQ(loaded.GetDesc(), "small"); });
  ListItemTextDesc copy(desc);
  ListItemTextDesc assigned;
  assigned = copy;
  ExpectArchiveForm(assigned, TextDescEntry(2, 0, "S", "small"));
}

// A version-1 record has no usage count: the entry keeps its own. The
// subclasses' own version words are read and ignored.
TEST_F(ListItemTest, VersionOneRecordKeepsTheUsageCount) {
  ListItemText item;
  item.RegisterUsage();
  item.RegisterUsage();
  const Bytes v1 = ByteWriter().Word(1).Int(4).Word(1).Text("old").Get();
  EXPECT_EQ(Load(v1, [&](CArchive& ar) { item.Serialize(ar); }), 0u);
  EXPECT_EQ(item.GetID(), 4);
  EXPECT_EQ(item.GetUsageCount(), 2);
  EXPECT_EQ(item.GetTextRepresentation(), "old");
  test_support::ExpectEveryCutThrowsEndOfFile(v1, [](CArchive& ar) { ListItemText().Serialize(ar); });

  const Bytes odd = ByteWriter().Word(2).Int(1).Int(0).Word(9).Int(5).Get();
  ListItemNumber number;
  Load(odd, [&](CArchive& ar) { number.Serialize(ar); });
  EXPECT_EQ(number.GetNumber(), 5);
}
