#ifndef UTILITY_UTILITYEXPORT_H_
#define UTILITY_UTILITYEXPORT_H_

// VAXO009_API marks the classes that form the binary interface of the
// utility library. Everything else is hidden.
#if defined(_WIN32)
#if defined(VAXO009_BUILDING)
#define VAXO009_API __declspec(dllexport)
#else
#define VAXO009_API __declspec(dllimport)
#endif
#else
#define VAXO009_API __attribute__((visibility("default")))
#endif

#endif  // UTILITY_UTILITYEXPORT_H_
