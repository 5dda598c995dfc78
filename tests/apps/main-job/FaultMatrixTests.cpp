// Every interface with every fault: what is reported and advised, how often it is asked, that nothing of the group
// changes, and that the next fetch is whole.

#include <algorithm>
#include <string>

#include "apps/main-job/FetchTest.h"
#include "HmrcApi/transport/Transport.h"

namespace
{

using ::Test::Json;

constexpr char kMinutes[] = "Try again in a few minutes.";
constexpr char kOffer[] = "a sentence of the group's own";
constexpr char kReported[] = "Report this error, with the time at which it happened, to the program's supplier.";

struct FaultRow
{
    const char* fault; // of the sandbox, until it is cleared
    const char* more;  // of its description
    const char* error; // code and status; empty: the answer comes all the same
    const char* action;
    int requests;
};

constexpr FaultRow kFaults[] = {
    {"MESSAGE_THROTTLED_OUT", "{}", "MESSAGE_THROTTLED_OUT 429", kMinutes, 4},
    {"RESOURCE_FORBIDDEN", "{}", "RESOURCE_FORBIDDEN 403", kOffer, 1},
    {"SERVER_ERROR", "{}", "SERVER_ERROR 503", kMinutes, 4},
    {"SCHEDULED_MAINTENANCE", "{}", "SCHEDULED_MAINTENANCE 503",
     "Wait until HMRC's maintenance is over, then try again.", 1},
    {"GATEWAY_TIMEOUT", "{}", "GATEWAY_TIMEOUT 504", kMinutes, 4},
    {"INTERNAL_SERVER_ERROR", "{}", "INTERNAL_SERVER_ERROR 500", "Try again later.", 2},
    {"HTML", "{}", "HTTP_502 502", kMinutes, 1},
    {"HTML", R"({"status": 200})", "ANSWER_MALFORMED 200",
     "Open any page in a browser and sign in to the network or proxy, then try again.", 1},
    {"CUT_OFF", "{}", "ANSWER_MALFORMED 200", kReported, 1},
    {"DROPPED", "{}", "ANSWER_INCOMPLETE 200", kMinutes, 4},
    {"SLOW", R"({"delayMs": 1500})", "TIMED_OUT ", kMinutes, 1},
    {"SLOW", R"({"delayMs": 50})", "", "", 1},
    {"REDIRECT", "{}", "", "", 2},
};

struct InterfaceRow
{
    const char* path; // its first segment
    const char* group;
    const char* offer; // what is advised where HMRC does not offer it: a part of the sentence
    int option;        // nPAYEInterface
};

constexpr InterfaceRow kInterfaces[] = {
    {"individual-paye", "PAYE", "nPAYEInterface to 0", 1},
    {"national-insurance", "National Insurance", kReported, 1},
    {"individual-employment", "Employments", "nPAYEInterface to 1", 0},
    {"individual-income", "Employments", "nPAYEInterface to 1", 0},
    {"individual-benefits", "Employments", "nPAYEInterface to 1", 0},
    {"individual-tax", "Employments", "nPAYEInterface to 1", 0},
};

class FaultMatrix : public FetchTest
{
protected:
    FaultMatrix() { HmrcApi::SetTimeouts({1000, 1000}); }

    /// By the other route, with everything made, and another figure of each interface waiting.
    void Begin(int option)
    {
        Sql("UPDATE BRIXOptions SET nPAYEInterface = %d", option);
        Authorise(); // its scopes are others
        ServeAll();
        EXPECT_TRUE(Fetch().result.ok);
        Create();
    }
    void ServeAll()
    {
        Serve(++m_number);
        const std::string employment = R"({"employments": [{"employerPayeReference": "123/AB456", )",
                          pay = std::to_string(m_number);
        for (const auto& [path, members] : {std::pair("employment", R"("employerName": "Firm )" + pay + '"'),
                                            {"income", R"("payFromEmployment": )" + pay},
                                            {"benefits", R"("otherBenefits": )" + pay},
                                            {"tax", R"("taxTakenOffPay": )" + pay}})
            m_sandbox.Send("PUT",
                           std::string("/sandbox/answer/individual-") + path + "/sa/2234567890/annual-summary/2017-18",
                           employment + members + "}]}");
    }
    void Break(const std::string& path, const FaultRow& row)
    {
        Json fault = Json::parse(row.more);
        fault.update({{"path", path}, {"fault", row.fault}, {"times", 0}});
        m_sandbox.Send("POST", "/sandbox/fault", fault.dump());
    }
    int CountRequests(const std::string& path)
    {
        int count = 0;
        for (const Json& request : Json::parse(m_sandbox.Send("GET", "/sandbox/requests", "")))
            count += request["path"].get<std::string>().starts_with('/' + path);
        return count;
    }
    /// The group's staging rows, and all schedules.
    std::string Held(const std::string& group) const
    {
        return (group == "National Insurance" ? Rows("SELECT amtClass1Earnings, amtClass2Due FROM BRIXMTD_NIC")
                                              : Staged()) +
               Schedules();
    }

    void ExpectFault(const InterfaceRow& interface, const FaultRow& row)
    {
        const std::string before = Held(interface.group);
        Break('/' + std::string(interface.path), row);
        const Fetched fetched = Fetch();
        EXPECT_EQ(fetched.Errors(interface.group), row.error);
        EXPECT_EQ(CountRequests(interface.path), row.requests);
        for (const auto& group : fetched.result.errors->GetGroups()) {
            EXPECT_TRUE(group.name == interface.group || group.errors.empty()) << group.name;
            for (const auto& error : group.errors) {
                const std::string action = HmrcApi::ActionFor(error.GetCode(), error.GetHttpStatus(), error.GetField());
                EXPECT_NE(action.find(row.action == kOffer ? interface.offer : row.action), action.npos) << action;
            }
        }
        EXPECT_EQ(Held(interface.group) == before, *row.error != '\0');
        m_sandbox.Send("DELETE", "/sandbox/fault");
        EXPECT_TRUE(Fetch().result.ok);
        EXPECT_NE(Held(interface.group), before) << "the new figures";
    }

    int m_number = 1000;
};

} // namespace

TEST_F(FaultMatrix, OfTheInterfacesThatAreFetched)
{
    int option = -1;
    for (const InterfaceRow& interface : kInterfaces)
        for (const FaultRow& row : kFaults) {
            SCOPED_TRACE(std::string(interface.path) + ' ' + row.fault + row.more);
            if (option != interface.option)
                Begin(option = interface.option);
            ServeAll();
            ExpectFault(interface, row);
        }
}
