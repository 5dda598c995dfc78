// Every command refuses bad input with one line and the stated exit code, and changes nothing.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <memory>

#include "apps/morv/Program.h"
#include "support/Case.h"
#include "support/TestSupport.h"

namespace
{

using namespace Test;

void ExpectOneLine(const Ended& ended, int exit)
{
    EXPECT_EQ(ended.exit, exit) << ended.out << ended.err;
    EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 1) << ended.err;
    EXPECT_EQ(ended.err.rfind("morv: ", 0), 0u) << ended.err;
    EXPECT_EQ(ended.err.find(".."), std::string::npos) << "two full stops: " << ended.err;
    EXPECT_LT(ended.err.size(), 1000u) << "no statements: " << ended.err;
}

/// The line with the practice's path in place of PRACTICE.
std::string On(const std::string& practice, std::string line)
{
    for (std::size_t at; (at = line.find("PRACTICE")) != line.npos;)
        line.replace(at, 8, practice);
    return line;
}

/// The commands that look at the practice itself report what is wrong with its key as they report anything else.
bool IsExamination(const std::string& line) { return line.starts_with("practice check") || line.starts_with("doctor"); }

TEST(BadInput, APracticeThatCannotBeOpenedIsExit3InEveryCommand)
{
    const std::string recipes = TempDir() + "/recipes.db", newer = SamplePractice("newer.db"),
                      noKey = SamplePractice("keyless.db"), wrongKey = SamplePractice("wrong.db"),
                      missing = TempDir() + "/missing.db";
    Execute(recipes, "CREATE TABLE Recipe (Name TEXT)");
    Execute(newer, "UPDATE BRIXSchema SET nVersion = 1000000");
    std::remove((noKey + ".key").c_str());
    WriteFile("wrong.db.key", ReadFile(newer + ".key"));
    const std::string letter = WriteFile("letter.db", "This is a letter to a client, not a database. It is long enough "
                                                      "to have a header.");
    const std::string endless = TempDir() + "/" + std::string(120000, 'x');
    for (const std::string& practice : {missing, letter, recipes, newer, noKey, wrongKey, endless})
        for (const char* line : {"practice options PRACTICE", "client list PRACTICE", "client show PRACTICE --client 1",
                                 "user list PRACTICE", "user show PRACTICE alice",
                                 "hmrc authorise PRACTICE --gateway g --base http://127.0.0.1:1",
                                 "hmrc fetch PRACTICE --client 1 --gateway g --base http://127.0.0.1:1",
                                 "hmrc create PRACTICE --client 1", "hmrc differences PRACTICE --client 1",
                                 "hmrc log PRACTICE", "practice check PRACTICE", "doctor PRACTICE"}) {
            SCOPED_TRACE(On(practice.substr(0, 200), line));
            const bool isExamined = practice == noKey || practice == wrongKey;
            if (const Ended ended = RunMorv(On(practice, line)); !isExamined || !IsExamination(line))
                ExpectOneLine(ended, 3);
            else
                EXPECT_TRUE(ended.exit == 1 && ended.out.find(".key") != std::string::npos) << ended.out << ended.err;
        }
    EXPECT_NE(access(missing.c_str(), F_OK), 0) << "a look must not make the file";
}

TEST(BadInput, BadArgumentsAreExit2)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", "no command"},
        {"practice check", "no practice"},
        {"practice create PRACTICE.new --clients 5", "--clients without --sample"},
        {"practice create PRACTICE.new --sample --clients 0", "no clients"},
        {"practice options PRACTICE nPAYEInterface", "no value"},
        {"practice options PRACTICE bHMRCRetrieval=2", "out of range"},
        {"client show PRACTICE", "no client"},
        {"client show PRACTICE --client 999999", "unknown client"},
        {"client show PRACTICE --client -1", "negative client"},
        {"client show PRACTICE --client 010", "would be read as eight"},
        {"client show PRACTICE --client 0x1", "hexadecimal"},
        {"hmrc create PRACTICE --client ' 1'", "a blank before the client"},
        {"client show PRACTICE --partnership 77", "unknown partnership"},
        {"client list PRACTICE --year 17/18", "malformed year"},
        {"client list PRACTICE --year 1990", "year before the first"},
        {"client list PRACTICE --year 2026", "year after the last"},
        {"client list PRACTICE --year ''", "an empty year"},
        {"client list PRACTICE --user nobody", "unknown user"},
        {"client list PRACTICE --user ''", "an empty user is nobody, not the first one"},
        {"doctor --user= PRACTICE", "the practice is not the user"},
        {"doctor ''", "an empty practice"},
        {"user show PRACTICE nobody", "unknown user asked for"},
        {"table show mapNothing", "unknown table"},
        {"table show 101", "position after the last"},
        {"table show ''", "no name at all"},
        {"table find OtherOutRefs 'gift aid'", "capitals count in a name"},
        {"table find mapPSBTypes 1000", "unknown code"},
        {"table find mapPSBTypes", "no key"},
        {"hmrc fetch PRACTICE --client 999999 --gateway g --base http://127.0.0.1:1", "unknown client"},
        {"hmrc fetch PRACTICE --client 1", "no gateway"},
        {"hmrc fetch PRACTICE --client 1 --gateway '' --base http://127.0.0.1:1", "an empty gateway"},
        {"hmrc authorise PRACTICE --gateway '' --base http://127.0.0.1:1", "the same"},
        {"hmrc fetch PRACTICE --client 1 --gateway g --base ''", "an empty base is not HMRC's"},
        {"hmrc fetch PRACTICE --gateway g", "neither --client nor --all"},
        {"hmrc fetch PRACTICE --client 1 --gateway g --base http://example.com/", "a base that is not loopback"},
        {"hmrc fetch PRACTICE --client 1 --gateway g --base http://127.0.0.1.example.com/", "that only looks like it"},
        {"hmrc fetch PRACTICE --client 1 --gateway g --base http://127.0.0.1:65536", "no port"},
        {"hmrc fetch PRACTICE --client 1 --gateway g --base http://127.0.0.1:1/?x", "paths are put behind it"},
        {"hmrc fetch PRACTICE --client 1 --gateway g --base http://127.0.0.1:1#x", "the same"},
        {"hmrc authorise PRACTICE --gateway \"$(printf 'g\\033[2J')\" --base http://127.0.0.1:1", "steers a terminal"},
        {"client list \"$(printf 'PRACTICE\\nmorv: forged')\"", "forges a line"},
        {"practice create \"$(printf 'PRACTICE\\033[2J')\"", "the same in a new one"},
        {"practice create PRACTICE.new --group 'no such group'", "unknown group"},
        {"client show PRACTICE --client $(printf %0120000d 1)", "not repeated whole"},
        {"client list PRACTICE --user $(printf %0120000d 1)", "nor here"},
        {"hmrc authorise PRACTICE --gateway it\\'s --base http://127.0.0.1:1", "a quote in a gateway id"},
        {"client list PRACTICE --year 2017/19", "no year is that long"},
        {"client show PRACTICE --client --json", "an option is no client"},
        {"client add PRACTICE --code c0001 --name X", "a code that is taken, in other capitals"},
        {"client add PRACTICE --code P0001 --name X", "a partnership's code"},
        {"client add PRACTICE --code N1 --name ' '", "no name"},
        {"client add PRACTICE --code N1 --name X --utr 1234567890", "a mistyped UTR"},
        {"client add PRACTICE --code N1 --name X --nino AA00001A", "a short National Insurance number"},
        {"client add PRACTICE --code N1 --name X --kind trust --nino AA000001A", "a trust has none"},
        {"client add PRACTICE --code N1 --name X --kind company", "unknown kind"},
        {"user add PRACTICE ALICE --name X", "an id that is taken, in other capitals"},
        {"user add PRACTICE dora --name X --role Nobody", "unknown role"},
        {"gateway remove PRACTICE g", "unknown gateway"},
        {"hmrc create PRACTICE --client 999999", "unknown client"},
        {"hmrc differences PRACTICE --client 999999", "unknown client"},
    };
    const std::string practice = SamplePractice();
    for (const auto& [line, why] : rows) {
        SCOPED_TRACE(why);
        const Ended ended = RunMorv(On(practice, line));
        ExpectOneLine(ended, 2);
        EXPECT_EQ(ended.err.find('\033'), std::string::npos);
    }
    EXPECT_EQ(MorvJson("practice check " + practice)["ok"], true);
    EXPECT_EQ(MorvJson("client list " + practice).size(), 14u);
    EXPECT_EQ(MorvJson("user list " + practice).size(), 3u);
}

TEST(BadInput, WithJsonTheErrorIsOneDocument)
{
    const std::string practice = SamplePractice();
    const ::Test::Case<const char*, const char*> rows[] = {
        {"client show PRACTICE --client 999999 --json", "UNKNOWN_CLIENT", "an error of the command's"},
        {"client show --json", "BAD_ARGUMENTS", "too few arguments"},
        {"client show PRACTICE --client --json", "BAD_ARGUMENTS", "found before --json is read"},
    };
    for (const auto& row : rows) {
        const Ended ended = RunMorv(On(practice, row.in));
        EXPECT_EQ(ended.exit, 2);
        const Json document = ended.Document();
        ASSERT_TRUE(document.is_object()) << row.why << ended.out;
        EXPECT_EQ(document["error"]["code"], row.out) << row.why;
        EXPECT_NE(document["error"]["message"], "");
        EXPECT_NE(document["error"]["action"], "");
    }
}

TEST(BadInput, AnExistingFileIsNeverOverwritten)
{
    const std::string practice = SamplePractice(), before = ReadFile(practice + ".key");
    ExpectOneLine(RunMorv("practice create --sample " + practice), 3);
    EXPECT_EQ(ReadFile(practice + ".key"), before);
    EXPECT_EQ(MorvJson("client list " + practice).size(), 14u);
    const std::string letter = WriteFile("letter.txt", "Dear Sir or Madam, this is a letter and no database at all.");
    ExpectOneLine(RunMorv("practice create " + letter), 3);
    EXPECT_EQ(ReadFile(letter).rfind("Dear Sir", 0), 0u);
}

TEST(BadInput, OneOfManyCreationsAtOnceMakesThePractice)
{
    const std::string practice = TempDir() + "/raced.db";
    std::vector<std::unique_ptr<RunningMorv>> creations;
    for (int i = 0; i < 4; ++i)
        creations.push_back(std::make_unique<RunningMorv>("practice create --sample " + practice));
    int made = 0;
    for (const auto& creation : creations)
        if (const Ended ended = creation->Wait(); ended.exit == 0)
            ++made;
        else
            ExpectOneLine(ended, 3);
    EXPECT_EQ(made, 1);
    EXPECT_EQ(MorvJson("practice check " + practice)["ok"], true);
    EXPECT_EQ(MorvJson("client list " + practice).size(), 14u);
}

TEST(BadInput, OutputThatCannotBeWrittenIsNotDone)
{
    const std::string practice = SamplePractice();
    for (const char* line : {"client list PRACTICE", "client list PRACTICE --json", "table list", "--help"})
        ExpectOneLine(RunMorv(On(practice, line), "/dev/null", "/dev/full"), 1);
}

TEST(BadInput, NoAnswerIsExit4)
{
    std::string line;
    {
        const HmrcSandbox gone("EVERYTHING");
        line = FetchLine(AuthorisedPractice(gone), gone);
    }
    const Ended ended = RunMorv(line + " --json");
    EXPECT_EQ(ended.exit, 4) << ended.out << ended.err;
    EXPECT_EQ(ended.Document()["errors"][0]["code"], "NO_CONNECTION") << ended.out;
}

TEST(BadInput, APracticeWithoutUsersSaysSo)
{
    const std::string practice = TempDir() + "/empty.db";
    MorvJson("practice create " + practice);
    ExpectOneLine(RunMorv("client list " + practice), 1);
    EXPECT_EQ(MorvJson("user list " + practice).size(), 0u);
    EXPECT_EQ(MorvJson("practice check " + practice)["ok"], true);
    // The first user may do everything, the next nothing yet.
    EXPECT_EQ(MorvJson("user add " + practice + " ida --name Ida")["rights"][0]["allowed"], true);
    EXPECT_EQ(MorvJson("user add " + practice + " jon --name Jon")["rights"][0]["allowed"], false);
    for (const char* client : {"--code 2 --name One", "--code X --name Two --kind llp --utr 2234567890"})
        MorvJson("client add " + practice + ' ' + client);
    EXPECT_EQ(MorvJson("client show " + practice + " --client 2")["client"]["name"], "One") << "a code before an id";
}

} // namespace
