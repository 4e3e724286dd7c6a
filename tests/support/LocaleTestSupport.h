#ifndef TESTS_SUPPORT_LOCALETESTSUPPORT_H_
#define TESTS_SUPPORT_LOCALETESTSUPPORT_H_

// A fixture that sets the United States conventions for each test, whatever
// the machine's locale, and gives the environment's values back afterwards.

#include <gtest/gtest.h>

#include "utility/LocaleUtils.h"

namespace test_support {

class UsLocaleTest : public ::testing::Test {
 protected:
  void SetUp() override {
    LocaleUtils::SetNumberDecimalSeparator(".");
    LocaleUtils::SetNumberThousandsSeparator(",");
    LocaleUtils::SetNumberFractionalDigits(2);
    LocaleUtils::SetCurrencyDecimalSeparator(".");
    LocaleUtils::SetCurrencyThousandsSeparator(",");
    LocaleUtils::SetCurrencyFractionalDigits(2);
    LocaleUtils::SetDateSeparator("/");
    LocaleUtils::SetDateOrder(LocaleUtils::MONTH_DAY_YEAR);
    LocaleUtils::SetTimeSeparator(":");
    LocaleUtils::SetUse24HourClock(false);
    LocaleUtils::SetCountryName("United States");
  }
  void TearDown() override { LocaleUtils::ResetToEnvironment(); }
};

}  // namespace test_support

#endif  // TESTS_SUPPORT_LOCALETESTSUPPORT_H_
