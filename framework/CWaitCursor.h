#ifndef FRAMEWORK_CWAITCURSOR_H_
#define FRAMEWORK_CWAITCURSOR_H_

#include "framework/FrameworkExport.h"

// Shows the host's busy indicator for the lifetime of the object: the hook
// is called with true on construction and false on destruction. The library
// has no user interface, so without a hook set by the host this does nothing.
// The hook is process-wide.
class FRAMEWORK_API CWaitCursor {
 public:
  using Hook = void (*)(bool bBusy);

  CWaitCursor();
  ~CWaitCursor();
  CWaitCursor(const CWaitCursor&) = delete;
  CWaitCursor& operator=(const CWaitCursor&) = delete;

  // Sets the host's hook; null restores the default of doing nothing.
  static void SetHook(Hook pHook);

 private:
  static Hook s_pHook;
};

#endif  // FRAMEWORK_CWAITCURSOR_H_
