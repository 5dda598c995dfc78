// Every command refuses what it cannot work on with one line and the stated exit code, and changes nothing.

#include <unistd.h>

#include <algorithm>
#include <memory>

#include "apps/morv/Program.h"
#include "support/Test.h"

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
std::string On(const std::string& practice, const std::string& line) { return ReplacedAll(line, "PRACTICE", practice); }

/// What a command reports as it reports anything else: doctor everything, the check of a practice its key.
bool IsReported(const std::string& line, bool isOfKey)
{
    return line.starts_with("doctor") || (isOfKey && line.starts_with("practice check"));
}

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
            const bool isOfKey = practice == noKey || practice == wrongKey;
            if (const Ended ended = RunMorv(On(practice, line)); !IsReported(line, isOfKey))
                ExpectOneLine(ended, 3);
            else
                EXPECT_TRUE(ended.exit == 1 && ended.out.find(isOfKey ? ".key" : "practice  ") != std::string::npos)
                    << ended.out << ended.err;
        }
    EXPECT_NE(access(missing.c_str(), F_OK), 0) << "a look must not make the file";
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
        else {
            ExpectOneLine(ended, 3);
            EXPECT_NE(ended.err.find("is there already"), std::string::npos) << ended.err;
        }
    EXPECT_EQ(made, 1);
    EXPECT_EQ(MorvJson("practice check " + practice)["ok"], true);
    EXPECT_EQ(MorvJson("client list " + practice).size(), 14u);
}

TEST(BadInput, AListOfADamagedPracticeIsOneDocument)
{
    const std::string practice = TempDir() + "/damaged.db";
    MorvJson("practice create --sample --clients 200 " + practice);
    constexpr std::size_t kPage = 4096;
    std::string bytes = ReadFile(practice);
    const auto isOfTheLast = [&](std::size_t at) {
        return bytes[at] == '\x0D' && bytes.substr(at, kPage).find("C0200") != std::string::npos; // a leaf of rows
    };
    std::size_t page = 0;
    while (page < bytes.size() && !isOfTheLast(page))
        page += kPage;
    ASSERT_LT(page, bytes.size());
    WriteFile("damaged.db", bytes.replace(page, kPage, kPage, '\xEE'));
    for (const char* status : {"", " --status"}) {
        const Ended ended = RunMorv("client list --json " + practice + status);
        ExpectOneLine(ended, 3);
        EXPECT_EQ(ended.Document()["error"]["code"], "DATABASE_ERROR") << ended.out;
    }
}

} // namespace
