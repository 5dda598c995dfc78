// Every answer that HMRC, a proxy or the network may give, over HTTP: what is asked again, what is reported, that a
// failed group leaves everything as it was, that the other group is fetched as usual, and that the next fetch succeeds.

#include <algorithm>
#include <sstream>
#include <string>

#include "apps/main-job/FetchTest.h"
#include "hmrc-sandbox/Errors.h"
#include "HmrcApi/transport/Transport.h"
#include "MorvUt/hmrc/access/ClientData.h"

namespace
{

using ::Test::Json;

constexpr char kPaye[] = "/individual-paye", kInsurance[] = "/national-insurance", kOAuth[] = "/oauth/token";
constexpr char kNothingYet[] = "nothing yet";
constexpr char kExpired[] = R"({"expire": true})";
constexpr char kRefused[] = R"({"expire": true, "refuseRefresh": true})";
constexpr char kAuthorise[] = "Authorise the Government Gateway user ID";
constexpr char kAuthority[] = "the client has authorised the practice";
constexpr char kMinutes[] = "in a few minutes";
constexpr char kReport[] = "Report this error";
constexpr char kNewer[] = "newer version";

struct Row
{
    const char* why;
    const char* fault; // of the sandbox, then its members; for all answers unless "times" says how many; empty: none
    int requests = 1;  // of the group whose requests fail
    std::string entry = {};   // code and HTTP status; empty: the fetch succeeds
    const char* action = "";  // part of what the user can do
    std::string path = kPaye; // that fails
    const char* token = "";   // what happens to the tokens before
    int tokens = 0;           // requests for tokens
    int otherRequests = 1;

    bool IsPaye() const { return path != kInsurance; }
    bool IsNothingYet() const { return entry == kNothingYet; }
    bool EndsGrant() const { return Code() == "INVALID_GRANT"; } // authority must be given again, for both groups
    std::string Code() const { return IsNothingYet() ? "" : entry.substr(0, entry.find(' ')); }
    std::string Status() const { return entry.find(' ') == entry.npos ? "" : entry.substr(entry.find(' ') + 1); }
    Json Fault() const
    {
        Json body{{"path", path}, {"times", 0}};
        std::istringstream words(std::string("fault=") + fault);
        for (std::string word; words >> word;) {
            const std::string value = word.substr(word.find('=') + 1);
            const bool isNumber = value[0] >= '0' && value[0] <= '9';
            body[word.substr(0, word.find('='))] = isNumber ? Json(std::stoi(value)) : Json(value);
        }
        return body;
    }
};

// clang-format off
const Row kRows[] = {
    {"no fault", ""},
    {"expired access token", "", 2, "", "", kPaye, kExpired, 1},
    {"refresh refused", "", 1, "INVALID_GRANT 400", kAuthorise, kPaye, kRefused, 1, 0},
    {"the refresh's answer lost, its token used up", "DROPPED times=1", 1, "INVALID_GRANT 400", kAuthorise, kOAuth,
     kExpired, 2, 0},
    {"no refresh for now; the other group's succeeds", "SERVER_ERROR times=1", 1, "SERVER_ERROR 503", kMinutes, kOAuth,
     kExpired, 2, 2},
    {"a new token is refused too", "INVALID_CREDENTIALS", 2, "INVALID_CREDENTIALS 401", kAuthorise, kPaye, "", 1},
    {"may not see this client", "UNAUTHORIZED", 1, "UNAUTHORIZED 401", kAuthority},
    {"token lacks the scope", "INVALID_SCOPE", 1, "INVALID_SCOPE 403", kAuthorise},
    {"not authorised for the identifier", "FORBIDDEN", 1, "FORBIDDEN 403", kAuthority},
    {"application not subscribed", "RESOURCE_FORBIDDEN", 1, "RESOURCE_FORBIDDEN 403", kReport},
    {"identifier refused", "NINO_INVALID", 1, "NINO_INVALID 400", "National Insurance number"},
    {"year refused", "TAX_YEAR_INVALID", 1, "TAX_YEAR_INVALID 400", "tax year"},
    {"version gone", "NOT_ACCEPTABLE", 1, "ACCEPT_HEADER_INVALID 406", kNewer},
    {"no data yet", "NOT_FOUND", 1, kNothingYet},
    {"path gone", "MATCHING_RESOURCE_NOT_FOUND", 1, "MATCHING_RESOURCE_NOT_FOUND 404", kNewer},
    {"a 404 that says nothing is no 'no data'", "EMPTY status=404", 1, "HTTP_404 404", kReport},
    {"throttled", "MESSAGE_THROTTLED_OUT", 4, "MESSAGE_THROTTLED_OUT 429", kMinutes},
    {"throttled, and told for how long", "MESSAGE_THROTTLED_OUT retryAfter=7", 4, "MESSAGE_THROTTLED_OUT 429", kMinutes},
    {"throttled for longer than anybody waits", "MESSAGE_THROTTLED_OUT retryAfter=90", 1, "MESSAGE_THROTTLED_OUT 429",
     "the time that the message names"},
    {"throttled twice", "MESSAGE_THROTTLED_OUT times=2 retryAfter=3", 3},
    {"service down", "SERVER_ERROR", 4, "SERVER_ERROR 503", kMinutes},
    {"service down three times", "SERVER_ERROR times=3", 4},
    {"gateway time-out", "GATEWAY_TIMEOUT", 4, "GATEWAY_TIMEOUT 504", kMinutes},
    {"planned maintenance", "SCHEDULED_MAINTENANCE", 1, "SCHEDULED_MAINTENANCE 503", "maintenance is over"},
    {"internal error", "INTERNAL_SERVER_ERROR", 2, "INTERNAL_SERVER_ERROR 500", "later"},
    {"nobody listens", "REDIRECT location=http://127.0.0.1:1/", 4, "NO_CONNECTION", "internet connection"},
    {"leads to a file", "REDIRECT location=file:///etc/passwd", 1, "REDIRECTED 307", "sign in"},
    {"dropped half-way", "DROPPED", 4, "ANSWER_INCOMPLETE 200", kMinutes},
    {"dropped once", "DROPPED times=1", 2},
    {"too slow", "SLOW delayMs=3000", 1, "TIMED_OUT", kMinutes},
    {"not JSON", "MALFORMED", 1, "ANSWER_MALFORMED 200", kReport},
    {"half a document", "CUT_OFF", 1, "ANSWER_MALFORMED 200", kReport},
    {"nested too deep", "TOO_DEEP", 1, "ANSWER_MALFORMED 200", kReport},
    {"nothing at all", "EMPTY status=200", 1, "ANSWER_MALFORMED 200", kReport},
    {"more than 8 MiB", "TOO_LARGE", 1, "ANSWER_TOO_LARGE 200", kReport},
    {"the network's sign-in page", "HTML status=200", 1, "ANSWER_MALFORMED 200", "sign in"},
    {"a proxy's page", "HTML", 1, "HTTP_502 502", kMinutes},
    {"a proxy's page for 'service down'", "HTML status=503", 4, "HTTP_503 503", kMinutes},
    {"a proxy wants a login", "HTML status=407", 1, "HTTP_407 407", kReport},
    {"500 without a word", "EMPTY", 2, "HTTP_500 500", kMinutes},
    {"the other interface down", "SERVER_ERROR", 4, "SERVER_ERROR 503", kMinutes, kInsurance},
    {"the other interface's document halved", "CUT_OFF", 1, "ANSWER_MALFORMED 200", kReport, kInsurance},
    {"the other interface dropped", "DROPPED", 4, "ANSWER_INCOMPLETE 200", kMinutes, kInsurance},
    {"the other interface too slow", "SLOW delayMs=3000", 1, "TIMED_OUT", kMinutes, kInsurance},
    {"the other interface without data", "NOT_FOUND", 1, kNothingYet, "", kInsurance},
};
// clang-format on

/// How the message of a code begins: HMRC's own, or ours.
std::string MessageOf(const Row& row)
{
    const std::pair<const char*, const char*> ours[] = {
        {"INVALID_GRANT", "HMRC's authorisation has ended"}, {"NO_CONNECTION", "HMRC cannot be reached"},
        {"ANSWER_INCOMPLETE", "HMRC's answer broke off"},    {"REDIRECTED", "HMRC's answer led elsewhere: file://"},
        {"TIMED_OUT", "HMRC did not answer in time"},        {"ANSWER_MALFORMED", "HMRC's answer"},
        {"ANSWER_TOO_LARGE", "HMRC's answer is too large"}};
    for (const auto& [code, message] : ours)
        if (row.Code() == code)
            return message;
    if (const auto* error = Sandbox::FindError(row.Code()))
        return error->message;
    return "HMRC answered with HTTP status " + row.Status();
}

/// Which tables a fetch with this fault may change.
std::set<std::string> MayChange(const Row& row)
{
    std::set<std::string> names = Bookkeeping();
    const bool isSuccess = row.entry.empty(); // "nothing yet" leaves all as it was
    if (isSuccess || !row.IsPaye())
        names.insert({"BRIXMTD_Employments", "BRIXMTD_EmploymentsCompanyBenefits", "BRIXMTD_PensionStateBenefits",
                      "BRIXMTD_TaxFreeAllowances"});
    if (isSuccess || row.IsPaye())
        names.insert("BRIXMTD_NIC");
    return names;
}

/// The tries grow apart: 500, 1000, 2000 milliseconds and up to a quarter more, or what Retry-After asks.
void ExpectWaited(const Row& row, unsigned waited)
{
    const int refreshes = row.tokens > 0 && row.requests > 1 ? 1 : 0;
    const unsigned asked = row.Fault().value("retryAfter", 0u) * 1000;
    unsigned least = 0, most = 0, step = 500;
    for (int retry = 0; retry < row.requests - 1 - refreshes; ++retry, step *= 2) {
        least += std::max(step, asked);
        most += std::max(step + step / 4, asked);
    }
    EXPECT_GE(waited, least);
    EXPECT_LE(waited, most);
}

void ExpectEntry(const Row& row, const Fetched& fetched)
{
    const auto& groups = fetched.result.errors->GetGroups();
    const auto found = std::find_if(groups.begin(), groups.end(), [&](const auto& each) {
        return each.name == (row.IsPaye() ? "PAYE" : "National Insurance");
    });
    ASSERT_NE(found, groups.end());
    ASSERT_EQ(found->errors.size(), row.Code().empty() ? 0u : 1u) << fetched.Errors(found->name);
    if (row.Code().empty())
        return;
    const HmrcApi::CAPIError& error = found->errors.front();
    EXPECT_EQ(error.GetCode(), row.Code());
    EXPECT_EQ(error.GetHttpStatus(), row.Status());
    EXPECT_TRUE(error.GetMessageText().starts_with(MessageOf(row))) << error.GetMessageText();
    EXPECT_EQ(error.GetMessageText().find('\n'), std::string::npos);
    const std::string action = HmrcApi::ActionFor(error.GetCode(), error.GetHttpStatus(), error.GetField());
    EXPECT_NE(action.find(row.action), std::string::npos) << action;
}

using Faults = FetchTest;

} // namespace

TEST_F(Faults, EveryAnswerOfTheTable)
{
    HmrcApi::SetTimeouts({1000, 1000});
    int number = 1000;
    Serve(number);
    ASSERT_TRUE(Fetch().result.ok);
    ASSERT_EQ(Create().employments, 1);

    for (const Row& row : kRows) {
        SCOPED_TRACE(row.why);
        const int before = number++;
        Serve(number);
        const Tables tables = Read();
        if (*row.token)
            m_sandbox.Send("POST", "/sandbox/token", row.token);
        if (*row.fault)
            m_sandbox.Send("POST", "/sandbox/fault", row.Fault().dump());
        const Fetched fetched = Fetch();

        EXPECT_EQ(fetched.result.ok, row.Code().empty());
        EXPECT_EQ(fetched.result.stopped, HmrcApi::FetchResult::Stopped::No);
        EXPECT_EQ(fetched.paye, row.IsPaye() ? row.requests : row.otherRequests);
        EXPECT_EQ(fetched.nationalInsurance, row.IsPaye() ? row.otherRequests : row.requests);
        EXPECT_EQ(fetched.tokens, row.tokens);
        ExpectWaited(row, fetched.waited);
        ExpectEntry(row, fetched);
        EXPECT_EQ(Changed(tables, Read(), MayChange(row)), std::set<std::string>{});
        EXPECT_EQ(Query("SELECT nAuthorisedStatus FROM MTDAuthorisation"), row.EndsGrant() ? "0" : "1");

        const int own = row.entry.empty() ? number : before, other = row.EndsGrant() ? before : number;
        EXPECT_EQ(StagedPaye(), row.IsPaye() ? own : other);
        EXPECT_EQ(StagedNationalInsurance(), row.IsPaye() ? other : own);
        EXPECT_EQ(fetched.Errors(row.IsPaye() ? "National Insurance" : "PAYE"),
                  row.EndsGrant() ? "NO_CREDENTIALS " : "");

        m_sandbox.Send("DELETE", "/sandbox/fault");
        m_sandbox.Send("POST", "/sandbox/token", R"({"refuseRefresh": false})");
        if (row.EndsGrant())
            Authorise();
        const Fetched again = Fetch();
        EXPECT_TRUE(again.result.ok) << again.Errors("PAYE") << again.Errors("National Insurance");
        EXPECT_EQ(StagedPaye(), number);
        EXPECT_EQ(StagedNationalInsurance(), number);
        EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXMTD_Employments WHERE bWithdrawn = 0"), "1");
    }
}
