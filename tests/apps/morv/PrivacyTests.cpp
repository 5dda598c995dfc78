// No token, no secret, and no National Insurance number outside `client show` and the client's own row.

#include "apps/morv/Program.h"
#include "support/Test.h"

namespace
{

using namespace Test;

TEST(Privacy, NothingPrintedLoggedOrStoredGivesASecretAway)
{
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = SamplePractice();
    MorvJson("practice options " + practice + " nDebugLogging=5");
    const std::string client = ' ' + practice + " --client 1 --year 2018";
    const std::string nino = MorvJson("client show" + client)["client"]["nationalInsuranceNumber"];
    const Ended authorised = Authorise(practice, sandbox);
    std::string printed = authorised.out + authorised.err;
    const auto run = [&printed](const std::string& line) {
        const Ended ended = RunMorv(line);
        printed += ended.out + ended.err;
    };
    for (const char* token :
         {R"({"expire":true})", R"({"dropScope":"read:individual-paye"})", R"({"refuseRefresh":true})"}) {
        run(FetchLine(practice, sandbox));
        sandbox.Send("POST", "/sandbox/token", token);
        run(FetchLine(practice, sandbox));
    }
    const std::string stored = ReadFile(practice) + ReadFile(practice + "-wal") + ReadFile(practice + "-journal");
    EXPECT_EQ(ReadFile(practice).find(nino), ReadFile(practice).rfind(nino)) << "it stands in the client's row only";
    Execute(practice, ("INSERT INTO MTDLog (lID, strEvent, strDetail) VALUES (0, 'Strange', 'by another program: " +
                       nino + "')"));
    for (const char* line : {"practice check ", "practice options ", "client list ", "user list ", "hmrc log ",
                             "hmrc log --json ", "doctor "})
        run(line + practice);
    run("user show " + practice + " alice");
    run("hmrc create" + client);
    run("hmrc differences" + client);
    EXPECT_NE(printed.find("by another program"), std::string::npos);

    const auto tokens = sandbox.Issued();
    ASSERT_GE(tokens.size(), 4u);
    for (const std::string& token : tokens) {
        EXPECT_EQ(printed.find(token), std::string::npos) << "a token is printed";
        EXPECT_EQ(stored.find(token), std::string::npos) << "a token is stored in plain text";
    }
    EXPECT_EQ((printed + stored).find("morvut-sandbox-secret"), std::string::npos);
    EXPECT_EQ(printed.find(nino), std::string::npos) << "the National Insurance number is printed";
}

} // namespace
