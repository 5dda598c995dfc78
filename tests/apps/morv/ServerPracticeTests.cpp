// A practice on a server, as its users meet it.

#include "apps/morv/Program.h"
#include "support/Databases.h"

namespace
{

using namespace Test;

class ServerPractice : public OnDatabase
{
protected:
    const std::string practice = PracticeText("firm");
};
ON_SERVER(ServerPractice);

TEST_P(ServerPractice, IsMadeUsedAndChecked)
{
    const Json made = MorvJson("practice create " + practice + " --sample");
    EXPECT_EQ(made["clients"], 12);
    EXPECT_EQ(RunMorv("practice create " + practice).exit, 3) << "it is there";
    EXPECT_EQ(MorvJson("practice check " + practice)["faults"], Json::array());
    EXPECT_EQ(MorvJson("practice options " + practice + " bCFStaff=1")["bCFStaff"], true);
    EXPECT_EQ(MorvJson("practice options " + practice)["bCFStaff"], true);
    const Json clients = MorvJson("client list " + practice);
    ASSERT_EQ(clients.size(), 14U);
    EXPECT_EQ(clients[0]["name"], "Harriet Ashworth");
    EXPECT_EQ(MorvJson("client show " + practice + " --client C0001")["client"]["code"], "C0001");
    EXPECT_EQ(MorvJson("client add " + practice + " --code Z1 --name Zoë")["name"], "Zoë");
    for (const Json& finding : MorvJson("doctor " + practice))
        EXPECT_EQ(finding["ok"], true) << finding;

    HmrcSandbox sandbox("EVERYTHING");
    EXPECT_EQ(Authorise(practice, sandbox).exit, 0);
    EXPECT_EQ(RunMorv(FetchLine(practice, sandbox)).exit, 0);
    const std::string create = "hmrc create " + practice + " --client 1 --year 2018";
    EXPECT_GT(MorvJson(create)["created"]["employments"], 0);
    EXPECT_EQ(MorvJson(create)["created"]["employments"], 0) << "nothing twice";
    const std::string file = TempDir() + "/copy.db";
    EXPECT_EQ(MorvJson("practice copy " + practice + " " + file)["verified"], true);
    const std::string back = PracticeText("second");
    EXPECT_EQ(MorvJson("practice copy " + file + " " + back)["verified"], true);
    for (const std::string& each : {practice, file, back}) {
        EXPECT_EQ(MorvJson("practice check " + each)["ok"], true);
        EXPECT_EQ(MorvJson("client list " + each).size(), 15U);
    }
}

TEST_P(ServerPractice, IsRefusedWithoutItsKey)
{
    MorvJson("practice create " + practice);
    const std::string withoutKey = ReplacedAll(practice, "KeyFile=", "Other=");
    EXPECT_NE(RunMorv("practice check " + withoutKey).out.find("no key file is named"), std::string::npos);
    const Ended shown = RunMorv("practice check " + ReplacedAll(withoutKey, "PasswordFile=", "PWD=test;Else="));
    EXPECT_EQ((shown.out + shown.err).find("PWD"), std::string::npos) << shown.out << shown.err;
    const Ended backup = RunMorv("practice backup " + practice + " copy.db");
    EXPECT_EQ(backup.exit, 1);
    EXPECT_NE(backup.err.find("administrator"), std::string::npos);
}

} // namespace
