#include "MorvUt/context/status/StatusView.h"

#include <random>
#include <sstream>

#include "MorvUt/context/ClientView.h"
#include "MorvUt/context/status/ClientStatus.h"
#include "StatusTest.h"

namespace
{

/// Rows of every kind, right ones and odd ones, chosen by chance that is the same each time.
class StatusOfAllClients : public ::Test::StatusTest
{
protected:
    /// So many more clients and partnerships, and rows of each kind; a few of these hang on ids that nobody has.
    void Add(int count, int rows)
    {
        Quarry::CTransaction transaction(Cellar::Intent::Write);
        for (int i = 0; i < count; ++i, ++m_last) {
            Sql("INSERT INTO BRIXClient (lID, bTrust, bActive, strEntityType, bTrustOption, nTrustKind, dtDeath) "
                "VALUES (%ld, %d, %d, %s, %d, %d, %s)",
                m_last + 1, Pick(2), Pick(3), Pick(2) ? "estate" : "Trust", Pick(2), Pick(3), Date());
            Sql("INSERT INTO BRIXPartnership (lID, bActive, bLLP, dtCessation) VALUES (%ld, %d, %d, %s)", m_last + 2,
                Pick(3), Pick(2), Date());
        }
        for (int i = 0; i < rows; ++i) {
            Sql("INSERT INTO BRIXTaxForm (lID, lClientID, nYear, bDormant, dtFinalised) VALUES (%d, %d, %d, %d, %s)",
                m_form + i + 1, Owner(), Year(), Pick(4) == 0, Date());
            Sql("INSERT INTO BRIXPartnershipTaxForm (lpClientID, nYear, bDormant, dtFinalised) VALUES (%d, %d, %d, %s)",
                Owner(), Year(), Pick(4) == 0, Date());
            Sql("INSERT INTO BRIXOtherReturnInfo (lTaxFormID, nTaxPayerStatus, bTradingAllowance) VALUES (%d, %d, %d)",
                1 + Pick(m_form + rows), Pick(3), Pick(2));
            for (const auto& into : {Cellar::SqlText("BRIXFBISubmissions (lClientID"),
                                     Cellar::SqlText("BRIXPartnershipFBISubmissions (lpClientID")})
                Sql("INSERT INTO " + into + ", nYear, nStatus) VALUES (%d, %d, %d)", Owner(), Year(), Pick(4));
            for (const auto& into : {Cellar::SqlText("BRIXClientPeriodsInactivity (lClientID"),
                                     Cellar::SqlText("BRIXPartnershipPeriodsInactivity (lpClientID")})
                Sql("INSERT INTO " + into + ", dtStart, dtEnd) VALUES (%d, %s, %s)", Owner(), Date(), Date());
        }
        m_form += rows;
        transaction.Commit();
    }

    static constexpr short kYears[] = {2007, 2008, 2017, 2018, 2020, 2024};

private:
    int Pick(int below) { return static_cast<int>(m_chance() % static_cast<unsigned>(below)); }
    int Owner() { return Pick(m_last + 4); }
    short Year() { return kYears[Pick(6)]; }
    const char* Date()
    {
        static constexpr const char* kDates[] = {nullptr,      nullptr,      "2019-04-06", "2019-04-07", "2020-04-05",
                                                 "2020-04-04", "2022-04-05", "2022-04-06", "soon",       "2006-01-01"};
        const char* const date = kDates[Pick(10)];
        return ::Test::IsOnServer() && date && *date == 's' ? nullptr : date; // it takes dates only
    }

    std::mt19937 m_chance{5};
    int m_last = 0, m_form = 0;
};

bool SaysForm(long client, short year, bool (*question)(Brix::CTaxForm&))
{
    Brix::CTaxForm form;
    form.Open({{Brix::CTaxForm::kClientID, client}, {Brix::CTaxForm::kYear, year}});
    return question(form);
}

using Single = bool (*)(long id, bool isPartnership, short year);

/// The published function that answers each question.
constexpr std::pair<StatusQuestion, Single> kSingles[] = {
    {StatusQuestion::DeadOrDormant, IsClientDeadDormant},
    {StatusQuestion::Inactive, IsClientInactiveInYear},
    {StatusQuestion::Dormant, ClientIsDormant},
    {StatusQuestion::Amending, Amending},
    {StatusQuestion::Finalised,
     [](long id, bool p, short y) {
         return (p ? IsPartershipTaxReturnFinalised(id, y) : IsTaxReturnFinalisedForYear(id, y)) == 1;
     }},
    {StatusQuestion::Trust, [](long id, bool p, short) { return !p && IsClientATrust(ClientId(id), false) == 1; }},
    {StatusQuestion::Estate, [](long id, bool p, short) { return !p && IsClientAnEstate(id) == 1; }},
    {StatusQuestion::ActualTrust, [](long id, bool p, short) { return !p && IsActualTrustClient(id) == 1; }},
    {StatusQuestion::Llp, [](long id, bool p, short) { return p && IsPartnershipAnLLP(id) == 1; }},
    {StatusQuestion::Scottish, [](long id, bool p, short y) { return !p && SaysForm(id, y, IsScottishTaxPayer); }},
    {StatusQuestion::TradingAllowance, [](long id, bool p, short y) { return !p && ClaimTradingAllowance(id, y); }},
};

ON_BOTH_DATABASES(StatusOfAllClients);
using StatusAnswers = ::Test::StatusTest;
ON_BOTH_DATABASES(StatusAnswers);

} // namespace

TEST_P(StatusOfAllClients, IsWhatTheSingleQuestionsAnswer)
{
    Script("INSERT INTO BRIXClient (lID, bTrust) VALUES (0, 1); INSERT INTO BRIXPartnership (lID, bLLP) "
           "VALUES (0, 1); INSERT INTO BRIXTaxForm (lID, lClientID, nYear) VALUES (0, 0, 2020)");
    const int count = ::Test::IsOnServer() ? 15 : 60; // each answer takes round trips
    Add(count, 4 * count);
    int yes[kStatusQuestions] = {};
    for (const short year : kYears) {
        const std::vector<ClientStatus> all = StatusOfAll(year);
        ASSERT_EQ(all.size(), 2U + 2 * static_cast<unsigned>(count)) << "a row of number 0 is nobody, and listed";
        for (const ClientStatus& status : all) {
            EXPECT_EQ(FindStatus(all, status.GetId(), status.IsPartnership()), &status);
            for (const auto& [question, single] : kSingles) {
                const bool is = status.Is(question);
                yes[static_cast<std::size_t>(question)] += is;
                EXPECT_EQ(is, single(status.GetId(), status.IsPartnership(), year))
                    << NameOf(question) << ' ' << status.IsPartnership() << ' ' << status.GetId() << " in " << year;
            }
        }
        EXPECT_EQ(FindStatus(all, count + 1, false), nullptr);
    }
    for (const auto& [question, single] : kSingles)
        EXPECT_GT(yes[static_cast<std::size_t>(question)], count / 6) << NameOf(question) << " is hardly ever a yes";
}

TEST_P(StatusOfAllClients, SendsOneStatementForEachTableAndPage)
{
    int statements = 0;
    Quarry::GetConnection().OnSent([&](std::string_view) { ++statements; });
    for (const int more : {10, 1010}) {
        Add(more, 40);
        statements = 0;
        const std::vector<ClientStatus> all = StatusOfAll(2020);
        EXPECT_EQ(statements, 9);
        statements = 0;
        std::size_t at = 0;
        ForEachStatus(2020, [&](const ClientView& client, const ClientStatus& status) {
            const ClientStatus& same = all.at(at++);
            EXPECT_TRUE(client.id == same.GetId() && client.IsPartnership() == same.IsPartnership());
            EXPECT_EQ(status.Because(), same.Because()) << client.id;
        });
        EXPECT_EQ(at, all.size());
        const int most = more == 10 ? 9 : 16;
        EXPECT_TRUE(statements == most || (::Test::IsOnServer() && statements <= most + 6))
            << statements << ": two pages of clients, two of partnerships; a server's cursors begin and end";
    }
}

/// "status 7 2020": of client 7 in that year, its word, for each question what decided, and what holds because of what.
TEST_P(StatusAnswers, AreSaidAsTold)
{
    ::Test::ExpectTranscript("MorvUt/context/status/StatusView.txt", [](const std::string& act) {
        std::istringstream words(act);
        std::string word, said;
        long id = 0;
        short year = 0;
        if (words >> word; word == "sql")
            return Script(act.substr(4)), said;
        words >> id >> year;
        const ClientStatus status = StatusOf(id, false, year);
        said = std::string(status.Word()) + '\n';
        for (const auto& [question, single] : kSingles) {
            const StatusAnswer answer = status.AnswerOf(question);
            said += std::string(NameOf(question)) + (status.Is(question) ? " yes: " : " no: ") +
                    status.ReasonText(question) + " (" + std::to_string(answer.recordId) + ", " +
                    answer.from.FormatIso().Str() + " to " + answer.to.FormatIso().Str() + ")\n";
        }
        for (const CString& line : status.Because())
            said += "> " + line.Str() + '\n';
        return said;
    });
}
