#ifndef IO_PROGRESS_H_
#define IO_PROGRESS_H_

#include <cstddef>
#include <functional>

// How far a long conversion has got: called with the units done so far and
// the units in all (items, rows), now and then and once at the end; the
// units in all are 0 while they are not known yet. An empty function is
// never called.
using Progress = std::function<void(size_t nDone, size_t nTotal)>;

#endif  // IO_PROGRESS_H_
