// What the commands promise to scripts.

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include "apps/morv/Program.h"
#include "support/TestSupport.h"

namespace
{

using namespace Test;

std::set<std::string> Members(const Json& object)
{
    std::set<std::string> names;
    for (const auto& item : object.items())
        names.insert(item.key());
    return names;
}

TEST(Commands, ThePromisedMembersAreThere)
{
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = TempDir() + "/members.db";
    using Names = std::set<std::string>;
    EXPECT_EQ(Members(MorvJson({"practice", "create", practice, "--sample"})),
              (Names{"practice", "schema", "clients", "partnerships"}));
    EXPECT_EQ(Members(MorvJson({"practice", "check", practice})), (Names{"ok", "schema", "faults"}));
    EXPECT_EQ(Members(MorvJson({"client", "list", practice})[0]), (Names{"id", "partnership", "code", "name", "kind"}));
    const Json user = MorvJson({"user", "show", practice, "cara"});
    EXPECT_EQ(Members(user), (Names{"id", "name", "role", "groups", "rights"}));
    EXPECT_EQ(Members(user["rights"][0]), (Names{"number", "name", "allowed"}));
    const Json authorised = Authorise(practice, sandbox).Document();
    EXPECT_EQ(Members(authorised), (Names{"gateway", "authorised", "scope", "expires", "grantEnds"}));
    EXPECT_EQ(authorised["authorised"], true);
    for (const char* scope : {"read:marriage-allowance", "read:national-insurance", "read:individual-paye"})
        EXPECT_NE(authorised["scope"].get<std::string>().find(scope), std::string::npos) << scope;
    EXPECT_EQ(Members(MorvJson(FetchArguments(practice, sandbox))),
              (Names{"client", "year", "route", "ok", "newData", "clear", "staged", "message", "errors"}));
    EXPECT_EQ(Members(MorvJson({"hmrc", "create", practice, "--client", "1", "--year", "2018"})),
              (Names{"created", "schedules"}));
    const Json log = MorvJson({"hmrc", "log", practice});
    ASSERT_GT(log.size(), 0u);
    EXPECT_EQ(Members(log[0]), (Names{"when", "user", "workstation", "session", "chain", "event", "interface",
                                      "request", "response", "detail"}));
    const std::string chain = log.back()["chain"];
    for (const Json& row : MorvJson({"hmrc", "log", practice, "--chain", chain}))
        EXPECT_EQ(row["chain"], chain);
    EXPECT_EQ(Members(MorvJson({"doctor", practice})[0]), (Names{"check", "ok", "found", "action"}));
    const Json view = MorvJson({"client", "show", practice, "--client", "1", "--year", "2018"});
    EXPECT_EQ(Members(view), (Names{"client", "year", "status", "schedules", "staged"}));
    EXPECT_EQ(Members(view["schedules"]["employments"][0]),
              (Names{"ordering", "guid", "employer", "reference", "worksNumber", "start", "end", "payPence", "taxPence",
                     "studentLoanPence", "benefits"}));
    EXPECT_EQ(Members(view["staged"]["nationalInsurance"]),
              (Names{"class1EarningsPence", "class2DuePence", "updated"}));
    EXPECT_EQ(view["staged"]["nationalInsurance"]["class2DuePence"], 31957);
}

TEST(Commands, TheSampleHasEveryKindAndEveryKindOfUser)
{
    const std::string practice = SamplePractice();
    std::set<std::string> kinds;
    for (const Json& row : MorvJson({"client", "list", practice}))
        kinds.insert(row["kind"]);
    EXPECT_EQ(kinds, (std::set<std::string>{"individual", "trust", "estate", "partnership", "llp"}));
    std::map<std::string, bool> mayFetch;
    for (const Json& user : MorvJson({"user", "list", practice}))
        for (const Json& right : user["rights"])
            if (right["number"] == 87)
                mayFetch[user["id"]] = right["allowed"];
    EXPECT_EQ(mayFetch, (std::map<std::string, bool>{{"alice", true}, {"ben", false}, {"cara", true}}));
}

TEST(Commands, OptionsAreSetAndShown)
{
    const std::string practice = SamplePractice();
    EXPECT_EQ(MorvJson({"practice", "options", practice})["bHMRCRetrieval"], true);
    EXPECT_EQ(MorvJson({"practice", "options", practice, "bhmrcretrieval=0", "nDebugLogging=2"})["bHMRCRetrieval"],
              false);
    EXPECT_EQ(MorvJson({"practice", "options", practice})["nDebugLogging"], 2);
}

TEST(Commands, TheYearOfARunIsNotRemembered)
{
    const std::string practice = SamplePractice();
    EXPECT_EQ(MorvJson({"client", "show", practice, "--client", "1", "--year", "2018"})["year"], 2018);
    EXPECT_EQ(MorvJson({"client", "show", practice, "--client", "1"})["year"], 2024);
    WriteFile("settings.ini", "[Preferences]\nRememberYOA=1\nLastYOA=20\n");
    EXPECT_EQ(MorvJson({"client", "show", practice, "--client", "1"})["year"], 2011);
    MorvJson({"client", "show", practice, "--client", "1", "--year", "2018"});
    EXPECT_EQ(MorvJson({"client", "show", practice, "--client", "1"})["year"], 2011) << "the profile was written";
}

TEST(Commands, CodeTablesAreFoundByNameAndByPosition)
{
    const Json list = MorvJson({"table", "list"});
    ASSERT_EQ(list.size(), 104u);
    EXPECT_EQ(list[65], (Json{{"position", 65}, {"name", "mapPSBTypes"}, {"rows", 17}}));
    EXPECT_EQ(list[83], (Json{{"position", 83}, {"name", nullptr}, {"rows", 1}}));
    EXPECT_EQ(list[101], (Json{{"position", nullptr}, {"name", "TradeLossesSections"}, {"rows", 3}}));
    EXPECT_EQ(MorvJson({"table", "show", "65"}), MorvJson({"table", "show", "mappsbtypes"}));
    EXPECT_EQ(MorvJson({"table", "show", "83"}).size(), 1u);

    const Json giftAid = Json::array({{{"code", 1}, {"key", "GIFTAID"}, {"name", "Gift Aid"}}});
    for (const char* key : {"1", "giftaid", "Gift Aid"})
        EXPECT_EQ(MorvJson({"table", "find", "OtherOutRefs", key}), giftAid) << key;
}

TEST(Commands, EveryCommandHasHelp)
{
    const char* const commands[] = {"practice create",
                                    "practice check",
                                    "practice options",
                                    "client list",
                                    "client show",
                                    "user list",
                                    "user show",
                                    "hmrc authorise",
                                    "hmrc fetch",
                                    "hmrc create",
                                    "hmrc differences",
                                    "hmrc log",
                                    "table list",
                                    "table show",
                                    "table find",
                                    "doctor",
                                    "practice",
                                    "client",
                                    "user",
                                    "hmrc",
                                    ""};
    for (const char* command : commands) {
        SCOPED_TRACE(command);
        std::istringstream words(std::string(command) + " --help");
        const Ended ended = RunMorv(
            std::vector<std::string>(std::istream_iterator<std::string>(words), std::istream_iterator<std::string>()));
        EXPECT_EQ(ended.exit, 0) << ended.err;
        EXPECT_NE(ended.out.find("Usage"), std::string::npos) << ended.out;
    }
}

} // namespace
