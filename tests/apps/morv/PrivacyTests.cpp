// No token, no secret, and no National Insurance number outside `client show` and the client's own row.

#include <gtest/gtest.h>

#include <regex>

#include "apps/morv/Program.h"
#include "support/TestSupport.h"

namespace
{

using namespace Test;

constexpr char kSecret[] = "morvut-sandbox-secret";

std::string AllBytes(const std::string& practice)
{
    return ReadFile(practice) + ReadFile(practice + "-wal") + ReadFile(practice + "-journal");
}

std::size_t CountOf(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

TEST(Privacy, NothingPrintedLoggedOrStoredGivesASecretAway)
{
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = SamplePractice();
    MorvJson({"practice", "options", practice, "nDebugLogging=5"});
    std::string printed;
    const auto run = [&printed](const std::vector<std::string>& arguments) {
        const Ended ended = RunMorv(arguments);
        printed += ended.out + ended.err;
    };
    const Json client = MorvJson({"client", "show", practice, "--client", "1"})["client"];
    const std::string nino = client["nationalInsuranceNumber"];

    const Ended authorised = Authorise(practice, sandbox);
    printed += authorised.out + authorised.err;
    for (const char* token :
         {R"({"expire":true})", R"({"dropScope":"read:individual-paye"})", R"({"refuseRefresh":true})"}) {
        run(FetchArguments(practice, sandbox));
        sandbox.Send("POST", "/sandbox/token", token);
        run(FetchArguments(practice, sandbox));
    }
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"practice", "check", practice},
                                               {"practice", "options", practice},
                                               {"client", "list", practice},
                                               {"user", "list", practice},
                                               {"user", "show", practice, "alice"},
                                               {"hmrc", "create", practice, "--client", "1", "--year", "2018"},
                                               {"hmrc", "differences", practice, "--client", "1", "--year", "2018"},
                                               {"hmrc", "log", practice},
                                               {"hmrc", "log", practice, "--json"},
                                               {"doctor", practice}})
        run(arguments);

    const std::string stored = AllBytes(practice);
    const auto tokens = sandbox.Issued();
    ASSERT_GE(tokens.size(), 4u);
    for (const std::string& token : tokens) {
        EXPECT_EQ(CountOf(printed, token), 0u) << "a token is printed";
        EXPECT_EQ(CountOf(stored, token), 0u) << "a token is stored in plain text";
    }
    EXPECT_EQ(CountOf(printed + stored, kSecret), 0u);
    EXPECT_EQ(CountOf(printed, nino), 0u) << "the National Insurance number is printed";
    const std::string log = RunMorv({"hmrc", "log", practice, "--json"}).out;
    EXPECT_FALSE(log.empty());
    EXPECT_EQ(CountOf(log, nino), 0u);
    // In the file it stands in the client's row only: once, or once more in the journal's page image.
    EXPECT_LE(CountOf(ReadFile(practice), nino), 1u);
}

} // namespace
