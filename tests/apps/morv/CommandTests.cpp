// What the commands promise to scripts.

#include <grp.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "apps/morv/Program.h"
#include "Cellar/Connection.h"
#include "support/TestSupport.h"

namespace
{

using namespace Test;

/// The names of an object's members, sorted.
std::string Members(const Json& object)
{
    std::string text;
    for (const auto& item : object.items())
        text += (text.empty() ? "" : " ") + item.key();
    return text;
}

TEST(Commands, AuthorityAndTheLogTellTheirMembers)
{
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = SamplePractice();
    EXPECT_EQ(Members(MorvJson("doctor " + practice)[0]), "action check found ok");
    const Json authorised = Authorise(practice, sandbox).Document();
    EXPECT_EQ(Members(authorised), "authorised expires gateway grantEnds scope service");
    EXPECT_EQ(authorised["authorised"], true);
    const Ended failed = Authorise(practice, sandbox, "gateway-1", "exit 3");
    EXPECT_NE(failed.out.find("exit code 3"), std::string::npos) << failed.out;
    EXPECT_EQ(MorvJson("gateway list " + practice)[0]["authorised"], true) << "what was given before stays";
    const Json log = MorvJson("hmrc log " + practice);
    ASSERT_GT(log.size(), 0u);
    EXPECT_EQ(Members(log[0]), "chain detail event interface request response session user when workstation");
    const std::string chain = log.back()["chain"];
    for (const Json& row : MorvJson("hmrc log " + practice + " --chain " + chain))
        EXPECT_EQ(row["chain"], chain);

    Execute(practice, "UPDATE MTDAuthorisation SET dtGranted = '2020-01-31 00:00:00.000'");
    const std::string warning = MorvJson("gateway list " + practice)[0]["warning"];
    const Ended fetched = RunMorv(FetchLine(practice, sandbox) + " --json");
    EXPECT_NE(fetched.err.find(warning), std::string::npos) << fetched.err;
    const Json ofFetch =
        MorvJson("hmrc log " + practice + " --chain " + fetched.Document()["chain"].get<std::string>());
    EXPECT_EQ(ofFetch.size(), 2u) << "one line for each interface";
    for (const Json& finding : RunMorv("doctor " + practice + " --json").Document())
        EXPECT_TRUE(finding["check"] != "tokens" || finding["found"] == "gateway-1: " + warning) << finding;
    EXPECT_NE(RunMorv("gateway remove " + practice + " gateway-1").out.find("Manage authorised"), std::string::npos);
    EXPECT_EQ(MorvJson("hmrc log " + practice).back()["event"], "Removed");
}

TEST(Commands, AnEndlessNameIsCut)
{
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = AuthorisedPractice(sandbox), show = "client show " + practice + " --client 1 ";
    const std::string nino = MorvJson(show)["client"]["nationalInsuranceNumber"];
    sandbox.Send("PUT", "/sandbox/answer/individual-paye/nino/" + nino + "/annual-summary/2017-18",
                 R"({"employments":[{"employerPayeReference":"1/A","employerName":")" + std::string(5000, 'x') +
                     "\"}]}");
    for (const std::string& line : {FetchLine(practice, sandbox), show + "--year 2018"})
        EXPECT_NE(RunMorv(line).out.find("x…"), std::string::npos) << line;
}

TEST(Commands, AFetchWhileAnotherProgramWritesMayBeTriedAgain)
{
    HmrcSandbox sandbox;
    const std::string practice = AuthorisedPractice(sandbox);
    const auto writer = Cellar::CConnection::Open(CString(practice));
    writer->Begin(Cellar::Intent::Write);
    const Ended fetched = RunMorv(FetchLine(practice, sandbox));
    EXPECT_EQ(fetched.exit, 3) << fetched.out << fetched.err;
}

TEST(Commands, TheYearOfARunIsNotKept)
{
    const std::string show = "client show " + SamplePractice() + " --client 1";
    WriteFile("settings.ini", "[Preferences]\nRememberYOA=1\nLastYOA=20\n");
    EXPECT_EQ(MorvJson(show)["year"], 2011);
    MorvJson(show + " --year 2018");
    EXPECT_EQ(MorvJson(show)["year"], 2011) << "the profile was written";
    WriteFile("settings.ini", "\xFF\xFE[");
    EXPECT_NE(RunMorv("doctor").out.find("UTF-16"), std::string::npos);
}

TEST(Commands, ASignInThatIsInterruptedLeavesTheGrantAsItWas)
{
    const HmrcSandbox sandbox;
    const std::string practice = AuthorisedPractice(sandbox);
    const auto connection = Cellar::CConnection::Open(CString(practice));
    const auto isAuthorised = [&] {
        return Cellar::ToLong(connection->Queryf("SELECT nAuthorisedStatus FROM MTDAuthorisation").rows[0][0]) != 0;
    };
    ASSERT_TRUE(isAuthorised());
    RunningMorv signIn("hmrc authorise " + practice + " --gateway gateway-1 --browser true --base " + sandbox.Base());
    while (isAuthorised())
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    signIn.Signal(15);
    EXPECT_EQ(signIn.Wait().exit, -15);
    EXPECT_TRUE(isAuthorised());
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
    const std::string practice = SamplePractice(), fresh = TempDir() + "/fresh.db", module = MORV_CIPHER_MODULE,
                      copy = TempDir() + module.substr(module.rfind('/'));
    const WithoutModule without(MORV_CIPHER_LIBRARY);
    for (int round = 0; round < 2; ++round) { // missing, then cut short
        EXPECT_EQ(RunMorv("calc GetTaxYear 2018-04-06").exit, 0);
        for (const auto& [line, exit] :
             {std::pair("doctor " + practice, 1), {"client list " + practice, 3}, {"practice create " + fresh, 3}}) {
            const Ended ended = RunMorv(line);
            EXPECT_EQ(ended.exit, exit) << line;
            EXPECT_NE((ended.out + ended.err).find(copy), std::string::npos) << ended.out << ended.err;
            EXPECT_NE((ended.out + ended.err).find("Install"), std::string::npos) << ended.out << ended.err;
        }
        EXPECT_FALSE(std::filesystem::exists(fresh));
        std::filesystem::copy_file(module, copy, std::filesystem::copy_options::overwrite_existing);
        std::filesystem::resize_file(copy, std::filesystem::file_size(copy) / 2);
    }
}

TEST(Commands, WithoutTheDatabaseModuleThereAreRulesButNoPractice)
{
    const std::string practice = SamplePractice();
    const WithoutModule without(MORV_DATABASE_LIBRARY);
    EXPECT_EQ(RunMorv("calc GetTaxYear 2018-04-06").exit, 0);
    const Ended listed = RunMorv("client list " + practice);
    EXPECT_EQ(listed.exit, 3);
    EXPECT_NE(listed.err.find(TempDir() + "/MorvUtSqlite-"), std::string::npos) << listed.err;
}
#endif

} // namespace
