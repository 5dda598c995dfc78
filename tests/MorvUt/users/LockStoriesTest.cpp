// Locks of users and features in stories: acts, and below each what it shows.

#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "Afx/system/Computer.h"
#include "MorvUt/users/FeatureLock.h"
#include "MorvUt/users/locks/LockList.h"
#include "MorvUt/users/locks/UserLockFile.h"
#include "MorvUt/users/ReadOnlyManager.h"
#include "UsersTest.h"

namespace
{

constexpr Afx::StringResource kOwnStrings[] = {{5, "Wait."}, {6, "%2: %1"}};

/// Sessions a, b and c, of which a has the current connection. What is called a2 is in session a, too.
class LockStories : public UsersTest
{
protected:
    LockStories()
    {
        CUserData::m_strUser = "ann";
        Afx::SetComputerName("DESK1");
        TellTo(m_shown);
    }
    ~LockStories() override
    {
        CUserData::m_strUser.Empty();
        SetUnlimitedSameUserLogin(0);
    }

    /// "a lock 7", "a login ann": what comes of it, and what the user and standard error are told.
    std::string Act(const std::string& line)
    {
        std::istringstream words(line);
        std::string word;
        words >> m_name >> word;
        std::getline(words >> std::ws, m_rest);
        const auto& act = m_acts.at(word);
        if (m_name[0] != 'a' && !m_connections.contains(m_name[0]))
            m_connections[m_name[0]] = Open();
        m_connection = m_name[0] == 'a' ? &Quarry::GetConnection() : m_connections[m_name[0]].get();
        if (m_connection)
            CUserLockFile::InitUserLocking(*m_connection);
        m_shown = "";
        testing::internal::CaptureStderr();
        try {
            act(m_holders[m_name]);
        } catch (const Cellar::DatabaseError&) {
            m_shown += "refused by the database\n";
        } catch (const std::logic_error&) {
            m_shown += "not allowed\n";
        }
        const std::string told = testing::internal::GetCapturedStderr();
        return m_shown + told.substr(0, told.find(": ")) + (told.empty() ? "" : "\n");
    }

private:
    struct Holder
    {
        CMorvLockFile user;
        std::map<std::string, CFeatureLock> features;
    };

    void ShowUser(const CUserLockFile& user)
    {
        m_shown += std::string(!user.IsLocked()   ? "logged out"
                               : user.HasOwnRow() ? "logged in"
                                                  : "logged in, no row") +
                   (user.IsValidState() ? "\n" : ", not valid\n");
    }
    void Lock(Holder& holder, bool hasOwnTexts)
    {
        const Afx::ResourceContext own(kOwnStrings, 2);
        const Afx::ResourceContextGuard guard(own);
        CFeatureLock& lock = holder.features.try_emplace(m_rest, std::stoi(m_rest), *m_connection).first->second;
        CString who = "nobody";
        const int isHeld = hasOwnTexts ? lock.Lock(5, 6, &who) : lock.Lock(&who);
        m_shown += isHeld ? "held" + who.Str() + '\n' : "refused by '" + who.Str() + "'\n";
    }
    static void BeginWrite(Cellar::CConnection& connection, const std::string& client)
    {
        connection.Begin(Cellar::Intent::Write, {1, std::stol(client)});
    }
    /// As others see them; without the numbers of sessions.
    void ShowLocks()
    {
        for (const HeldLock& lock : ListLocks(*Open()))
            m_shown += std::string(LockKindName(lock.kind)) + ' ' +
                       lock.key.Str().substr(0, lock.key.Str().rfind('/')) + " at " + lock.workstation.Str() + '\n';
    }

    const std::map<std::string, std::function<void(Holder&)>> m_acts{
        {"unlimited", [this](Holder&) { SetUnlimitedSameUserLogin(std::stoi(m_rest)); }},
        {"login",
         [this](Holder& holder) {
             m_shown = holder.user.AddLock(m_rest.c_str()) == CUserLockFile::Held ? "" : "failed; ";
             ShowUser(holder.user);
         }},
        {"logout", [this](Holder& holder) { holder.user.RemoveLock(), ShowUser(holder.user); }},
        {"state", [this](Holder& holder) { ShowUser(holder.user); }},
        {"count", [this](Holder& holder) { m_shown = std::to_string(holder.user.GetNumUsers()) + '\n'; }},
        {"lock", [this](Holder& holder) { Lock(holder, false); }},
        {"lock-with-texts", [this](Holder& holder) { Lock(holder, true); }},
        {"release", [this](Holder& holder) { holder.features.erase(m_rest); }},
        {"locks", [this](Holder&) { ShowLocks(); }},
        {"refuse", // "INSERT table"
         [this](Holder&) {
             const std::size_t blank = m_rest.find(' ');
             m_trigger.emplace(Quarry::GetConnection(), "BEFORE " + m_rest.substr(0, blank), m_rest.substr(blank + 1));
         }},
        {"allow", [this](Holder&) { m_trigger.reset(); }},
        {"sql", [this](Holder&) { m_connection->Script(m_rest); }},
        {"table", [this](Holder&) { m_shown = InTable(m_rest); }},
        {"connect", [](Holder&) { Quarry::SetConnection(Open()); }},
        {"end", // its session
         [this](Holder&) {
             Open()->Queryf("SELECT pg_terminate_backend(%ld)", static_cast<long>(m_connection->GetSessionId()));
         }},
        {"hurry", [this](Holder&) { m_connection->SetBusyTimeout(1); }},
        {"begin", [this](Holder&) { m_connection->Begin(); }},
        {"begin-write", [this](Holder&) { BeginWrite(*m_connection, m_rest); }},
        {"overtaken", // by b, whenever its levels have to wait
         [this](Holder&) {
             m_connection->WaitForLevels(
                 [this, client = m_rest](bool) { return BeginWrite(*m_connections.at('b'), client), true; });
         }},
        {"bounce", [](Holder&) { BounceCommitBeginTrans(); }},
        {"level",
         [this](Holder&) {
             m_shown = std::to_string(m_connection->GetLevel()) + (m_connection->HasBegun() ? " begun\n" : "\n");
         }},
        {"commit", [this](Holder&) { m_connection->Commit(); }},
        {"rollback-all", [this](Holder&) { m_connection->RollbackTo(1); }},
        {"write", [this](Holder&) { m_connection->ExecuteDirect("UPDATE BRIXOptions SET nDateFormat = 1"); }},
        {"fail", [this](Holder&) { m_connection->ExecuteDirect("DELETE FROM Nowhere"); }},
        {"close", [this](Holder&) { m_connections[m_name[0]].reset(); }},
    };
    std::string m_name, m_rest, m_shown; // of the act
    Cellar::CConnection* m_connection = nullptr;
    std::map<char, std::unique_ptr<Cellar::CConnection>> m_connections; // of all but a
    std::map<std::string, Holder> m_holders;
    std::optional<::Test::Trigger> m_trigger;
};

ON_BOTH_DATABASES(LockStories);

TEST_P(LockStories, GoAsTold)
{
    ::Test::ExpectTranscript("MorvUt/users/stories/locks.txt", [this](const std::string& act) { return Act(act); });
}

TEST_P(LockStories, OfLevelsGoAsTold)
{
    const auto run = [this](const std::string& act) { return Act(act); };
    ::Test::ExpectTranscript("MorvUt/users/stories/levels.txt", run);
    if (::Test::IsOnServer())
        ::Test::ExpectTranscript("MorvUt/users/stories/levels.server.txt", run);
}

} // namespace
