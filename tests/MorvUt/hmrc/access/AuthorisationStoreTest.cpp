#include "MorvUt/hmrc/access/AuthorisationStore.h"

#include <time.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <optional>
#include <sstream>

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

CAuthorisationStore Authorised(const std::string& gateway = kGateway)
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

std::string Told(bool isDone) { return isDone ? "yes" : "no"; }

/// All that it holds of tokens, these as their sizes.
std::string Held(CAuthorisationStore& store)
{
    return std::to_string(store.GetAccessToken().size()) + ' ' + std::to_string(store.GetRefreshToken().size()) + ' ' +
           std::to_string(store.GetExpiresIn()) + ' ' + store.GetScope() + ' ' + store.GetTokenType() + ' ' +
           store.GetAuthenticatedTimestamp().FormatIso().Str() + ' ' + store.GetService() + ' ' +
           std::to_string(store.GetAuthorisationStatus());
}

std::string UpdatedLoaded(CAuthorisationStore& store)
{
    const char* const names[] = {"failed", "done", "replaced"};
    const std::string told = names[static_cast<int>(store.UpdateLoaded())];
    return told + (store.GetProblem().empty() ? "" : ", and says why");
}

std::string HolderOf(CAuthorisationStore& store)
{
    std::string workstation, user;
    return store.GetLockHolder(workstation, user) ? user + " at " + workstation : "nobody";
}

class AuthorisationStore : public HmrcTest
{
protected:
    /// "NAME of GATEWAY": a store with tokens, "NAME empty GATEWAY": one without, "NAME copies NAME"; "NAME STEP": what
    /// it answers; "register GATEWAY", "remove GATEWAY", "sql STATEMENT", "query SELECT".
    std::string Run(const std::string& command)
    {
        std::istringstream words(command);
        std::string name, step, value;
        std::getline(words >> name >> step >> std::ws, value);
        const std::string rest = command.substr(std::min(name.size() + 1, command.size()));
        if (name == "sql")
            Script(rest);
        else if (step == "of" || step == "empty")
            m_stores.insert_or_assign(name, step == "of" ? Authorised(value) : CAuthorisationStore(value));
        else if (step == "copies")
            m_stores.emplace(name, m_stores.at(value));
        else if (step == "hour")
            m_stores.at(name).SetAuthenticatedTimestamp(COleDateTime(2024, 5, 1, std::stoi(value), 30, 0));
        else if (step == "status")
            m_stores.at(name).SetAuthorisationStatus(static_cast<Store::AuthorisationStatus>(std::stoi(value)));
        else if (step == "service")
            m_stores.at(name).SetService(value);
        else if (name == "query")
            return Asked(rest) + '\n';
        else if (name == "register")
            return Told(CAuthorisationStore::CreateGatewayID(rest)) + '\n';
        else if (name == "remove")
            return Told(CAuthorisationStore::DeleteGatewayId(rest)) + '\n';
        else
            return m_steps.at(step)(m_stores.at(name)) + '\n';
        return {};
    }

private:
    std::map<std::string, CAuthorisationStore> m_stores;
    const std::map<std::string, std::function<std::string(CAuthorisationStore&)>> m_steps{
        {"holds", &Held},
        {"holder", &HolderOf},
        {"update-loaded", &UpdatedLoaded},
        {"load", [](auto& store) { return Told(store.LoadTokens()); }},
        {"update", [](auto& store) { return Told(store.UpdateTokens()); }},
        {"consent", [](auto& store) { return Told(store.UpdateConsent()); }},
        {"lock", [](auto& store) { return Told(store.LockStore()); }},
        {"unlock", [](auto& store) { return Told(store.UnlockStore()); }},
        {"has", [](auto& store) { return Told(store.HasAuthenticatedGatewayID()); }},
    };
};
ON_BOTH_DATABASES(AuthorisationStore);
using AuthorisationStoreInAFile = HmrcTest; // whose room can be told
ON_EMBEDDED(AuthorisationStoreInAFile);

/// The moment so many seconds ago.
Cellar::Value UtcBefore(int seconds)
{
    const Afx::LocalTime at = Afx::FromUnixMilliseconds(Afx::Clock::UnixMilliseconds() - 1000LL * seconds);
    return COleDateTime(at.year, at.month, at.day, at.hour, at.minute, at.second);
}

} // namespace

TEST_P(AuthorisationStore, KeepsTokensLocksAndGatewayIds)
{
    Afx::SetComputerName("DESK1");
    ::Test::ExpectTranscript("MorvUt/hmrc/transcripts/stores.txt",
                             [this](const std::string& command) { return Run(command); });
    CAuthorisationStore store = Authorised();
    EXPECT_THROW(store.HasAuthenticatedGatewayID(), Cellar::DatabaseError) << "the story takes the table away";
}

TEST_P(AuthorisationStore, TellsWhenTheGrantEnds)
{
    EXPECT_TRUE(Authorised("NEW").UpdateTokens());
    const HmrcApi::GatewayState state = HmrcApi::ReadGatewayState("NEW");
    EXPECT_EQ(state.grantEnds, COleDateTime(2025, 11, 1, 9, 30, 0)) << "18 months after the consent";
    EXPECT_EQ(state.Warning(COleDateTime(2025, 9, 2, 9, 29, 59)), "");
    EXPECT_EQ(state.Warning(COleDateTime(2025, 9, 2, 9, 30, 0)),
              "HMRC's authority ends on 01/11/2025: authorise again before then.");
    EXPECT_EQ(state.Warning(state.grantEnds), "HMRC's authority ended on 01/11/2025: authorise again.");
    EXPECT_EQ(HmrcApi::GrantEnd(COleDateTime(2022, 8, 31, 0, 0, 0)), COleDateTime(2024, 2, 29, 0, 0, 0));
    EXPECT_EQ(HmrcApi::ListGateways().size(), 2u);
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
    {
        const Quarry::CTransaction begun(Cellar::Intent::Write);
        EXPECT_FALSE(store.UpdateTokens() || store.Rehearse() || store.UnlockStore() || Authorised().LockStore());
        EXPECT_NE(store.GetProblem(), "");
        HmrcApi::Logger().Log("Failed", {}, {}, {}, {});
        EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDLog"), "2") << "a line is written all the same";
    }
    EXPECT_TRUE(store.LockStore()) << "what could not be removed is removed now";
    EXPECT_TRUE(store.UnlockStore());
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAuthorisationLock"), "0");
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

TEST_P(AuthorisationStore, ClearsALockThatWasLeftBehind)
{
    setenv("TZ", "XST-1", 1); // an hour that must not count
    tzset();
    const auto other =
        Cellar::CConnection::Open(CString(::Test::TempDir() + "/other.db"), Cellar::CConnection::Create::IfMissing);
    Shellkit::ProcessMark running, elsewhere;
    ASSERT_TRUE(running.Set(Locks::MarkName(Quarry::GetConnection(), "MorvUt.TokenLock", "7", 8004712)));
    ASSERT_TRUE(elsewhere.Set(Locks::MarkName(*other, "MorvUt.TokenLock", "7", 8004713)));
    // age in seconds, workstation, session, whether it is cleared
    for (const auto& [age, workstation, session, isCleared, why] :
         ::Test::Table<std::optional<int>, const char*, std::optional<int>, bool>("MorvUt/hmrc/access/Locks.tsv")) {
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
