#include "utility/SerializeData.h"

#include <gtest/gtest.h>

#include "tests/support/ArchiveTestSupport.h"
#include "utility/Crypto.h"
#include "utility/TextArray.h"

using test_support::ByteWriter;
using test_support::Bytes;
using test_support::Load;
using test_support::Store;
using test_support::ToHex;

namespace {

// Stores value, loads the bytes into a fresh object, stores that again: both
// stores must give the same bytes, and the loaded object must equal value.
template <typename T, typename Fn>
Bytes ExpectRoundTrip(T value, Fn serialize) {
  const Bytes first = Store([&](CArchive& ar) { serialize(ar, value); });
  T loaded{};
  EXPECT_EQ(Load(first, [&](CArchive& ar) { serialize(ar, loaded); }), 0u);
  EXPECT_TRUE(loaded == value);
  EXPECT_EQ(ToHex(Store([&](CArchive& ar) { serialize(ar, loaded); })), ToHex(first));
  return first;
}

Bytes EncipheredText(const std::string& text) { return ByteWriter().Text(test_support::Enciphered(text)).Get(); }

}  // namespace

TEST(SerializeDataTest, BoolIsOneByteAndAnyNonZeroLoadsTrue) {
  bool bTrue = true;
  bool bFalse = false;
  EXPECT_EQ(Store([&](CArchive& ar) {
              SerializeData::Serialize(ar, bTrue);
              SerializeData::Serialize(ar, bFalse);
            }),
            (Bytes{1, 0}));
  bool bLoaded = false;
  Load(Bytes{0x80}, [&](CArchive& ar) { SerializeData::Serialize(ar, bLoaded); });
  EXPECT_TRUE(bLoaded);
  Load(Bytes{0x00}, [&](CArchive& ar) { SerializeData::Serialize(ar, bLoaded); });
  EXPECT_FALSE(bLoaded);
}

TEST(SerializeDataTest, LoopCounterWidthFollowsTheFormat) {
  const Bytes bytes = Store([](CArchive& ar) {
    EXPECT_EQ(SerializeData::SerializeLoopCounter(ar, 3, false), 3u);
    EXPECT_EQ(SerializeData::SerializeLoopCounter(ar, 0x01020304, true), 0x01020304u);
  });
  EXPECT_EQ(ToHex(bytes), ToHex(ByteWriter().Int64(3).Int(0x01020304).Get()));
  Load(bytes, [](CArchive& ar) {
    EXPECT_EQ(SerializeData::SerializeLoopCounter(ar, 99, false), 3u);
    EXPECT_EQ(SerializeData::SerializeLoopCounter(ar, 99, true), 0x01020304u);
  });
}

TEST(SerializeDataTest, VectorsByteForByte) {
  const Bytes ints = ExpectRoundTrip(std::vector<int>{1, -1, 0x7FFFFFFF},
                                     [](CArchive& ar, std::vector<int>& v) { SerializeData::Serialize(ar, v, false); });
  EXPECT_EQ(ToHex(ints), ToHex(ByteWriter().Int64(3).Int(1).Int(-1).Int(0x7FFFFFFF).Get()));

  const Bytes oldInts = ExpectRoundTrip(std::vector<int>{5},
                                        [](CArchive& ar, std::vector<int>& v) { SerializeData::Serialize(ar, v, true); });
  EXPECT_EQ(ToHex(oldInts), ToHex(ByteWriter().Int(1).Int(5).Get()));

  const Bytes bools = ExpectRoundTrip(std::vector<bool>{true, false, true},
                                      [](CArchive& ar, std::vector<bool>& v) { SerializeData::Serialize(ar, v, false); });
  EXPECT_EQ(ToHex(bools), ToHex(ByteWriter().Int64(3).Bool(true).Bool(false).Bool(true).Get()));

  const Bytes texts = ExpectRoundTrip(std::vector<CString>{"a", ""}, [](CArchive& ar, std::vector<CString>& v) {
    SerializeData::Serialize(ar, v, true);
  });
  EXPECT_EQ(ToHex(texts), ToHex(ByteWriter().Int(2).Text("a").Text("").Get()));
}

TEST(SerializeDataTest, MapsByteForByteInAscendingKeyOrder) {
  const Bytes bools = ExpectRoundTrip(std::map<int, bool>{{7, true}, {-3, false}},
                                      [](CArchive& ar, std::map<int, bool>& m) { SerializeData::Serialize(ar, m, false); });
  EXPECT_EQ(ToHex(bools), ToHex(ByteWriter().Int64(2).Int(-3).Bool(false).Int(7).Bool(true).Get()));

  const Bytes ints = ExpectRoundTrip(std::map<int, int>{{5001, -1}, {5000, 42}},
                                     [](CArchive& ar, std::map<int, int>& m) { SerializeData::Serialize(ar, m, true); });
  EXPECT_EQ(ToHex(ints), ToHex(ByteWriter().Int(2).Int(5000).Int(42).Int(5001).Int(-1).Get()));

  const Bytes doubles = ExpectRoundTrip(std::map<int, double>{{1, 0.5}},
                                        [](CArchive& ar, std::map<int, double>& m) { SerializeData::Serialize(ar, m, false); });
  EXPECT_EQ(ToHex(doubles), ToHex(ByteWriter().Int64(1).Int(1).Double(0.5).Get()));

  const Bytes dates = ExpectRoundTrip(std::map<int, DateTime>{{2, DateTime::FromJulian(2455683, 3600)}, {1, DateTime()}},
                                      [](CArchive& ar, std::map<int, DateTime>& m) { SerializeData::Serialize(ar, m, false); });
  EXPECT_EQ(ToHex(dates), ToHex(ByteWriter().Int64(2).Int(1).Int(0).Int(-1).Int(2).Int(2455683).Int(3600).Get()));

  const Bytes texts = ExpectRoundTrip(std::map<int, CString>{{9, "nine"}, {3, ""}},
                                      [](CArchive& ar, std::map<int, CString>& m) { SerializeData::Serialize(ar, m, false); });
  EXPECT_EQ(ToHex(texts), ToHex(ByteWriter().Int64(2).Int(3).Text("").Int(9).Text("nine").Get()));

  using IntVectors = std::map<int, std::vector<int>>;
  const Bytes nested = ExpectRoundTrip(IntVectors{{4, {1, 2}}, {6, {}}},
                                       [](CArchive& ar, IntVectors& m) { SerializeData::Serialize(ar, m, true); });
  EXPECT_EQ(ToHex(nested), ToHex(ByteWriter().Int(2).Int(4).Int(2).Int(1).Int(2).Int(6).Int(0).Get()));
}

TEST(SerializeDataTest, SetsAreWrittenInAscendingOrder) {
  const Bytes ordered = ExpectRoundTrip(std::set<int>{30, -2, 7},
                                        [](CArchive& ar, std::set<int>& s) { SerializeData::Serialize(ar, s, false); });
  EXPECT_EQ(ToHex(ordered), ToHex(ByteWriter().Int64(3).Int(-2).Int(7).Int(30).Get()));

  std::unordered_set<int> hashed;
  for (int i = 100; i > 0; i -= 7) hashed.insert(i);
  const Bytes hashedBytes = ExpectRoundTrip(
      hashed, [](CArchive& ar, std::unordered_set<int>& s) { SerializeData::Serialize(ar, s, false); });
  ByteWriter expected;
  expected.Int64(static_cast<long long>(hashed.size()));
  for (int i = 2; i <= 100; i += 7) expected.Int(i);
  EXPECT_EQ(ToHex(hashedBytes), ToHex(expected.Get()));
}

TEST(SerializeDataTest, FlaggedTextsAreEnciphered) {
  std::map<int, CString> texts = {{1, "plain"}, {2, "secret"}, {3, "x"}};
  const std::unordered_set<int> flagged = {2, 99};
  const Bytes bytes = Store([&](CArchive& ar) { SerializeData::Serialize(ar, texts, flagged, false); });
  EXPECT_EQ(ToHex(bytes),
            ToHex(ByteWriter().Int64(3).Int(1).Text("plain").Int(2).Raw(EncipheredText("secret")).Int(3).Text("x").Get()));
  std::map<int, CString> loaded;
  Load(bytes, [&](CArchive& ar) { SerializeData::Serialize(ar, loaded, flagged, false); });
  EXPECT_EQ(loaded, texts);
  // Without the flag the enciphered bytes come back as they are stored.
  Load(bytes, [&](CArchive& ar) { SerializeData::Serialize(ar, loaded, std::unordered_set<int>{}, false); });
  EXPECT_NE(loaded[2], "secret");
  EXPECT_EQ(loaded[1], "plain");
}

TEST(SerializeDataTest, EncipheredTextForm) {
  // Long enough for the key to wrap past 256 positions.
  const std::string text(300, 'A');
  EXPECT_EQ(Crypto::Encipher(Crypto::Encipher(CString(text))).GetStdString(), text);
  EXPECT_EQ(static_cast<unsigned char>(Crypto::Encipher("\x00\x00\x00").GetAt(0)), 0u);
  const CString zeros(std::string(3, '\0'));
  const CString key = Crypto::Encipher(zeros);
  EXPECT_EQ(static_cast<unsigned char>(key.GetAt(0)), 0xA5u);
  EXPECT_EQ(static_cast<unsigned char>(key.GetAt(1)), 0xC4u);
  EXPECT_EQ(static_cast<unsigned char>(key.GetAt(2)), 0xE3u);

  std::vector<CString> fields = {"Main St", "", "Springfield"};
  const Bytes bytes = ExpectRoundTrip(fields, [](CArchive& ar, std::vector<CString>& v) {
    SerializeData::SerializeEncrypted(ar, v, true);
  });
  EXPECT_EQ(ToHex(bytes), ToHex(ByteWriter().Int(3).Raw(EncipheredText("Main St")).Raw(EncipheredText("")).Raw(
                                    EncipheredText("Springfield")).Get()));
  CString one;
  Load(EncipheredText("name"), [&](CArchive& ar) { Crypto::DeserializeEncrypted(ar, one); });
  EXPECT_EQ(one, "name");
}

TEST(SerializeDataTest, TextArrayForm) {
  TextArray array;
  array.Add("first");
  array.Add("second");
  EXPECT_EQ(array.GetAt(5), "");
  const Bytes bytes = Store([&](CArchive& ar) { array.Serialize(ar, false); });
  EXPECT_EQ(ToHex(bytes), ToHex(ByteWriter().Int64(2).Text("first").Text("second").Get()));
  TextArray loaded;
  loaded.Add("replaced");
  Load(bytes, [&](CArchive& ar) { loaded.Serialize(ar, false); });
  ASSERT_EQ(loaded.GetSize(), 2);
  EXPECT_EQ(loaded[0], "first");
  EXPECT_EQ(loaded[1], "second");
}

// A damaged count must fail at once instead of allocating what it claims.
TEST(SerializeDataTest, CorruptedHugeCountsThrowEndOfFile) {
  const Bytes huge = ByteWriter().Int64(0x7FFFFFFFFFFFFFFFLL).Int(1).Int(2).Get();
  const Bytes hugeOld = ByteWriter().Int(0xFFFFFFFF).Int(1).Int(2).Get();
  auto expectEndOfFile = [](const Bytes& bytes, const std::function<void(CArchive&)>& fn) {
    try {
      Load(bytes, fn);
      ADD_FAILURE() << "no exception";
    } catch (const CArchiveException& e) {
      EXPECT_EQ(e.m_cause, CArchiveException::endOfFile);
    }
  };
  std::vector<int> ints;
  std::vector<bool> bools;
  std::map<int, CString> texts;
  std::map<int, std::vector<int>> nested;
  std::set<int> set;
  std::vector<CString> fields;
  TextArray array;
  expectEndOfFile(huge, [&](CArchive& ar) { SerializeData::Serialize(ar, ints, false); });
  expectEndOfFile(hugeOld, [&](CArchive& ar) { SerializeData::Serialize(ar, ints, true); });
  expectEndOfFile(huge, [&](CArchive& ar) { SerializeData::Serialize(ar, bools, false); });
  expectEndOfFile(huge, [&](CArchive& ar) { SerializeData::Serialize(ar, texts, false); });
  expectEndOfFile(hugeOld, [&](CArchive& ar) { SerializeData::Serialize(ar, nested, true); });
  expectEndOfFile(huge, [&](CArchive& ar) { SerializeData::Serialize(ar, set, false); });
  expectEndOfFile(hugeOld, [&](CArchive& ar) { SerializeData::SerializeEncrypted(ar, fields, true); });
  expectEndOfFile(huge, [&](CArchive& ar) { array.Serialize(ar, false); });
}

TEST(SerializeDataTest, EveryCutOfAContainerThrowsEndOfFile) {
  std::map<int, DateTime> dates = {{1, DateTime::FromJulian(2451545, 0)}, {2, DateTime()}};
  std::map<int, CString> texts = {{1, "one"}, {2, "two"}};
  const std::unordered_set<int> flagged = {2};
  const Bytes full = Store([&](CArchive& ar) {
    SerializeData::Serialize(ar, dates, true);
    SerializeData::Serialize(ar, texts, flagged, false);
  });
  test_support::ExpectEveryCutThrowsEndOfFile(full, [&](CArchive& ar) {
    std::map<int, DateTime> loadedDates;
    std::map<int, CString> loadedTexts;
    SerializeData::Serialize(ar, loadedDates, true);
    SerializeData::Serialize(ar, loadedTexts, flagged, false);
  });
}

TEST(SerializeDataTest, RepeatedKeyInADamagedMapKeepsTheLastValue) {
  const Bytes bytes = ByteWriter().Int(2).Int(5).Int(1).Int(5).Int(2).Get();
  std::map<int, int> values = {{9, 9}};
  Load(bytes, [&](CArchive& ar) { SerializeData::Serialize(ar, values, true); });
  EXPECT_EQ(values, (std::map<int, int>{{5, 2}}));
}
