// A program that is killed at any step between HMRC's answer to a refresh and the end of the retrieval's beginning: the
// next one has the new pair, or says that authority must be given again.

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "HmrcApi/Fakes.h"
#include "support/Practice.h"

namespace
{

using HmrcApi::CAuthorisation;
using HmrcApi::CAuthorisationStore;
using HmrcApi::HttpAnswer;

/// Kills this program at the step with a number, counted from HMRC's answer on.
class Steps
{
public:
    explicit Steps(int last) : m_left(last) {}
    void Begin() { m_isCounting = true; }
    void Reach()
    {
        if (m_isCounting && m_left-- == 0)
            kill(getpid(), SIGKILL);
    }

private:
    int m_left;
    bool m_isCounting = false;
};

/// HMRC: each refresh token is good once and gives the next pair. Its state is in a file, since it outlives the killed.
class Issuer : public HmrcApi::ITransport
{
public:
    explicit Issuer(Steps* steps = nullptr) : m_steps(steps) {}

    static int Last() { return std::stoi(::Test::ReadFile(File())); }
    static void SetLast(int number) { ::Test::WriteFile("pair", std::to_string(number)); }
    HttpAnswer Send(const HmrcApi::HttpRequest& request) override
    {
        const int last = Last();
        HttpAnswer answer{HttpAnswer::Outcome::Answered,  400, "application/json", {},
                          R"({"error":"invalid_grant"})", {}};
        if (request.body.find("refresh_token=refresh-" + std::to_string(last)) != std::string::npos) {
            SetLast(last + 1);
            const std::string number = std::to_string(last + 1);
            answer.status = 200;
            answer.body = R"({"access_token":"access-)" + number + R"(","refresh_token":"refresh-)" + number +
                          R"(","token_type":"bearer","expires_in":14400})";
        }
        if (m_steps) {
            m_steps->Begin();
            m_steps->Reach();
        }
        return answer;
    }

private:
    static std::string File() { return ::Test::TempDir() + "/pair"; }
    Steps* m_steps;
};

/// The practice's own store; half a pair in hand is a step, too.
struct WatchedStore : CAuthorisationStore
{
    explicit WatchedStore(Steps& theSteps) : CAuthorisationStore("GATEWAY1"), steps(theSteps) {}
    void SetRefreshToken(const std::vector<unsigned char>& token) override
    {
        steps.Reach();
        CAuthorisationStore::SetRefreshToken(token);
    }
    Steps& steps;
};

class KilledRefresh : public ::Test::OnDatabase, protected HmrcApi::Fakes::Granted
{
protected:
    /// The first pair, whose time is over.
    static void GiveFirstPair()
    {
        ResetRow();
        Sql("UPDATE MTDAuthorisation SET dtAuthenticated = NULL");
        Issuer::SetLast(1);
    }

    static bool Load(std::shared_ptr<CAuthorisationStore> store, Steps* steps, std::string& told)
    {
        HmrcApi::Logger logger;
        store->SetRetryDelay(20);
        CAuthorisation authorisation(std::move(store), std::make_shared<HmrcApi::CScope>(),
                                     std::make_shared<HmrcApi::Fakes::FakeClient>());
        authorisation.SetChannel(std::make_shared<HmrcApi::Channel>(std::make_shared<Issuer>(steps)));
        const bool isLoaded = authorisation.LoadTokens(&logger);
        HmrcApi::COAuth2Tokens tokens;
        authorisation.get_authtokens(tokens);
        told = isLoaded ? tokens.accessToken + ' ' + tokens.refreshToken : authorisation.GetLastError().code;
        return isLoaded;
    }

    /// Refreshes in a program of its own, which is killed at that step; false when it had no such step.
    static bool RefreshUntil(int step)
    {
        Quarry::SetConnection(nullptr); // no connection lives in two programs
        const pid_t child = fork();
        if (child == 0) {
            Steps steps(step);
            std::string told;
            Quarry::SetConnection(Open());
            Quarry::GetConnection().OnSent([&](std::string_view) { steps.Reach(); });
            _exit(Load(std::make_shared<WatchedStore>(steps), &steps, told) ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        Quarry::SetConnection(Open());
        EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0);
        return WIFSIGNALED(status);
    }

    static std::string StoredPair() { return StoredToken() + ' ' + StoredToken("vbRefreshToken"); }
};

ON_BOTH_DATABASES(KilledRefresh);

} // namespace

TEST_P(KilledRefresh, LeavesTheNewPairOrAnEndedGrantAtEveryStep)
{
    const std::string oldPair = "access-1 refresh-1", newPair = "access-2 refresh-2";
    int lost = 0, kept = 0;
    GiveFirstPair();
    for (int step = 0; RefreshUntil(step); ++step) {
        SCOPED_TRACE(step);
        const std::string stored = StoredPair();
        std::string told;
        const bool isLoaded = Load(std::make_shared<CAuthorisationStore>("GATEWAY1"), nullptr, told);
        EXPECT_EQ(told, isLoaded ? newPair : "INVALID_GRANT");
        EXPECT_EQ(stored, isLoaded ? newPair : oldPair) << "half a pair";
        EXPECT_EQ(Query("SELECT nAuthorisedStatus FROM MTDAuthorisation"), isLoaded ? "1" : "0");
        EXPECT_EQ(Issuer::Last(), 2) << "refreshed twice";
        if (isLoaded) { // the next refresh is not kept out by what was left behind
            Sql("UPDATE MTDAuthorisation SET dtAuthenticated = NULL");
            EXPECT_TRUE(Load(std::make_shared<CAuthorisationStore>("GATEWAY1"), nullptr, told)) << told;
        }
        EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAuthorisationLock"), "0");
        ++(isLoaded ? kept : lost);
        GiveFirstPair();
    }
    EXPECT_EQ(StoredPair(), newPair) << "nothing is killed";
    EXPECT_GE(lost, 3) << "steps before the pair is stored";
    EXPECT_GE(kept, 2) << "and behind";
}
