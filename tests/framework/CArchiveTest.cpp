#include "framework/CArchive.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <string>

#include "framework/CMemFile.h"
#include "tests/support/ArchiveTestSupport.h"

using test_support::ByteWriter;
using test_support::Bytes;
using test_support::Load;
using test_support::Store;
using test_support::ToHex;

namespace {

Bytes StoreText(const std::string& text) {
  return Store([&](CArchive& ar) { ar << CString(text); });
}

CString LoadText(const Bytes& bytes) {
  CString text;
  Load(bytes, [&](CArchive& ar) { ar >> text; });
  return text;
}

void ExpectCause(int cause, const std::function<void()>& fn) {
  try {
    fn();
    ADD_FAILURE() << "no archive exception";
  } catch (const CArchiveException& e) {
    EXPECT_EQ(e.m_cause, cause);
  }
}

}  // namespace

TEST(CArchiveTest, IntegersAreLittleEndianAtTheirWidths) {
  const Bytes bytes = Store([](CArchive& ar) {
    ar << static_cast<BYTE>(0xAB) << static_cast<WORD>(0x1234) << static_cast<short>(-2) << 0x01020304
       << static_cast<UINT>(0xFFFFFFFE) << static_cast<LONGLONG>(-1) << static_cast<ULONGLONG>(0x0102030405060708ULL)
       << 'z';
  });
  const Bytes expected = {0xAB, 0x34, 0x12, 0xFE, 0xFF, 0x04, 0x03, 0x02, 0x01, 0xFE, 0xFF, 0xFF, 0xFF,
                          0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x08, 0x07, 0x06, 0x05, 0x04,
                          0x03, 0x02, 0x01, 'z'};
  EXPECT_EQ(ToHex(bytes), ToHex(expected));

  BYTE by = 0;
  WORD w = 0;
  short s = 0;
  int n = 0;
  UINT u = 0;
  LONGLONG ll = 0;
  ULONGLONG ull = 0;
  char ch = 0;
  const ULONGLONG nLeft = Load(bytes, [&](CArchive& ar) { ar >> by >> w >> s >> n >> u >> ll >> ull >> ch; });
  EXPECT_EQ(nLeft, 0u);
  EXPECT_EQ(by, 0xAB);
  EXPECT_EQ(w, 0x1234);
  EXPECT_EQ(s, -2);
  EXPECT_EQ(n, 0x01020304);
  EXPECT_EQ(u, 0xFFFFFFFEu);
  EXPECT_EQ(ll, -1);
  EXPECT_EQ(ull, 0x0102030405060708ULL);
  EXPECT_EQ(ch, 'z');
}

TEST(CArchiveTest, FloatingPointIsIeeeLittleEndian) {
  const Bytes bytes = Store([](CArchive& ar) { ar << 1.0 << -2.5f; });
  EXPECT_EQ(ToHex(bytes), ToHex(ByteWriter().Int64(0x3FF0000000000000LL).Int(0xC0200000).Get()));
  double d = 0;
  float f = 0;
  Load(bytes, [&](CArchive& ar) { ar >> d >> f; });
  EXPECT_EQ(d, 1.0);
  EXPECT_EQ(f, -2.5f);

  const double values[] = {0.0, -0.0, 1e308, std::numeric_limits<double>::denorm_min(),
                           std::numeric_limits<double>::infinity()};
  for (double value : values) {
    double loaded = 1;
    Load(Store([&](CArchive& ar) { ar << value; }), [&](CArchive& ar) { ar >> loaded; });
    EXPECT_EQ(std::signbit(loaded), std::signbit(value));
    EXPECT_EQ(loaded, value);
  }
}

// The text's length prefix changes form at 255 and at 0xFFFE bytes.
TEST(CArchiveTest, TextLengthFormsAtEveryBoundary) {
  struct Case {
    size_t nLength;
    Bytes prefix;
  };
  const Case cases[] = {
      {0, {0x00}},
      {1, {0x01}},
      {254, {0xFE}},
      {255, {0xFF, 0xFF, 0x00}},
      {256, {0xFF, 0x00, 0x01}},
      {0xFFFD, {0xFF, 0xFD, 0xFF}},
      {0xFFFE, {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}},
      {0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}},
      {0x10000, {0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x01, 0x00}},
  };
  for (const Case& c : cases) {
    std::string text(c.nLength, 'x');
    if (!text.empty()) text.back() = 'y';
    const Bytes bytes = StoreText(text);
    ASSERT_EQ(bytes.size(), c.prefix.size() + c.nLength) << "length " << c.nLength;
    EXPECT_EQ(ToHex(Bytes(bytes.begin(), bytes.begin() + static_cast<long>(c.prefix.size()))), ToHex(c.prefix))
        << "length " << c.nLength;
    EXPECT_EQ(bytes, ByteWriter().Text(text).Get()) << "length " << c.nLength;
    EXPECT_EQ(LoadText(bytes).GetStdString(), text) << "length " << c.nLength;
  }
}

TEST(CArchiveTest, TextsKeepEmbeddedNulAndHighBytes) {
  const std::string text("a\0\xff\x80z", 5);
  const Bytes bytes = StoreText(text);
  EXPECT_EQ(ToHex(bytes), ToHex({0x05, 'a', 0x00, 0xFF, 0x80, 'z'}));
  EXPECT_EQ(LoadText(bytes).GetStdString(), text);
  EXPECT_EQ(Store([](CArchive& ar) { ar << "hi"; }), ByteWriter().Text("hi").Get());
}

TEST(CArchiveTest, ShortDataEndsInEndOfFile) {
  const Bytes full = Store([](CArchive& ar) { ar << 7 << CString("text") << 2.0 << static_cast<LONGLONG>(9); });
  test_support::ExpectEveryCutThrowsEndOfFile(full, [](CArchive& ar) {
    int n = 0;
    CString text;
    double d = 0;
    LONGLONG ll = 0;
    ar >> n >> text >> d >> ll;
  });
}

TEST(CArchiveTest, HugeTextLengthThrowsWithoutAllocating) {
  const Bytes claim = ByteWriter().Byte(0xFF).Word(0xFFFF).Int(0xFFFFFFF0).Byte('a').Get();
  ExpectCause(CArchiveException::endOfFile, [&] { LoadText(claim); });
}

TEST(CArchiveTest, UnwrittenLengthMarkerIsABadLayout) {
  const Bytes marker = ByteWriter().Byte(0xFF).Word(0xFFFE).Byte(2).Raw({'a', 'b'}).Get();
  ExpectCause(CArchiveException::badSchema, [&] { LoadText(marker); });
}

TEST(CArchiveTest, DirectionMisuseThrowsItsCause) {
  CMemFile file;
  CArchive storing(&file, CArchive::store);
  EXPECT_TRUE(storing.IsStoring());
  EXPECT_FALSE(storing.IsLoading());
  int n = 0;
  ExpectCause(CArchiveException::writeOnly, [&] { storing >> n; });
  char buffer[4];
  ExpectCause(CArchiveException::writeOnly, [&] { storing.Read(buffer, 4); });

  CMemFile source(Bytes{1, 0, 0, 0});
  CArchive loading(&source, CArchive::load);
  EXPECT_TRUE(loading.IsLoading());
  ExpectCause(CArchiveException::readOnly, [&] { loading << 5; });
  ExpectCause(CArchiveException::readOnly, [&] { loading << CString("x"); });
  loading >> n;
  EXPECT_EQ(n, 1);
  ExpectCause(CArchiveException::endOfFile, [&] { loading >> n; });

  loading.Close();
  ExpectCause(CArchiveException::genericException, [&] { loading >> n; });
}

TEST(CArchiveTest, ReadReturnsWhatThereIs) {
  CMemFile source(Bytes{1, 2, 3});
  CArchive ar(&source, CArchive::load);
  BYTE buffer[8] = {};
  EXPECT_EQ(ar.GetBytesRemaining(), 3u);
  EXPECT_EQ(ar.Read(buffer, 2), 2u);
  EXPECT_EQ(ar.GetBytesRemaining(), 1u);
  EXPECT_EQ(ar.Read(buffer, 8), 1u);
  EXPECT_EQ(buffer[0], 3);
  EXPECT_EQ(ar.Read(buffer, 8), 0u);
  EXPECT_EQ(ar.GetBytesRemaining(), 0u);
}

TEST(CArchiveTest, LargeDataCrossesTheBufferIntact) {
  Bytes block(10000);
  for (size_t i = 0; i < block.size(); ++i) block[i] = static_cast<BYTE>(i * 7);
  const Bytes bytes = Store([&](CArchive& ar) {
    for (int i = 0; i < 3000; ++i) ar << i;
    ar.Write(block.data(), static_cast<UINT>(block.size()));
    ar << CString(std::string(70000, 'k'));
  });
  ASSERT_EQ(bytes.size(), 3000 * 4 + block.size() + 7 + 70000);
  Load(bytes, [&](CArchive& ar) {
    for (int i = 0; i < 3000; ++i) {
      int n = -1;
      ar >> n;
      ASSERT_EQ(n, i);
    }
    Bytes read(block.size());
    EXPECT_EQ(ar.Read(read.data(), static_cast<UINT>(read.size())), block.size());
    EXPECT_EQ(read, block);
    CString text;
    ar >> text;
    EXPECT_EQ(text.GetLength(), 70000);
    EXPECT_EQ(ar.GetBytesRemaining(), 0u);
  });
}

TEST(CArchiveTest, FileArchiveRoundTrip) {
  char path[] = "/tmp/vaxo057-archive-XXXXXX";
  const int fd = mkstemp(path);
  ASSERT_GE(fd, 0);
  close(fd);
  {
    CFile file;
    ASSERT_TRUE(file.Open(path, CFile::modeCreate | CFile::modeWrite));
    CArchive ar(&file, CArchive::store);
    for (int i = 0; i < 5000; ++i) ar << i << CString("row");
  }
  {
    CFile file;
    ASSERT_TRUE(file.Open(path, CFile::modeRead));
    EXPECT_EQ(file.GetLength(), 5000u * 8u);
    CArchive ar(&file, CArchive::load);
    EXPECT_EQ(ar.GetBytesRemaining(), 5000u * 8u);
    for (int i = 0; i < 5000; ++i) {
      int n = -1;
      CString text;
      ar >> n >> text;
      ASSERT_EQ(n, i);
      ASSERT_EQ(text, "row");
    }
    int n = 0;
    ExpectCause(CArchiveException::endOfFile, [&] { ar >> n; });
  }
  std::remove(path);
  CFile missing;
  EXPECT_FALSE(missing.Open("/nonexistent-folder/file.bin", CFile::modeRead));
  EXPECT_FALSE(missing.IsOpen());
}

TEST(CMemFileTest, SeekClampsAndWritesGrow) {
  CMemFile file;
  file.Write("abcdef", 6);
  EXPECT_EQ(file.GetLength(), 6u);
  EXPECT_EQ(file.Seek(-2, CFile::end), 4u);
  file.Write("XYZ", 3);
  EXPECT_EQ(std::string(file.GetContents().begin(), file.GetContents().end()), "abcdXYZ");
  EXPECT_EQ(file.Seek(-100, CFile::current), 0u);
  EXPECT_EQ(file.Seek(100, CFile::begin), 7u);
  char buffer[4];
  EXPECT_EQ(file.Read(buffer, 4), 0u);
  EXPECT_EQ(file.Seek(std::numeric_limits<LONGLONG>::max(), CFile::end), 7u);
}
