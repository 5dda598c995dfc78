// Every answer that HMRC, a proxy or the network may give, by each interface: what is asked again, what is reported,
// that a failed group leaves everything as it was, that the other group is fetched as usual, and that the next fetch
// succeeds.

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string>

#include "apps/main-job/FetchTest.h"
#include "HmrcApi/transport/Transport.h"

namespace
{

using ::Test::Json;

/// What every fetch may write: the log, the tokens and their lock, counters, and the year's row with the time.
const std::set<std::string> kBookkeeping{"MTDLog",     "MTDAuthorisation", "MTDAuthorisationLock",
                                         "BRIXNextID", "BRIXMTD_TaxYear",  "sqlite_sequence"};

class Faults : public FetchTest
{
protected:
    Faults()
    {
        HmrcApi::SetTimeouts({1000, 1000});
        Serve(m_number);
        EXPECT_TRUE(Fetch().result.ok);
        EXPECT_EQ(Create().employments, 1);
    }

    /// "fetch [expired|refused] [PATH FAULT [MEMBER=VALUE ...]]": what happens to the tokens before, and a fault of the
    /// sandbox. HMRC has new figures each time. "individual": by these interfaces from then on.
    std::string Run(const std::string& command)
    {
        if (command == "individual")
            return UseIndividual();
        const int before = m_number++;
        Serve(m_number);
        Prepare(command);
        const Tables tables = Read();
        const Fetched fetched = Fetch();
        std::string told = Told(fetched) + "written:";
        for (const std::string& table : Changed(tables, Read(), kBookkeeping))
            told += ' ' + table;
        for (const int staged : {StagedPaye(), StagedNationalInsurance()})
            EXPECT_TRUE(staged == m_number || staged == before) << staged;
        const bool isEnded = Query("SELECT nAuthorisedStatus FROM MTDAuthorisation") == "0";
        Recover(isEnded);
        return told + (isEnded ? "\nauthority has ended\n" : "\n");
    }

private:
    std::string UseIndividual()
    {
        Sql("UPDATE BRIXOptions SET nPAYEInterface = 0");
        Authorise(); // the scopes are others
        Forget();
        EXPECT_TRUE(Fetch().result.ok);
        EXPECT_EQ(Create().employments, 1);
        return {};
    }

    void Prepare(const std::string& command)
    {
        Json fault{{"times", 0}};
        std::istringstream words(command);
        for (std::string word; words >> word;) {
            const std::size_t at = word.find('=');
            const std::string value = word.substr(at + 1);
            if (word == "expired" || word == "refused")
                m_sandbox.Send("POST", "/sandbox/token",
                               Json{{"expire", true}, {"refuseRefresh", word == "refused"}}.dump());
            else if (at != word.npos)
                fault[word.substr(0, at)] = std::isdigit(value[0]) ? Json(std::stoi(value)) : Json(value);
            else if (word != "fetch")
                fault[word[0] == '/' ? "path" : "fault"] = word;
        }
        if (fault.contains("fault"))
            m_sandbox.Send("POST", "/sandbox/fault", fault.dump());
    }

    void Recover(bool isEnded)
    {
        m_sandbox.Send("DELETE", "/sandbox/fault");
        m_sandbox.Send("POST", "/sandbox/token", R"({"refuseRefresh": false})");
        if (isEnded)
            Authorise();
        const Fetched again = Fetch();
        EXPECT_TRUE(again.result.ok);
        EXPECT_EQ(StagedPaye(), m_number);
        EXPECT_EQ(StagedNationalInsurance(), m_number);
        EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXMTD_Employments WHERE bWithdrawn = 0"), "1");
    }

    /// The tries grow apart: 500, 1000, 2000 milliseconds and up to a quarter more, or what Retry-After asks for.
    static std::string Waited(unsigned milliseconds)
    {
        for (const unsigned least : {0u, 500u, 1500u, 3500u, 6000u, 21'000u})
            if (milliseconds >= least && milliseconds <= least + least / 4)
                return std::to_string(least);
        return "otherwise, " + std::to_string(milliseconds);
    }

    static std::string Told(const Fetched& fetched)
    {
        std::string text = fetched.result.ok ? "done: asked" : "failed: asked";
        for (const auto& [interface, count] : fetched.asked)
            text += ' ' + interface + ' ' + std::to_string(count) + ',';
        text += " milliseconds waited " + Waited(fetched.waited) + '\n';
        for (const auto& group : fetched.result.groups)
            text += group.name + ": " + NameOf(group.state) + '\n';
        for (const auto& group : fetched.result.errors->GetGroups())
            for (const auto& error : group.errors) {
                const std::string& message = error.GetMessageText(); // up to the HTTP library's words, or a time of day
                text += group.name + ": " + error.GetCode() + ' ' + error.GetHttpStatus() + ' ' +
                        message.substr(0, std::min(message.find(": "), message.find(" after "))) + " | " +
                        HmrcApi::ActionFor(error.GetCode(), error.GetHttpStatus(), error.GetField()) + '\n';
            }
        EXPECT_EQ(fetched.result.stopped, HmrcApi::FetchResult::Stopped::No);
        return text;
    }

    int m_number = 1000;
};

} // namespace

TEST_F(Faults, AreReportedAndLeaveWhatWasThere)
{
    ::Test::ExpectTranscript("apps/main-job/transcripts/faults.txt",
                             [this](const std::string& command) { return Run(command); });
}
