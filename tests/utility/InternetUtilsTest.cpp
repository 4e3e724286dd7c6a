#include "utility/InternetUtils.h"

#include <gtest/gtest.h>

TEST(InternetUtilsTest, EmailAddresses) {
  for (const char* pszGood : {"ann@example.com", "a.b+tag@mail.example.co.uk", " x_y@a-b.org ", "o'neil@host.ie"}) {
    EXPECT_TRUE(InternetUtils::IsValidEmailAddress(pszGood)) << pszGood;
  }
  for (const char* pszBad : {"", "ann", "ann@", "@example.com", "ann@example", "ann@@example.com", "a@b@example.com",
                             ".ann@example.com", "ann.@example.com", "a..b@example.com", "ann smith@example.com",
                             "ann@-example.com", "ann@example-.com", "ann@example..com", "ann@example.com.",
                             "ann@exa_mple.com", "ann(x)@example.com"}) {
    EXPECT_FALSE(InternetUtils::IsValidEmailAddress(pszBad)) << pszBad;
  }
}

TEST(InternetUtilsTest, WebAddressesAreCheckedAndNormalised) {
  CString text = "  www.example.com/a?b=1#c ";
  EXPECT_TRUE(InternetUtils::IsValidWebSiteAddress(text));
  EXPECT_EQ(text, "http://www.example.com/a?b=1#c");
  text = "WWW.Example.com";
  EXPECT_TRUE(InternetUtils::IsValidWebSiteAddress(text));
  EXPECT_EQ(text, "http://WWW.Example.com");
  for (const char* pszGood : {"https://example.com", "HTTP://localhost:8080/x", "ftp://user@files.example.org/pub/",
                              "http://192.168.0.1/"}) {
    text = pszGood;
    EXPECT_TRUE(InternetUtils::IsValidWebSiteAddress(text)) << pszGood;
    EXPECT_EQ(text, pszGood);
  }
  for (const char* pszBad : {"", "example.com", "http://", "http:///path", "http://exa mple.com",
                             "http://example.com/a b", "http://example.com:99999", "http://example.com:", "www.",
                             "mailto:ann@example.com", "C:\\web\\index.html", "http://-bad.com"}) {
    text = pszBad;
    EXPECT_FALSE(InternetUtils::IsValidWebSiteAddress(text)) << pszBad;
    EXPECT_EQ(text, pszBad);
  }
}

TEST(InternetUtilsTest, InternetFilesAgainstLocalPaths) {
  for (const char* pszWeb : {"http://x.org/a.jpg", "HTTPS://x.org", "ftp://x.org/f", "www.x.org/a.jpg", " Www.x.org",
                             "svn+ssh://host/repo"}) {
    EXPECT_TRUE(InternetUtils::IsInternetFile(pszWeb)) << pszWeb;
  }
  for (const char* pszLocal : {"C:\\Photos\\a.jpg", "C://Photos/a.jpg", "/home/ann/www.jpg", "wwwx.org", "http:/x",
                               "", "1http://x"}) {
    EXPECT_FALSE(InternetUtils::IsInternetFile(pszLocal)) << pszLocal;
  }
}
