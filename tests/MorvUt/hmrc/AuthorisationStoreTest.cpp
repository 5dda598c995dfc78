#include "MorvUt/hmrc/AuthorisationStore.h"

#include "Afx/Computer.h"
#include "Cellar/DatabaseError.h"
#include "MorvUt/hmrc/HmrcTest.h"
#include "support/Case.h"

namespace
{

using HmrcApi::CAuthorisationStore;
using Store = HmrcApi::IAuthorisationStore;
using Bytes = std::vector<unsigned char>;

const COleDateTime kMorning(2024, 5, 1, 9, 30, 0);

CAuthorisationStore Authorised(const char* gateway = kGateway)
{
    CAuthorisationStore store(gateway);
    store.SetAccessToken({1, 0, 2});
    store.SetRefreshToken({3, 0});
    store.SetExpiresIn(14400);
    store.SetScope("read:national-insurance");
    store.SetTokenType("bearer");
    store.SetAuthenticatedTimestamp(kMorning);
    store.SetAuthorisationStatus(Store::Authorised);
    return store;
}

} // namespace

class AuthorisationStore : public HmrcTest
{};

TEST_F(AuthorisationStore, KeepsTokensOfTheGatewayIdItIsFor)
{
    EXPECT_TRUE(Authorised("NEW").UpdateTokens()) << "a row that is not there is made";
    EXPECT_TRUE(Authorised().UpdateTokens());
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAuthorisation"), "2");
    for (const char* gateway : {"NEW", kGateway}) {
        SCOPED_TRACE(gateway);
        CAuthorisationStore store(gateway);
        ASSERT_TRUE(store.LoadTokens());
        EXPECT_EQ(store.GetAccessToken(), (Bytes{1, 0, 2}));
        EXPECT_EQ(store.GetRefreshToken(), (Bytes{3, 0}));
        EXPECT_EQ(store.GetExpiresIn(), 14400);
        EXPECT_EQ(store.GetScope(), "read:national-insurance");
        EXPECT_EQ(store.GetTokenType(), "bearer");
        EXPECT_EQ(store.GetAuthenticatedTimestamp(), kMorning);
        EXPECT_EQ(store.GetAuthorisationStatus(), Store::Authorised);
    }
    CAuthorisationStore other("OTHER");
    other.SetAccessToken({9});
    EXPECT_FALSE(other.LoadTokens());
    EXPECT_TRUE(other.GetAccessToken().empty());
}

TEST_F(AuthorisationStore, ReadsARowWithoutTokens)
{
    ASSERT_TRUE(CAuthorisationStore::CreateGatewayID("NEW"));
    CAuthorisationStore store = Authorised("NEW");
    ASSERT_TRUE(store.LoadTokens());
    EXPECT_TRUE(store.GetAccessToken().empty() && store.GetRefreshToken().empty());
    EXPECT_EQ(store.GetScope() + store.GetTokenType(), "");
    EXPECT_EQ(store.GetExpiresIn(), 0);
    EXPECT_EQ(store.GetAuthenticatedTimestamp(), COleDateTime(0.0));
    EXPECT_EQ(store.GetAuthorisationStatus(), Store::NotAuthorised);
}

TEST_F(AuthorisationStore, NeedsAGatewayIdAndADatabase)
{
    CAuthorisationStore none;
    EXPECT_FALSE(none.LoadTokens() || none.UpdateTokens() || none.HasAuthenticatedGatewayID());
    Sql("DROP TABLE MTDAuthorisation");
    CAuthorisationStore store = Authorised();
    EXPECT_FALSE(store.LoadTokens());
    EXPECT_FALSE(store.UpdateTokens()) << "a token that is not stored is lost";
    EXPECT_FALSE(store.LockStore());
    EXPECT_FALSE(CAuthorisationStore::CreateGatewayID("NEW"));
    EXPECT_FALSE(CAuthorisationStore::DeleteGatewayId(kGateway));
    EXPECT_THROW(store.HasAuthenticatedGatewayID(), Cellar::DatabaseError);
}

TEST_F(AuthorisationStore, WritesNothingIntoAnOpenTransaction)
{
    const Quarry::CTransaction edits;
    CAuthorisationStore store = Authorised();
    EXPECT_FALSE(store.UpdateTokens());
    EXPECT_FALSE(store.LockStore());
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAuthorisationLock"), "0");
}

TEST_F(AuthorisationStore, AsksTheDatabaseForTheStatus)
{
    CAuthorisationStore store(kGateway);
    EXPECT_TRUE(store.HasAuthenticatedGatewayID()) << "whatever the object holds";
    Sql("UPDATE MTDAuthorisation SET nAuthorisedStatus = 2");
    EXPECT_FALSE(store.HasAuthenticatedGatewayID()) << "only 1 is authority";
}

TEST_F(AuthorisationStore, DatesTheConsentAndNotTheRefresh)
{
    CAuthorisationStore store = Authorised("NEW");
    store.SetAuthorisationStatus(Store::NotAuthorised);
    ASSERT_TRUE(store.UpdateTokens());
    EXPECT_EQ(Query("SELECT dtGranted FROM MTDAuthorisation WHERE strGatewayID = 'NEW'"), "") << "dialogue begins";
    store.SetAuthorisationStatus(Store::Authorised);
    ASSERT_TRUE(store.UpdateTokens());
    store.SetAuthenticatedTimestamp(COleDateTime(2024, 5, 1, 13, 30, 0));
    ASSERT_TRUE(store.UpdateTokens());
    EXPECT_EQ(Query("SELECT dtGranted FROM MTDAuthorisation WHERE strGatewayID = 'NEW'"), "2024-05-01 09:30:00.000");
    EXPECT_EQ(Query("SELECT dtAuthenticated FROM MTDAuthorisation WHERE strGatewayID = 'NEW'"),
              "2024-05-01 13:30:00.000");
}

TEST_F(AuthorisationStore, LocksOnceForAllObjects)
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

TEST_F(AuthorisationStore, ClearsALockThatWasLeftBehind)
{
    const ::Test::Case<const char*, bool> rows[] = {
        {"-140 seconds", false, "a refresh may still be under way"},
        {"-160 seconds", true, "twice the time-outs have passed"},
        {"+1 hours", false, "the clocks went back"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        Sql("DELETE FROM MTDAuthorisationLock");
        Sql("DELETE FROM MTDLog");
        Quarry::GetConnection().Script(
            std::string("INSERT INTO MTDAuthorisationLock (lMTDAuthorisationID, strUserID, strWorkstation, dtLocked) "
                        "VALUES (7, 'BOB', 'DESK2', datetime('now', 'localtime', '") +
            row.in + "'));");
        EXPECT_EQ(CAuthorisationStore(kGateway).LockStore(), row.out);
        EXPECT_EQ(Query("SELECT strUserID FROM MTDAuthorisationLock"), row.out ? "ANNA" : "BOB");
        EXPECT_EQ(Query("SELECT strEvent FROM MTDLog"), row.out ? "LockCleared" : "");
    }
}

TEST_F(AuthorisationStore, ClearsAtOnceTheLockOfAProgramThatIsGone)
{
    const struct
    {
        const char *workstation, *session;
        bool isCleared;
        const char* why;
    } rows[] = {
        {"DESK1", "4711", true, "nobody here has the mark of that session"},
        {"DESK1", "4712", false, "that session's program is still running"},
        {"DESK2", "4711", false, "another workstation cannot be asked"},
        {"DESK1", "NULL", false, "of a program that sets no mark"},
    };
    Afx::SetComputerName("DESK1");
    Shellkit::ProcessMark running;
    ASSERT_TRUE(running.Set("MorvUt.TokenLock.7.4712"));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        Sql("DELETE FROM MTDAuthorisationLock");
        Quarry::GetConnection().Script(
            std::string("INSERT INTO MTDAuthorisationLock (lMTDAuthorisationID, strUserID, strWorkstation, ") +
            "ConnectionID) VALUES (7, 'BOB', '" + row.workstation + "', " + row.session + ");");
        EXPECT_EQ(CAuthorisationStore(kGateway).LockStore(), row.isCleared);
        EXPECT_EQ(Query("SELECT strUserID FROM MTDAuthorisationLock"), row.isCleared ? "ANNA" : "BOB");
    }
}

TEST_F(AuthorisationStore, RegistersGatewayIds)
{
    const ::Test::Case<const char*, bool> rows[] = {
        {"NEW", true, "new"},
        {"NEW", false, "there already"},
        {"O'BRIEN", false, "stands between quotes in the statement"},
        {"", false, "no id"},
        {"A B%s", true, "never taken for a placeholder"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(CAuthorisationStore::CreateGatewayID(row.in), row.out);
    }
    EXPECT_EQ(Query("SELECT strGatewayID FROM MTDAuthorisation WHERE nAuthorisedStatus = 0 AND lID > 0 "
                    "AND vbAccessToken IS NULL ORDER BY strGatewayID"),
              "A B%s, NEW");
    EXPECT_TRUE(CAuthorisationStore::DeleteGatewayId("NEW"));
    EXPECT_FALSE(CAuthorisationStore::DeleteGatewayId("NEW"));
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAuthorisation"), "2");
}
