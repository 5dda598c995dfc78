#include "Brix/Schema.h"
#include "Brix/Check.h"
#include "Brix/PracticeKey.h"

#include <tuple>

#include "NewPractice.h"
#include "Shellkit/Envelope.h"
#include "Shellkit/PracticeKey.h"
#include "support/SqliteTool.h"

using Brix::SchemaState;
using Cellar::DatabaseError;

namespace
{

using Schema = NewPractice;
ON_BOTH_DATABASES(Schema);
using EmbeddedSchema = NewPractice;
ON_EMBEDDED(EmbeddedSchema);

TEST_P(Schema, FillsWhatStatementsLeaveOut)
{
    auto& connection = Quarry::GetConnection();
    connection.ExecuteDirectf("INSERT INTO SourceTask ( SourceID, TypeID ) VALUES ( %ld, %ld )", 1L, 2L);
    connection.ExecuteDirectf("INSERT MorvUserLocks ( UserId ) SELECT %s", "ann");
    connection.ExecuteDirectf("INSERT INTO FeatureLocks ( nFeature, strUserID, strWorkstation ) VALUES ( %d, %s, %s );",
                              3, "ann", "PC1");
    connection.ExecuteDirectf("INSERT INTO [MTDAudit] ([strAction]) VALUES (%s)", "accept");
    EXPECT_EQ(Query("SELECT bRequired, bComplete, nVersion FROM SourceTask"), "1|0|0");
    EXPECT_EQ(Query("SELECT lID FROM MTDAudit"), "1");
    EXPECT_EQ(Query("SELECT ConnectionID FROM MorvUserLocks"), std::to_string(connection.GetSessionId()));
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MorvUserLocks, FeatureLocks WHERE MorvUserLocks.dtLocked > '2024-01-01' AND "
                    "FeatureLocks.dtLocked > '2024-01-01'"),
              "1");
}

TEST_P(EmbeddedSchema, LetsOrdinaryToolsAddRows)
{
    ::Test::Execute(
        ::Test::TempDir() + "/practice.db",
        "INSERT INTO MTDAuthorisationLock (lMTDAuthorisationID, strUserID, strWorkstation) VALUES (7, 'eve', 'PC');"
        "INSERT INTO MorvUserLocks (UserId) VALUES ('eve');"
        "INSERT INTO FeatureLocks (nFeature, strUserID, strWorkstation) VALUES (1, 'eve', 'PC');"
        "INSERT INTO BRIXUser (strUserID) VALUES ('eve');");
    EXPECT_EQ(Query("SELECT ConnectionID FROM MorvUserLocks"), "0") << "nobody's session";
}

TEST_P(Schema, LetsLocksStandOnce)
{
    for (const char* lock : {"INSERT INTO FeatureLocks (nFeature) VALUES (1)",
                             "INSERT INTO MTDAuthorisationLock (lMTDAuthorisationID) VALUES (5)"}) {
        Sql(lock);
        EXPECT_THROW(Sql(lock), DatabaseError) << lock;
    }
    Sql("INSERT INTO MTDAuthorisation (lID, strGatewayID) VALUES (1, 'A')");
    EXPECT_THROW(Sql("INSERT INTO MTDAuthorisation (lID, strGatewayID) VALUES (2, 'a')"), DatabaseError);
    // A row for each session; and HMRC may send two undated items.
    Sql("INSERT INTO BTaxUserLocks (UserId) VALUES ('ann'), ('ann')");
    Sql("INSERT INTO BRIXMTD_PensionStateBenefits (lMTD_TaxYearID) VALUES (1), (1)");
}

TEST_P(Schema, IsMadeOnceAndLeavesNothingWhenItCannotBe)
{
    EXPECT_THROW(Brix::CreateSchema(Quarry::GetConnection()), DatabaseError);
    EXPECT_EQ(Quarry::GetTransactionLevel(), 0);
    const auto other = Open("other.db");
    other->Script("CREATE TABLE MTDAudit (x INTEGER); INSERT INTO MTDAudit VALUES (1)"); // somebody else's
    EXPECT_THROW(Brix::CreateSchema(*other), DatabaseError);
    EXPECT_EQ(other->Query(other->GetDialect().TableColumns(), {}).rows.size(), ::Test::IsOnServer() ? 1U : 2U)
        << "that table alone, and the counter of sessions";
}

TEST_P(Schema, KnowsItsVersion)
{
    constexpr const char* kNames[] = {"Current", "NotAPractice", "Older", "Newer"};
    int number = 0;
    for (const auto& [sql, state, version, why] : ::Test::Table<const char*, std::string, int>("Brix/Schema.tsv")) {
        SCOPED_TRACE(why);
        const auto connection = Open("version" + std::to_string(++number) + ".db");
        if (*sql)
            connection->Script(sql);
        const Brix::SchemaVersion read = Brix::ReadSchemaVersion(*connection);
        EXPECT_EQ(kNames[static_cast<int>(read.state)], state);
        EXPECT_EQ(read.version, version);
        if (state == "NotAPractice" || state == "Newer") {
            EXPECT_THROW(Brix::UpgradeSchema(*connection), DatabaseError);
        }
    }
}

TEST_P(Schema, KnowsThePracticesOwnKey)
{
    auto& connection = Quarry::GetConnection();
    const auto use = [](std::uint8_t key) { Shellkit::SetPracticeKey(std::vector(Shellkit::kKeySize, key)); };
    const auto isOwn = [&](std::uint8_t key) {
        use(key);
        return Brix::IsPracticeKey(connection, Brix::ReadSchemaVersion(connection));
    };
    // keys of the stored secrets, and whether key 1 is the practice's own then and known from then on
    const std::tuple<std::vector<std::uint8_t>, bool, const char*> rows[] = {
        {{2}, false, "it opens none"},
        {{2, 1}, true, "it opens one of them"},
        {{}, true, "nothing was enciphered yet"},
    };
    for (const auto& [secrets, own, why] : rows) {
        Sql("DELETE FROM BRIXUser; UPDATE BRIXSchema SET vbKeyCheck = NULL");
        for (const std::uint8_t key : secrets) {
            use(key);
            connection.ExecuteDirectf("INSERT INTO BRIXUser (vbFBIPassword) VALUES (%b)",
                                      Shellkit::Seal(Shellkit::KeyId::Practice, "secret").value());
        }
        EXPECT_EQ(isOwn(1), own) << why;
        EXPECT_EQ(!Single("SELECT vbKeyCheck FROM BRIXSchema").IsNull(), own) << why;
        EXPECT_FALSE(own && isOwn(9)) << why;
    }
    int statements = 0;
    connection.OnSent([&](std::string_view) { ++statements; });
    EXPECT_TRUE(isOwn(1));
    EXPECT_EQ(statements, 1) << "version and key at once";
    Shellkit::SetPracticeKey({});
}

TEST_P(Schema, IsBroughtUpToDate)
{
    ::Test::Add<Brix::CClient>([](Brix::CClient& row) { row.SetName("Ann"); });
    Sql("INSERT INTO FeatureLocks (nFeature) VALUES (1)");
    Sql(::Test::IsOnServer() ? "DROP PROCEDURE MTDLogWrite" : "DROP VIEW MTDLogWrite");
    ::Test::Declare(Quarry::GetConnection(), ::Test::FileText("Brix/Older.sql"));
    ASSERT_FALSE(Brix::CheckPractice(Quarry::GetConnection()).empty());
    Brix::UpgradeSchema(Quarry::GetConnection());
    EXPECT_EQ(Brix::CheckPractice(Quarry::GetConnection()).size(), 0U);
    EXPECT_EQ(Query("SELECT strName, bNoTaxReturnSource FROM BRIXClient"), "Ann|0") << "default of a new column";
    Quarry::GetConnection().ExecuteDirectf("EXEC MTDLogWrite %s, %s, %s, %s, %s, %s, %s, %s, %s", "a", "b", "c", "d",
                                           "e", "f", "g", "h", "i");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDLog"), "1");
    Sql("INSERT INTO MTDAuthorisationLock (lMTDAuthorisationID) VALUES (1)");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAuthorisationLock WHERE dtLocked > '2024-01-02'"), "1")
        << "made anew: it held local time";
    Sql("INSERT INTO FeatureLocks (nFeature) VALUES (2)");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM FeatureLocks WHERE dtLocked IS NULL"), ::Test::IsOnServer() ? "0" : "1")
        << "the row that was there; a new one gets the computed default";
}

} // namespace
