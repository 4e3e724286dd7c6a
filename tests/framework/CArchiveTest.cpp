#include "framework/CArchive.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <tuple>

#include "framework/CMemFile.h"
#include "tests/support/ArchiveTestSupport.h"
#include "tests/support/TempFolder.h"

using test_support::ByteWriter;
using test_support::Bytes;
using test_support::Load;
using test_support::Store;
using test_support::ToHex;

namespace {

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

TEST(CArchiveTest, NumbersAreLittleEndianAtTheirWidths) {
  const auto values = std::make_tuple(static_cast<BYTE>(0xAB), static_cast<WORD>(0x1234), static_cast<short>(-2),
                                      0x01020304, static_cast<UINT>(0xFFFFFFFE), static_cast<LONGLONG>(-1),
                                      static_cast<ULONGLONG>(0x0102030405060708ULL), 'z', 1.0, -2.5f);
  const Bytes bytes = Store([&](CArchive& ar) { std::apply([&](auto... v) { (ar << ... << v); }, values); });
  EXPECT_EQ(ToHex(bytes), ToHex(ByteWriter()
                                    .Byte(0xAB)
                                    .Word(0x1234)
                                    .Word(0xFFFE)
                                    .Int(0x01020304)
                                    .Int(0xFFFFFFFE)
                                    .Int64(-1)
                                    .Int64(0x0102030405060708LL)
                                    .Byte('z')
                                    .Int64(0x3FF0000000000000LL)  // 1.0
                                    .Int(0xC0200000)              // -2.5f
                                    .Get()));
  auto loaded = values;
  EXPECT_EQ(Load(bytes, [&](CArchive& ar) { std::apply([&](auto&... v) { (ar >> ... >> v); }, loaded); }), 0u);
  EXPECT_EQ(loaded, values);
}

// The text's length prefix changes form at 255 and at 0xFFFE bytes.
TEST(CArchiveTest, TextLengthFormsAtEveryBoundary) {
  const std::pair<size_t, Bytes> rows[] = {
      {0, {0x00}},
      {254, {0xFE}},
      {255, {0xFF, 0xFF, 0x00}},
      {0xFFFD, {0xFF, 0xFD, 0xFF}},
      {0xFFFE, {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}},
      {0x10000, {0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x01, 0x00}},
  };
  for (const auto& [nLength, prefix] : rows) {
    std::string text(nLength, 'x');
    if (!text.empty()) text.back() = 'y';
    Bytes expected = prefix;
    expected.insert(expected.end(), text.begin(), text.end());
    const Bytes bytes = Store([&](CArchive& ar) { ar << CString(text); });
    EXPECT_TRUE(bytes == expected) << "length " << nLength;
    EXPECT_EQ(LoadText(bytes).GetStdString(), text) << "length " << nLength;
  }
  const std::string binary("a\0\xff\x80z", 5);
  const Bytes binaryBytes = ByteWriter().Text(binary).Get();
  EXPECT_EQ(Store([&](CArchive& ar) { ar << CString(binary); }), binaryBytes);
  EXPECT_EQ(LoadText(binaryBytes).GetStdString(), binary);
  EXPECT_EQ(Store([](CArchive& ar) { ar << "hi"; }), ByteWriter().Text("hi").Get());
}

TEST(CArchiveTest, DamagedDataThrowsItsCauseWithoutAllocating) {
  const Bytes full = Store([](CArchive& ar) { ar << 7 << CString("text") << 2.0 << static_cast<LONGLONG>(9); });
  test_support::ExpectEveryCutThrowsEndOfFile(full, [](CArchive& ar) {
    int n = 0;
    CString text;
    double d = 0;
    LONGLONG ll = 0;
    ar >> n >> text >> d >> ll;
  });
  // A length far beyond the data, and the length marker no writer uses.
  const Bytes huge = ByteWriter().Byte(0xFF).Word(0xFFFF).Int(0xFFFFFFF0).Byte('a').Get();
  ExpectCause(CArchiveException::endOfFile, [&] { LoadText(huge); });
  const Bytes marker = ByteWriter().Byte(0xFF).Word(0xFFFE).Byte(2).Raw({'a', 'b'}).Get();
  ExpectCause(CArchiveException::badSchema, [&] { LoadText(marker); });
}

TEST(CArchiveTest, DirectionMisuseThrowsItsCause) {
  CMemFile file;
  CArchive storing(&file, CArchive::store);
  EXPECT_TRUE(storing.IsStoring() && !storing.IsLoading());
  int n = 0;
  ExpectCause(CArchiveException::writeOnly, [&] { storing >> n; });

  CMemFile source(Bytes{1, 0, 0, 0});
  CArchive loading(&source, CArchive::load);
  EXPECT_TRUE(loading.IsLoading());
  ExpectCause(CArchiveException::readOnly, [&] { loading << CString("x"); });
  loading >> n;
  EXPECT_EQ(n, 1);
  loading.Close();
  ExpectCause(CArchiveException::genericException, [&] { loading >> n; });
}

// Through a file: more than the archive's buffer both ways, a read past the
// end gives what there is, and then the end of the file.
TEST(CArchiveTest, FileArchiveCrossesTheBufferAndReadReturnsWhatThereIs) {
  test_support::TempFolder temp;
  const std::string path = temp / "archive.bin";
  Bytes block(10000);
  for (size_t i = 0; i < block.size(); ++i) block[i] = static_cast<BYTE>(i * 7);
  {
    CFile file;
    ASSERT_TRUE(file.Open(path.c_str(), CFile::modeCreate | CFile::modeWrite));
    CArchive ar(&file, CArchive::store);
    for (int i = 0; i < 3000; ++i) ar << i << CString("row");
    ar.Write(block.data(), static_cast<UINT>(block.size()));
  }
  CFile file;
  ASSERT_TRUE(file.Open(path.c_str(), CFile::modeRead));
  EXPECT_EQ(file.GetLength(), 3000u * 8u + block.size());
  CArchive ar(&file, CArchive::load);
  for (int i = 0; i < 3000; ++i) {
    int n = -1;
    CString text;
    ar >> n >> text;
    ASSERT_TRUE(n == i && text == "row") << i;
  }
  Bytes read(block.size() + 8);
  EXPECT_EQ(ar.Read(read.data(), 2), 2u);
  EXPECT_EQ(ar.GetBytesRemaining(), block.size() - 2);
  EXPECT_EQ(ar.Read(read.data() + 2, static_cast<UINT>(read.size())), block.size() - 2);
  EXPECT_EQ(ar.Read(read.data(), 8), 0u);
  read.resize(block.size());
  EXPECT_EQ(read, block);
  int n = 0;
  ExpectCause(CArchiveException::endOfFile, [&] { ar >> n; });
  CFile missing;
  EXPECT_FALSE(missing.Open((temp / "missing/file.bin").c_str(), CFile::modeRead));
  EXPECT_FALSE(missing.IsOpen());
}

TEST(CMemFileTest, SeekClampsAndWritesGrow) {
  CMemFile file;
  file.Write("abcdef", 6);
  EXPECT_EQ(file.Seek(-2, CFile::end), 4u);
  file.Write("XYZ", 3);
  EXPECT_EQ(std::string(file.GetContents().begin(), file.GetContents().end()), "abcdXYZ");
  EXPECT_EQ(file.Seek(-100, CFile::current), 0u);
  EXPECT_EQ(file.Seek(100, CFile::begin), 7u);
  char buffer[4];
  EXPECT_EQ(file.Read(buffer, 4), 0u);
  EXPECT_EQ(file.Seek(std::numeric_limits<LONGLONG>::max(), CFile::end), 7u);
}
