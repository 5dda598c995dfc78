// What becomes of a grant: each file of `stories` tells it step by step. What no step can do is below.

#include "HmrcApi/oauth/Authorisation.h"

#include <algorithm>
#include <csignal>
#include <map>
#include <sstream>
#include <stdexcept>

#include "Afx/text/TextFold.h"
#include "HmrcApi/oauth/Dialogue.h"

using namespace HmrcApi;

namespace
{

constexpr char kBusy[] =
    R"({"error":"invalid_request","error_description":"Refresh operation is already in progress"})";
constexpr char kProduction[] = "https://api.service.hmrc.gov.uk";

class Authorisation : public Fakes::Dialogue
{
protected:
    void Tell(const std::string& story)
    {
        ::Test::ExpectTranscript("HmrcApi/oauth/stories/" + story + ".txt",
                                 [this](const std::string& steps) { return Run(steps, "; "); });
    }
    bool Refresh() { return authorisation->RefreshTokens(&logger); }

    /// "grant [SERVICE]": one of that service (none: from before services were kept) is in hand, and nothing has
    /// happened yet.
    void Grant(const std::string& service = {})
    {
        Shellkit::SetPracticeKey(std::vector<std::uint8_t>(Shellkit::kKeySize, 7));
        ResetRow();
        *store = Fakes::Store();
        *client = Fakes::FakeClient();
        *tokenEndpoint = Fakes::FakeTransport();
        if (!service.empty()) {
            SetService(service == "none" ? "" : service);
            client->base = service == "none" ? kProduction : service;
        }
        authorisation->SetRedirectPorts(ports);
        authorisation->SetCancel({});
        tokenEndpoint->Script({{200, Fakes::kFreshTokens}});
        passed = slept = 0;
        EXPECT_TRUE(authorisation->LoadTokens());
    }

private:
    /// What steps tell, one after the other.
    std::string Run(const std::string& steps, const std::string& between)
    {
        std::string told;
        for (std::size_t at = 0, end = 0; end != steps.npos; at = end + between.size()) {
            end = steps.find(between, at);
            const std::string step = steps.substr(at, end - at), verb = step.substr(0, step.find(' '));
            told += Do(verb, step.substr(std::min(verb.size() + 1, step.size())));
        }
        return told;
    }

    std::string Do(const std::string& verb, const std::string& rest)
    {
        if (const auto quiet = m_quiet.find(verb); quiet != m_quiet.end())
            quiet->second(rest);
        return verb == "hand"       ? InHand() + '\n'
               : verb == "query"    ? Asked(rest) + '\n'
               : verb == "form"     ? tokenEndpoint->requests.back().body + '\n'
               : verb == "load"     ? Told(authorisation->LoadTokens(&logger))
               : verb == "refresh"  ? Told(Refresh())
               : verb == "sign-in"  ? Told(authorisation->DoAuthorisation(&logger))
               : verb == "code"     ? authorisation->RequestAuthCode() + '\n'
               : verb == "exchange" ? Told(authorisation->RequestAccessToken(rest))
                                    : std::string();
    }

    /// "answers NAME NAME": of those that "let NAME STATUS BODY" has named.
    void SetAnswers(const std::string& names)
    {
        std::vector<std::pair<int, std::string>> answers;
        std::istringstream words(names);
        for (std::string name; words >> name;)
            answers.push_back(m_answers.at(name));
        tokenEndpoint->Script(answers);
    }

    /// "at MOMENT TIME STEP, STEP": when that happens for so many times, and each time from then on.
    void At(const std::string& rest)
    {
        std::istringstream words(rest);
        std::string moment, steps;
        int nth = 0;
        std::getline(words >> moment >> nth >> std::ws, steps);
        *m_moments.at(moment) = [this, nth, steps]() mutable { m_meanwhile += --nth <= 0 ? Run(steps, ", ") : ""; };
    }

    /// How it ended and what is in hand; what HMRC was asked; what is stored, and what is stored once more, since
    /// what has ended must not be revived. Nobody is told a secret.
    std::string Told(bool isDone)
    {
        const std::string error = Code() + ": " + authorisation->GetLastError().text;
        std::string told = (isDone ? "done" : error) + '\n';
        if (!m_meanwhile.empty())
            told += "  meanwhile " + std::exchange(m_meanwhile, {});
        told += "  " + InHand();
        std::map<std::string, int> sent;
        for (const HttpRequest& request : tokenEndpoint->requests)
            ++sent[request.address + " with " + Fakes::QueryOf('?' + request.body, "refresh_token") +
                   Fakes::QueryOf('?' + request.body, "code")];
        for (const auto& [what, times] : sent)
            told += ", asked " + std::to_string(times) + " times " + what;
        const std::string stored = Row();
        told += (slept ? ", waited " + std::to_string(slept) : "") +
                (passed != slept ? ", took " + std::to_string(passed) : "") + ", stored " + stored +
                (IsLocked() ? ", locked" : "");
        told += authorisation->UpdateTokens() ? "" : ", not stored again: " + Code();
        for (const std::string secret : {"access-1", "access-2", "refresh-1", "refresh-2", "the-client-secret"})
            Fakes::ExpectNone(error + logger.text, {secret, Afx::FoldUpper(secret)});
        return told + (Row() == stored ? "\n" : ", then " + Row() + '\n');
    }
    std::string InHand() const { return (AccessToken().empty() ? "nothing" : AccessToken()) + " in hand"; }
    static std::string Row()
    {
        return StoredToken() + ' ' + StoredToken("vbRefreshToken") + ' ' + Stored("nAuthorisedStatus, strService");
    }

    std::string m_meanwhile;
    std::map<std::string, std::pair<int, std::string>> m_answers{
        {"fresh", {200, Fakes::kFreshTokens}}, {"busy", {400, kBusy}}, {"lost", {0, ""}}, {"late", {-1, ""}}};
    const std::map<std::string, std::function<void()>*> m_moments{{"rehearsal", &store->onRehearse},
                                                                  {"refusal", &store->onLockRefused},
                                                                  {"request", &tokenEndpoint->onSend},
                                                                  {"secret", &client->onSecret}};
    using Rest = const std::string&;
    const std::map<std::string, std::function<void(Rest)>> m_quiet{
        {"grant", [this](Rest service) { Grant(service); }},
        {"answers", [this](Rest names) { SetAnswers(names); }},
        {"let",
         [this](Rest rest) {
             const std::size_t status = rest.find(' ') + 1, body = std::min(rest.find(' ', status), rest.size());
             m_answers[rest.substr(0, status - 1)] = {std::stoi(rest.substr(status)), rest.substr(body)};
         }},
        {"at", [this](Rest rest) { At(rest); }},
        {"sql", [](Rest statement) { Script(statement); }},
        {"locked", [](Rest) { Lock(); }},
        {"elsewhere",
         [](Rest pair) {
             StoreElsewhere(pair.substr(0, pair.find(' ')).c_str(), pair.substr(pair.find(' ') + 1).c_str());
         }},
        {"failing", [this](Rest times) { store->failingUpdates = std::stoi(times); }},
        {"problem", [this](Rest text) { store->problem = text; }},
        {"busy", [this](Rest) { store->isBusy = true; }},
        {"base", [this](Rest address) { client->base = address; }},
        {"client", [this](Rest id) { client->id = id; }},
        {"no-key", [](Rest) { Shellkit::SetPracticeKey({}); }},
        {"no-port", [this](Rest) { authorisation->SetRedirectPorts({}); }},
        {"cancel", [this](Rest) { authorisation->SetCancel([] { return true; }); }},
        {"passes",
         [this](Rest most) {
             const auto allowed = static_cast<std::int64_t>(tokenEndpoint->requests.back().totalMilliseconds);
             passed += std::min<std::int64_t>(std::stol(most), allowed);
         }},
        {"asleep", [this](Rest milliseconds) { passed += std::stol(milliseconds); }},
        {"answer", [this](Rest query) { Answer(query); }},
        {"browser", [this](Rest opens) { authorisation->SetBrowser([opens](Rest) { return opens == "opens"; }); }},
        {"patience", [this](Rest milliseconds) {
             authorisation->SetBrowserTimeout(static_cast<unsigned>(std::stoul(milliseconds)));
         }}};
};

} // namespace

TEST_F(Authorisation, IsLoaded) { Tell("loading"); }
TEST_F(Authorisation, IsRefreshed) { Tell("refreshing"); }
TEST_F(Authorisation, IsOfOneService) { Tell("services"); }
TEST_F(Authorisation, IsGivenBySigningIn) { Tell("signing-in"); }

TEST_F(Authorisation, HoldsSignalsBackUntilThePairIsStored)
{
    static std::function<void()> arrived;
    int signals = 0;
    arrived = [&] {
        ++signals;
        EXPECT_EQ(StoredToken(), "access-2");
        EXPECT_FALSE(IsLocked()) << "the lock is given back first";
    };
    Grant();
    const auto before = std::signal(SIGTERM, [](int) { arrived(); });
    tokenEndpoint->onSend = [] { std::raise(SIGTERM); };
    EXPECT_TRUE(Refresh());
    EXPECT_EQ(signals, 1);
    EXPECT_FALSE(tokenEndpoint->requests.at(0).cancelled) << "cancelling it would lose the token";

    Grant();
    tokenEndpoint->Script({{400, kBusy}});
    tokenEndpoint->onSend = [] { std::raise(SIGTERM); };
    arrived = [&] { ++signals; };
    EXPECT_FALSE(Refresh());
    EXPECT_EQ(Code(), "CANCELLED") << "nothing is lost while HMRC is busy";
    EXPECT_EQ(tokenEndpoint->requests.size(), 1u);
    EXPECT_EQ(signals, 2);
    std::signal(SIGTERM, before);
}

TEST_F(Authorisation, GivesTheLockBackAfterAnException)
{
    Grant();
    tokenEndpoint->onSend = [] { throw std::runtime_error("no memory"); };
    EXPECT_THROW(Refresh(), std::runtime_error);
    EXPECT_FALSE(IsLocked());
    tokenEndpoint->onSend = {};
    logger.onLog = [] { throw std::runtime_error("no log"); };
    EXPECT_THROW(Refresh(), std::runtime_error);
    EXPECT_FALSE(IsLocked());
    EXPECT_EQ(StoredToken(), "access-2") << "stored before anything else";
}

TEST_F(Authorisation, IsNotRefreshedWhileAnotherProgramWrites)
{
    Grant();
    Quarry::GetConnection().SetBusyTimeout(1);
    const auto writer = Open();
    writer->Query("BEGIN IMMEDIATE", {});
    EXPECT_FALSE(Refresh());
    EXPECT_EQ(authorisation->GetLastError().text, "The authorisation is being refreshed at another workstation, or "
                                                  "another program is writing to the practice");
    EXPECT_EQ(slept, 0u) << "the store has waited";
    EXPECT_TRUE(tokenEndpoint->requests.empty()) << "a refresh token is good for one use";
}
