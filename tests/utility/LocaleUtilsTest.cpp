#include "utility/LocaleUtils.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>

#include "tests/support/LocaleTestSupport.h"

namespace {

using LocaleUtilsTest = test_support::UsLocaleTest;

// Sets LC_ALL for the life of the object.
class ScopedLcAll {
 public:
  explicit ScopedLcAll(const char* pszValue) {
    if (const char* pszOld = std::getenv("LC_ALL")) m_old = pszOld;
    setenv("LC_ALL", pszValue, 1);
  }
  ~ScopedLcAll() { m_old ? setenv("LC_ALL", m_old->c_str(), 1) : unsetenv("LC_ALL"); }

 private:
  std::optional<std::string> m_old;
};

// Every convention in one line: number, currency, date, time, country.
std::string Conventions() {
  using L = LocaleUtils;
  std::ostringstream text;
  text << L::GetNumberDecimalSeparator() << L::GetNumberThousandsSeparator() << L::GetNumberFractionalDigits() << ' '
       << L::GetCurrencyDecimalSeparator() << L::GetCurrencyThousandsSeparator() << L::GetCurrencyFractionalDigits()
       << ' ' << L::GetDateSeparator() << L::GetDateOrder() << ' ' << L::GetTimeSeparator()
       << (L::GetUse24HourClock() ? " 24h " : " 12h ") << L::GetCountryName();
  return text.str();
}

}  // namespace

TEST_F(LocaleUtilsTest, EmptySeparatorsAreIgnoredAndDigitsClamped) {
  const std::string unitedStates = Conventions();
  LocaleUtils::SetNumberDecimalSeparator("");
  LocaleUtils::SetDateSeparator("");
  LocaleUtils::SetCountryName("");
  EXPECT_EQ(Conventions(), unitedStates);
  LocaleUtils::SetNumberFractionalDigits(-1);
  LocaleUtils::SetCurrencyFractionalDigits(40);
  EXPECT_EQ(LocaleUtils::GetNumberFractionalDigits(), 0);
  EXPECT_EQ(LocaleUtils::GetCurrencyFractionalDigits(), 9);
}

// Reading the environment leaves the process locale alone.
TEST_F(LocaleUtilsTest, CAndUnknownLocalesKeepTheUnitedStatesConventions) {
  const std::string processLocale = std::setlocale(LC_ALL, nullptr);
  const std::string unitedStates = Conventions();
  ASSERT_EQ(unitedStates, ".,2 .,2 /" + std::to_string(LocaleUtils::MONTH_DAY_YEAR) + " : 12h United States");
  for (const char* pszLocale : {"C", "POSIX", "C.UTF-8", "xx_NOWHERE.UTF-8"}) {
    LocaleUtils::SetNumberDecimalSeparator(",");
    LocaleUtils::SetDateOrder(LocaleUtils::YEAR_MONTH_DAY);
    ScopedLcAll environment(pszLocale);
    LocaleUtils::ResetToEnvironment();
    EXPECT_EQ(Conventions(), unitedStates) << pszLocale;
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), processLocale) << pszLocale;
  }
}
