#include "DataMgr/types/ValueStore.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "DataMgr/types/UndoStore.h"
#include "tests/support/ArchiveTestSupport.h"

using test_support::ByteWriter;
using test_support::Bytes;
using test_support::Enciphered;
using test_support::ExpectEveryCutThrowsEndOfFile;
using test_support::Load;
using test_support::Loaded;
using test_support::Stored;
using test_support::ToHex;

namespace {

// A record's two stores, as the record classes embed them.
struct TestRecord {
  template <typename T>
  bool SetData(int nID, const T& value, bool bRecord) {
    return m_values.SetData(nID, value, bRecord, m_undo);
  }
  template <typename T>
  void GetData(int nID, T& out) const {
    m_values.GetData(nID, out);
  }
  bool HaveUndoData(int nID) const { return m_undo.HaveUndoData(nID); }

  ValueStore m_values;
  UndoStore m_undo;
};

DateTime Day(int nJulianDay) { return DateTime::FromJulian(nJulianDay, 3600); }

Money AllFieldsZero() {
  Money zero;
  zero.MakeNegative();
  return zero;
}

// The value of column nID, read into a T that starts as init.
template <typename T>
T Get(const ValueStore& values, int nID, T init = T()) {
  values.GetData(nID, init);
  return init;
}

template <typename T>
std::vector<T> Undo(const TestRecord& record, int nID) {
  std::vector<T> history;
  record.m_undo.GetUndoData(nID, history);
  return history;
}

// Store fields of the old (32-bit) counter versions, one map of one entry
// each, up to and including the text map.
ByteWriter OldStoreUpToTexts(unsigned nVersion, const std::string& text) {
  ByteWriter w;
  w.Word(nVersion);
  w.Int(1).Int(10).Bool(true);             // bool map
  w.Int(1).Int(11).Int(42);                // int map
  w.Int(1).Int(12).Double(2.5);            // double map
  w.Int(1).Int(13).Int(2451545).Int(60);   // date/time map
  w.Int(0);                                // flagged set
  w.Int(1).Int(14).Text(text);             // text map
  return w;
}

ByteWriter& OldMoney(ByteWriter& w) {
  return w.Int(1).Int(15).Word(1).Bool(false).Int64(1234);  // Money entries
}

// Version 1: the texts, then the address block with one address of every
// address version, then the Money.
Bytes VersionOne() {
  ByteWriter w = OldStoreUpToTexts(1, " t ");
  w.Int(8);            // addresses
  w.Int(100).Word(0);  // version 0: nothing more
  w.Int(101).Word(1);  // version 1: ten enciphered texts, the ID
  for (int i = 0; i < 10; ++i) w.Text(Enciphered("f" + std::to_string(i)));
  w.Int(4);
  w.Int(102).Word(2).Int(5).Bool(true).Int(2).Text("Name").Text("Street");  // ID, business, texts
  w.Int(103).Word(3).Int(5).Bool(false).Int(0);
  w.Int(104).Word(4).Int(5).Bool(true).Int(1).Text("Name");
  w.Int(105).Word(5).Int(5).Bool(true).Int(1).Text("Name").Int(3);  // usage count last
  w.Int(106).Word(6).Bool(true).Int(6).Int(2).Int(1).Text(Enciphered("Name"));
  w.Int(107).Word(7).Bool(false).Int(7).Int(0).Int64(2).Text(Enciphered("A")).Text(Enciphered("B"));
  return OldMoney(w).Get();
}

// Version 4: the Money, then the list block.
Bytes VersionFour() {
  ByteWriter w = OldStoreUpToTexts(4, "t");
  OldMoney(w).Int(2);                           // entries
  w.Int(1).Int(1).Int(7).Int(2).Int(1).Int(2);  // ID 1: {7: [1, 2]}
  return w.Int(2).Int(0).Get();                 // ID 2: empty map
}

// Versions 2, 3 and 5: the texts, then the Money.
Bytes Plain(unsigned nVersion, const std::string& text) {
  ByteWriter w = OldStoreUpToTexts(nVersion, text);
  return OldMoney(w).Get();
}

void ExpectOldFields(const ValueStore& values, const char* pszText) {
  EXPECT_TRUE(Get<bool>(values, 10));
  EXPECT_EQ(Get<int>(values, 11), 42);
  EXPECT_EQ(Get<double>(values, 12), 2.5);
  EXPECT_EQ(Get<DateTime>(values, 13), DateTime::FromJulian(2451545, 60));
  EXPECT_EQ(Get<CString>(values, 14), pszText);
  const Money money = Get<Money>(values, 15);
  EXPECT_FALSE(money > 0);
  EXPECT_EQ(money, Money(-12) - Money(34) / 100);
}

}  // namespace

// Reading an absent column gives each kind's empty value, and setting that
// value stores nothing; Money's empty value is -0, not 0.
TEST(ValueStoreTest, AbsentValuesPerKind) {
  TestRecord record;
  const ValueStore& values = record.m_values;
  EXPECT_FALSE(Get(values, 1, true));
  EXPECT_EQ(Get(values, 1, 0), -1);
  EXPECT_EQ(Get(values, 1, 1.0), 0.0);
  EXPECT_EQ(Get(values, 1, Money(5)), AllFieldsZero());
  EXPECT_EQ(Get(values, 1, Day(5)), DateTime());
  EXPECT_EQ(Get(values, 1, CString("x")), "");
  EXPECT_FALSE(record.SetData(1, false, true));
  EXPECT_FALSE(record.SetData(2, -1, true));
  EXPECT_FALSE(record.SetData(3, 0.0, true));
  EXPECT_FALSE(record.SetData(4, AllFieldsZero(), true));
  EXPECT_FALSE(record.SetData(5, DateTime(), true));
  EXPECT_FALSE(record.SetData(6, CString(), true));
  std::vector<int> ids;
  values.GetSupportedDataProps(ids);
  EXPECT_TRUE(ids.empty() && !values.HaveDataProp(1) && !record.HaveUndoData(2));
  EXPECT_TRUE(record.SetData(4, Money(0), true));
}

// Unrecorded edits neither create nor grow a history.
TEST(ValueStoreTest, HistoriesAreKeptPerKind) {
  TestRecord record;
  record.SetData(1, 2.5, true);
  record.SetData(1, true, true);
  record.SetData(1, Money(3), true);
  record.SetData(1, CString("Ab"), true);
  record.SetData(1, CString("ab"), true);
  EXPECT_EQ(Undo<double>(record, 1), (std::vector<double>{0.0}));
  EXPECT_EQ(Undo<bool>(record, 1), (std::vector<bool>{false}));
  EXPECT_EQ(Undo<Money>(record, 1), (std::vector<Money>{AllFieldsZero()}));
  EXPECT_EQ(Undo<CString>(record, 1), (std::vector<CString>{"", "Ab"}));

  std::vector<int> untouched = {9};
  record.m_undo.GetUndoData(1, untouched);
  record.m_undo.GetUndoData(2, untouched);
  EXPECT_EQ(untouched, (std::vector<int>{9}));
  record.m_undo.ClearUndoData();
  EXPECT_FALSE(record.HaveUndoData(1));
  const double dNaN = std::numeric_limits<double>::quiet_NaN();  // never equals the current value
  EXPECT_TRUE(record.SetData(2, dNaN, true));
  EXPECT_TRUE(record.SetData(2, dNaN, true));
  EXPECT_TRUE(record.SetData(3, CString("a"), false) && record.SetData(3, CString("b"), false));
  EXPECT_FALSE(record.HaveUndoData(3));
  EXPECT_TRUE(record.SetData(4, Day(1), true) && record.SetData(4, DateTime(), false));
  EXPECT_TRUE(record.HaveUndoData(4) && Undo<DateTime>(record, 4).empty());
}

// Registering keeps an existing value. Copying to a column: see the record
// tests.
TEST(ValueStoreTest, RegisteringKeepsAndChangingIDsSwapsOrLeavesTheTarget) {
  ValueStore values;
  values.RegisterDataProp(1, 10);
  values.RegisterDataProp(1, 3);
  values.RegisterDataProp(2, 3);
  values.ChangeDataPropIDInt(5, 1);
  EXPECT_EQ(Get<int>(values, 1), 10);
  EXPECT_EQ(Get<int>(values, 2), 3);
  EXPECT_FALSE(values.HaveDataPropInt(5));
  // Texts longer than 127 bytes, at columns as far apart as can be.
  const CString longText(std::string(300, 'a'));
  values.RegisterDataProp(INT_MIN, longText, false);
  values.RegisterDataProp(INT_MAX, CString("b"), false);
  values.ChangeDataPropIDString(INT_MIN, INT_MAX);
  EXPECT_EQ(Get<CString>(values, INT_MIN), "b");
  EXPECT_EQ(Get<CString>(values, INT_MAX), longText);
}

// Column 1 holds a value of every kind; each move takes the next kind in
// the order bool, int, double, Money, date/time, text to a column of its own.
TEST(ValueStoreTest, MovingTakesTheFirstKindThatHoldsTheColumn) {
  ValueStore values;
  values.RegisterDataProp(1, CString("text"), false);
  values.RegisterDataProp(1, Day(1));
  values.RegisterDataProp(1, Money(1));
  values.RegisterDataProp(1, 0.5);
  values.RegisterDataProp(1, 5);
  values.RegisterDataProp(1, true);
  values.RegisterDataProp(3, 6);
  const struct {
    int nTo;
    bool (ValueStore::*pHave)(int) const;
  } moves[] = {{2, &ValueStore::HaveDataPropBool},  {3, &ValueStore::HaveDataPropInt},
               {4, &ValueStore::HaveDataPropDouble}, {5, &ValueStore::HaveDataPropMoney},
               {6, &ValueStore::HaveDataPropDateTime}, {7, &ValueStore::HaveDataPropString}};
  for (const auto& move : moves) {
    values.MoveData(1, move.nTo);
    EXPECT_TRUE((values.*move.pHave)(move.nTo)) << move.nTo;
    EXPECT_FALSE((values.*move.pHave)(1)) << move.nTo;
  }
  EXPECT_FALSE(values.HaveDataProp(1));
  EXPECT_EQ(Get<int>(values, 3), 5);
  EXPECT_EQ(Get<CString>(values, 7), "text");
  values.MoveData(3, 3);
  EXPECT_TRUE(values.HaveDataPropInt(3));
  values.MoveData(8, 9);
  EXPECT_FALSE(values.HaveDataProp(9));
}

TEST(ValueStoreTest, MovingAFlaggedTextMovesItsFlag) {
  ValueStore values;
  values.RegisterDataProp(1, CString("secret"), true);
  values.RegisterDataProp(3, CString("plain"), false);
  values.MoveData(1, 2);
  const Bytes expected = ByteWriter()
                             .Word(6).Int64(0).Int64(0).Int64(0).Int64(0)
                             .Int64(1).Int(2)                                                   // flagged set
                             .Int64(2).Int(2).Text(Enciphered("secret")).Int(3).Text("plain")  // text map
                             .Int64(0)
                             .Get();
  EXPECT_EQ(ToHex(Stored(values)), ToHex(expected));
}

TEST(ValueStoreTest, CurrentArchiveByteForByte) {
  ValueStore values;
  values.RegisterDataProp(20, false);
  values.RegisterDataProp(10, true);
  values.RegisterDataProp(11, -7);
  values.RegisterDataProp(12, 0.25);
  values.RegisterDataProp(13, DateTime::FromJulian(2460000, -1));
  values.RegisterDataProp(15, CString("ab"), true);
  values.RegisterDataProp(14, CString(" keep "), false);
  values.RegisterDataProp(16, AllFieldsZero());
  const Bytes expected = ByteWriter()
                             .Word(6)
                             .Int64(2).Int(10).Bool(true).Int(20).Bool(false)  // bool map
                             .Int64(1).Int(11).Int(-7)                         // int map
                             .Int64(1).Int(12).Double(0.25)                    // double map
                             .Int64(1).Int(13).Int(2460000).Int(-1)            // date/time map
                             .Int64(1).Int(15)                                 // flagged set
                             .Int64(2).Int(14).Text(" keep ").Int(15).Text(Enciphered("ab"))
                             .Int64(1).Int(16).Word(1).Bool(false).Int64(0)  // Money
                             .Get();
  test_support::ExpectArchiveForm(values, expected, [&](const ValueStore& loaded) {
    EXPECT_TRUE(loaded == values);
    EXPECT_EQ(Get<CString>(loaded, 15), "ab");
  });
}

// A newer version reads as the current one.
TEST(ValueStoreTest, DamagedMapsKeepTheLastOfARepeatedKey) {
  const Bytes bytes = ByteWriter()
                          .Word(9)
                          .Int64(0)
                          .Int64(3).Int(5).Int(1).Int(2).Int(2).Int(5).Int(3)  // int map, 5 twice, out of order
                          .Int64(0).Int64(0).Int64(0).Int64(0).Int64(0)
                          .Get();
  ValueStore values = Loaded<ValueStore>(bytes);
  EXPECT_EQ(Get<int>(values, 5), 3);
  const Bytes ordered =
      ByteWriter().Word(6).Int64(0).Int64(2).Int(2).Int(2).Int(5).Int(3).Int64(0).Int64(0).Int64(0).Int64(0).Int64(0).Get();
  EXPECT_EQ(ToHex(Stored(values)), ToHex(ordered));
}

TEST(ValueStoreTest, HugeCountsThrowBeforeAllocating) {
  const Bytes bytes = ByteWriter().Word(6).Int64(0x7FFFFFFFFFFFLL).Int(1).Bool(true).Get();
  EXPECT_THROW(Loaded<ValueStore>(bytes), CArchiveException);
  const Bytes addresses = OldStoreUpToTexts(1, "x").Int(0x7FFFFFFF).Get();
  EXPECT_THROW(Loaded<ValueStore>(addresses), CArchiveException);
}

// Versions 1 and 2 trim the texts, 3 and later keep them; the address block
// of version 1 and the list block of version 4 are read and dropped.
TEST(ValueStoreTest, EveryOldVersion) {
  const struct {
    unsigned nVersion;
    Bytes bytes;
    const char* pszText;
  } rows[] = {{1, VersionOne(), "t"},
              {2, Plain(2, "  padded text \t"), "padded text"},
              {3, Plain(3, "t"), "t"},
              {4, VersionFour(), "t"},
              {5, Plain(5, "  padded text \t"), "  padded text \t"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.nVersion);
    ExpectOldFields(Loaded<ValueStore>(row.bytes), row.pszText);
    ExpectEveryCutThrowsEndOfFile(row.bytes, [](CArchive& ar) { ValueStore().Serialize(ar); });
  }
}

TEST(ValueStoreTest, AHalfLoadedStoreStaysUsable) {
  const Bytes bytes = ByteWriter()
                          .Word(6).Int64(0).Int64(0).Int64(0).Int64(0).Int64(0)  // version, five empty maps
                          .Int64(3).Int(9).Text("a").Int(4).Text("b")             // text map of three
                          .Int(7).Byte(200).Raw(Bytes(10, 'c'))                   // the third: 200 bytes, 10 there
                          .Get();
  ValueStore values;
  EXPECT_THROW(Load(bytes, [&](CArchive& ar) { values.Serialize(ar); }), CArchiveException);
  EXPECT_EQ(Get<CString>(values, 4), "b");
  EXPECT_EQ(Get<CString>(values, 9), "a");
  values.RegisterDataProp(5, CString("c"), false);
  std::vector<int> ids;
  values.GetSupportedDataProps(ids);
  EXPECT_EQ(ids, (std::vector<int>{4, 5, 9}));
}
