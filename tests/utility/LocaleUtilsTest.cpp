#include "utility/LocaleUtils.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include "tests/support/LocaleTestSupport.h"

namespace {

using LocaleUtilsTest = test_support::UsLocaleTest;

// Sets one environment variable for the life of the object.
class ScopedEnvironment {
 public:
  ScopedEnvironment(const char* pszName, const char* pszValue) : m_strName(pszName) {
    const char* pszOld = std::getenv(pszName);
    m_bHadValue = pszOld != nullptr;
    if (m_bHadValue) m_strOld = pszOld;
    setenv(pszName, pszValue, 1);
  }
  ~ScopedEnvironment() {
    if (m_bHadValue) {
      setenv(m_strName.c_str(), m_strOld.c_str(), 1);
    } else {
      unsetenv(m_strName.c_str());
    }
  }
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

 private:
  std::string m_strName;
  std::string m_strOld;
  bool m_bHadValue = false;
};

void ExpectUnitedStatesConventions() {
  EXPECT_EQ(LocaleUtils::GetNumberDecimalSeparator(), ".");
  EXPECT_EQ(LocaleUtils::GetNumberThousandsSeparator(), ",");
  EXPECT_EQ(LocaleUtils::GetNumberFractionalDigits(), 2);
  EXPECT_EQ(LocaleUtils::GetCurrencyDecimalSeparator(), ".");
  EXPECT_EQ(LocaleUtils::GetCurrencyThousandsSeparator(), ",");
  EXPECT_EQ(LocaleUtils::GetCurrencyFractionalDigits(), 2);
  EXPECT_EQ(LocaleUtils::GetDateSeparator(), "/");
  EXPECT_EQ(LocaleUtils::GetDateOrder(), LocaleUtils::MONTH_DAY_YEAR);
  EXPECT_EQ(LocaleUtils::GetTimeSeparator(), ":");
  EXPECT_FALSE(LocaleUtils::GetUse24HourClock());
  EXPECT_EQ(LocaleUtils::GetCountryName(), "United States");
}

}  // namespace

TEST_F(LocaleUtilsTest, EmptySeparatorsAreIgnoredAndDigitsClamped) {
  LocaleUtils::SetNumberDecimalSeparator("");
  LocaleUtils::SetDateSeparator("");
  LocaleUtils::SetCountryName("");
  LocaleUtils::SetNumberFractionalDigits(-1);
  LocaleUtils::SetCurrencyFractionalDigits(40);
  EXPECT_EQ(LocaleUtils::GetNumberDecimalSeparator(), ".");
  EXPECT_EQ(LocaleUtils::GetDateSeparator(), "/");
  EXPECT_EQ(LocaleUtils::GetCountryName(), "United States");
  EXPECT_EQ(LocaleUtils::GetNumberFractionalDigits(), 0);
  EXPECT_EQ(LocaleUtils::GetCurrencyFractionalDigits(), 9);
}

TEST_F(LocaleUtilsTest, CAndUnknownLocalesKeepTheUnitedStatesConventions) {
  for (const char* pszLocale : {"C", "POSIX", "C.UTF-8", "xx_NOWHERE.UTF-8"}) {
    SCOPED_TRACE(pszLocale);
    LocaleUtils::SetNumberDecimalSeparator(",");
    LocaleUtils::SetDateOrder(LocaleUtils::YEAR_MONTH_DAY);
    ScopedEnvironment environment("LC_ALL", pszLocale);
    LocaleUtils::ResetToEnvironment();
    ExpectUnitedStatesConventions();
  }
}

TEST_F(LocaleUtilsTest, ReadingTheEnvironmentLeavesTheProcessLocaleAlone) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  ScopedEnvironment environment("LC_ALL", "de_DE.UTF-8");
  LocaleUtils::ResetToEnvironment();
  EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}
