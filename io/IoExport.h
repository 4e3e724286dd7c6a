#ifndef IO_IOEXPORT_H_
#define IO_IOEXPORT_H_

// VAXO057IO_API marks the exported classes of the conversion library
// vaxo057io; everything else in it is hidden.
#if defined(_WIN32)
#if defined(VAXO057IO_BUILDING)
#define VAXO057IO_API __declspec(dllexport)
#else
#define VAXO057IO_API __declspec(dllimport)
#endif
#else
#define VAXO057IO_API __attribute__((visibility("default")))
#endif

#endif  // IO_IOEXPORT_H_
