#ifndef IO_OUTPUTFILE_H_
#define IO_OUTPUTFILE_H_

#include <string>

#include "framework/CString.h"
#include "io/IoExport.h"

// Writes a converted document (JSON, CSV, text, XML) to a file safely, as
// the utility library writes every file: to a temporary file beside the
// target, flushed, then renamed over it, so that a failure leaves the old
// file as it was. Holds nothing.
class VAXO057IO_API OutputFile {
 public:
  // Writes text to path, byte for byte, ending it with a line break when
  // it does not end with one. False, with error one line naming the file
  // and the system's cause, when the file cannot be written.
  static bool Write(const CString& path, const std::string& text, CString& error);
};

#endif  // IO_OUTPUTFILE_H_
