#ifndef IO_DOCUMENTCHECK_H_
#define IO_DOCUMENTCHECK_H_

#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "framework/CString.h"
#include "io/IoExport.h"
#include "io/Progress.h"

// The checks of a loaded document that its own upkeep should make
// needless: usage counts of list entries and addresses against a recount,
// cells of list and address columns that name no entry, IDs held twice,
// and sub-items whose parent ID is not their item's. A document saved by
// the library after ordinary use passes them all; a damaged, tampered or
// hand-made one may not. Holds nothing; changes nothing.
class VAXO057IO_API DocumentCheck {
 public:
  enum Kind { UsageCount, MissingEntry, DuplicateID, ParentID };
  struct Problem {
    Kind nKind;
    CString text;  // one line, for a user
  };

  // Every problem, columns first, then items in their order. The recount
  // follows DataMgmt::ResetUsageCounters: every cell of an item or
  // sub-item that holds an entry's ID counts once for that entry (aliases,
  // which files do not hold, are not looked at). progress counts items.
  static std::vector<Problem> Run(const DataMgmt& doc, const Progress& progress = Progress());
};

#endif  // IO_DOCUMENTCHECK_H_
