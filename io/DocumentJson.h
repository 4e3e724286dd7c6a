#ifndef IO_DOCUMENTJSON_H_
#define IO_DOCUMENTJSON_H_

#include <string>

#include "DataMgr/document/DataMgmt.h"
#include "framework/CString.h"
#include "io/IoExport.h"
#include "io/Progress.h"

// A whole document as JSON text and back, without loss: every column with
// every field of its definition (list entries and address books included),
// the registry's slots and display order, every item and sub-item with its
// IDs, modification time and values. Reading the JSON of a document gives
// the document that loading its archive gives, so that storing it again
// yields the same bytes. The form is described in docs/JSON.md.
//
// What the archive does not hold is not written either: the alias map and
// the undo histories. Holds nothing; never throws.
class VAXO057IO_API DocumentJson {
 public:
  // The format name and the version of the form this library writes; a
  // reader refuses a higher version.
  static const char* const FORMAT_NAME;
  static constexpr int CURRENT_VERSION = 1;

  // The JSON of doc, indented by two blanks per level when bIndent, else
  // on one line. progress counts items.
  static std::string Write(const DataMgmt& doc, bool bIndent, const Progress& progress = Progress());

  // Replaces doc's columns, records and export path by those of the JSON
  // text (the alias map is kept, as loading keeps it) and returns true.
  // False, with doc unchanged, when the text is no JSON of a document:
  // error then says where and why, as one line ("at /items/3/values/5001:
  // expected a whole number", "line 2, column 7: syntax error ..."). progress
  // counts items; their count is known only at the end. A JSON whose
  // members come in the writer's order is read item by item, so that the
  // parsed text of all items never lives at once.
  static bool Read(const std::string& text, DataMgmt& doc, CString& error, const Progress& progress = Progress());
};

#endif  // IO_DOCUMENTJSON_H_
