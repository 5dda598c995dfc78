// Every answer that HMRC, a proxy or the network may give, over HTTP: what is asked again, what is reported, that a
// failed group leaves everything as it was, that the other group is fetched as usual, and that the next fetch succeeds.

#include <algorithm>
#include <string>

#include "apps/main-job/FetchTest.h"
#include "hmrc-sandbox/Errors.h"
#include "HmrcApi/transport/Transport.h"
#include "MorvUt/hmrc/ClientData.h"

namespace
{

enum class Group
{
    Paye,
    NationalInsurance
};

struct Row
{
    const char* why = "";
    Group group = Group::Paye; // whose requests fail
    std::string fault = {};    // of the sandbox; empty: none
    int times = 0;             // answers that fail; 0: all
    std::string more = {};     // further members of the fault
    std::string path = {};     // empty: the group's own
    std::string token = {};    // what happens to the tokens before; empty: nothing
    int retryAfter = 0;        // seconds
    int requests = 1, tokens = 0;
    std::string code = {};    // of the entry; empty: the fetch succeeds
    std::string status = {};  // HTTP status of the entry
    std::string message = {}; // begins with; empty: HMRC's own of that code
    std::string action = {};  // part of what the user can do
    bool isNothingYet = false;
    bool endsGrant = false; // authority must be given again, for both groups
    int otherRequests = 1;
};

constexpr char kExpired[] = R"({"expire": true})";
constexpr char kAuthorise[] = "Authorise the Government Gateway ID";
constexpr char kAuthority[] = "the client has authorised the practice";
constexpr char kMinutes[] = "in a few minutes";
constexpr char kReport[] = "Report this error";
constexpr char kNewer[] = "newer version";
constexpr char kMalformed[] = "HMRC's answer";
constexpr char kNobodyListens[] = R"(, "location": "http://127.0.0.1:1/")";
constexpr char kLate[] = R"(, "delayMs": 3000)";

// clang-format off
const Row kRows[] = {
    {.why = "no fault", .requests = 1},
    {.why = "expired access token", .token = kExpired, .requests = 2, .tokens = 1},
    {.why = "refresh refused", .token = R"({"expire": true, "refuseRefresh": true})", .tokens = 1,
     .code = "INVALID_GRANT", .status = "400", .message = "HMRC's authorisation has ended", .action = kAuthorise,
     .endsGrant = true, .otherRequests = 0},
    {.why = "the refresh's answer lost, its token used up", .fault = "DROPPED", .times = 1, .path = "/oauth/token",
     .token = kExpired, .tokens = 2, .code = "INVALID_GRANT", .status = "400",
     .message = "HMRC's authorisation has ended", .action = kAuthorise, .endsGrant = true, .otherRequests = 0},
    {.why = "no refresh for now; the other group's succeeds", .fault = "SERVER_ERROR", .times = 1,
     .path = "/oauth/token", .token = kExpired, .tokens = 2, .code = "SERVER_ERROR", .status = "503",
     .action = kMinutes, .otherRequests = 2},
    {.why = "a new token is refused too", .fault = "INVALID_CREDENTIALS", .requests = 2, .tokens = 1,
     .code = "INVALID_CREDENTIALS", .status = "401", .action = kAuthorise},
    {.why = "may not see this client", .fault = "UNAUTHORIZED", .code = "UNAUTHORIZED", .status = "401",
     .action = kAuthority},
    {.why = "token lacks the scope", .fault = "INVALID_SCOPE", .code = "INVALID_SCOPE", .status = "403",
     .action = kAuthorise},
    {.why = "not authorised for the identifier", .fault = "FORBIDDEN", .code = "FORBIDDEN", .status = "403",
     .action = kAuthority},
    {.why = "application not subscribed", .fault = "RESOURCE_FORBIDDEN", .code = "RESOURCE_FORBIDDEN",
     .status = "403", .action = kReport},
    {.why = "identifier refused", .fault = "NINO_INVALID", .code = "NINO_INVALID", .status = "400",
     .action = "National Insurance number"},
    {.why = "year refused", .fault = "TAX_YEAR_INVALID", .code = "TAX_YEAR_INVALID", .status = "400",
     .action = "tax year"},
    {.why = "version gone", .fault = "NOT_ACCEPTABLE", .code = "ACCEPT_HEADER_INVALID", .status = "406",
     .action = kNewer},
    {.why = "no data yet", .fault = "NOT_FOUND", .isNothingYet = true},
    {.why = "path gone", .fault = "MATCHING_RESOURCE_NOT_FOUND", .code = "MATCHING_RESOURCE_NOT_FOUND",
     .status = "404", .action = kNewer},
    {.why = "a 404 that says nothing is no 'no data'", .fault = "EMPTY", .more = R"(, "status": 404)",
     .code = "HTTP_404", .status = "404", .message = "HMRC answered with HTTP status 404", .action = kReport},
    {.why = "throttled", .fault = "MESSAGE_THROTTLED_OUT", .requests = 4, .code = "MESSAGE_THROTTLED_OUT",
     .status = "429", .action = kMinutes},
    {.why = "throttled, and told for how long", .fault = "MESSAGE_THROTTLED_OUT", .retryAfter = 7, .requests = 4,
     .code = "MESSAGE_THROTTLED_OUT", .status = "429", .action = kMinutes},
    {.why = "throttled twice", .fault = "MESSAGE_THROTTLED_OUT", .times = 2, .retryAfter = 3, .requests = 3},
    {.why = "service down", .fault = "SERVER_ERROR", .requests = 4, .code = "SERVER_ERROR", .status = "503",
     .action = kMinutes},
    {.why = "service down three times", .fault = "SERVER_ERROR", .times = 3, .requests = 4},
    {.why = "gateway time-out", .fault = "GATEWAY_TIMEOUT", .requests = 4, .code = "GATEWAY_TIMEOUT",
     .status = "504", .action = kMinutes},
    {.why = "planned maintenance", .fault = "SCHEDULED_MAINTENANCE", .code = "SCHEDULED_MAINTENANCE",
     .status = "503", .action = "maintenance is over"},
    {.why = "internal error", .fault = "INTERNAL_SERVER_ERROR", .requests = 2, .code = "INTERNAL_SERVER_ERROR",
     .status = "500", .action = "later"},
    {.why = "nobody listens", .fault = "REDIRECT", .more = kNobodyListens, .requests = 4, .code = "NO_CONNECTION",
     .message = "HMRC cannot be reached", .action = "internet connection"},
    {.why = "dropped half-way", .fault = "DROPPED", .requests = 4, .code = "ANSWER_INCOMPLETE",
     .message = "HMRC's answer broke off", .action = kMinutes},
    {.why = "dropped once", .fault = "DROPPED", .times = 1, .requests = 2},
    {.why = "too slow", .fault = "SLOW", .more = kLate, .code = "TIMED_OUT",
     .message = "HMRC did not answer in time", .action = kMinutes},
    {.why = "not JSON", .fault = "MALFORMED", .code = "ANSWER_MALFORMED", .status = "200", .message = kMalformed,
     .action = kReport},
    {.why = "half a document", .fault = "CUT_OFF", .code = "ANSWER_MALFORMED", .status = "200",
     .message = kMalformed, .action = kReport},
    {.why = "nested too deep", .fault = "TOO_DEEP", .code = "ANSWER_MALFORMED", .status = "200",
     .message = kMalformed, .action = kReport},
    {.why = "nothing at all", .fault = "EMPTY", .more = R"(, "status": 200)", .code = "ANSWER_MALFORMED",
     .status = "200", .message = kMalformed, .action = kReport},
    {.why = "more than 8 MiB", .fault = "TOO_LARGE", .code = "ANSWER_TOO_LARGE", .status = "200",
     .message = "HMRC's answer is too large", .action = kReport},
    {.why = "a proxy's page", .fault = "HTML", .code = "HTTP_502", .status = "502",
     .message = "HMRC answered with HTTP status 502", .action = kMinutes},
    {.why = "a proxy's page for 'service down'", .fault = "HTML", .more = R"(, "status": 503)", .requests = 4,
     .code = "HTTP_503", .status = "503", .message = "HMRC answered with HTTP status 503", .action = kMinutes},
    {.why = "a proxy wants a login", .fault = "HTML", .more = R"(, "status": 407)", .code = "HTTP_407",
     .status = "407", .message = "HMRC answered with HTTP status 407", .action = kReport},
    {.why = "500 without a word", .fault = "EMPTY", .requests = 2, .code = "HTTP_500", .status = "500",
     .message = "HMRC answered with HTTP status 500", .action = kMinutes},
    {.why = "the other interface down", .group = Group::NationalInsurance, .fault = "SERVER_ERROR", .requests = 4,
     .code = "SERVER_ERROR", .status = "503", .action = kMinutes},
    {.why = "the other interface's document halved", .group = Group::NationalInsurance, .fault = "CUT_OFF",
     .code = "ANSWER_MALFORMED", .status = "200", .message = kMalformed, .action = kReport},
    {.why = "the other interface dropped", .group = Group::NationalInsurance, .fault = "DROPPED", .requests = 4,
     .code = "ANSWER_INCOMPLETE", .message = "HMRC's answer broke off", .action = kMinutes},
    {.why = "the other interface too slow", .group = Group::NationalInsurance, .fault = "SLOW", .more = kLate,
     .code = "TIMED_OUT", .message = "HMRC did not answer in time", .action = kMinutes},
    {.why = "the other interface without data", .group = Group::NationalInsurance, .fault = "NOT_FOUND",
     .isNothingYet = true},
};
// clang-format on

const std::set<std::string> kPayeTables{"BRIXMTD_Employments", "BRIXMTD_EmploymentsCompanyBenefits",
                                        "BRIXMTD_PensionStateBenefits", "BRIXMTD_TaxFreeAllowances"};
const std::set<std::string> kNationalInsuranceTables{"BRIXMTD_NIC"};

class Faults : public FetchTest
{
protected:
    void Break(const Row& row)
    {
        if (!row.token.empty())
            m_sandbox.Send("POST", "/sandbox/token", row.token);
        if (row.fault.empty())
            return;
        std::string path = row.path;
        if (path.empty())
            path = row.group == Group::Paye ? "/individual-paye" : "/national-insurance";
        std::string body = R"({"path": ")" + path + R"(", "fault": ")" + row.fault + R"(", "times": )" +
                           std::to_string(row.times) + row.more;
        if (row.retryAfter > 0)
            body += R"(, "retryAfter": )" + std::to_string(row.retryAfter);
        m_sandbox.Send("POST", "/sandbox/fault", body + '}');
    }

    void Mend(const Row& row)
    {
        m_sandbox.Send("DELETE", "/sandbox/fault");
        m_sandbox.Send("POST", "/sandbox/token", R"({"refuseRefresh": false})");
        if (row.endsGrant)
            Authorise();
    }

    /// Which tables a fetch with this fault may change.
    static std::set<std::string> MayChange(const Row& row)
    {
        std::set<std::string> names = Bookkeeping();
        const bool isFailure = !row.code.empty() || row.isNothingYet; // "nothing yet" leaves all as it was
        if (!isFailure || row.group == Group::NationalInsurance)
            names.insert(kPayeTables.begin(), kPayeTables.end());
        if (!isFailure || row.group == Group::Paye)
            names.insert(kNationalInsuranceTables.begin(), kNationalInsuranceTables.end());
        return names;
    }
};

/// The tries grow apart: 500, 1000, 2000 milliseconds and up to a quarter more, or what Retry-After asks.
void ExpectWaited(const Row& row, unsigned waited)
{
    const int refreshes = row.tokens > 0 && row.requests > 1 ? 1 : 0;
    unsigned least = 0, most = 0, step = 500;
    for (int retry = 0; retry < row.requests - 1 - refreshes; ++retry, step *= 2) {
        const auto asked = static_cast<unsigned>(row.retryAfter) * 1000;
        least += std::max(step, asked);
        most += std::max(step + step / 4, asked);
    }
    EXPECT_GE(waited, least);
    EXPECT_LE(waited, most);
}

void ExpectEntry(const Row& row, const Fetched& fetched)
{
    const char* group = row.group == Group::Paye ? "PAYE" : "National Insurance";
    const auto& groups = fetched.result.errors->GetGroups();
    const auto found = std::find_if(groups.begin(), groups.end(), [&](const auto& each) { return each.name == group; });
    ASSERT_NE(found, groups.end());
    ASSERT_EQ(found->errors.size(), row.code.empty() ? 0u : 1u) << fetched.Errors(group);
    if (row.code.empty())
        return;
    const HmrcApi::CAPIError& error = found->errors.front();
    EXPECT_EQ(error.GetCode(), row.code);
    EXPECT_EQ(error.GetHttpStatus(), row.status);
    if (row.message.empty() && row.path.empty())
        EXPECT_EQ(error.GetMessageText(), Sandbox::FindError(row.code)->message);
    else
        EXPECT_TRUE(error.GetMessageText().starts_with(row.message)) << error.GetMessageText();
    EXPECT_FALSE(error.GetMessageText().empty());
    EXPECT_EQ(error.GetMessageText().find('\n'), std::string::npos);
    const std::string action = HmrcApi::ActionFor(error.GetCode(), error.GetHttpStatus());
    EXPECT_NE(action.find(row.action), std::string::npos) << action;
}

void ExpectRequests(const Row& row, const Fetched& fetched)
{
    const bool isPaye = row.group == Group::Paye;
    EXPECT_EQ(fetched.paye, isPaye ? row.requests : row.otherRequests);
    EXPECT_EQ(fetched.nationalInsurance, isPaye ? row.otherRequests : row.requests);
    EXPECT_EQ(fetched.tokens, row.tokens);
    ExpectWaited(row, fetched.waited);
}

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
        Break(row);
        const Fetched fetched = Fetch();

        EXPECT_EQ(fetched.result.ok, row.code.empty());
        EXPECT_EQ(fetched.result.stopped, HmrcApi::FetchResult::Stopped::No);
        ExpectRequests(row, fetched);
        ExpectEntry(row, fetched);
        EXPECT_EQ(Changed(tables, Read(), MayChange(row)), std::set<std::string>{});
        EXPECT_EQ(Query("SELECT nAuthorisedStatus FROM MTDAuthorisation"), row.endsGrant ? "0" : "1");

        const bool isPaye = row.group == Group::Paye;
        const int own = isPaye ? StagedPaye() : StagedNationalInsurance();
        const int other = isPaye ? StagedNationalInsurance() : StagedPaye();
        const bool isStaged = row.code.empty() && !row.isNothingYet;
        EXPECT_EQ(own, isStaged ? number : before);
        EXPECT_EQ(other, row.endsGrant ? before : number) << "the other group";
        EXPECT_EQ(fetched.Errors(isPaye ? "National Insurance" : "PAYE"), row.endsGrant ? "NO_CREDENTIALS " : "");

        Mend(row);
        const Fetched again = Fetch();
        EXPECT_TRUE(again.result.ok) << again.Errors("PAYE") << again.Errors("National Insurance");
        EXPECT_EQ(StagedPaye(), number);
        EXPECT_EQ(StagedNationalInsurance(), number);
        EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXMTD_Employments WHERE bWithdrawn = 0"), "1");
    }
}
