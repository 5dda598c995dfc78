#include "hmrc-sandbox/RedirectUri.h"

#include <gtest/gtest.h>

namespace Sandbox
{

TEST(IsRedirectUri, TakesWhatHmrcRegisters)
{
    for (const char* good : {"http://localhost:8080", "http://localhost:53681/callback", "http://LocalHost/callback",
                             "urn:ietf:wg:oauth:2.0:oob"})
        EXPECT_TRUE(IsRedirectUri(good)) << good;
    for (const char* bad :
         {"urn:ietf:wg:oauth:2.0:oob:other", "http://127.0.0.1:8080/callback", "http://[::1]:8080/callback",
          "http://www.example.com/", "http://localhost.example.com/", "http://localhost@example.com/",
          "http://localhost:0/", "http://localhost:65536/", "http://localhost:80x/", "http://localhost/callback#part",
          "http://localhost/call back", "http://localhost/\r\nX: y", "https:///callback", "ftp://localhost/", ""})
        EXPECT_FALSE(IsRedirectUri(bad)) << bad;
}

} // namespace Sandbox
