#ifndef DATAMGR_REPORT_WEBREPORTLEVEL_H_
#define DATAMGR_REPORT_WEBREPORTLEVEL_H_

#include "DataMgr/Export.h"
#include "DataMgr/sort/SortOrder.h"
#include "framework/CArchive.h"
#include "framework/CString.h"

// One level of a web report: the file name of its HTML template, the sort
// order of the records on its pages, and the template's text once loaded.
// The text is a cache of the file: it is never archived, and loading a
// level leaves it as it was. Copies copy all three.
class VAXO057_API WebReportLevel {
 public:
  const CString& GetTemplateFile() const { return m_strTemplateFile; }
  void SetTemplateFile(const CString& file) { m_strTemplateFile = file; }
  void GetSortOrder(SortOrder& out) const { out = m_sortOrder; }
  void SetSortOrder(const SortOrder& order) { m_sortOrder = order; }
  // Every line of the template followed by CR LF; empty until loaded.
  const CString& GetTemplateFileContent() const { return m_strTemplateFileContent; }

  // Reads the template dir + TemplateFile (joined as they are). A file that
  // does not exist changes nothing; one that exists but cannot be read
  // leaves the content empty. False in both cases.
  bool LoadHTMLTemplate(const CString& dir);
  void UnloadHTMLTemplate() { m_strTemplateFileContent.Empty(); }

  // See the layout above the definition; version 2 is current.
  void Serialize(CArchive& ar);

 private:
  void LoadInlineSortOrder(CArchive& ar);

  CString m_strTemplateFile;
  SortOrder m_sortOrder;
  CString m_strTemplateFileContent;
};

#endif  // DATAMGR_REPORT_WEBREPORTLEVEL_H_
