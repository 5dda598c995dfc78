#include "MorvUt/hmrc/access/AuthorisationStore.h"

#include <time.h>

#include <cstdlib>
#include <optional>
#include <tuple>

#include "Afx/system/Computer.h"
#include "Afx/time/Clock.h"
#include "Cellar/DatabaseError.h"
#include "MorvUt/hmrc/access/GatewayState.h"
#include "MorvUt/hmrc/access/Logger.h"
#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/users/locks/Holder.h"
#include "Shellkit/ProcessMark.h"

namespace
{

using HmrcApi::CAuthorisationStore;
using Store = HmrcApi::IAuthorisationStore;
using Bytes = std::vector<unsigned char>;
using AuthorisationStore = HmrcTest;
ON_BOTH_DATABASES(AuthorisationStore);
using AuthorisationStoreInAFile = HmrcTest; // whose room can be told
ON_EMBEDDED(AuthorisationStoreInAFile);

CAuthorisationStore Authorised(const char* gateway = kGateway)
{
    CAuthorisationStore store(gateway);
    store.SetAccessToken({1, 0, 2});
    store.SetRefreshToken({3, 0});
    store.SetExpiresIn(14400);
    store.SetScope("read:national-insurance");
    store.SetTokenType("bearer");
    store.SetAuthenticatedTimestamp(COleDateTime(2024, 5, 1, 9, 30, 0));
    store.SetAuthorisationStatus(Store::Authorised);
    return store;
}

auto Held(CAuthorisationStore& store)
{
    return std::tuple(store.GetAccessToken(), store.GetRefreshToken(), store.GetExpiresIn(), store.GetScope(),
                      store.GetTokenType(), store.GetAuthenticatedTimestamp(), store.GetAuthorisationStatus());
}

/// The moment so many seconds ago.
Cellar::Value UtcBefore(int seconds)
{
    const Afx::LocalTime at = Afx::FromUnixMilliseconds(Afx::Clock::UnixMilliseconds() - 1000LL * seconds);
    return COleDateTime(at.year, at.month, at.day, at.hour, at.minute, at.second);
}

} // namespace

TEST_P(AuthorisationStore, KeepsTokensOfTheGatewayIdItIsFor)
{
    EXPECT_TRUE(Authorised("NEW").UpdateTokens()) << "a row that is not there is made";
    EXPECT_TRUE(Authorised().UpdateTokens());
    const std::string row = "010002|0300|14400|read:national-insurance|bearer|2024-05-01 09:30:00.000|1";
    EXPECT_EQ(Query("SELECT vbAccessToken, vbRefreshToken, nExpiresIn, strScope, strTokenType, "
                    "dtAuthenticated, nAuthorisedStatus FROM MTDAuthorisation"),
              row + ", " + row);
    CAuthorisationStore written = Authorised(), read(kGateway), fresh, other = Authorised("OTHER");
    ASSERT_TRUE(read.LoadTokens());
    EXPECT_EQ(Held(read), Held(written));
    EXPECT_FALSE(other.LoadTokens());
    EXPECT_TRUE(other.GetAccessToken().empty());
    ASSERT_TRUE(CAuthorisationStore::CreateGatewayID("OTHER"));
    ASSERT_TRUE(other.LoadTokens());
    EXPECT_EQ(Held(other), Held(fresh)) << "a row without tokens";
}

TEST_P(AuthorisationStore, NeedsAGatewayIdAndADatabase)
{
    CAuthorisationStore none;
    EXPECT_EQ(none.GetRetryDelay(), 500u);
    EXPECT_FALSE(none.LoadTokens() || none.UpdateTokens() || none.HasAuthenticatedGatewayID());
    CAuthorisationStore store = Authorised();
    EXPECT_TRUE(store.HasAuthenticatedGatewayID());
    Sql("UPDATE MTDAuthorisation SET nAuthorisedStatus = 2");
    EXPECT_FALSE(store.HasAuthenticatedGatewayID()) << "only 1 is authority, whatever the object holds";
    Sql("DROP TABLE MTDAuthorisation");
    EXPECT_FALSE(store.LoadTokens());
    EXPECT_FALSE(store.UpdateTokens()) << "a token that is not stored is lost";
    EXPECT_FALSE(store.LockStore());
    EXPECT_FALSE(CAuthorisationStore::CreateGatewayID("NEW"));
    EXPECT_FALSE(CAuthorisationStore::DeleteGatewayId(kGateway));
    EXPECT_THROW(store.HasAuthenticatedGatewayID(), Cellar::DatabaseError);
}

TEST_P(AuthorisationStore, WritesBesideAnOpenTransactionAndNeverInOneThatHasBegun)
{
    CAuthorisationStore store = Authorised();
    {
        const Quarry::CTransaction sheet;
        EXPECT_TRUE(store.LockStore() && store.Rehearse() && store.UpdateTokens());
        HmrcApi::Logger().Log("Refresh", {}, {}, {}, {});
    } // the user's Cancel
    EXPECT_EQ(Query("SELECT vbAccessToken, (SELECT COUNT(*) FROM MTDLog), (SELECT COUNT(*) FROM "
                    "MTDAuthorisationLock) FROM MTDAuthorisation"),
              "010002|1|1");
    const Quarry::CTransaction begun(Cellar::Intent::Write);
    EXPECT_FALSE(store.UpdateTokens() || store.Rehearse() || store.UnlockStore() || Authorised().LockStore());
    EXPECT_NE(store.GetProblem(), "");
    HmrcApi::Logger().Log("Failed", {}, {}, {}, {});
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDLog"), "2") << "a line is written all the same";
}

TEST_P(AuthorisationStoreInAFile, ShowsBeforehandThatThereIsNoRoom)
{
    CAuthorisationStore store = Authorised();
    ASSERT_TRUE(store.UpdateTokens() && store.Rehearse());
    EXPECT_EQ(Query("SELECT vbAccessToken, vbRoom FROM MTDAuthorisation"), "010002|-") << "nothing changed";
    CAuthorisationStore large = store;
    large.SetAccessToken(Bytes(9000, 1));
    Quarry::GetConnection().Query("PRAGMA max_page_count = 1", {}); // as full as it is
    EXPECT_TRUE(large.UpdateTokens()) << "what has been tried fits";
    EXPECT_TRUE(store.UpdateTokens());
    Sql("VACUUM");
    Quarry::GetConnection().Query("PRAGMA max_page_count = 1", {});
    EXPECT_FALSE(store.Rehearse());
    EXPECT_TRUE(store.GetProblem().starts_with("the disk is full")) << store.GetProblem();
    EXPECT_TRUE(store.LockStore() && store.UnlockStore()) << "its lock still goes";
    Quarry::GetConnection().Query("PRAGMA max_page_count = 100000", {});
    const auto reader = Cellar::CConnection::Open(Quarry::GetConnection().GetConnectionText());
    Quarry::GetConnection().SetBusyTimeout(1);
    reader->Query("BEGIN", {});
    reader->Query("SELECT COUNT(*) FROM MTDAuthorisation", {});
    EXPECT_FALSE(store.Rehearse()) << "the log cannot be written from its beginning";
    EXPECT_TRUE(store.IsBusy());
    EXPECT_EQ(store.GetProblem(), "");
}

TEST_P(AuthorisationStore, DatesTheConsentAndNotTheRefresh)
{
    CAuthorisationStore store = Authorised();
    const auto granted = [&](Store::AuthorisationStatus status, int hour) {
        store.SetAuthorisationStatus(status);
        store.SetAuthenticatedTimestamp(COleDateTime(2024, 5, 1, hour, 30, 0));
        EXPECT_TRUE(store.UpdateTokens());
        return Query("SELECT dtGranted, dtAuthenticated FROM MTDAuthorisation ORDER BY lID");
    };
    EXPECT_EQ(granted(Store::NotAuthorised, 8), "-|2024-05-01 08:30:00.000") << "dialogue begins";
    EXPECT_EQ(granted(Store::Authorised, 9), "2024-05-01 09:30:00.000|2024-05-01 09:30:00.000");
    EXPECT_EQ(granted(Store::Authorised, 13), "2024-05-01 09:30:00.000|2024-05-01 13:30:00.000");
    CAuthorisationStore fresh = Authorised("NEW");
    EXPECT_TRUE(fresh.UpdateTokens());
    EXPECT_EQ(Query("SELECT dtGranted FROM MTDAuthorisation WHERE strGatewayID = 'NEW'"), "2024-05-01 09:30:00.000");
    Sql("UPDATE MTDAuthorisation SET strService = NULL"); // from before services were kept
    store.SetService("https://api.service.hmrc.gov.uk");
    EXPECT_EQ(granted(Store::Authorised, 14).substr(0, 23), "2024-05-01 09:30:00.000") << "no new consent";
    store.SetService("https://other");
    EXPECT_EQ(granted(Store::Authorised, 15), "2024-05-01 15:30:00.000|2024-05-01 15:30:00.000, "
                                              "2024-05-01 09:30:00.000|2024-05-01 09:30:00.000");
    ASSERT_TRUE(fresh.LoadTokens() && CAuthorisationStore(store).LoadTokens());
    EXPECT_EQ(fresh.GetService(), "");
    EXPECT_EQ(Query("SELECT strService, nAuthorisedStatus FROM MTDAuthorisation WHERE lID = 7"), "https://other|1");

    const HmrcApi::GatewayState state = HmrcApi::ReadGatewayState("NEW");
    EXPECT_EQ(state.grantEnds, COleDateTime(2025, 11, 1, 9, 30, 0)) << "18 months after the consent";
    EXPECT_EQ(state.Warning(COleDateTime(2025, 9, 2, 9, 29, 59)), "");
    EXPECT_EQ(state.Warning(COleDateTime(2025, 9, 2, 9, 30, 0)),
              "HMRC's authority ends on 01/11/2025: authorise again before then.");
    EXPECT_EQ(state.Warning(state.grantEnds), "HMRC's authority ended on 01/11/2025: authorise again.");
    EXPECT_EQ(HmrcApi::GrantEnd(COleDateTime(2022, 8, 31, 0, 0, 0)), COleDateTime(2024, 2, 29, 0, 0, 0));
    EXPECT_EQ(HmrcApi::ListGateways().size(), 2u);
    EXPECT_TRUE(Authorised().UpdateTokens()) << "by the setters of any store";
    EXPECT_EQ(Query("SELECT strService, nAuthorisedStatus, dtGranted FROM MTDAuthorisation WHERE lID = 7"),
              "https://other|1|2024-05-01 15:30:00.000");
    store.SetAuthenticatedTimestamp(COleDateTime(2024, 5, 1, 16, 30, 0));
    EXPECT_TRUE(store.UpdateConsent()) << "the same service once more";
    EXPECT_EQ(Query("SELECT dtGranted, nAuthorisedStatus FROM MTDAuthorisation WHERE lID = 7"),
              "2024-05-01 16:30:00.000|1");
}

TEST_P(AuthorisationStore, GoesOverNothingThatItHasNotRead)
{
    CAuthorisationStore unread = Authorised();
    EXPECT_FALSE(CAuthorisationStore("OTHER").LoadTokens() ||
                 unread.UpdateLoaded() != HmrcApi::IGrantStore::Update::Replaced);
    ASSERT_TRUE(unread.LoadTokens());
    Script("ALTER TABLE MTDAuthorisation RENAME TO Away");
    EXPECT_EQ(unread.UpdateLoaded(), HmrcApi::IGrantStore::Update::Failed);
    EXPECT_NE(unread.GetProblem(), "");
}

TEST_P(AuthorisationStore, LocksOnceForAllObjects)
{
    Afx::SetComputerName("DESK1");
    CAuthorisationStore first(kGateway), second(kGateway);
    ASSERT_TRUE(first.LockStore());
    EXPECT_EQ(Query("SELECT lMTDAuthorisationID FROM MTDAuthorisationLock"), "7");
    EXPECT_FALSE(first.LockStore()) << "held by itself";
    EXPECT_FALSE(second.LockStore()) << "held by another";
    std::string workstation, user;
    EXPECT_TRUE(second.GetLockHolder(workstation, user));
    EXPECT_EQ(user + " at " + workstation, "ANNA at DESK1");

    CAuthorisationStore copy(first);
    EXPECT_TRUE(copy.UnlockStore()) << "a copy holds nothing";
    EXPECT_FALSE(second.LockStore());
    EXPECT_TRUE(first.UnlockStore());
    EXPECT_TRUE(second.LockStore());
    EXPECT_TRUE(first.UnlockStore()) << "holds nothing, so the other's lock stays";
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAuthorisationLock"), "1");
    EXPECT_FALSE(CAuthorisationStore("OTHER").LockStore()) << "no such row";
}

TEST_P(AuthorisationStore, UnlocksItsOwnRowOnly)
{
    for (const char* taken : {"dtLocked = '2024-03-31 00:59:59.000'", "ConnectionID = 8004711", "dtLocked = NULL"}) {
        CAuthorisationStore store(kGateway);
        ASSERT_TRUE(store.LockStore());
        Script("UPDATE MTDAuthorisationLock SET " + std::string(taken)); // by another
        EXPECT_TRUE(store.UnlockStore());
        EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAuthorisationLock"), "1") << taken;
        Sql("DELETE FROM MTDAuthorisationLock");
    }
    CAuthorisationStore store(kGateway);
    ASSERT_TRUE(store.LockStore());
    {
        const Quarry::CTransaction begun(Cellar::Intent::Write);
        EXPECT_FALSE(store.UnlockStore());
    }
    EXPECT_TRUE(store.LockStore()) << "what could not be removed is removed now";
    EXPECT_TRUE(store.UnlockStore());
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAuthorisationLock"), "0");
}

TEST_P(AuthorisationStore, ClearsALockThatWasLeftBehind)
{
    constexpr char kLongName[] = "PRACTICE-RECEPT"; // -1, -2
    // age in seconds, workstation, session, whether it is cleared
    const ::Test::Row<std::optional<int>, const char*, std::optional<int>, bool> rows[] = {
        {140, "DESK2", std::nullopt, false, "a refresh may still be under way"},
        {160, "DESK2", std::nullopt, true, "longer than a refresh lasts"},
        {-3600, "DESK2", std::nullopt, false, "the database's clock was set back"},
        {std::nullopt, "DESK2", std::nullopt, false, "age unknown"},
        {1, "DESK1", -8004711, true, "nobody here has the mark of that session"},
        {std::nullopt, "DESK1", -8004711, true, "the same, age unknown"},
        {1, "DESK1", -8004712, false, "that session's program is still running"},
        {160, "DESK1", -8004712, false, "however old its lock"},
        {1, "DESK1", -8004713, true, "the mark is of a session of another database"},
        {1, "DESK1", 8004711, false, "another program's session, which has no mark"},
        {1, "DESK2", -8004711, false, "another workstation cannot be asked"},
        {1, kLongName, -8004711, false, "perhaps another workstation, whose name was cut"},
        {160, kLongName, -8004711, true, "only its age counts then"},
        {160, kLongName, -8004712, false, "unless its program runs here"},
        {1, "Unknown", -8004711, false, "nobody's name"},
        {1, "DESK1", std::nullopt, false, "of a program that sets no mark"},
        {160, "DESK1", 0, true, "only its age counts then"},
    };
    setenv("TZ", "XST-1", 1); // an hour that must not count
    tzset();
    const auto other =
        Cellar::CConnection::Open(CString(::Test::TempDir() + "/other.db"), Cellar::CConnection::Create::IfMissing);
    Shellkit::ProcessMark running, elsewhere;
    ASSERT_TRUE(running.Set(Locks::MarkName(Quarry::GetConnection(), "MorvUt.TokenLock", "7", 8004712)));
    ASSERT_TRUE(elsewhere.Set(Locks::MarkName(*other, "MorvUt.TokenLock", "7", 8004713)));
    for (const auto& [age, workstation, session, isCleared, why] : rows) {
        SCOPED_TRACE(why);
        Afx::SetComputerName(std::string_view(workstation) == "DESK2" ? "DESK1" : workstation);
        Script("DELETE FROM MTDAuthorisationLock; DELETE FROM MTDLog;");
        Sql("INSERT INTO MTDAuthorisationLock (lMTDAuthorisationID, strUserID, dtLocked, strWorkstation, ConnectionID) "
            "VALUES (7, 'BOB', %t, %s, %d)",
            age ? UtcBefore(*age) : Cellar::Value(), workstation, session ? Cellar::Value(*session) : Cellar::Value());
        EXPECT_EQ(CAuthorisationStore(kGateway).LockStore(), isCleared);
        EXPECT_EQ(Query("SELECT strUserID, (SELECT strEvent FROM MTDLog) FROM MTDAuthorisationLock"),
                  isCleared ? "ANNA|LockCleared" : "BOB|-");
    }
    auto& connection = Quarry::GetConnection();
    EXPECT_FALSE(
        Shellkit::ProcessMark::IsSet(Locks::MarkName(connection, "MorvUt.TokenLock", "7", connection.GetSessionId())))
        << "nobody has the mark of a lock that was refused";
    connection.Script("UPDATE MTDAuthorisationLock SET dtLocked = '2024-01-01'; DELETE FROM MTDLog;");
    const ::Test::Trigger full(connection, "BEFORE INSERT", "MTDAuthorisationLock",
                               "(SELECT COUNT(*) FROM MTDAuthorisationLock) = 0");
    EXPECT_FALSE(CAuthorisationStore(kGateway).LockStore());
    EXPECT_EQ(Query("SELECT strEvent FROM MTDLog"), "LockCleared") << "although no other came in its place";
    unsetenv("TZ");
    tzset();
}

TEST_P(AuthorisationStore, NamesNoSessionWhoseMarkItHasNot)
{
    const long long session = Quarry::GetConnection().GetSessionId();
    Shellkit::ProcessMark taken;
    ASSERT_TRUE(taken.Set(Locks::MarkName(Quarry::GetConnection(), "MorvUt.TokenLock", "7", session)));
    CAuthorisationStore store(kGateway);
    ASSERT_TRUE(store.LockStore());
    taken.Clear();
    EXPECT_EQ(Query("SELECT ConnectionID FROM MTDAuthorisationLock"), std::to_string(session));
    EXPECT_FALSE(CAuthorisationStore(kGateway).LockStore()) << "was taken for that of a dead program";
    EXPECT_TRUE(store.UnlockStore());
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAuthorisationLock"), "0");
}

TEST_P(AuthorisationStore, RegistersGatewayIds)
{
    const ::Test::Case<const char*, bool> rows[] = {
        {"NEW", true, "new"},
        {"NEW", false, "there already"},
        {"O'BRIEN", false, "stands between quotes in the statement"},
        {"", true, "no id: as any other text"},
        {"A B%s", true, "never taken for a placeholder"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(CAuthorisationStore::CreateGatewayID(row.in), row.out) << row.why;
    EXPECT_EQ(Query("SELECT strGatewayID FROM MTDAuthorisation WHERE nAuthorisedStatus = 0 AND lID > 0 "
                    "AND vbAccessToken IS NULL ORDER BY strGatewayID"),
              "-, A B%s, NEW");
    EXPECT_TRUE(CAuthorisationStore::DeleteGatewayId("NEW"));
    EXPECT_FALSE(CAuthorisationStore::DeleteGatewayId("NEW"));
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAuthorisation"), "3");
}
