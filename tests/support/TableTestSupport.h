#ifndef TESTS_SUPPORT_TABLETESTSUPPORT_H_
#define TESTS_SUPPORT_TABLETESTSUPPORT_H_

// Table-driven checks: one row per case, each an input text and what a
// function must give for it; a failing row is named by its input.

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>
#include <vector>

namespace test_support {

template <typename Out>
using Rows = std::vector<std::pair<const char*, Out>>;

template <typename Out, typename Fn>
void ExpectRows(Fn fn, const Rows<Out>& rows) {
  for (const auto& row : rows) EXPECT_EQ(fn(row.first), row.second) << "row \"" << row.first << "\"";
}

// Every input of a list gives the same result.
template <typename Out, typename Fn>
void ExpectEach(Fn fn, std::initializer_list<const char*> inputs, const Out& expected) {
  for (const char* pszInput : inputs) EXPECT_EQ(fn(pszInput), expected) << "row \"" << pszInput << "\"";
}

}  // namespace test_support

#endif  // TESTS_SUPPORT_TABLETESTSUPPORT_H_
