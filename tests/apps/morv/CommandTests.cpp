// What the commands promise to scripts.

#include <grp.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
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
              "action clear client errors items message newData notInReturn notes ok route staged state year");
    EXPECT_EQ(Members(MorvJson("hmrc create " + client)), "created notes schedules");
    EXPECT_EQ(Members(MorvJson("gateway list " + practice)[0]),
              "authorised expires gateway grantEnds scope service warning");
    const Ended failed = Authorise(practice, sandbox, "gateway-2", "exit 3");
    EXPECT_NE(failed.out.find("exit code 3"), std::string::npos) << failed.out;
    EXPECT_EQ(MorvJson("gateway remove " + practice + " gateway-2").size(), 1u);
    EXPECT_EQ(MorvJson("gateway remove " + practice + " gateway-1"), Json::array());
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
    EXPECT_EQ(MorvJson(show + " --year 2017/18")["year"], 2018);
    EXPECT_EQ(MorvJson(show)["year"], 2024);
    WriteFile("settings.ini", "[Preferences]\nRememberYOA=1\nLastYOA=20\n");
    EXPECT_EQ(MorvJson(show)["year"], 2011);
    MorvJson(show + " --year 2018");
    EXPECT_EQ(MorvJson(show)["year"], 2011) << "the profile was written";
}

/// What people read of the main job, in the order of its steps: nothing is said that is not so, and nothing twice.
TEST(Commands, TheTextOfTheMainJobIsTrue)
{
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = SamplePractice(), fetch = FetchLine(practice, sandbox);
    const std::string client = practice + " --client c0001 --year 2017/18", base = " --base " + sandbox.Base();
    const std::string prime = "/individual-paye/nino/", longText(5000, 'x');
    const auto answer = [&](const std::string& code, const std::string& body) {
        sandbox.Send("PUT", "/sandbox/answer" + prime + code + "/annual-summary/2017-18", body);
    };
    const std::string nino = MorvJson("client show " + client)["client"]["nationalInsuranceNumber"];
    const auto run = [](const std::string& line) {
        const Ended ended = RunMorv(line);
        return ended.out + ended.err;
    };
    struct
    {
        std::string line;
        std::vector<std::string> told;
        const char* untold;
        std::function<void()> before = [] {};
    } const steps[] = {
        {"hmrc create " + client, {"Nothing has been fetched from HMRC for 2017/18."}, "every item"},
        {fetch, {"morv hmrc authorise", "not enabled for this user"}, "differs"},
        {fetch,
         {"C0001 Harriet Ashworth, 2017/18: 1 item from HMRC", "HMRC holds no PAYE records of this client"},
         "differs",
         [&] {
             EXPECT_EQ(Authorise(practice, sandbox).exit, 0);
             sandbox.Send("POST", "/sandbox/fault", R"({"path":"/individual-paye","fault":"NOT_FOUND"})");
         }},
        {fetch, {"19 items from HMRC (18 new, 0 changed, 0 no longer sent). 9 are not in the return yet."}, "differs"},
        {"hmrc create " + client, {"Created 2 employment schedules and 7 pension or benefit schedules."}, " 0 "},
        {fetch, {"19 items from HMRC (0 new, 0 changed, 0 no longer sent). No item in the return differs."}, "yet"},
        {"client show " + client,
         {"20/08/2017", "Vouchers and Credit Cards £80.00 (forecast)", "Received from HMRC",
          "Allowance in the tax code: Professional Subscriptions £100.00", "Class 2 due £319.57"},
         "2017-08-20"},
        {fetch,
         {"1 item from HMRC (0 new, 0 changed, 0 no longer sent). HMRC no longer holds PAYE records"},
         "differs",
         [&] { sandbox.Send("POST", "/sandbox/fault", R"({"path":"/individual-paye","fault":"NOT_FOUND"})"); }},
        {fetch,
         {"1 is not in the return yet.", "x…"},
         "\x1b",
         [&] {
             answer(nino, R"({"employments":[{"employerPayeReference":"1/A","employerName":"\u001b[2J\u009b)" +
                              longText + R"("}]})");
         }},
        {"client show " + client, {"x…"}, "\x1b"},
        {"hmrc fetch " + practice + " --client C0011 --gateway gateway-1 --year 2018" + base,
         {"The Larkspur Settlement, 2017/18: not fetched. Nothing is fetched from HMRC for a trust"},
         "differs"},
        {fetch + " --user ben", {"You do not have permission to do this. Please"}, "differs"},
        {"hmrc create " + client,
         {"morv: Operation cannot be performed. Client is read only."},
         "Created",
         [&] { Execute(practice, "UPDATE BRIXTaxForm SET dtFinalised = '2018-10-01'"); }},
    };
    for (const auto& step : steps) {
        step.before();
        const std::string text = run(step.line);
        for (const std::string& told : step.told) {
            const std::size_t at = text.find(told);
            EXPECT_NE(at, std::string::npos) << told << " in " << text;
            const bool isTwice = text.find(told, at + 1) != std::string::npos;
            EXPECT_EQ(isTwice, isTwice && step.line.starts_with("client show")) << told << " twice in " << text;
        }
        EXPECT_EQ(text.find(step.untold), std::string::npos) << text;
    }
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

#ifdef MORV_HTTP_LIBRARY
/// While it lives morv takes this library from a folder where no module stands beside it.
class WithoutModule
{
public:
    explicit WithoutModule(const std::string& library)
    {
        std::filesystem::copy_file(library, TempDir() + library.substr(library.rfind('/')));
        setenv("LD_LIBRARY_PATH", TempDir().c_str(), 1);
    }
    ~WithoutModule() { unsetenv("LD_LIBRARY_PATH"); }
    WithoutModule(const WithoutModule&) = delete;
    WithoutModule& operator=(const WithoutModule&) = delete;
};

TEST(Commands, WithoutTheHttpModuleNothingIsSentAndEverythingElseGoesOn)
{
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = AuthorisedPractice(sandbox), fetch = FetchLine(practice, sandbox);
    const WithoutModule without(MORV_HTTP_LIBRARY);
    EXPECT_EQ(RunMorv("calc GetTaxYear 2018-04-06").exit, 0);
    const Ended fetched = RunMorv(fetch + " --json"), authorised = Authorise(practice, sandbox);
    EXPECT_EQ(fetched.exit, 4);
    EXPECT_EQ(fetched.Document()["errors"][0]["code"], "NO_HTTP_MODULE") << fetched.out;
    EXPECT_EQ(authorised.exit, 4);
    EXPECT_NE((authorised.out + authorised.err).find(TempDir() + "/MorvUtHttp-"), std::string::npos) << authorised.out;
    EXPECT_EQ(RunMorv("doctor " + practice).exit, 1);
}

TEST(Commands, WithoutTheCipherModuleNoKeyIsCalledWrong)
{
    const std::string practice = SamplePractice();
    const WithoutModule without(MORV_CIPHER_LIBRARY);
    EXPECT_EQ(RunMorv("calc GetTaxYear 2018-04-06").exit, 0);
    for (const char* line : {"doctor ", "client list "}) {
        const Ended ended = RunMorv(line + practice);
        EXPECT_EQ(ended.exit, 1) << line;
        EXPECT_NE((ended.out + ended.err).find(TempDir() + "/MorvUtCipher-"), std::string::npos) << ended.out;
    }
}
#endif

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
