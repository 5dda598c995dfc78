// Every command refuses bad input with one line and the stated exit code, and changes nothing.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <memory>

#include "apps/morv/Program.h"
#include "support/TestSupport.h"

namespace
{

using namespace Test;

enum Fault
{
    MissingFile,
    NotADatabase,
    OtherDatabase,
    NewerSchema,
    NoKey
};

std::string MakeFaulty(Fault fault)
{
    const std::string path = TempDir() + "/faulty" + std::to_string(fault) + ".db";
    switch (fault) {
    case MissingFile:
        break;
    case NotADatabase:
        std::ofstream(path) << "This is a letter to a client, not a database. It is long enough to have a header.";
        break;
    case OtherDatabase:
        Execute(path, "CREATE TABLE Recipe (Name TEXT)");
        break;
    case NewerSchema:
        SamplePractice("faulty" + std::to_string(fault) + ".db");
        Execute(path, "UPDATE BRIXSchema SET nVersion = 1000000");
        break;
    case NoKey:
        SamplePractice("faulty" + std::to_string(fault) + ".db");
        std::remove((path + ".key").c_str());
        break;
    }
    return path;
}

void ExpectOneLine(const Ended& ended, int exit)
{
    EXPECT_EQ(ended.exit, exit) << ended.out << ended.err;
    EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 1) << ended.err;
    EXPECT_EQ(ended.err.rfind("morv: ", 0), 0u) << ended.err;
    EXPECT_EQ(ended.err.find(".."), std::string::npos) << "two full stops: " << ended.err;
}

// PRACTICE stands for the practice's path, BASE for the sandbox's address.
std::vector<std::string> Fill(std::vector<std::string> arguments, const std::string& practice,
                              const std::string& base = {})
{
    for (std::string& argument : arguments) {
        if (argument == "PRACTICE")
            argument = practice;
        if (argument == "BASE")
            argument = base;
    }
    return arguments;
}

const std::vector<std::vector<std::string>> kCommands = {
    {"practice", "check", "PRACTICE"},
    {"practice", "options", "PRACTICE"},
    {"client", "list", "PRACTICE"},
    {"client", "show", "PRACTICE", "--client", "1"},
    {"user", "list", "PRACTICE"},
    {"user", "show", "PRACTICE", "alice"},
    {"hmrc", "authorise", "PRACTICE", "--gateway", "g", "--base", "http://127.0.0.1:1"},
    {"hmrc", "fetch", "PRACTICE", "--client", "1", "--gateway", "g", "--base", "http://127.0.0.1:1"},
    {"hmrc", "create", "PRACTICE", "--client", "1"},
    {"hmrc", "differences", "PRACTICE", "--client", "1"},
    {"hmrc", "log", "PRACTICE"},
    {"doctor", "PRACTICE"},
};

TEST(BadInput, APracticeThatCannotBeOpenedIsExit3InEveryCommand)
{
    for (const Fault fault : {MissingFile, NotADatabase, OtherDatabase, NewerSchema, NoKey}) {
        const std::string practice = MakeFaulty(fault);
        for (const auto& command : kCommands) {
            SCOPED_TRACE(command[0] + " " + command[1] + " with fault " + std::to_string(fault));
            ExpectOneLine(RunMorv(Fill(command, practice)), 3);
        }
        if (fault == MissingFile) {
            EXPECT_NE(access(practice.c_str(), F_OK), 0) << "a look must not make the file";
        }
    }
}

TEST(BadInput, BadArgumentsAreExit2)
{
    const std::string practice = SamplePractice();
    const struct
    {
        std::vector<std::string> arguments;
        const char* why;
    } rows[] = {
        {{}, "no command"},
        {{"practice", "check"}, "no practice"},
        {{"practice", "create", "PRACTICE.new", "--clients", "5"}, "--clients without --sample"},
        {{"practice", "create", "PRACTICE.new", "--sample", "--clients", "0"}, "no clients"},
        {{"practice", "options", "PRACTICE", "nPAYEInterface"}, "no value"},
        {{"practice", "options", "PRACTICE", "bHMRCRetrieval=2"}, "out of range"},
        {{"client", "show", "PRACTICE"}, "no client"},
        {{"client", "show", "PRACTICE", "--client", "999999"}, "unknown client"},
        {{"client", "show", "PRACTICE", "--client", "-1"}, "negative client"},
        {{"client", "show", "PRACTICE", "--client", "010"}, "would be read as eight"},
        {{"client", "show", "PRACTICE", "--client", "0x1"}, "hexadecimal"},
        {{"hmrc", "create", "PRACTICE", "--client", " 1"}, "a blank before the client"},
        {{"client", "show", "PRACTICE", "--partnership", "77"}, "unknown partnership"},
        {{"client", "list", "PRACTICE", "--year", "17/18"}, "malformed year"},
        {{"client", "list", "PRACTICE", "--year", "1990"}, "year before the first"},
        {{"client", "list", "PRACTICE", "--year", "2026"}, "year after the last"},
        {{"client", "list", "PRACTICE", "--user", "nobody"}, "unknown user"},
        {{"client", "list", "PRACTICE", "--user", ""}, "an empty user is nobody, not the first one"},
        {{"client", "list", "PRACTICE", "--user="}, "the same"},
        {{"client", "list", "--user=", "PRACTICE"}, "the practice is not the user"},
        {{"client", "list", "PRACTICE", "--year", ""}, "an empty year"},
        {{"doctor", ""}, "an empty practice"},
        {{"user", "show", "PRACTICE", "nobody"}, "unknown user asked for"},
        {{"table", "show", "mapNothing"}, "unknown table"},
        {{"table", "show", "101"}, "position after the last"},
        {{"table", "show", ""}, "no name at all"},
        {{"table", "find", "OtherOutRefs", "gift aid"}, "capitals count in a name"},
        {{"table", "find", "mapPSBTypes", "1000"}, "unknown code"},
        {{"table", "find", "mapPSBTypes"}, "no key"},
        {{"hmrc", "fetch", "PRACTICE", "--client", "999999", "--gateway", "g", "--base", "BASE"}, "unknown client"},
        {{"hmrc", "fetch", "PRACTICE", "--client", "1"}, "no gateway"},
        {{"hmrc", "fetch", "PRACTICE", "--client", "1", "--gateway", "", "--base", "BASE"}, "an empty gateway"},
        {{"hmrc", "authorise", "PRACTICE", "--gateway", "", "--base", "BASE"}, "the same"},
        {{"hmrc", "fetch", "PRACTICE", "--client", "1", "--gateway", "g", "--base", ""}, "an empty base is not HMRC's"},
        {{"hmrc", "fetch", "PRACTICE", "--gateway", "g"}, "neither --client nor --all"},
        {{"hmrc", "fetch", "PRACTICE", "--client", "1", "--gateway", "g", "--base", "http://example.com/"},
         "a base that is not loopback"},
        {{"hmrc", "fetch", "PRACTICE", "--client", "1", "--gateway", "g", "--base", "http://127.0.0.1.example.com/"},
         "a base that only looks like loopback"},
        {{"hmrc", "authorise", "PRACTICE", "--gateway", "it's", "--base", "BASE"}, "a quote in a gateway id"},
        {{"hmrc", "create", "PRACTICE", "--client", "999999"}, "unknown client"},
        {{"hmrc", "differences", "PRACTICE", "--client", "999999"}, "unknown client"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        ExpectOneLine(RunMorv(Fill(row.arguments, practice, "http://127.0.0.1:1")), 2);
    }
    EXPECT_EQ(MorvJson({"practice", "check", practice})["ok"], true);
}

TEST(BadInput, WithJsonTheErrorIsOneDocument)
{
    const Ended ended = RunMorv({"client", "show", SamplePractice(), "--client", "999999", "--json"});
    const Json error = ended.Document()["error"];
    EXPECT_EQ(ended.exit, 2);
    EXPECT_EQ(error["code"], "UNKNOWN_CLIENT");
    EXPECT_FALSE(error["message"].get<std::string>().empty());
    EXPECT_FALSE(error["action"].get<std::string>().empty());
    const Ended arguments = RunMorv({"client", "show", "--json"});
    EXPECT_EQ(arguments.exit, 2);
    EXPECT_EQ(arguments.Document()["error"]["code"], "BAD_ARGUMENTS") << arguments.out;
}

TEST(BadInput, AnExistingFileIsNeverOverwritten)
{
    const std::string practice = SamplePractice();
    const std::string before = ReadFile(practice + ".key");
    ExpectOneLine(RunMorv({"practice", "create", practice, "--sample"}), 3);
    EXPECT_EQ(ReadFile(practice + ".key"), before);
    EXPECT_EQ(MorvJson({"client", "list", practice}).size(), 14u);
    const std::string letter = WriteFile("letter.txt", "Dear Sir or Madam, this is a letter and no database at all.");
    ExpectOneLine(RunMorv({"practice", "create", letter}), 3);
    EXPECT_EQ(ReadFile(letter).rfind("Dear Sir", 0), 0u);
}

TEST(BadInput, OneOfManyCreationsAtOnceMakesThePractice)
{
    const std::string practice = TempDir() + "/raced.db";
    std::vector<std::unique_ptr<RunningMorv>> creations;
    for (int i = 0; i < 4; ++i)
        creations.push_back(
            std::make_unique<RunningMorv>(std::vector<std::string>{"practice", "create", practice, "--sample"}));
    int made = 0;
    for (const auto& creation : creations) {
        const Ended ended = creation->Wait();
        made += ended.exit == 0 ? 1 : 0;
        if (ended.exit != 0) {
            ExpectOneLine(ended, 3);
            EXPECT_LT(ended.err.size(), 1000u) << "no statements";
        }
    }
    EXPECT_EQ(made, 1);
    EXPECT_EQ(MorvJson({"practice", "check", practice})["ok"], true);
    EXPECT_EQ(MorvJson({"client", "list", practice}).size(), 14u);
}

TEST(BadInput, OutputThatCannotBeWrittenIsNotDone)
{
    const std::vector<std::vector<std::string>> rows = {
        {"client", "list", "PRACTICE"}, {"client", "list", "PRACTICE", "--json"}, {"table", "list"}, {"--help"}};
    const std::string practice = SamplePractice();
    for (const auto& row : rows) {
        SCOPED_TRACE(row[0]);
        ExpectOneLine(RunMorv(Fill(row, practice), "/dev/null", "/dev/full"), 1);
    }
}

TEST(BadInput, NoAnswerIsExit4)
{
    const std::string practice = SamplePractice();
    std::string gone;
    {
        const HmrcSandbox sandbox("EVERYTHING");
        ASSERT_EQ(Authorise(practice, sandbox).exit, 0);
        gone = sandbox.Base();
    }
    const Ended ended = RunMorv({"hmrc", "fetch", practice, "--client", "1", "--gateway", "gateway-1", "--year", "2018",
                                 "--base", gone, "--json"});
    EXPECT_EQ(ended.exit, 4) << ended.out << ended.err;
    EXPECT_EQ(ended.Document()["errors"][0]["code"], "NO_CONNECTION") << ended.out;
}

TEST(BadInput, APracticeWithoutUsersSaysSo)
{
    const std::string practice = TempDir() + "/empty.db";
    ASSERT_EQ(RunMorv({"practice", "create", practice}).exit, 0);
    ExpectOneLine(RunMorv({"client", "list", practice}), 1);
    EXPECT_EQ(MorvJson({"user", "list", practice}).size(), 0u);
    EXPECT_EQ(MorvJson({"practice", "check", practice})["ok"], true);
}

} // namespace
