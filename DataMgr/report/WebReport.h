#ifndef DATAMGR_REPORT_WEBREPORT_H_
#define DATAMGR_REPORT_WEBREPORT_H_

#include <cstddef>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/filter/DataFilter.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "DataMgr/records/DataItem.h"
#include "DataMgr/report/Report.h"
#include "DataMgr/report/WebReportLevel.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "framework/Types.h"
#include "utility/TextArray.h"

// A report that the host turns into HTML pages: on top of the report's
// columns, filters and sort order it holds where the pages go (OutputDir,
// ending in its separator, and BaseFileName, the main page's file name with
// its extension), the texts shown while the pages are made and when nothing
// is listed, a link back to a home page, where images go, whether pages are
// made and uploaded automatically, the levels (one template and sort order
// each, numbered from 1) and a filter set of its own that an item must pass
// to appear on the pages.
//
// The output files are the main page, the other pages (the main page's
// name without its extension, anything, its extension: index*.html) and the
// thumbnails (anything, "_", that name, "_TN.", any extension:
// *_index_TN.*), matched ignoring case, directly in OutputDir. Setting the
// folder or the base name may move or rename them; a file that cannot be
// moved or renamed stays as it was and the others go on.
//
// The report owns its levels (never null; a new report has one) and its
// own filters. Copies are deep.
class VAXO057_API WebReport : public Report {
 public:
  // Where the host puts the images of the pages. DO NOT CHANGE these
  // values: they are stored in documents, as a WORD; values without a name
  // load and store as they are.
  enum ImageLoc : WORD {
    ImagesWithPages = 0,    // in OutputDir, beside the pages
    ImagesInSubfolder = 1,  // in a subfolder of OutputDir
    ImagesWhereTheyAre = 2  // linked at their own paths, not copied
  };

  // The NoDataMsg of a new report and of an archive older than version 6.
  static const CString DEFAULT_NO_DATA_MSG;

  WebReport();
  WebReport(const WebReport& other);
  WebReport& operator=(const WebReport& other);
  ~WebReport() override;

  // See the layout above the definition; version 13 is current.
  void Serialize(CArchive& ar) override;
  // Removes the column from the web report's own filters, then from the
  // column list as Report does.
  bool RemoveDataPropID(int nDataPropID) override;

  bool GetAutoGenerate() const { return m_bAutoGenerate; }
  void SetAutoGenerate(bool bAutoGenerate) { m_bAutoGenerate = bAutoGenerate; }
  bool GetAutoUpload() const { return m_bAutoUpload; }
  void SetAutoUpload(bool bAutoUpload) { m_bAutoUpload = bAutoUpload; }
  ImageLoc GetImageLocation() const { return m_nImageLocation; }
  void SetImageLocation(ImageLoc nLocation) { m_nImageLocation = nLocation; }
  const CString& GetBaseFileName() const { return m_strBaseFileName; }
  const CString& GetOutputDir() const { return m_strOutputDir; }
  const CString& GetHPReturnLink() const { return m_strHPReturnLink; }
  void SetHPReturnLink(const CString& link) { m_strHPReturnLink = link; }
  const CString& GetProcessingMsg() const { return m_strProcessingMsg; }
  void SetProcessingMsg(const CString& msg) { m_strProcessingMsg = msg; }
  const CString& GetNoDataMsg() const { return m_strNoDataMsg; }
  void SetNoDataMsg(const CString& msg) { m_strNoDataMsg = msg; }

  // Sets the folder; a folder equal to the current one ignoring case
  // changes nothing. With bMoveFiles, and when the main page exists, the
  // output files are moved there (dir + name; an existing file is not
  // replaced) under the host's wait cursor. False when a file could not be
  // moved; the folder is set all the same.
  bool SetOutputDir(const CString& dir, bool bMoveFiles);
  // Sets the main page's name; the same name (case-sensitive) changes
  // nothing. With bRenameFiles, and when the old main page exists, the
  // output files in OutputDir are renamed: the old name without extension
  // is replaced by the new one, each file keeping its extension; the pages
  // renamed are those with the new name's extension. An existing file is
  // not replaced. False when a file could not be renamed.
  bool SetBaseFileName(const CString& name, bool bRenameFiles);
  // Whether the main page OutputDir + BaseFileName exists.
  bool HaveOutputFiles() const;

  size_t GetLevelsCount() const { return m_vecLevels.size(); }
  // Levels are numbered from 1; 0 and numbers past the count give null.
  // The report keeps the level.
  WebReportLevel* GetLevel(size_t nLevel) const;
  // Appends default levels or destroys the last ones until there are n.
  void SetLevelCount(size_t n);

  // Every level loads its template from dir; false when one could not.
  bool LoadHTMLTemplates(const CString& dir);
  void UnloadHTMLTemplates();

  size_t GetRepFilterCount() const { return m_repFilters.GetCount(); }
  // Null for an index out of range; the report keeps the filter.
  DataFilter* GetRepFilterAt(size_t nIndex) const { return m_repFilters.GetAt(nIndex); }
  // Takes pFilter over and gives it the next ID of the own filters; null is
  // ignored.
  void AddNewRepFilter(DataFilter* pFilter) { m_repFilters.Add(pFilter, true); }
  // Destroys one of the own filters; null or another's does nothing.
  void DeleteRepFilter(DataFilter* pFilter) { m_repFilters.Delete(pFilter); }
  // Whether the item passes the own filters; false for null.
  bool DoesDataItemPassRepFilters(const DataItem* pItem) const;

 protected:
  void DeleteLevels();

 private:
  void CopyLevelsFrom(const WebReport& other);
  void SerializeLevels(CArchive& ar, bool bOldFormat);
  // The output files in OutputDir: pages matching pagePattern, thumbnails
  // of the pages named stem.
  void GetOutputFiles(const CString& pagePattern, const CString& stem, TextArray& pages, TextArray& thumbnails) const;

  bool m_bAutoGenerate = true;
  bool m_bAutoUpload = true;
  ImageLoc m_nImageLocation = ImagesWithPages;
  CString m_strBaseFileName;
  CString m_strOutputDir;
  CString m_strHPReturnLink;
  CString m_strProcessingMsg;
  CString m_strNoDataMsg;
  std::vector<WebReportLevel*> m_vecLevels;  // owned, never null
  DataFilterMgr m_repFilters;
};

#endif  // DATAMGR_REPORT_WEBREPORT_H_
