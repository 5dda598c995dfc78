// What stands between a computer and its server.

#include <chrono>

#include "Afx/time/Clock.h"
#include "CellarTestSupport.h"

TEST(ServerState, SaysHowTheWayToTheServerIsProtected)
{
    // stays here, checks the host, what is said
    for (const auto& [text, staysHere, checksHost, said, why] :
         ::Test::Table<const char*, bool, bool, const char*>("Cellar/ServerState.tsv")) {
        const ServerProtection found = ProtectionOf(ServerText(text));
        EXPECT_EQ(found.staysHere, staysHere) << text << ' ' << why;
        EXPECT_EQ(found.checksHost, checksHost) << text << ' ' << why;
        EXPECT_EQ(found.said, said) << text << ' ' << why;
    }
}

using ServerState = ::Test::OnDatabase;
ON_SERVER(ServerState);

TEST_P(ServerState, IsToldByTheServer)
{
    const auto connection = OpenPractice(), other = OpenPractice();
    const ServerProduct product = connection->GetServer();
    EXPECT_EQ(product.server, "PostgreSQL");
    EXPECT_TRUE(product.driver.starts_with("psqlodbc")) << product.driver;
    EXPECT_FALSE(product.driverVersion.empty() || product.serverVersion.empty());
    EXPECT_EQ(IsServerEndEncrypted(*connection), false);
    EXPECT_FALSE(AreSessionsLent(*connection, *other));
    EXPECT_TRUE(IsDriverInstalled(ServerText("odbc:Driver=postgresql unicode")));
    EXPECT_TRUE(IsDriverInstalled(ServerText("odbc:Driver=/bin/sh")));
    EXPECT_FALSE(IsDriverInstalled(ServerText("odbc:Driver=Nonesuch")));
    for (const int seconds : {0, 90, -90}) {
        Afx::Clock::Set([seconds] {
            const auto now = std::chrono::system_clock::now().time_since_epoch();
            return std::chrono::duration_cast<std::chrono::milliseconds>(now).count() + seconds * 1000;
        });
        EXPECT_NEAR(static_cast<double>(ServerClockAhead(*connection)), -1000.0 * seconds, 5000.0);
    }
}
