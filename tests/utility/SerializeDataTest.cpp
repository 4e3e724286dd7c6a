#include "utility/SerializeData.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/support/ArchiveTestSupport.h"
#include "tests/support/TextArraySupport.h"
#include "utility/Crypto.h"
#include "utility/TextArray.h"

using test_support::ByteWriter;
using test_support::Bytes;
using test_support::Load;
using test_support::Store;
using test_support::ToHex;

namespace {

// value stores exactly the hand-written bytes; a fresh container loads all
// of them into an equal value; every cut of them ends in end-of-file.
template <typename T, typename Serialize>
void ExpectForm(T value, const Bytes& expected, Serialize serialize) {
  EXPECT_EQ(ToHex(Store([&](CArchive& ar) { serialize(ar, value); })), ToHex(expected));
  T loaded{};
  EXPECT_EQ(Load(expected, [&](CArchive& ar) { serialize(ar, loaded); }), 0u);
  EXPECT_TRUE(loaded == value);
  test_support::ExpectEveryCutThrowsEndOfFile(expected, [&](CArchive& ar) {
    T cut{};
    serialize(ar, cut);
  });
}

template <typename T>
void ExpectForm(T value, bool bOldFormat, const Bytes& expected) {
  ExpectForm(value, expected, [bOldFormat](CArchive& ar, T& v) { SerializeData::Serialize(ar, v, bOldFormat); });
}

Bytes EncipheredText(const std::string& text) { return ByteWriter().Text(test_support::Enciphered(text)).Get(); }

}  // namespace

// Old files count with 4 bytes, current ones with 8; a bool is one byte,
// any but 0 loading as true.
TEST(SerializeDataTest, ContainersByteForByteInAscendingOrder) {
  ExpectForm(true, Bytes{1}, [](CArchive& ar, bool& b) { SerializeData::Serialize(ar, b); });
  bool bLoaded = false;
  Load(Bytes{0x80}, [&](CArchive& ar) { SerializeData::Serialize(ar, bLoaded); });
  EXPECT_TRUE(bLoaded);
  ExpectForm(std::vector<int>{1, -1, 0x7FFFFFFF}, false, ByteWriter().Int64(3).Int(1).Int(-1).Int(0x7FFFFFFF).Get());
  ExpectForm(std::vector<int>{5}, true, ByteWriter().Int(1).Int(5).Get());
  ExpectForm(std::vector<bool>{true, false}, false, ByteWriter().Int64(2).Bool(true).Bool(false).Get());
  ExpectForm(std::vector<CString>{"a", ""}, true, ByteWriter().Int(2).Text("a").Text("").Get());
  ExpectForm(std::map<int, bool>{{7, true}, {-3, false}}, false,
             ByteWriter().Int64(2).Int(-3).Bool(false).Int(7).Bool(true).Get());
  ExpectForm(std::map<int, int>{{5001, -1}, {5000, 42}}, true, ByteWriter().Int(2).Int(5000).Int(42).Int(5001).Int(-1).Get());
  ExpectForm(std::map<int, double>{{1, 0.5}}, false, ByteWriter().Int64(1).Int(1).Double(0.5).Get());
  ExpectForm(std::map<int, DateTime>{{2, DateTime::FromJulian(2455683, 3600)}, {1, DateTime()}}, false,
             ByteWriter().Int64(2).Int(1).Int(0).Int(-1).Int(2).Int(2455683).Int(3600).Get());
  ExpectForm(std::map<int, CString>{{9, "nine"}, {3, ""}}, false,
             ByteWriter().Int64(2).Int(3).Text("").Int(9).Text("nine").Get());
  ExpectForm(std::map<int, std::vector<int>>{{4, {1, 2}}, {6, {}}}, true,
             ByteWriter().Int(2).Int(4).Int(2).Int(1).Int(2).Int(6).Int(0).Get());
  ExpectForm(std::set<int>{30, -2, 7}, false, ByteWriter().Int64(3).Int(-2).Int(7).Int(30).Get());
  std::unordered_set<int> hashed;
  ByteWriter sorted;
  sorted.Int64(15);
  for (int i = 100; i > 0; i -= 7) hashed.insert(i);
  for (int i = 2; i <= 100; i += 7) sorted.Int(i);
  ExpectForm(hashed, false, sorted.Get());
}

TEST(SerializeDataTest, FlaggedTextsAndAddressFieldsAreEnciphered) {
  // Long enough for the key to wrap past 256 positions.
  const std::string text(300, 'A');
  EXPECT_EQ(Crypto::Encipher(Crypto::Encipher(CString(text))).GetStdString(), text);
  EXPECT_EQ(Crypto::Encipher(CString(std::string(3, '\0'))).GetStdString(), "\xA5\xC4\xE3");

  const std::unordered_set<int> flagged = {2, 99};
  ExpectForm(std::map<int, CString>{{1, "plain"}, {2, "secret"}},
             ByteWriter().Int64(2).Int(1).Text("plain").Int(2).Raw(EncipheredText("secret")).Get(),
             [&](CArchive& ar, std::map<int, CString>& m) { SerializeData::Serialize(ar, m, flagged, false); });
  ExpectForm(std::vector<CString>{"Main St", "", "Springfield"},
             ByteWriter().Int(3).Raw(EncipheredText("Main St")).Raw(EncipheredText("")).Raw(EncipheredText("Springfield")).Get(),
             [](CArchive& ar, std::vector<CString>& v) { SerializeData::SerializeEncrypted(ar, v, true); });
  CString one;
  Load(EncipheredText("name"), [&](CArchive& ar) { Crypto::DeserializeEncrypted(ar, one); });
  EXPECT_EQ(one, "name");
}

TEST(SerializeDataTest, TextArrayFormReplacesTheElements) {
  const Bytes bytes = ByteWriter().Int64(2).Text("first").Text("second").Get();
  TextArray array = test_support::MakeTextArray({"first", "second"});
  EXPECT_EQ(ToHex(Store([&](CArchive& ar) { array.Serialize(ar, false); })), ToHex(bytes));
  TextArray loaded = test_support::MakeTextArray({"replaced"});
  Load(bytes, [&](CArchive& ar) { loaded.Serialize(ar, false); });
  EXPECT_EQ(test_support::Elements(loaded), (std::vector<std::string>{"first", "second"}));
}

// A damaged count must fail at once instead of allocating what it claims.
TEST(SerializeDataTest, CorruptedHugeCountsThrowEndOfFile) {
  const Bytes huge = ByteWriter().Int64(0x7FFFFFFFFFFFFFFFLL).Int(1).Int(2).Get();
  const Bytes hugeOld = ByteWriter().Int(0xFFFFFFFF).Int(1).Int(2).Get();
  std::vector<int> ints;
  std::vector<bool> bools;
  std::map<int, CString> texts;
  std::map<int, std::vector<int>> nested;
  std::set<int> set;
  std::vector<CString> fields;
  TextArray array;
  const std::pair<const char*, std::function<void(CArchive&)>> rows[] = {
      {"ints", [&](CArchive& ar) { SerializeData::Serialize(ar, ints, false); }},
      {"old ints", [&](CArchive& ar) { SerializeData::Serialize(ar, ints, true); }},
      {"bools", [&](CArchive& ar) { SerializeData::Serialize(ar, bools, false); }},
      {"texts", [&](CArchive& ar) { SerializeData::Serialize(ar, texts, false); }},
      {"old nested", [&](CArchive& ar) { SerializeData::Serialize(ar, nested, true); }},
      {"set", [&](CArchive& ar) { SerializeData::Serialize(ar, set, false); }},
      {"old enciphered", [&](CArchive& ar) { SerializeData::SerializeEncrypted(ar, fields, true); }},
      {"text array", [&](CArchive& ar) { array.Serialize(ar, false); }},
  };
  for (const auto& row : rows) {
    try {
      Load(std::string(row.first).rfind("old", 0) == 0 ? hugeOld : huge, row.second);
      ADD_FAILURE() << row.first << ": no exception";
    } catch (const CArchiveException& e) {
      EXPECT_EQ(e.m_cause, CArchiveException::endOfFile) << row.first;
    }
  }
}
