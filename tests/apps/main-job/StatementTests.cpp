// How many statements the steps of the main job send to the engine: few, and the same whoever else is there.

#include "apps/main-job/FetchTest.h"
#include "MorvUt/MorvUt.h"

namespace
{

/// What the current connection sends while this lives.
class SentStatements
{
public:
    SentStatements()
    {
        Quarry::GetConnection().OnSent([this](std::string_view statement) { Add(std::string(statement)); });
    }
    SentStatements(const SentStatements&) = delete;
    SentStatements& operator=(const SentStatements&) = delete;
    ~SentStatements() { Stop(); }

    void Stop() { Quarry::GetConnection().OnSent(nullptr); }
    int GetCount() const { return m_count; }
    /// How often something became durable: transactions, and writes outside of them.
    int GetDurable() const { return m_durable; }
    const std::string& GetText() const { return m_text; }

private:
    void Add(const std::string& statement)
    {
        m_text += std::to_string(++m_count) + ": " + statement + '\n';
        const std::string verb = statement.substr(0, statement.find(' '));
        const bool isWrite = verb == "INSERT" || verb == "UPDATE" || verb == "DELETE" || verb == "REPLACE";
        m_isWritten = isWrite || (m_isWritten && m_isOpen);
        m_durable += m_isWritten && (verb == "COMMIT" || !m_isOpen);
        m_isOpen = verb == "BEGIN" || (m_isOpen && verb != "COMMIT" && verb != "ROLLBACK");
    }

    int m_count = 0;
    int m_durable = 0;
    bool m_isOpen = false, m_isWritten = false;
    std::string m_text;
};

class Statements : public FetchTest
{
protected:
    Statements() : FetchTest("EVERYTHING") {}

    static std::int64_t LogLines()
    {
        return Quarry::GetConnection().Queryf("SELECT COUNT(*) FROM MTDLog").rows[0][0].GetInteger();
    }

    /// Takes a client through all steps, log lines and the reading of the token included. What each sent.
    static std::vector<int> CountAll(ClientId client)
    {
        std::vector<int> counts;
        const auto run = [&](int most, const char* step, auto work) {
            const auto linesBefore = LogLines();
            SentStatements sent;
            work();
            sent.Stop();
            EXPECT_LE(sent.GetCount(), most) << step << '\n' << sent.GetText();
            EXPECT_LE(sent.GetDurable(), LogLines() - linesBefore + 1) << step << '\n' << sent.GetText();
            counts.push_back(sent.GetCount());
        };
        const auto fetch = [&] { EXPECT_TRUE(HmrcApi::FetchFromHmrc(client, kGateway).ok); };
        Quarry::GetConnection().GetSessionId();
        run(60, "first fetch", fetch);
        run(24, "fetch without change", fetch);
        run(45, "create, and what a program reads to print it", [&] {
            const HmrcApi::CreateResult result = HmrcApi::CreateFromHmrc(client, TaxYear(kYear));
            EXPECT_EQ(result.created.employments, 2) << result.message;
            EXPECT_EQ(result.created.pensionsAndBenefits, 7);
            EXPECT_EQ(HmrcApi::LoadReturnYear(client, kYear).pensions.size(), 7u);
        });
        run(8, "differences", [&] { HmrcApi::FindDifferences(client, TaxYear(kYear)); });
        return counts;
    }
};

} // namespace

TEST_F(Statements, AreFewAndTheSameWhoeverElseIsThere)
{
    m_sandbox.Send("DELETE", "/sandbox/requests");
    CountAll(m_client); // counters are made with the first row of their table
    const std::string requests = m_sandbox.Send("GET", "/sandbox/requests", "");
    EXPECT_NE(requests.find("/individual-paye/"), std::string::npos) << requests;
    EXPECT_EQ(requests.find("/oauth/token"), std::string::npos) << "the token was good: " << requests;
    const std::vector<int> alone = CountAll(ClientId(::Test::AddClients(1)));
    EXPECT_EQ(CountAll(ClientId(::Test::AddClients(1000))), alone);

    m_sandbox.Send("POST", "/sandbox/token", R"({"expire": true})");
    const auto linesBefore = LogLines();
    SentStatements sent;
    EXPECT_TRUE(HmrcApi::FetchFromHmrc(m_client, kGateway).ok);
    sent.Stop();
    EXPECT_EQ(sent.GetDurable(), LogLines() - linesBefore + 1 + 4)
        << "the lock, the rehearsal, the tokens, the lock: " << sent.GetText();
}
