#include "utility/InternetUtils.h"

#include <gtest/gtest.h>

#include "tests/support/TableTestSupport.h"

using test_support::ExpectEach;

TEST(InternetUtilsTest, EmailAddresses) {
  ExpectEach(InternetUtils::IsValidEmailAddress, {"a.b+tag@mail.example.co.uk", " x_y@a-b.org ", "o'neil@host.ie"}, true);
  ExpectEach(InternetUtils::IsValidEmailAddress,
             {"", "ann", "ann@", "@example.com", "ann@example", "a@b@example.com", ".ann@example.com",
              "ann.@example.com", "a..b@example.com", "ann smith@example.com", "ann@-example.com", "ann@example-.com",
              "ann@example..com", "ann@example.com.", "ann@exa_mple.com", "ann(x)@example.com"},
             false);
}

TEST(InternetUtilsTest, WebAddressesAreCheckedAndNormalised) {
  const auto check = [](const char* pszText) {
    CString text = pszText;
    return InternetUtils::IsValidWebSiteAddress(text) ? text : CString("invalid, kept: ") + text;
  };
  test_support::ExpectRows<const char*>(
      check, {{"  www.example.com/a?b=1#c ", "http://www.example.com/a?b=1#c"},
              {"WWW.Example.com", "http://WWW.Example.com"},
              {"HTTP://localhost:8080/x", "HTTP://localhost:8080/x"},
              {"ftp://user@files.example.org/pub/", "ftp://user@files.example.org/pub/"},
              {"http://192.168.0.1/", "http://192.168.0.1/"}});
  for (const char* pszBad : {"", "example.com", "http://", "http:///path", "http://exa mple.com",
                             "http://example.com/a b", "http://example.com:99999", "http://example.com:", "www.",
                             "mailto:ann@example.com", "C:\\web\\index.html", "http://-bad.com"}) {
    EXPECT_EQ(check(pszBad), CString("invalid, kept: ") + pszBad);
  }
}

TEST(InternetUtilsTest, InternetFilesAgainstLocalPaths) {
  ExpectEach(InternetUtils::IsInternetFile,
             {"http://x.org/a.jpg", "HTTPS://x.org", "ftp://x.org/f", " Www.x.org", "svn+ssh://host/repo"}, true);
  ExpectEach(InternetUtils::IsInternetFile,
             {"C:\\Photos\\a.jpg", "C://Photos/a.jpg", "/home/ann/www.jpg", "wwwx.org", "http:/x", "", "1http://x"},
             false);
}
