// What only a server has: sessions that it ends, locks of rows, round trips.

#include "CellarTestSupport.h"

class Server : public TwoConnections
{
protected:
    void SetUp() override
    {
        TwoConnections::SetUp();
        connection->OnSent([this](std::string_view statement) { (sent += statement) += '\n'; });
    }
    Category Refused(const SqlText& statement) const
    {
        return ErrorOf([&] { connection->ExecuteDirect(statement); }).GetCategory();
    }

    std::string sent;
};
ON_SERVER(Server);

TEST_P(Server, SendsWhatSteersWithWhatItSteers)
{
    Take(*connection, "BB1CB2R");
    connection->ExecuteDirect("INSERT INTO Note (lID, strText) VALUES (3, 'a'), (4, 'b')");
    connection->Commit();
    const std::string insert = "INSERT INTO Note (lID, strText) VALUES (?::integer, ?) ON CONFLICT DO NOTHING\n";
    EXPECT_EQ(sent, "BEGIN;SAVEPOINT level2\n" + insert + "RELEASE SAVEPOINT level2;SAVEPOINT level2\n" + insert +
                        "ROLLBACK TO SAVEPOINT level2;RELEASE SAVEPOINT level2\n"
                        "INSERT INTO Note (lID, strText) VALUES (3, 'a'), (4, 'b')\n"
                        "COMMIT\n");
    EXPECT_EQ(Count(*other), 3);
    sent.clear();
    Take(*connection, "BBRC");
    CTransaction(*connection).Commit();
    EXPECT_EQ(sent, "") << "nothing was done";
}

TEST_P(Server, AFailedStatementSpoilsItsOwnLevelOnly)
{
    for (const bool isRefusedByKey : {false, true}) {
        SCOPED_TRACE(isRefusedByKey);
        Take(*connection, "B1B2");
        if (isRefusedByKey) {
            EXPECT_EQ(Refused("INSERT INTO Note (lID, strText) VALUES (1, 'b (''), (')"), Category::DuplicateKey);
            EXPECT_EQ(Refused("INSERT INTO Note (lID, strText) SELECT 1, 'b'"), Category::DuplicateKey);
            connection->Commit();
        } else {
            EXPECT_EQ(Refused("UPDATE Note SET nSmall = 100"), Category::Constraint);
            EXPECT_EQ(Refused("DELETE FROM Note"), Category::Other) << "the level is over";
            connection->Begin();
            EXPECT_EQ(Refused("DELETE FROM Note"), Category::Other) << "so is one in it";
            connection->Rollback();
            EXPECT_EQ(ErrorOf([&] { connection->Commit(); }).GetCode(), "25P02") << "the server would not tell";
            connection->Rollback();
        }
        Take(*connection, "3C");
        EXPECT_EQ(Count(*other), isRefusedByKey ? 3 : 2);
        EXPECT_EQ(Count(*connection), isRefusedByKey ? 3 : 2);
        connection->ExecuteDirect("DELETE FROM Note");
    }
    Take(*connection, "1B");
    EXPECT_EQ(Refused("INSERT INTO Note (lID, strText) VALUES (7, 'a'), (1, 'b')"), Category::DuplicateKey);
    EXPECT_EQ(ErrorOf([&] { connection->Commit(); }).GetCategory(), Category::Other);
    Take(*connection, "R2");
}

/// Who writes for one client keeps others from that client, and from the whole practice.
TEST_P(Server, WritersOfDifferentSubjectsDoNotWait)
{
    const Subject ann{1001, 1}, ben{1001, 2}, firm{1002, 1}, practice;
    const ::Test::Case<std::pair<Subject, Subject>, bool> rows[] = {
        {{ann, ben}, true, "two clients"},
        {{ann, firm}, true, "one id of two tables"},
        {{ann, ann}, false, "one client"},
        {{ann, practice}, false, "the practice is every client"},
        {{practice, ann}, false, "the other way round"},
        {{practice, practice}, false, "twice the practice"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        const CTransaction holder(*connection, Intent::Write, row.in.first);
        const auto take = [&] { CTransaction(*other, Intent::Write, row.in.second); };
        if (row.out) {
            EXPECT_NO_THROW(take());
        } else {
            EXPECT_EQ(ErrorOf(take).GetCategory(), Category::Busy);
        }
        EXPECT_EQ(other->GetLevel(), 0);
        other->ExecuteDirect("DELETE FROM Note"); // not in a transaction that has failed
    }
    Take(*connection, "B1");
    {
        sent.clear();
        CTransaction level(*connection, Intent::Write, ann); // within one that has begun without
        const CTransaction again(*connection, Intent::Write, ann);
        EXPECT_EQ(std::count(sent.begin(), sent.end(), '\n'), 1) << "once: " << sent;
        EXPECT_EQ(ErrorOf([&] { CTransaction(*other, Intent::Write, ann); }).GetCategory(), Category::Busy);
    }
    EXPECT_NO_THROW(CTransaction(*other, Intent::Write, ann)) << "given back with its level";
    connection->Commit();
    EXPECT_EQ(Count(*other), 1);
}

TEST_P(Server, LeavesNothingOpenBehind)
{
    Take(*connection, "1B");
    for (const bool isInLevel : {true, false}) {
        Take(*connection, "B2");
        auto cursor = std::make_unique<CRowCursor>(CRowCursor(*connection, "SELECT lID FROM Note"));
        EXPECT_TRUE(cursor->Next());
        if (isInLevel)
            cursor.reset(); // closed with the next statement, by when its level is undone
        connection->Rollback();
        cursor.reset();
        EXPECT_EQ(Count(*connection), 1);
    }
    EXPECT_EQ(CBufferedRowList(*connection, "SELECT COUNT(*) FROM pg_cursors WHERE name <> ''").GetLong(0), 0);
    connection.reset();
    other->SetBusyTimeout(5000);
    other->Script("DROP TABLE Note");
}

TEST_P(Server, SaysOnceAndForAllThatTheConnectionIsLost)
{
    Take(*connection, "BB1");
    CRowCursor cursor(*connection, "SELECT lID FROM Note");
    other->Queryf("SELECT pg_terminate_backend(%ld)", static_cast<long>(connection->GetSessionId()));
    EXPECT_EQ(ErrorOf([&] { Insert(*connection, 2); }).GetCategory(), Category::LostConnection);
    EXPECT_EQ(ErrorOf([&] { Count(*connection); }).GetCategory(), Category::LostConnection);
    EXPECT_EQ(connection->GetLevel(), 2);
    EXPECT_FALSE(connection->HasUnsavedWrites());
    ErrorOf([&] { connection->Commit(); });
    EXPECT_NO_THROW(connection->Rollback());
    EXPECT_NO_THROW(connection->Rollback());
    const DatabaseError error = ErrorOf([&] { Insert(*connection, 3); });
    EXPECT_EQ(error.GetCategory(), Category::LostConnection);
    EXPECT_NE(error.GetReason().find("open the practice again"), std::string::npos);
    EXPECT_EQ(ErrorOf([&] { CTransaction(*connection, Intent::Write); }).GetCategory(), Category::LostConnection);
    EXPECT_EQ(connection->GetLevel(), 0);
    connection.reset();
    EXPECT_EQ(Count(*other), 0);
}

TEST_P(Server, SaysWhyItCannotBeOpenedAndNeverThePassword)
{
    const std::string whole = ::Test::ConnectionTextOf("practice.db").Str();
    const auto with = [&](const char* from, const char* to) { return ::Test::ReplacedAll(whole, from, to); };
    const std::string wrong = ::Test::WriteFile("password", "s3cret}%41\r\nand more");
    const std::string right = ::Test::WriteFile("right", "test\n");
    const ::Test::Case<std::string, const char*> rows[] = {
        {with("PWD=test", "PWD=s3cret"), "check UID and the password", "wrong password"},
        {with("PWD=test", ("PasswordFile=" + wrong).c_str()), "check UID and the password", "from a file"},
        {with("PWD=test", "PasswordFile=/none"), "from the file /none", "no such file"},
        {with("PWD=test", "PasswordFile=/dev/zero"), "from the file /dev/zero", "no end"},
        {whole + "_none", "check Database", "no such database"},
        {with("Port=", "Port=1;OldPort="), "check Servername and Port", "nobody listens"},
        {with("PostgreSQL Unicode", "Nonesuch"), "install the driver", "no such driver"},
        {with("PWD=test", "PWD=test;SSLmode=verify-full"), "SSLmode", "the server offers no encryption"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        const DatabaseError error = ErrorOf([&] { CConnection::Open(row.in.c_str()); });
        EXPECT_EQ(error.GetCategory(), Category::CannotOpen);
        EXPECT_NE(error.GetReason().find(row.out), std::string::npos) << error.what();
        EXPECT_EQ(error.GetReason().find("s3cret"), std::string::npos) << error.what();
        EXPECT_EQ(error.GetReason().find('\n'), std::string::npos) << error.what();
    }
    const auto opened = CConnection::Open(with("PWD=test", ("PasswordFile=" + right + ";KeyFile=/k").c_str()).c_str());
    EXPECT_EQ(opened->GetConnectionText().Str(), with("PWD=test", ("PasswordFile=" + right + ";KeyFile=/k").c_str()));
    EXPECT_EQ(connection->GetConnectionText().Str(), with("PWD=test;", ""));
    EXPECT_EQ(ErrorOf([&] { connection->CopyTo(::Test::TempDir() + "/copy"); }).GetCategory(), Category::Other);
}

TEST(ServerText, TellsAttributesApart)
{
    const ServerText text("ODBC: driver = PostgreSQL Unicode ;pwd={a;b}}c};UID=u;KeyFile={/k;y};Pwd=second;;Flag;x=");
    EXPECT_EQ(text.Get("Driver"), "PostgreSQL Unicode");
    EXPECT_EQ(text.GetPassword(), "a;b}c");
    EXPECT_EQ(text.GetKeyFile(), "/k;y");
    EXPECT_EQ(text.GetShown(), "odbc:driver=PostgreSQL Unicode;UID=u;KeyFile={/k;y};x=");
    EXPECT_EQ(text.GetForDriver("Own=1;"), "driver=PostgreSQL Unicode;UID=u;x=;Own=1;PWD={a;b}}c};");
    EXPECT_FALSE(ServerText::Is("odb"));
}
