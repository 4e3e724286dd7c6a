#ifndef DATAMGR_EXPORT_H_
#define DATAMGR_EXPORT_H_

// VAXO057_API marks the exported classes of the library; only they form its
// binary interface. Everything else is hidden.
#if defined(_WIN32)
#if defined(VAXO057_BUILDING)
#define VAXO057_API __declspec(dllexport)
#else
#define VAXO057_API __declspec(dllimport)
#endif
#else
#define VAXO057_API __attribute__((visibility("default")))
#endif

#endif  // DATAMGR_EXPORT_H_
