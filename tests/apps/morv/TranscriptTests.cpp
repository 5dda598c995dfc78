// What people read, to the letter.

#include <algorithm>
#include <cstdlib>
#include <regex>
#include <sstream>

#include "apps/morv/Program.h"
#include "support/Databases.h"

namespace
{

using namespace Test;

/// A sample practice and a sandbox, on which commands are run. FOLDER, PRACTICE and BASE stand for the names of a run,
/// SECOND for another practice beside it.
class Session
{
public:
    Session() // for a shell's own lines
    {
        setenv("MORV", MORV_PROGRAM, 1);
        setenv("MORVUT_SETTINGS", (TempDir() + "/settings.ini").c_str(), 1);
    }

    void Tell(const std::string& transcript)
    {
        ExpectTranscript("apps/morv/transcripts/" + transcript + ".txt",
                         [this](const std::string& command) { return Run(command); });
    }

private:
    /// What a command prints. Beside those of morv: "sandbox METHOD PATH BODY", "authorise [BROWSER]", "sql STATEMENT",
    /// and "shell COMMAND", to which morv is "$MORV".
    std::string Run(const std::string& command)
    {
        if (command.starts_with("sandbox ")) {
            std::istringstream words(command.substr(8));
            std::string method, path, body;
            std::getline(words >> method >> path >> std::ws, body);
            const std::string answer = m_sandbox.Send(method, path, body);
            return method == "GET" ? answer : std::string();
        }
        if (command.starts_with("sql ")) {
            if (!IsOnServer())
                return Execute(m_practice, command.substr(4));
            OpenDatabase("practice.db")->Script(command.substr(4));
            return {};
        }
        if (command.starts_with("authorise")) {
            const std::string browser = command.substr(std::min<std::size_t>(10, command.size()));
            Ended ended = browser.empty() ? Authorise(m_practice, m_sandbox)
                                          : Authorise(m_practice, m_sandbox, "gateway-1", browser);
            ended.err.clear(); // an address of chance
            return Told(ended);
        }
        std::string line = command;
        for (const auto& [word, name] : m_names)
            line = ReplacedAll(line, word, name);
        return Told(line.starts_with("shell ") ? RunShell(line.substr(6)) : RunMorv(line));
    }

    static Ended RunShell(const std::string& command)
    {
        const std::string told = TempDir() + "/told";
        const int status = std::system(("{ " + command + "; } >" + told + " 2>&1").c_str());
        return {status, ReadFile(told), ""};
    }

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
        static const std::regex network("Failed to connect to [^(]*"); // in the HTTP library's words
        text = std::regex_replace(std::regex_replace(text, guid, "GUID"), time, "TIME");
        return std::regex_replace(text, network, "NETWORK ");
    }

    const std::string m_practice = SamplePractice();
    HmrcSandbox m_sandbox{"EVERYTHING"};
    const std::pair<std::string, std::string> m_names[4]{{"PRACTICE", m_practice},
                                                         {"SECOND", PracticeText("second.db")},
                                                         {"FOLDER", TempDir()},
                                                         {"BASE", m_sandbox.Base()}};
};

using Transcript = testing::TestWithParam<const char*>;
using ServerTranscript = OnDatabase;
ON_SERVER(ServerTranscript);

} // namespace

TEST_P(Transcript, IsWhatIsPrinted) { Session().Tell(GetParam()); }
TEST_P(ServerTranscript, IsWhatIsPrinted) { Session().Tell("server"); }

INSTANTIATE_TEST_SUITE_P(Morv, Transcript,
                         testing::Values("authority", "calc", "decisions", "documents", "enquiries", "fetch-all",
                                         "files", "locks", "main-job", "refusals", "rows", "scenarios"));
