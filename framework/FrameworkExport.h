#ifndef FRAMEWORK_FRAMEWORKEXPORT_H_
#define FRAMEWORK_FRAMEWORKEXPORT_H_

// FRAMEWORK_API marks the classes and functions that form the binary
// interface of the framework library. Everything else is hidden.
#if defined(_WIN32)
#if defined(FRAMEWORK_BUILDING)
#define FRAMEWORK_API __declspec(dllexport)
#else
#define FRAMEWORK_API __declspec(dllimport)
#endif
#else
#define FRAMEWORK_API __attribute__((visibility("default")))
#endif

// Lets the compiler check printf-style arguments of a member function
// (string index counts the implicit this as 1).
#if defined(__GNUC__)
#define FRAMEWORK_PRINTF_FORMAT(fmt, args) __attribute__((format(printf, fmt, args)))
#else
#define FRAMEWORK_PRINTF_FORMAT(fmt, args)
#endif

#endif  // FRAMEWORK_FRAMEWORKEXPORT_H_
