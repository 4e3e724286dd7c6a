// Document files as they fail for a user: a target that is a folder or in a
// missing folder, a refused, full or failing disk (injected through
// DocumentFile's fault hook at the step that fails), and files that are
// missing, cut short, damaged or newer than the library.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>

#include "DataMgr/document/DocumentFile.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/support/ArchiveTestSupport.h"
#include "tests/support/TempFolder.h"

namespace {

using document_test::AddColumn;
using document_test::Enter;
using test_support::Bytes;
using test_support::Stored;
using test_support::TempFolder;
using test_support::WriteRaw;

// A document of nItems items with a text, a number and a list value each;
// nSeed, also its registry ID, makes two documents differ in every item.
void Fill(DataMgmt& doc, int nItems, int nSeed) {
  doc.GetDataPropMgr().SetID(nSeed);
  const DataProp& text = AddColumn(doc, DataType::Text);
  const DataProp& number = AddColumn(doc, DataType::Number);
  const DataProp& list = AddColumn(doc, DataType::ValueListSuggested);
  doc.SetMRUExportPath(CString("/exports/") + CString(std::to_string(nSeed)));
  for (int i = 0; i < nItems; ++i) {
    DataItem* pItem = doc.CreateDataItem(nullptr, true, true);
    Enter(doc, *pItem, text, CString("item ") + CString(std::to_string(i * nSeed)) + " of a long document");
    Enter(doc, *pItem, number, CString(std::to_string(i + nSeed)));
    Enter(doc, *pItem, list, CString(std::to_string(i % 7 + nSeed)));
  }
}

// The regular files in folder.
long FileCount(const TempFolder& folder) {
  using std::filesystem::directory_iterator;
  return std::count_if(directory_iterator(folder.Path()), directory_iterator(),
                       [](const auto& entry) { return entry.is_regular_file(); });
}

// The step that fails, and its error, while the fault hook is set.
DocumentFile::Step g_nFaultStep = DocumentFile::CreateTemp;
int g_nFaultError = 0;

// Makes one step of every DocumentFile fail with nError until the test ends.
void InjectFault(DocumentFile::Step nStep, int nError) {
  g_nFaultStep = nStep;
  g_nFaultError = nError;
  DocumentFile::SetFaultHook([](DocumentFile::Step nAt) { return nAt == g_nFaultStep ? g_nFaultError : 0; });
}

class DocumentFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Fill(m_old, 3, 1);
    Fill(m_new, 4, 2);
    ASSERT_TRUE(DocumentFile(m_target).Save(m_old));
  }
  void TearDown() override { DocumentFile::SetFaultHook(nullptr); }

  TempFolder m_folder;
  std::string m_target = m_folder / "list.dat";
  DataMgmt m_old;
  DataMgmt m_new;
};

TEST_F(DocumentFileTest, SavedDocumentReplacesTheOldOneAndLoadsAsSaved) {
  chmod(m_target.c_str(), 0640);
  DocumentFile file(m_target);
  ASSERT_TRUE(file.Save(m_new)) << file.GetMessage();
  EXPECT_TRUE(file.GetMessage().IsEmpty());
  DataMgmt loaded;
  loaded.SetAliasDataProp(5000, 5001);
  ASSERT_TRUE(file.Load(loaded)) << file.GetMessage();
  EXPECT_EQ(Stored(loaded), Stored(m_new));
  EXPECT_EQ(loaded.GetAliasDataProp(5000), 5001);
  EXPECT_EQ(FileCount(m_folder), 1);
  struct stat info {};
  ASSERT_EQ(stat(m_target.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0640u);
}

// A fault of error 0 lets every step run.
TEST_F(DocumentFileTest, FailedSavesLeaveTheTargetAsItWas) {
  std::filesystem::create_directory(m_folder / "a folder");
  const struct {
    std::string path;
    DocumentFile::Step nStep;
    int nError;
    DocumentFile::Cause nCause;
    const char* pszRow;
  } faults[] = {
      {m_folder / "a folder", DocumentFile::CreateTemp, 0, DocumentFile::NotAFile, "target is a folder"},
      {m_folder / "gone/list.dat", DocumentFile::CreateTemp, 0, DocumentFile::FolderMissing, "folder is gone"},
      {m_target, DocumentFile::CreateTemp, EACCES, DocumentFile::NoPermission, "read-only folder"},
      {m_target, DocumentFile::CreateTemp, EMFILE, DocumentFile::IoError, "no file handle left"},
      {m_target, DocumentFile::WriteTemp, ENOSPC, DocumentFile::NoSpace, "disk full while writing"},
      {m_target, DocumentFile::SyncTemp, EIO, DocumentFile::IoError, "flush to disk fails"},
      {m_target, DocumentFile::ReplaceTarget, EBUSY, DocumentFile::IoError, "rename fails"},
  };
  // Each save fails with its cause; the target still holds m_old and the
  // folder holds nothing else.
  for (const auto& fault : faults) {
    InjectFault(fault.nStep, fault.nError);
    DocumentFile file(fault.path);
    EXPECT_FALSE(file.Save(m_new)) << fault.pszRow;
    EXPECT_EQ(file.GetCause(), fault.nCause) << fault.pszRow << ": " << file.GetMessage();
    DataMgmt loaded;
    EXPECT_TRUE(DocumentFile(m_target).Load(loaded)) << fault.pszRow;
    EXPECT_EQ(Stored(loaded), Stored(m_old)) << fault.pszRow;
    EXPECT_EQ(FileCount(m_folder), 1) << fault.pszRow << ": a temporary file was left";
  }
}

TEST_F(DocumentFileTest, MessagesNameTheOperationThePathAndTheSystemsReason) {
  DocumentFile file(m_target);
  InjectFault(DocumentFile::WriteTemp, ENOSPC);
  EXPECT_FALSE(file.Save(m_new));
  EXPECT_EQ(file.GetSystemError(), ENOSPC);
  EXPECT_EQ(file.GetMessage().GetStdString(),
            "cannot save \"" + m_target + "\": the disk is full (No space left on device)");
  InjectFault(DocumentFile::ReadFile, EACCES);
  EXPECT_FALSE(file.Load(m_new));
  EXPECT_EQ(file.GetCause(), DocumentFile::NoPermission);
  EXPECT_EQ(file.GetMessage().GetStdString(),
            "cannot load \"" + m_target + "\": permission denied (Permission denied)");
}

TEST_F(DocumentFileTest, FailedLoadsLeaveTheDocumentEmptyAndSayWhere) {
  const Bytes saved = Stored(m_old);
  const std::string folderPath = m_folder / "a folder";
  std::filesystem::create_directory(folderPath);
  const struct {
    std::string path;
    Bytes bytes;  // written to path when not empty
    DocumentFile::Cause nCause;
    ULONGLONG nOffset;
    const char* pszSaid;  // the cause as the message gives it
    const char* pszRow;
  } rows[] = {
      {m_folder / "none.dat", {}, DocumentFile::NotFound, 0, ": the file does not exist (", "no such file"},
      {folderPath, {}, DocumentFile::NotAFile, 0, ": the path names a folder", "a folder"},
      {m_folder / "short.dat", test_support::ShrinkSize(saved, 1), DocumentFile::CutShort, 1,
       ": the file ends before the document does at byte 1 of 1", "one byte"},
      {m_folder / "tail.dat", test_support::ByteWriter().Raw(saved).Byte(0).Get(), DocumentFile::Damaged,
       saved.size(), ": the file is damaged or holds no document at byte", "a byte after the end"},
      {m_folder / "newer.dat", test_support::SetByte(saved, 0, DataMgmt::CURRENT_VERSION + 1),
       DocumentFile::NewerVersion, 0, ": the document was written by a newer version of the library at byte 0",
       "newer version"},
      // The export path's length 0xFF, 0xFFFE: a form no archive writes.
      {m_folder / "bad.dat", test_support::ByteWriter().Word(4).Byte(0xFF).Word(0xFFFE).Get(),
       DocumentFile::Damaged, 5, ": the file is damaged or holds no document at byte 5 of 5",
       "impossible text length"},
  };
  for (const auto& row : rows) {
    if (!row.bytes.empty()) WriteRaw(row.path, std::string(row.bytes.begin(), row.bytes.end()));
    DataMgmt doc;
    Fill(doc, 2, 5);
    DocumentFile file(row.path);
    EXPECT_FALSE(file.Load(doc)) << row.pszRow;
    EXPECT_EQ(file.GetCause(), row.nCause) << row.pszRow << ": " << file.GetMessage();
    EXPECT_EQ(file.GetOffset(), row.nOffset) << row.pszRow;
    EXPECT_NE(file.GetMessage().Find(row.pszSaid), -1) << row.pszRow << ": " << file.GetMessage();
    // no records, no columns, no export path, and the registry ID it had
    EXPECT_TRUE(doc.GetDataItemMgr().IsEmpty() && doc.GetDataPropMgr().GetUserCount() == 0 &&
                doc.GetMRUExportPath().IsEmpty() && doc.GetDataPropMgr().GetID() == 5)
        << row.pszRow;
  }
}

}  // namespace
