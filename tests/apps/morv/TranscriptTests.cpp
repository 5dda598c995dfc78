// What people read, to the letter.

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <sstream>

#include "apps/morv/Program.h"
#include "support/TestSupport.h"

namespace
{

using namespace Test;

/// A sample practice and a sandbox, on which commands are run. FOLDER, PRACTICE and BASE stand for the names of a run.
class Transcript : public testing::TestWithParam<const char*>
{
protected:
    /// What a command prints. Beside those of morv: "sandbox METHOD PATH BODY", "authorise", and "sql STATEMENT".
    std::string Run(const std::string& command)
    {
        if (command.starts_with("sandbox ")) {
            std::istringstream words(command.substr(8));
            std::string method, path, body;
            std::getline(words >> method >> path >> std::ws, body);
            const std::string answer = m_sandbox.Send(method, path, body);
            return method == "GET" ? answer : std::string();
        }
        if (command.starts_with("sql "))
            return Execute(m_practice, command.substr(4));
        if (command == "authorise") {
            EXPECT_EQ(Authorise(m_practice, m_sandbox).exit, 0);
            return {};
        }
        std::string line = command;
        for (const auto& [word, name] : m_names)
            line = ReplacedAll(line, word, name);
        return Told(RunMorv(line));
    }

    const std::string m_practice = SamplePractice();
    HmrcSandbox m_sandbox{"EVERYTHING"};

private:
    /// Both outputs and the exit code; a refusal is one line.
    std::string Told(const Ended& ended) const
    {
        std::string text = ended.out + ended.err + (ended.exit ? "exit " + std::to_string(ended.exit) + '\n' : "");
        for (const auto& [word, name] : m_names)
            text = ReplacedAll(text, name, word);
        EXPECT_EQ(text.find('\033'), std::string::npos) << text;
        if (ended.exit > 1 && ended.out.empty()) {
            EXPECT_TRUE(text.starts_with("morv: ") && std::count(text.begin(), text.end(), '\n') == 2) << text;
            EXPECT_EQ(text.find(".."), std::string::npos) << "two full stops: " << text;
        }
        static const std::regex guid("[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}", std::regex::icase);
        static const std::regex time("(20[2-9][0-9]-[0-9-]+|[0-9]{2}/[0-9]{2}/20[2-9][0-9]) [0-9]{2}:[0-9:.]+");
        return std::regex_replace(std::regex_replace(text, guid, "GUID"), time, "TIME");
    }

    const std::pair<std::string, std::string> m_names[3]{
        {"PRACTICE", m_practice}, {"FOLDER", TempDir()}, {"BASE", m_sandbox.Base()}};
};

} // namespace

TEST_P(Transcript, IsWhatIsPrinted)
{
    ExpectTranscript(std::string(MORV_TRANSCRIPTS) + GetParam() + ".txt",
                     [this](const std::string& command) { return Run(command); });
}

INSTANTIATE_TEST_SUITE_P(Morv, Transcript,
                         testing::Values("calc", "decisions", "documents", "enquiries", "fetch-all", "locks",
                                         "main-job", "refusals", "rows", "scenarios"));
