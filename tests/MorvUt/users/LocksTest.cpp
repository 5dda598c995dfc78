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
constexpr Afx::StringResource kOwnStrings[] = {{5, "Wait."}, {6, "%2: %1"}};

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
        SetUnlimitedSameUserLogin(0);
    }

    /// The holder as told to the caller, and the message; with the caller's own texts or the library's.
    std::string Refusal(int feature, bool isOwnText = false) const
    {
        ::Test::Windows().Clear();
        ::Test::Windows().Answer(1);
        CFeatureLock lock(feature, connection);
        CString holder = "nobody";
        EXPECT_EQ(isOwnText ? lock.Lock(5, 6, &holder) : lock.Lock(&holder), 0);
        std::string told = holder.Str() + ": " + ::Test::Windows().Messages().at(0).text;
        ::Test::Windows().Answer(1);
        EXPECT_EQ(lock.Lock(), 0) << "nobody asks for the holder's id";
        return told;
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

TEST_P(LocksTest, AUserHasARowOrARowASession)
{
    const auto other = Open();
    for (const int unlimited : {0, 1}) {
        SetUnlimitedSameUserLogin(unlimited);
        CMorvLockFile first, second;
        first.RemoveLock(); // of nothing
        for (const char* id : {"Éva", "éva"})
            EXPECT_EQ(first.AddLock(id), CUserLockFile::Held);
        CUserLockFile::InitUserLocking(*other);
        EXPECT_EQ(second.AddLock("ÉVA"), CUserLockFile::Held);
        EXPECT_TRUE(first.HasOwnRow());
        EXPECT_EQ(second.HasOwnRow(), unlimited == 1);
        EXPECT_EQ(Query("SELECT UserId FROM MorvUserLocks"), unlimited ? "Éva, Éva" : "Éva");
        EXPECT_EQ(first.IsValidState(), !unlimited);
        Sql("INSERT INTO MorvUserLocks (UserId, ConnectionID) VALUES ('EVA', 77)");
        EXPECT_EQ(first.IsValidState(), !unlimited) << "somebody else";
        Sql("INSERT INTO MorvUserLocks (UserId, ConnectionID) VALUES ('ÉVA', 77)");
        EXPECT_FALSE(first.IsValidState()) << "by a program that writes the id in its own way";
        Sql("DELETE FROM MorvUserLocks WHERE ConnectionID = 77");
        CUserLockFile::InitUserLocking(connection);
        first.RemoveLock();
        EXPECT_TRUE(first.IsLocked()) << "taken twice";
        first.RemoveLock();
        EXPECT_TRUE(!first.IsLocked() && !first.HasOwnRow() && first.IsValidState());
        EXPECT_EQ(second.GetNumUsers(), unlimited) << "each session removes its own row";
        EXPECT_EQ(second.IsValidState(), unlimited == 1);
        CUserLockFile::InitUserLocking(*other);
        second.RemoveLock();
        CUserLockFile::InitUserLocking(connection);
    }
    EXPECT_EQ(GetBTaxLockFile().AddLock("ann"), CUserLockFile::Held);
    EXPECT_EQ(GetBTaxLockFile().GetNumUsers(), 1);
    EXPECT_EQ(GetMorvLockFile().GetNumUsers() + GetTrustTaxLockFile().GetNumUsers(), 0) << "a table an application";
    GetBTaxLockFile().RemoveLock();
}

TEST_P(LocksTest, AUserLockFailsAsAWhole)
{
    CMorvLockFile file;
    EXPECT_EQ(file.AddLock("O'Brien"), CUserLockFile::Failed) << "stands between quotes in the statement";
    {
        const ::Test::Trigger full(connection, "BEFORE INSERT", "MorvUserLocks");
        EXPECT_EQ(file.AddLock("ann"), CUserLockFile::Failed);
        EXPECT_FALSE(file.IsLocked());
    }
    const ::Test::Trigger stays(connection, "BEFORE DELETE", "MorvUserLocks");
    EXPECT_EQ(file.AddLock("Ann %s"), CUserLockFile::Held) << "never taken for a placeholder";
    file.RemoveLock();
    EXPECT_FALSE(file.IsLocked()) << "given up although the row could not be removed";
    auto other = Open();
    CUserLockFile::InitUserLocking(*other);
    EXPECT_EQ(file.AddLock("bob"), CUserLockFile::Held);
    other.reset();
    EXPECT_TRUE(!file.IsValidState() && file.GetNumUsers() == 0) << "the connection was closed";
    file.RemoveLock();
    EXPECT_TRUE(file.IsValidState()) << "not locked: the database is not asked";
    EXPECT_EQ(file.AddLock("bob"), CUserLockFile::Failed);
}

TEST_P(LocksTest, AFeatureLockIsTheRowOfItsFeature)
{
    {
        CFeatureLock lock(7, connection);
        CString holder = "before";
        EXPECT_EQ(lock.Lock(1, 2, &holder), 1);
        EXPECT_EQ(holder, "");
        EXPECT_EQ(lock.Lock(1, 2, nullptr), 1) << "held already: it is not its own holder";
        EXPECT_EQ(Refusal(7), "ann: ann is using this at DESK1.") << "and deletes nothing";
        auto other = Open();
        CFeatureLock another(8, *other);
        EXPECT_EQ(another.Lock(), 1) << "features do not meet";
        EXPECT_EQ(SeenByOthers(), 2U);
        other.reset();
        EXPECT_EQ(SeenByOthers(), 1U) << "a connection that is closed leaves none";
    }
    EXPECT_EQ(SeenByOthers(), 0U);
    Sql("DROP TABLE FeatureLocks");
    EXPECT_THROW(CFeatureLock(7, connection).Lock(), Cellar::DatabaseError) << "not held: another failure";
}

TEST_P(LocksTest, AFeatureLockThatEndsWithinLevelsGoesWhenTheyHaveEnded)
{
    // R: rolls both levels back, C: commits, F: a statement fails; without any the connection is closed
    for (const char* const steps : {"CC", "R", "FR", ""}) {
        auto practice = Open();
        practice->Begin();
        practice->Begin();
        std::optional<CFeatureLock> lock(std::in_place, 7, *practice);
        ASSERT_EQ(lock->Lock(), 1);
        practice->ExecuteDirect("UPDATE BRIXOptions SET nDateFormat = 1");
        if (*steps == 'F') {
            EXPECT_THROW(practice->ExecuteDirect("DELETE FROM Nowhere"), Cellar::DatabaseError);
        }
        lock.reset();
        EXPECT_EQ(SeenByOthers(), 1U) << steps;
        for (const char* step = steps; *step; ++step)
            *step == 'C' ? practice->Commit() : practice->RollbackTo(1);
        if (!*steps)
            practice.reset();
        EXPECT_EQ(SeenByOthers(), 0U) << steps;
    }
}

TEST_P(LocksTest, AFeatureLockThatCannotBeRemovedIsTriedAgain)
{
    std::optional<::Test::Trigger> stays(std::in_place, connection, "BEFORE DELETE", "FeatureLocks");
    testing::internal::CaptureStderr();
    {
        CFeatureLock first(7, connection), second(8, connection);
        ASSERT_TRUE(first.Lock() == 1 && second.Lock() == 1);
    }
    EXPECT_NE(testing::internal::GetCapturedStderr().find("the lock on feature 7 stays for now"), std::string::npos);
    stays.reset();
    Sql("UPDATE FeatureLocks SET ConnectionID = 9004711 WHERE nFeature = 8"); // cleared by hand, and another's now
    Quarry::CTransaction().Commit();
    EXPECT_EQ(Query("SELECT nFeature FROM FeatureLocks"), "8");
}

TEST_P(LocksTest, ARefusalNamesHolderAndWorkstation)
{
    AddUser("Bob", "Bob Marsh");
    AddUser("Éva", "Eva Gray");
    AddUser("cara");
    const ::Test::Row<const char*, const char*, const char*> rows[] = {
        {"bob  ", "DESK2  ", "bob  : Bob Marsh (bob) is using this at DESK2.", "full name, then id; a server pads"},
        {"cara", "DESK2", "cara: cara is using this at DESK2.", "a user without a name"},
        {"ÉVA", "DESK2", "ÉVA: Eva Gray (ÉVA) is using this at DESK2.", "in any case of all letters"},
        {"%2 d'Arcy", "%1", "%2 d'Arcy: %2 d'Arcy is using this at %1.", "no user of the practice; no places"},
    };
    for (const auto& [user, workstation, told, why] : rows) {
        Sql("DELETE FROM FeatureLocks");
        Sql("INSERT INTO FeatureLocks (nFeature, strUserID, strWorkstation) VALUES (7, %s, %s)", user, workstation);
        EXPECT_EQ(Refusal(7), told) << why;
    }
    Sql("CREATE UNIQUE INDEX OneForAll ON FeatureLocks ((1))"); // refuses a feature that has no row
    EXPECT_EQ(Refusal(8), "nobody: Someone else has just finished. Please try again.");
    const Afx::ResourceContext own(kOwnStrings, 2);
    const Afx::ResourceContextGuard guard(own);
    EXPECT_EQ(Refusal(7, true), "%2 d'Arcy: %1: %2 d'Arcy");
    EXPECT_EQ(Refusal(8, true), "nobody: Wait.");
}

TEST_P(LocksTest, StandAsideFromTheOpenLevels)
{
    CMorvLockFile user, late;
    for (const int unlimited : {0, 1}) {
        SetUnlimitedSameUserLogin(unlimited);
        Quarry::CTransaction sheet, page;
        std::optional<CFeatureLock> feature(std::in_place, 7, connection), other(std::in_place, 8, connection);
        ASSERT_TRUE(user.AddLock("ann") == 0 && feature->Lock() == 1 && other->Lock() == 1);
        other.reset();
        EXPECT_EQ(SeenByOthers(), 2U) << "at once";
        Sql("UPDATE BRIXOptions SET nDateFormat = 1");
        EXPECT_THROW(user.RemoveLock(), std::logic_error);
        EXPECT_THROW(late.AddLock("ann"), std::logic_error);
        EXPECT_THROW(CFeatureLock(8, connection).Lock(), std::logic_error);
        feature.reset();
        EXPECT_EQ(SeenByOthers(), 2U);
        page.Commit();
        sheet.Commit();
        EXPECT_TRUE(user.IsLocked() && user.IsValidState());
        user.RemoveLock();
        EXPECT_EQ(SeenByOthers(), 0U);
    }
}

TEST_P(LocksTest, AreListedWithWhatIsKnownOfTheirHolders)
{
    const ::Test::Row<Cellar::SqlText, const char*, const char*, const char*> rows[] = {
        {kUser, "DESK1", "9004711", "user BTax/bob/9004711 DESK1 runs", "has its mark"},
        {kUser, "DESK1", "9004712", "user BTax/bob/9004712 DESK1 ended", "has none"},
        {kUser, nullptr, "9004712", "user BTax/bob/9004712  ?", "of a program that sets no mark"},
        {kUser, "DESK2", "9004711", "user BTax/bob/9004711 DESK2 ?", "another computer's marks are not seen"},
        {kFeature, "DESK1", "9004711", "feature 7 DESK1 runs", "has its mark"},
        {kFeature, "DESK1", "9004712", "feature 7 DESK1 ended", "has none"},
        {kFeature, "DESK1", nullptr, "feature 7 DESK1 ?", "of a program that sets no mark"},
        {kFeature, "DESK1", "0", "feature 7 DESK1 ?", "of an ordinary tool"},
        {kToken, "DESK1", "-9004711", "token 7 DESK1 runs", "has its mark"},
        {kToken, "DESK1", "-9004712", "token 7 DESK1 ended", "has none"},
        {kToken, "DESK1", "9004712", "token 7 DESK1 ?", "of a program that sets no mark"},
    };
    Shellkit::ProcessMark marks[5];
    const std::int64_t own = connection.GetSessionId();
    ASSERT_TRUE(marks[0].Set(Locks::MarkName(connection, Locks::kUserMark, "BTaxUserLocks", 9004711)) &&
                marks[1].Set(Locks::MarkName(connection, Locks::kFeatureMark, "7", 9004711)) &&
                marks[2].Set(Locks::MarkName(connection, Locks::kTokenMark, "7", 9004711)) &&
                marks[3].Set(Locks::MarkName(connection, Locks::kUserMark, "BTaxUserLocks", own)) &&
                marks[4].Set(Locks::MarkName(connection, Locks::kFeatureMark, "7", own)));
    for (const auto& [insert, workstation, session, told, why] : rows) {
        connection.Script("DELETE FROM BTaxUserLocks; DELETE FROM FeatureLocks; DELETE FROM MTDAuthorisationLock");
        Sql(insert, workstation, session);
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
