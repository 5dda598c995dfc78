#include "hmrc-sandbox/RedirectUri.h"

#include <gtest/gtest.h>

#include "support/Case.h"

namespace Sandbox
{

TEST(IsRedirectUri, TakesWhatHmrcRegisters)
{
    const ::Test::Case<const char*, bool> rows[] = {
        {"http://localhost:8080", true, "installed application"},
        {"http://localhost:53681/callback", true, "any port, with a path"},
        {"http://LocalHost/callback", true, "host names ignore case"},
        {"urn:ietf:wg:oauth:2.0:oob", true, "code on a page"},
        {"urn:ietf:wg:oauth:2.0:oob:other", false, "no such name"},
        {"http://127.0.0.1:8080/callback", false, "IP address instead of a name"},
        {"http://[::1]:8080/callback", false, "IPv6 address"},
        {"http://www.example.com/", false, "plain http to another host"},
        {"http://localhost.example.com/", false, "another host that starts the same"},
        {"http://localhost@example.com/", false, "user part"},
        {"http://localhost:0/", false, "no port 0"},
        {"http://localhost:65536/", false, "port out of range"},
        {"http://localhost:80x/", false, "port with a letter"},
        {"http://localhost/callback#part", false, "fragment"},
        {"http://localhost/call back", false, "blank"},
        {"http://localhost/\r\nX: y", false, "line break"},
        {"https:///callback", false, "no host"},
        {"ftp://localhost/", false, "other scheme"},
        {"", false, "empty"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(IsRedirectUri(row.in), row.out) << row.why;
}

} // namespace Sandbox
