// How many statements the steps of the main job send to the engine: few, and the same whoever else is there.

#include "apps/main-job/FetchTest.h"
#include "MorvUt/MorvUt.h"

namespace
{

struct Sent
{
    int count = 0;
    int durable = 0; // how often something became so: transactions, and writes outside of them
    std::string text;
};

/// What the current connection sends meanwhile.
template<class Work>
Sent SentBy(Work work)
{
    const auto sent = std::make_shared<Sent>();
    Quarry::GetConnection().OnSent([sent, isOpen = false, isWritten = false](std::string_view statement) mutable {
        sent->text += std::to_string(++sent->count) + ": " + std::string(statement) + '\n';
        const std::string_view verb = statement.substr(0, statement.find(' '));
        const bool isWrite = verb == "INSERT" || verb == "UPDATE" || verb == "DELETE" || verb == "REPLACE";
        isWritten = isWrite || (isWritten && isOpen);
        sent->durable += isWritten && (verb == "COMMIT" || !isOpen);
        isOpen = verb == "BEGIN" || (isOpen && verb != "COMMIT" && verb != "ROLLBACK");
    });
    work();
    Quarry::GetConnection().OnSent(nullptr);
    return *sent;
}

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
            const Sent sent = SentBy(work);
            EXPECT_LE(sent.count, most) << step << '\n' << sent.text;
            EXPECT_LE(sent.durable, LogLines() - linesBefore + 1) << step << '\n' << sent.text;
            counts.push_back(sent.count);
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
    const Sent sent = SentBy([&] { EXPECT_TRUE(HmrcApi::FetchFromHmrc(m_client, kGateway).ok); });
    EXPECT_EQ(sent.durable, LogLines() - linesBefore + 1 + 4)
        << "the lock, the rehearsal, the tokens, the lock: " << sent.text;
}
