#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <httplib.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace Sandbox
{

namespace
{

/// The running program, its standard output read line by line.
class Program
{
public:
    Program()
    {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0)
            return;
        m_pid = fork();
        if (m_pid == 0) {
            dup2(ends[1], STDOUT_FILENO);
            execl(HMRC_SANDBOX_PROGRAM, "hmrc-sandbox", "--scenario", "EMPLOYED", nullptr);
            _exit(127);
        }
        close(ends[1]);
        m_out = fdopen(ends[0], "r");
    }

    ~Program()
    {
        if (m_pid > 0)
            End(SIGKILL);
        if (m_out != nullptr)
            std::fclose(m_out);
    }

    std::string ReadLine()
    {
        std::array<char, 200> line{};
        return std::fgets(line.data(), static_cast<int>(line.size()), m_out) == nullptr ? "" : line.data();
    }

    /// The wait status after the signal.
    int End(int signal)
    {
        int status = 0;
        kill(m_pid, signal);
        waitpid(m_pid, &status, 0);
        m_pid = -1;
        return status;
    }

private:
    pid_t m_pid = -1;
    std::FILE* m_out = nullptr;
};

struct Finished
{
    int exitCode;
    std::string output; ///< both streams
};

Finished RunToEnd(const std::string& arguments)
{
    std::FILE* pipe = popen((std::string("'") + HMRC_SANDBOX_PROGRAM + "' " + arguments + " 2>&1").c_str(), "r");
    Finished finished{-1, {}};
    std::array<char, 500> text{};
    while (std::fgets(text.data(), static_cast<int>(text.size()), pipe) != nullptr)
        finished.output += text.data();
    const int status = pclose(pipe);
    finished.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return finished;
}

/// The port in "… http://127.0.0.1:PORT/ …".
int PortIn(const std::string& line)
{
    const std::string before = "http://127.0.0.1:";
    const auto at = line.find(before);
    return at == std::string::npos ? 0 : std::stoi(line.substr(at + before.size()));
}

} // namespace

TEST(Program, PrintsItsAddressServesAndEndsOnASignal)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        Program program;
        const std::string line = program.ReadLine();
        const int port = PortIn(line);
        ASSERT_NE(port, 0) << line;
        EXPECT_TRUE(httplib::Client("127.0.0.1", port).Get("/"));
        const Finished second = RunToEnd("--port " + std::to_string(port));
        EXPECT_EQ(second.exitCode, 3);
        EXPECT_NE(second.output.find("port " + std::to_string(port)), std::string::npos) << second.output;
        EXPECT_EQ(std::count(second.output.begin(), second.output.end(), '\n'), 1) << second.output;
        const int status = program.End(signal);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "signal " << signal;
    }
}

TEST(Program, RefusesBadArgumentsInOneLine)
{
    for (const char* arguments : {"--port 65536", "--port x", "--scenario NOBODY", "--unknown", "stray"}) {
        SCOPED_TRACE(arguments);
        const Finished finished = RunToEnd(arguments);
        EXPECT_EQ(finished.exitCode, 2);
        EXPECT_EQ(std::count(finished.output.begin(), finished.output.end(), '\n'), 1) << finished.output;
    }
    EXPECT_EQ(RunToEnd("--help").exitCode, 0);
}

} // namespace Sandbox
