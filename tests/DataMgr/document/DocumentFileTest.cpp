// Document files as they fail for a user: a save killed at any instant, a
// folder that refuses writes, a target that is a folder, a full disk, and
// files that are missing, cut short, damaged or newer than the library.
//
// Permission bits do not stop root (or any process allowed to override
// them). The read-only cases first try the real folder or file; when the
// system lets the write through anyway, the same refusal is injected through
// DocumentFile's fault hook at the step that would have failed.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <thread>

#include "DataMgr/document/DocumentFile.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/support/ArchiveTestSupport.h"
#include "tests/support/TempFolder.h"

namespace {

using document_test::AddColumn;
using document_test::Enter;
using test_support::Bytes;
using test_support::ReadRaw;
using test_support::TempFolder;
using test_support::WriteRaw;

Bytes Stored(DataMgmt& doc) {
  return test_support::Store([&](CArchive& ar) { doc.Serialize(ar); });
}

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

// No records, no columns, no export path, and the registry ID it had.
bool IsEmptyDocument(const DataMgmt& doc, int nRegistryID) {
  return doc.GetDataItemMgr().IsEmpty() && doc.GetDataPropMgr().GetUserCount() == 0 &&
         doc.GetMRUExportPath().IsEmpty() && doc.GetDataPropMgr().GetID() == nRegistryID;
}

// The regular files in folder.
long FileCount(const TempFolder& folder) {
  using std::filesystem::directory_iterator;
  return std::count_if(directory_iterator(folder.Path()), directory_iterator(),
                       [](const auto& entry) { return entry.is_regular_file(); });
}

// Makes one step of every DocumentFile fail with nError while it lives.
class InjectedFault {
 public:
  InjectedFault(DocumentFile::Step nStep, int nError) {
    s_nStep = nStep;
    s_nError = nError;
    DocumentFile::SetFaultHook([](DocumentFile::Step nAt) { return nAt == s_nStep ? s_nError : 0; });
  }
  InjectedFault(const InjectedFault&) = delete;
  InjectedFault& operator=(const InjectedFault&) = delete;
  ~InjectedFault() { DocumentFile::SetFaultHook(nullptr); }

 private:
  static inline DocumentFile::Step s_nStep = DocumentFile::CreateTemp;
  static inline int s_nError = 0;
};

// Whether this process can create a file in a folder without write
// permission (root can): then permission bits prove nothing.
bool PermissionsAreOverridden(const TempFolder& folder) {
  const std::string locked = folder / "locked";
  std::filesystem::create_directory(locked);
  chmod(locked.c_str(), 0555);
  const bool bWritten = static_cast<bool>(std::ofstream(locked + "/probe"));
  chmod(locked.c_str(), 0755);
  std::filesystem::remove_all(locked);
  return bWritten;
}

class DocumentFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Fill(m_old, 3, 1);
    Fill(m_new, 4, 2);
    ASSERT_TRUE(DocumentFile(m_target).Save(m_old));
  }

  // Save of m_new fails with nCause; the target still holds m_old and the
  // folder holds nothing else.
  void ExpectSaveFails(const std::string& path, DocumentFile::Cause nCause, const char* pszRow) {
    DocumentFile file(path);
    EXPECT_FALSE(file.Save(m_new)) << pszRow;
    EXPECT_EQ(file.GetCause(), nCause) << pszRow << ": " << file.GetMessage();
    DataMgmt loaded;
    EXPECT_TRUE(DocumentFile(m_target).Load(loaded)) << pszRow;
    EXPECT_EQ(Stored(loaded), Stored(m_old)) << pszRow;
    EXPECT_EQ(FileCount(m_folder), 1) << pszRow << ": a temporary file was left";
  }

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

TEST_F(DocumentFileTest, FailedSavesLeaveTheTargetAsItWas) {
  const std::string folderTarget = m_folder / "a folder";
  std::filesystem::create_directory(folderTarget);
  ExpectSaveFails(folderTarget, DocumentFile::NotAFile, "target is a folder");
  std::filesystem::remove(folderTarget);
  ExpectSaveFails(m_folder / "gone/list.dat", DocumentFile::FolderMissing, "folder is gone");

  const bool bOverridden = PermissionsAreOverridden(m_folder);
  chmod(m_folder.Path().c_str(), 0555);
  {
    InjectedFault refused(DocumentFile::CreateTemp, bOverridden ? EACCES : 0);
    ExpectSaveFails(m_target, DocumentFile::NoPermission, "read-only folder");
  }
  chmod(m_folder.Path().c_str(), 0755);
  chmod(m_target.c_str(), 0444);
  {
    InjectedFault refused(DocumentFile::CreateTemp, bOverridden ? EACCES : 0);
    ExpectSaveFails(m_target, DocumentFile::NoPermission, "read-only file");
  }
  chmod(m_target.c_str(), 0644);

  const struct {
    DocumentFile::Step nStep;
    int nError;
    DocumentFile::Cause nCause;
    const char* pszRow;
  } faults[] = {
      {DocumentFile::CreateTemp, EMFILE, DocumentFile::IoError, "no file handle left"},
      {DocumentFile::WriteTemp, ENOSPC, DocumentFile::NoSpace, "disk full while writing"},
      {DocumentFile::SyncTemp, EIO, DocumentFile::IoError, "flush to disk fails"},
      {DocumentFile::ReplaceTarget, EBUSY, DocumentFile::IoError, "rename fails"},
  };
  for (const auto& fault : faults) {
    InjectedFault injected(fault.nStep, fault.nError);
    ExpectSaveFails(m_target, fault.nCause, fault.pszRow);
  }
}

TEST_F(DocumentFileTest, FullDiskNamesTheCause) {
  InjectedFault full(DocumentFile::WriteTemp, ENOSPC);
  DocumentFile file(m_target);
  EXPECT_FALSE(file.Save(m_new));
  EXPECT_EQ(file.GetSystemError(), ENOSPC);
  EXPECT_EQ(file.GetMessage().GetStdString(),
            "cannot save \"" + m_target + "\": the disk is full (No space left on device)");
}

// The file system itself refuses the write half-way: a file size limit in a
// child process (root is bound by it too).
TEST_F(DocumentFileTest, WriteRefusedHalfWayLeavesTheTargetAsItWas) {
  DataMgmt large;
  Fill(large, 2000, 3);
  const pid_t pid = fork();
  ASSERT_GE(pid, 0);
  if (pid == 0) {
    const rlimit limit{8192, 8192};
    signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    DocumentFile file(m_target);
    _exit(!file.Save(large) && file.GetCause() == DocumentFile::NoSpace ? 0 : 1);
  }
  int nStatus = 0;
  waitpid(pid, &nStatus, 0);
  EXPECT_TRUE(WIFEXITED(nStatus) && WEXITSTATUS(nStatus) == 0) << "the save did not fail as a full disk";
  DataMgmt loaded;
  EXPECT_TRUE(DocumentFile(m_target).Load(loaded));
  EXPECT_EQ(Stored(loaded), Stored(m_old));
  EXPECT_EQ(FileCount(m_folder), 1);
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
    EXPECT_TRUE(IsEmptyDocument(doc, 5)) << row.pszRow;
  }
}

TEST_F(DocumentFileTest, FileCutAtEveryByteLoadsNothing) {
  const std::string saved = ReadRaw(m_target);
  const std::string cut = m_folder / "cut.dat";
  for (size_t nCut = 0; nCut < saved.size(); ++nCut) {
    std::filesystem::remove(cut);  // a truncated file would be flushed to disk each time
    WriteRaw(cut, saved.substr(0, nCut));
    DataMgmt doc;
    DocumentFile file(cut);
    EXPECT_FALSE(file.Load(doc)) << "cut at " << nCut;
    EXPECT_EQ(file.GetCause(), DocumentFile::CutShort) << "cut at " << nCut;
    EXPECT_LE(file.GetOffset(), nCut) << "cut at " << nCut;
    EXPECT_TRUE(IsEmptyDocument(doc, 0)) << "cut at " << nCut;
  }
}

TEST_F(DocumentFileTest, UnreadableFileIsReportedWithTheSystemsReason) {
  chmod(m_target.c_str(), 0);
  InjectedFault refused(DocumentFile::ReadFile, PermissionsAreOverridden(m_folder) ? EACCES : 0);
  DataMgmt doc;
  DocumentFile file(m_target);
  EXPECT_FALSE(file.Load(doc));
  EXPECT_EQ(file.GetCause(), DocumentFile::NoPermission);
  EXPECT_EQ(file.GetMessage().GetStdString(),
            "cannot load \"" + m_target + "\": permission denied (Permission denied)");
}

// A child process saves the new and the old document in turn until it is
// killed at a random moment of that cycle, after it has gone through one;
// every time, the target loads as one of the two whole.
TEST_F(DocumentFileTest, SaveKilledAtRandomMomentsLeavesTheOldOrTheNewDocument) {
  DataMgmt large;
  Fill(large, 20000, 7);
  const Bytes oldBytes = Stored(m_old);
  const Bytes newBytes = Stored(large);
  const auto start = std::chrono::steady_clock::now();
  ASSERT_TRUE(DocumentFile(m_target).Save(large));
  ASSERT_TRUE(DocumentFile(m_target).Save(m_old));
  const auto cycle = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
  const unsigned nSeed = std::random_device()();
  std::mt19937 random(nSeed);
  std::uniform_int_distribution<long long> delay(0, cycle.count());
  for (int nKill = 0; nKill < 20; ++nKill) {
    int fds[2];
    ASSERT_EQ(pipe(fds), 0);
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
      for (;;) {
        if (!DocumentFile(m_target).Save(large) || !DocumentFile(m_target).Save(m_old)) _exit(1);
        if (write(fds[1], "+", 1) != 1) _exit(1);
      }
    }
    close(fds[1]);
    char chCycled = 0;
    const bool bCycled = read(fds[0], &chCycled, 1) == 1;
    close(fds[0]);
    std::this_thread::sleep_for(std::chrono::microseconds(delay(random)));
    kill(pid, SIGKILL);
    int nStatus = 0;
    waitpid(pid, &nStatus, 0);
    ASSERT_TRUE(bCycled && WIFSIGNALED(nStatus)) << "the saving process failed before kill " << nKill;
    DataMgmt loaded;
    DocumentFile file(m_target);
    ASSERT_TRUE(file.Load(loaded)) << "kill " << nKill << ", seed " << nSeed << ": " << file.GetMessage();
    const Bytes loadedBytes = Stored(loaded);
    EXPECT_TRUE(loadedBytes == oldBytes || loadedBytes == newBytes) << "kill " << nKill << ", seed " << nSeed;
  }
}

}  // namespace
