// What the commands promise to scripts.

#include <grp.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <set>

#include "apps/morv/Program.h"
#include "support/TestSupport.h"

namespace
{

using namespace Test;

/// The names of an object's members, sorted.
std::string Members(const Json& object)
{
    std::set<std::string> names;
    for (const auto& item : object.items())
        names.insert(item.key());
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : " ") + name;
    return text;
}

TEST(Commands, ThePromisedMembersAreThere)
{
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = TempDir() + "/members.db", client = practice + " --client 1 --year 2018";
    EXPECT_EQ(Members(MorvJson("practice create --sample " + practice)), "clients partnerships practice schema");
    EXPECT_EQ(Members(MorvJson("practice check " + practice)), "faults ok schema");
    EXPECT_EQ(Members(MorvJson("client list " + practice)[0]), "code id kind name partnership");
    const Json user = MorvJson("user show " + practice + " cara");
    EXPECT_EQ(Members(user), "groups id name rights role");
    EXPECT_EQ(Members(user["rights"][0]), "allowed name number");
    const Json authorised = Authorise(practice, sandbox).Document();
    EXPECT_EQ(Members(authorised), "authorised expires gateway grantEnds scope service");
    EXPECT_EQ(authorised["authorised"], true);
    for (const char* scope : {"read:marriage-allowance", "read:national-insurance", "read:individual-paye"})
        EXPECT_NE(authorised["scope"].get<std::string>().find(scope), std::string::npos) << scope;
    EXPECT_EQ(Members(MorvJson(FetchLine(practice, sandbox))),
              "clear client errors message newData notes ok route staged year");
    EXPECT_EQ(Members(MorvJson("hmrc create " + client)), "created notes schedules");
    const Json log = MorvJson("hmrc log " + practice);
    ASSERT_GT(log.size(), 0u);
    EXPECT_EQ(Members(log[0]), "chain detail event interface request response session user when workstation");
    const std::string chain = log.back()["chain"];
    for (const Json& row : MorvJson("hmrc log " + practice + " --chain " + chain))
        EXPECT_EQ(row["chain"], chain);
    EXPECT_EQ(Members(MorvJson("doctor " + practice)[0]), "action check found ok");
    const Json view = MorvJson("client show " + client);
    EXPECT_EQ(Members(view), "client schedules staged status year");
    EXPECT_EQ(Members(view["schedules"]["employments"][0]),
              "benefits employer end guid ordering payPence reference start studentLoanPence taxPence worksNumber");
    const Json& insurance = view["staged"]["nationalInsurance"];
    EXPECT_EQ(Members(insurance), "class1EarningsPence class2DuePence updated");
    EXPECT_EQ(insurance["class2DuePence"], 31957);
}

TEST(Commands, TheSampleHasEveryKindAndEveryKindOfUser)
{
    const std::string practice = SamplePractice();
    std::set<std::string> kinds;
    for (const Json& row : MorvJson("client list " + practice))
        kinds.insert(row["kind"]);
    EXPECT_EQ(kinds, (std::set<std::string>{"individual", "trust", "estate", "partnership", "llp"}));
    std::map<std::string, bool> mayFetch;
    for (const Json& user : MorvJson("user list " + practice))
        for (const Json& right : user["rights"])
            if (right["number"] == 87)
                mayFetch[user["id"]] = right["allowed"];
    EXPECT_EQ(mayFetch, (std::map<std::string, bool>{{"alice", true}, {"ben", false}, {"cara", true}}));
}

TEST(Commands, OptionsAreKeptAndTheYearOfARunIsNot)
{
    const std::string practice = SamplePractice(), options = "practice options " + practice;
    EXPECT_EQ(MorvJson(options)["bHMRCRetrieval"], true);
    EXPECT_EQ(MorvJson(options + " bhmrcretrieval=0 nDebugLogging=2")["bHMRCRetrieval"], false);
    EXPECT_EQ(MorvJson(options)["nDebugLogging"], 2);

    const std::string show = "client show " + practice + " --client 1";
    EXPECT_EQ(MorvJson(show + " --year 2018")["year"], 2018);
    EXPECT_EQ(MorvJson(show)["year"], 2024);
    WriteFile("settings.ini", "[Preferences]\nRememberYOA=1\nLastYOA=20\n");
    EXPECT_EQ(MorvJson(show)["year"], 2011);
    MorvJson(show + " --year 2018");
    EXPECT_EQ(MorvJson(show)["year"], 2011) << "the profile was written";
}

TEST(Commands, APracticeIsItsOwnersOrAGroups)
{
    using std::filesystem::perms;
    const auto modeOf = [](const std::string& path) { return std::filesystem::status(path).permissions(); };
    const std::string practice = SamplePractice(), list = "client list " + practice;
    EXPECT_EQ(modeOf(practice), perms(0600));
    std::filesystem::permissions(practice, perms(0644)); // as it was made once
    EXPECT_NE(RunMorv(list).err.find("could read"), std::string::npos);
    EXPECT_EQ(RunMorv(list).err, "") << "said once";
    EXPECT_EQ(modeOf(practice), perms(0600));

    const std::string folder = TempDir() + "/shared", shared = folder + "/practice.db";
    const std::string create = " --group " + std::string(getgrgid(getegid())->gr_name);
    const Ended refused = RunMorv("practice create " + TempDir() + "/other.db" + create);
    EXPECT_EQ(refused.exit, 3);
    EXPECT_NE(refused.err.find("chmod 2770"), std::string::npos) << refused.err;
    EXPECT_FALSE(std::filesystem::exists(TempDir() + "/other.db"));
    MorvJson("practice create " + shared + create);
    EXPECT_EQ(modeOf(folder), perms(02770));
    EXPECT_EQ(modeOf(shared), perms(0660));
    EXPECT_EQ(modeOf(shared + ".key"), perms(0640));
    EXPECT_EQ(RunMorv("practice check SQLITE:" + shared).err, "");
    EXPECT_EQ(modeOf(shared), perms(0660));
}

TEST(Commands, CodeTablesAreFoundByNameAndByPosition)
{
    const Json list = MorvJson("table list");
    ASSERT_EQ(list.size(), 104u);
    EXPECT_EQ(list[65], (Json{{"position", 65}, {"name", "mapPSBTypes"}, {"rows", 17}}));
    EXPECT_EQ(list[83], (Json{{"position", 83}, {"name", nullptr}, {"rows", 1}}));
    EXPECT_EQ(list[101], (Json{{"position", nullptr}, {"name", "TradeLossesSections"}, {"rows", 3}}));
    EXPECT_EQ(MorvJson("table show 65"), MorvJson("table show mappsbtypes"));
    EXPECT_EQ(MorvJson("table show 83").size(), 1u);
    const Json giftAid = Json::array({{{"code", 1}, {"key", "GIFTAID"}, {"name", "Gift Aid"}}});
    for (const char* key : {"1", "giftaid", "'Gift Aid'"})
        EXPECT_EQ(MorvJson(std::string("table find OtherOutRefs ") + key), giftAid) << key;
}

} // namespace
