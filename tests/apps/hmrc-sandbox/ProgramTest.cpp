#include <array>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <httplib.h>
#include <string>
#include <sys/wait.h>

namespace Sandbox
{

namespace
{

std::FILE* Start(const std::string& before, const std::string& arguments)
{
    return popen((before + "exec '" HMRC_SANDBOX_PROGRAM "' " + arguments + " 2>&1").c_str(), "r");
}

std::string ReadLine(std::FILE* pipe)
{
    std::array<char, 500> line{};
    return std::fgets(line.data(), static_cast<int>(line.size()), pipe) == nullptr ? "" : line.data();
}

int ExitOf(std::FILE* pipe)
{
    const int status = pclose(pipe);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// The program must end so, with one line in its output, which must hold `text`.
void ExpectOneLine(const std::string& arguments, int exit, const std::string& text)
{
    std::FILE* pipe = Start("", arguments);
    const std::string line = ReadLine(pipe);
    EXPECT_NE(line.find(text), std::string::npos) << line;
    EXPECT_EQ(ReadLine(pipe), "") << arguments;
    EXPECT_EQ(ExitOf(pipe), exit) << arguments;
}

} // namespace

TEST(Program, PrintsItsAddressServesAndEndsOnASignal)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        std::FILE* pipe = Start("echo $$; ", "--scenario EMPLOYED");
        const int process = std::stoi(ReadLine(pipe));
        const std::string line = ReadLine(pipe), before = "http://127.0.0.1:";
        const std::string port = std::to_string(std::stoi(line.substr(line.find(before) + before.size())));
        EXPECT_TRUE(httplib::Client(before + port).Get("/")) << line;
        ExpectOneLine("--port " + port, 3, "port " + port);
        kill(process, signal);
        EXPECT_EQ(ExitOf(pipe), 0) << "signal " << signal;
    }
}

TEST(Program, RefusesBadArgumentsInOneLine)
{
    for (const char* arguments : {"--port 65536", "--port 010", "--port 0x50", "--port ' 80'", "--port +5", "--port x",
                                  "--scenario NOBODY", "--scenario 'NO\nBODY'", "--delay 60001", "--unknown", "stray"})
        ExpectOneLine(arguments, 2, "");
    std::FILE* help = Start("", "--help");
    EXPECT_NE(ReadLine(help), "");
    while (!ReadLine(help).empty())
        continue;
    EXPECT_EQ(ExitOf(help), 0);
}

} // namespace Sandbox
