// What goes wrong between a program and a server of the test's own: it is started again, or is not who it says it is.

#include <cstdlib>

#include "CellarTestSupport.h"
#include "support/OwnServer.h"

class ServerFault : public testing::TestWithParam<::Test::Database>
{
protected:
    static void ExpectOneLine(const DatabaseError& error, Category category, const std::string& words)
    {
        EXPECT_EQ(error.GetCategory(), category) << error.GetCode() << ' ' << error.what();
        EXPECT_NE(error.GetReason().find(words), std::string::npos) << error.GetReason();
        EXPECT_EQ(error.GetReason().find('\n'), std::string::npos) << error.GetReason();
        EXPECT_EQ(error.GetReason().find("PWD"), std::string::npos) << error.GetReason();
    }
    /// Signed by itself, so that it is its own issuer's too; also in NAME.key.
    static std::string Certificate(const std::string& name, const std::string& host)
    {
        const std::string path = ::Test::TempDir() + '/' + name;
        const std::string command =
            "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=" + host +
            " -addext subjectAltName=DNS:" + host + " -keyout " + path + ".key -out " + path + " 2>/dev/null";
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
        return path;
    }
};
ON_SERVER(ServerFault);

TEST_P(ServerFault, ARestartIsToldOnceAndLeavesNothingHalfWritten)
{
    const ::Test::OwnServer server;
    const auto open = [] { return CConnection::Open(::Test::OwnServer::Text().c_str()); };
    auto connection = open();
    const auto idle = open();
    ::Test::Declare(*connection, "CREATE TABLE Note(lID {Int} PRIMARY KEY, strText {Text} NOT NULL)");
    Insert(*connection, 1);
    connection->Begin();
    Insert(*connection, 2);
    server.Restart();
    for (CConnection* const each : {connection.get(), idle.get()})
        ExpectOneLine(ErrorOf([&] { Insert(*each, 3); }), Category::LostConnection, "open the practice again");
    ErrorOf([&] { connection->Commit(); });
    EXPECT_NO_THROW(connection->Rollback());
    connection = open();
    EXPECT_EQ(Count(*connection), 1);
    Insert(*connection, 2);
}

TEST_P(ServerFault, ACertificateOfAnotherHostIsRefused)
{
    const std::string own = Certificate("own", "localhost"), others = Certificate("others", "localhost");
    const ::Test::OwnServer server(own, own + ".key");
    const auto trusting = [](const std::string& file) {
        return ";SSLmode=verify-full;pqopt={sslrootcert=" + file + "}";
    };
    const ::Test::Row<const char*, std::string, const char*> rows[] = {
        {"localhost", trusting(own), "", "the right one"},
        {"127.0.0.1", trusting(own), "Servername is the name in the server's certificate", "another's name"},
        {"localhost", trusting(others), "whom this computer trusts", "issued by somebody else"},
        {"localhost", trusting("/none"), "PGSSLROOTCERT", "nobody is trusted"},
        {"127.0.0.1", ";SSLmode=require", "", "encrypted to whomever"},
    };
    for (const auto& [host, options, words, why] : rows) {
        SCOPED_TRACE(why);
        const std::string text = ::Test::ReplacedAll(::Test::OwnServer::Text(), "127.0.0.1", host) + options;
        if (*words)
            ExpectOneLine(ErrorOf([&] { CConnection::Open(text.c_str()); }), Category::CannotOpen, words);
        else
            EXPECT_EQ(IsServerEndEncrypted(*CConnection::Open(text.c_str())), true);
    }
}
