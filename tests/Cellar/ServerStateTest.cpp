// What stands between a computer and its server.

#include <chrono>

#include "Afx/time/Clock.h"
#include "CellarTestSupport.h"
#include "support/Case.h"
#ifdef CELLAR_ODBC_FAKE
#include "ScriptedServer.h"
#endif

TEST(ServerState, SaysHowTheWayToTheServerIsProtected)
{
    struct Expected
    {
        bool staysHere, checksHost;
        const char* said;
    };
    const ::Test::Case<const char*, Expected> rows[] = {
        {"odbc:Driver=PostgreSQL Unicode;Servername=db.firm.example", {false, false, ""}, "nothing said"},
        {"odbc:Driver=PostgreSQL Unicode;Servername=db.firm.example;sslmode=VERIFY-FULL",
         {false, true, "SSLmode=VERIFY-FULL"},
         "in any case"},
        {"odbc:Driver=PostgreSQL Unicode;Servername=db.firm.example;SSLmode=verify-ca",
         {false, false, "SSLmode=verify-ca"},
         "any host of that issuer"},
        {"odbc:Driver=PostgreSQL Unicode;Servername=127.0.0.1", {true, false, ""}, "loopback"},
        {"odbc:Driver=PostgreSQL Unicode;Servername=LocalHost;SSLmode=disable", {true, false, "SSLmode=disable"}, ""},
        {"odbc:Driver=PostgreSQL Unicode;Servername=/run/postgresql", {true, false, ""}, "a socket"},
        {"odbc:Driver=PostgreSQL Unicode;Servername=127.0.0.1.evil.example", {false, false, ""}, "only looks so"},
        {"odbc:Driver=PostgreSQL Unicode;Servername=128.0.0.1", {false, false, ""}, "another machine"},
        {"odbc:Driver={ODBC Driver 18 for SQL Server};Server=tcp:db.firm.example,1433;Encrypt=strict",
         {false, true, "Encrypt=strict"},
         "SQL Server"},
        {"odbc:Driver={ODBC Driver 18 for SQL Server};Server=db;Encrypt=yes;TrustServerCertificate=yes",
         {false, false, "Encrypt=yes;TrustServerCertificate=yes"},
         "whatever the certificate"},
        {"odbc:Driver={ODBC Driver 17 for SQL Server};Server=db",
         {false, false, ""},
         "not every driver does by itself"},
        {"odbc:Driver={ODBC Driver 17 for SQL Server};Server=tcp:localhost,1433", {true, false, ""}, "a port"},
        {"odbc:Driver={ODBC Driver 17 for SQL Server};Server=.\\SQLEXPRESS", {true, false, ""}, "an instance"},
    };
    for (const auto& row : rows) {
        const ServerProtection found = ProtectionOf(ServerText(row.in));
        EXPECT_EQ(found.staysHere, row.out.staysHere) << row.in << ' ' << row.why;
        EXPECT_EQ(found.checksHost, row.out.checksHost) << row.in << ' ' << row.why;
        EXPECT_EQ(found.said, row.out.said) << row.in << ' ' << row.why;
    }
}

class ServerState : public ::Test::OnDatabase
{};
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

#ifdef CELLAR_ODBC_FAKE
/// Of a pooler it is seen that a session serves two connections, or a connection has two sessions.
TEST(ServerState, TellsLentSessions)
{
    struct Sessions
    {
        const char *one, *other;
    };
    const char kOwn[] = "on SELECT @@SPID*\ncolumns n:int\nrow 51\n",
               kSame[] = "on SELECT @@SPID*\ncolumns n:int\nrow 52\n",
               kMoved[] =
                   "on SELECT @@SPID*\ncolumns n:int\nrow 51\ntimes 3\non SELECT @@SPID*\ncolumns n:int\nrow 53\n";
    const ::Test::Case<Sessions, bool> rows[] = {
        {{kOwn, kSame}, false, "each its own"},
        {{kOwn, kOwn}, true, "one for both"},
        {{kMoved, kSame}, true, "two for one"},
    };
    for (const auto& row : rows) {
        std::filesystem::remove(::Test::TempDir() + "/ODBC Driver for SQL Server.so");
        const ScriptedServer server(row.in.one);
        const auto connection = server.Open();
        ::Test::WriteFile("script", row.in.other);
        const auto other = server.Open();
        EXPECT_EQ(AreSessionsLent(*connection, *other), row.out) << row.why;
    }
    std::filesystem::remove(::Test::TempDir() + "/ODBC Driver for SQL Server.so");
    const ScriptedServer server(std::string(kOwn) + "on BEGIN*\nerror 42000 1 no transactions here\n");
    const auto connection = server.Open(), other = server.Open();
    ErrorOf([&] { AreSessionsLent(*connection, *other); });
}
#endif
