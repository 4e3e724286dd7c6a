#include <gtest/gtest.h>

#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/schema/ListItemText.h"
#include "DataMgr/schema/ListItemTextDesc.h"
#include "tests/DataMgr/schema/SchemaArchiveWriter.h"
#include "tests/support/LocaleTestSupport.h"

using schema_test::TextDescEntry;
using test_support::ExpectArchiveForm;

namespace {

class ListItemTest : public test_support::UsLocaleTest {};

}  // namespace

// Each class compares by its own key: texts ignoring case (the description
// taking no part), numbers by value, the base by ID. Setting a text reports
// a change, a change of case included.
TEST_F(ListItemTest, EachClassComparesByItsOwnKey) {
  ListItemText lower, upper, b;
  const bool bFirstSet = lower.SetTextRepresentation("abc");
  const bool bSameSet = lower.SetTextRepresentation("abc");
  upper.SetTextRepresentation("ABC");
  b.SetTextRepresentation("b");
  ListItemTextDesc red, redToo;
  red.SetTextRepresentation("Red");
  red.SetDesc("warm");
  redToo.SetTextRepresentation("red");
  redToo.SetDesc("cold");
  ListItemNumber n3, n5;
  n3.SetNumber(3);
  n3.SetID(9);
  n5.SetNumber(5);
  n5.SetID(1);
  const ListItem& base3 = n3;
  const ListItem& base5 = n5;
  ListItemDouble sum, third;
  sum.SetNumber(0.1 + 0.2);
  third.SetNumber(0.3);
  const struct {
    const char* name;
    bool bGot, bExpected;
  } rows[] = {{"text set", bFirstSet, true},        {"same text set", bSameSet, false},
              {"abc == ABC", lower == upper, true}, {"abc < ABC", lower < upper, false},
              {"ABC < b", upper < b, true},         {"Red/warm == red/cold", red == redToo, true},
              {"3 < 5", n3 < n5, true},             {"3 == 5", n3 == n5, false},
              {"ID 1 < ID 9", base5 < base3, true}, {"ID 1 == ID 9", base5 == base3, false},
              {"0.1 + 0.2 == 0.3", sum == third, false},
              {"0.3 < 0.1 + 0.2", third < sum, true}, {"case change set", lower.SetTextRepresentation("ABC"), true}};
  for (const auto& row : rows) EXPECT_EQ(row.bGot, row.bExpected) << row.name;
  EXPECT_EQ(red.GetTextRepresentation(), "Red");
}

// Copies keep the ID and the usage count, which never goes below zero, as
// the archive form shows. (The column's version table holds the forms of
// the number, decimal and text entries.)
TEST_F(ListItemTest, ArchiveFormOfCopies) {
  ListItemTextDesc desc;
  desc.SetID(2);
  desc.UnregisterUsage();
  desc.RegisterUsage();
  desc.RegisterUsage();
  desc.UnregisterUsage();
  desc.SetTextRepresentation("S");
  desc.SetDesc("small");
  ListItemTextDesc assigned;
  assigned = ListItemTextDesc(desc);
  ExpectArchiveForm(assigned, TextDescEntry(2, 1, "S", "small"));
}
