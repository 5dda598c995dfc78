#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <tuple>

#include "Afx/system/Computer.h"
#include "MorvUt/users/FeatureLock.h"
#include "MorvUt/users/locks/Holder.h"
#include "MorvUt/users/locks/LockList.h"
#include "MorvUt/users/locks/UserLockFile.h"
#ifdef CELLAR_ODBC_FAKE
#include "support/ScriptedServer.h"
#endif
#include "Trailmark/MTDAudit.h"
#include "UsersTest.h"

namespace
{

constexpr Cellar::SqlText kUser =
    "INSERT INTO BTaxUserLocks (UserId, strWorkstation, ConnectionID) VALUES ('bob', %s, %s)";
constexpr Cellar::SqlText kFeature =
    "INSERT INTO FeatureLocks (nFeature, strWorkstation, ConnectionID) VALUES (7, %s, %s)";
constexpr Cellar::SqlText kToken =
    "INSERT INTO MTDAuthorisationLock (lMTDAuthorisationID, strWorkstation, ConnectionID) VALUES (7, %s, %s)";

class LocksTest : public UsersTest
{
protected:
    LocksTest()
    {
        setenv("TZ", "XST-5", 1); // hours that must not count
        tzset();
        CUserData::m_strUser = "ann";
        Afx::SetComputerName("DESK1");
        CUserLockFile::InitUserLocking(connection);
    }
    ~LocksTest() override
    {
        unsetenv("TZ");
        tzset();
        CUserData::m_strUser.Empty();
    }

    static std::string Shown(const HeldLock& lock)
    {
        EXPECT_TRUE(lock.age && *lock.age >= 0 && *lock.age < 60) << lock.key;
        const double hours = (COleDateTime::GetCurrentTime().GetOleDate() - lock.since.GetOleDate()) * 24;
        EXPECT_TRUE(hours < 1 || ::Test::IsOnServer()) << lock.key << ": a server's local time is its own";
        return std::string(LockKindName(lock.kind)) + ' ' + lock.key.Str() + ' ' + lock.workstation.Str() +
               (lock.isAlive ? *lock.isAlive ? " runs" : " ended" : " ?");
    }
    static std::size_t SeenByOthers() { return ListLocks(*Open()).size(); }

    Cellar::CConnection& connection = Quarry::GetConnection();
};

ON_BOTH_DATABASES(LocksTest);

using ServerLocksTest = LocksTest;
ON_SERVER(ServerLocksTest);

} // namespace

TEST_P(LocksTest, AreListedWithWhatIsKnownOfTheirHolders)
{
    Shellkit::ProcessMark marks[5];
    const std::int64_t own = connection.GetSessionId();
    ASSERT_TRUE(marks[0].Set(Locks::MarkName(connection, Locks::kUserMark, "BTaxUserLocks", 9004711)) &&
                marks[1].Set(Locks::MarkName(connection, Locks::kFeatureMark, "7", 9004711)) &&
                marks[2].Set(Locks::MarkName(connection, Locks::kTokenMark, "7", 9004711)) &&
                marks[3].Set(Locks::MarkName(connection, Locks::kUserMark, "BTaxUserLocks", own)) &&
                marks[4].Set(Locks::MarkName(connection, Locks::kFeatureMark, "7", own)));
    for (const auto& [kind, workstation, session, told, why] :
         ::Test::Table<const char*, const char*, const char*, const char*>("MorvUt/users/Locks.tsv")) {
        connection.Script("DELETE FROM BTaxUserLocks; DELETE FROM FeatureLocks; DELETE FROM MTDAuthorisationLock");
        Sql(*kind == 'u' ? kUser : *kind == 'f' ? kFeature : kToken, workstation, session);
        std::string shown = told;
        if (::Test::IsOnServer() && session && std::atoi(session) != 0)
            shown = ::Test::ReplacedAll(shown, " ?", " ended"); // it knows that there is no such session
        EXPECT_EQ(Shown(ListLocks(connection).at(0)), shown) << why;
    }
    Sql("DELETE FROM MTDAuthorisationLock");
    CFeatureLock feature(7, connection); // their marks are another's
    ASSERT_TRUE(GetBTaxLockFile().AddLock("ann") == 0 && feature.Lock() == 1);
    for (const HeldLock& lock : ListLocks(connection))
        EXPECT_EQ(lock.isAlive.has_value(), ::Test::IsOnServer() && lock.kind == LockKind::User) << lock.key;
    EXPECT_EQ(GetMorvLockFile().GetNumUsers() + GetTrustTaxLockFile().GetNumUsers(), 0) << "a table an application";
    GetBTaxLockFile().RemoveLock();
}

TEST_P(ServerLocksTest, ASessionIsTheHoldersWhenItBeganBeforeTheLock)
{
    connection.Script("SET timezone = 'Pacific/Auckland'");
    const std::string own = std::to_string(connection.GetSessionId());
    for (const Cellar::SqlText& insert : {kUser, kFeature, kToken})
        Sql(insert, nullptr, own.c_str());
    for (const bool isAlive : {true, false}) { // by then of a session that had its number before
        for (const HeldLock& lock : ListLocks(connection))
            EXPECT_EQ(lock.isAlive, isAlive) << lock.key;
        for (const char* const table : {"BTaxUserLocks", "FeatureLocks", "MTDAuthorisationLock"})
            connection.Script(std::string("UPDATE ") + table + " SET dtLocked = dtLocked - interval '10 minutes'");
    }
}

/// A clock that is set back in autumn makes nobody younger, and nobody's age negative.
TEST_P(LocksTest, AreOfAnAgeByTheClockThatIsNotPutForward)
{
    setenv("TZ", "GMT0BST,M3.5.0/1,M10.5.0", 1);
    tzset();
    if (::Test::IsOnServer())
        connection.Script("SET timezone = 'Europe/London'");
    connection.Script("INSERT INTO FeatureLocks (nFeature, dtLocked) VALUES (1, '2024-07-01 12:00:00.000'), "
                      "(2, '2024-12-01 12:00:00.000'), (3, '2199-01-01 12:00:00.000')");
    const auto locks = ListLocks(connection);
    ASSERT_EQ(locks.size(), 3U);
    EXPECT_NEAR(*locks[0].age - *locks[1].age, (153 * 24 + 1) * 3'600, 1);
    EXPECT_EQ(locks[0].since.FormatIso(), "2024-07-01 12:00:00.000");
    EXPECT_EQ(locks[2].age, 0);
}

#ifdef CELLAR_ODBC_FAKE
/// Its sessions are not told, and what tells our rows of others' is filled in by the server.
TEST(SqlServerLocks, AHolderWithoutAMarkIsNotKnown)
{
    Afx::SetComputerName("DESK1");
    const ::Test::ScriptedServer server(
        "on SELECT *AS lockKey*\ncolumns lockKey:int lockName:nvarchar strUserID:nvarchar "
        "strWorkstation:nvarchar dtLocked:datetime2 ConnectionID:int dtUtc:datetime2 "
        "dtNow:datetime2 dtLocal:datetime2\nrow 7|7|bob|DESK1|null|51|null|null|null\n"
        "row 7|7|bob|DESK1|null|-51|null|null|null\n");
    for (const HeldLock& lock : ListLocks(*server.Open())) {
        const bool isOurs = lock.kind == LockKind::Token && lock.row.session < 0;
        EXPECT_EQ(lock.isAlive, isOurs ? std::optional(false) : std::nullopt) << LockKindName(lock.kind);
    }
}
#endif

TEST(Insist, TriesThriceWhileTheDatabaseIsBusy)
{
    using Category = Cellar::DatabaseError::Category;
    const std::tuple<Category, int> rows[] = {{Category::Busy, 3}, {Category::Other, 1}};
    for (const auto& [category, tries] : rows) {
        int tried = 0;
        const auto fail = [&tried, category = category] {
            ++tried;
            throw Cellar::DatabaseError(category, "", "", "");
        };
        EXPECT_THROW(Locks::Insist(fail), Cellar::DatabaseError);
        EXPECT_EQ(tried, tries);
    }
}

TEST_P(LocksTest, AreClearedByTheRowThatWasListed)
{
    Sql("INSERT INTO MTDAuthorisation (lID, strGatewayID) VALUES (7, 'GATEWAY1')");
    for (const bool isInSheet : {false, true}) {
        for (const Cellar::SqlText& insert : {kUser, kFeature, kToken})
            Sql(insert, "DESK2", isInSheet ? nullptr : "12");
        const auto listed = ListLocks(connection);
        for (const char* table : {"BTaxUserLocks", "FeatureLocks", "MTDAuthorisationLock"})
            connection.Script(std::string("UPDATE ") + table +
                              " SET dtLocked = " + (isInSheet ? "NULL" : "'2024-04-01'"));
        for (const HeldLock& lock : listed)
            EXPECT_FALSE(ClearLock(connection, lock, "ann")) << "another row than the one that was listed";
        std::optional<Quarry::CTransaction> sheet; // whose Cancel takes nothing back
        if (isInSheet)
            sheet.emplace();
        for (const HeldLock& lock : ListLocks(connection))
            EXPECT_TRUE(ClearLock(connection, lock, "ann"));
        sheet.reset();
        EXPECT_EQ(SeenByOthers(), 0U);
    }
    const auto audit = Trailmark::ReadAudit(ClientId(), connection);
    EXPECT_EQ(audit.size(), 6U);
    EXPECT_EQ(audit.at(2).action + '|' + audit[2].user + '|' + audit[2].item + '|' + audit[2].hmrc,
              "clear lock|ann|Lock on the HMRC tokens of GATEWAY1| at DESK2");
    Sql(kFeature, "DESK2", "12");
    const ::Test::Trigger full(connection, "BEFORE INSERT", "MTDAudit");
    const Quarry::CTransaction sheet;
    EXPECT_THROW(ClearLock(connection, ListLocks(connection).at(0), "ann"), Cellar::DatabaseError);
    EXPECT_EQ(SeenByOthers(), 1U) << "nothing is cleared that the audit does not know";
}
