#ifndef IO_DEMODOCUMENT_H_
#define IO_DEMODOCUMENT_H_

#include "DataMgr/document/DataMgmt.h"
#include "io/IoExport.h"

// A sample document to try things on: a book collection of 200 books in
// sixteen columns of different types (texts, numbers, a date, an amount,
// a yes/no, a decimal with a suffix, a number with text, suggested and
// select lists, a list with descriptions, a list of numbers, an address
// book of friends the books are lent to, a large text) and reading
// sessions as sub-items. The same every time: the values come from a
// fixed sequence and the modification times are fixed, so outputs can be
// compared. Values are entered as a user types them, so the usage counts
// are right. Holds nothing.
class VAXO057IO_API DemoDocument {
 public:
  // The number of books.
  static constexpr int ITEM_COUNT = 200;
  // Replaces doc's columns and items by the collection's.
  static void Fill(DataMgmt& doc);
};

#endif  // IO_DEMODOCUMENT_H_
