#include "apps/morv/Program.h"

#include <httplib.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "support/Databases.h"

namespace Test
{

namespace
{

std::string NextFile()
{
    static std::atomic<int> number{0};
    return TempDir() + "/file" + std::to_string(number++);
}

} // namespace

RunningMorv::RunningMorv(const std::string& line) : m_out(NextFile()), m_err(NextFile())
{
    // The user's own settings are never touched.
    const std::string command = "exec </dev/null >" + m_out + " 2>" + m_err +
                                "; exec env MORVUT_SETTINGS=" + TempDir() + "/settings.ini '" MORV_PROGRAM "' " + line;
    m_pid = fork();
    if (m_pid == 0) {
        for (const int each : {SIGINT, SIGTERM, SIGHUP}) // a job in the background is started without
            signal(each, SIG_DFL);
        execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        _exit(127);
    }
}

RunningMorv::~RunningMorv()
{
    if (m_pid > 0) {
        Kill();
        Wait();
    }
}

void RunningMorv::Signal(int signal) { kill(m_pid, signal); }

Ended RunningMorv::Wait()
{
    int status = 0;
    waitpid(m_pid, &status, 0);
    m_pid = -1;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), ReadFile(m_out), ReadFile(m_err)};
}

Ended RunMorv(const std::string& line) { return RunningMorv(line).Wait(); }

Json MorvJson(const std::string& line)
{
    const Ended ended = RunMorv(line + " --json");
    EXPECT_EQ(ended.exit, 0) << ended.out << ended.err;
    const Json document = ended.Document();
    EXPECT_FALSE(document.is_discarded()) << ended.out;
    return document;
}

std::string PracticeText(const std::string& name)
{
    const std::string path = TempDir() + "/" + name;
    if (!IsOnServer())
        return path;
    const std::string password = "PasswordFile=" + WriteFile("password", "test\n");
    return "'" + ReplacedAll(ConnectionTextOf(name).Str(), "PWD=test", password) + ";KeyFile=" + path + ".key'";
}

std::string SamplePractice(const std::string& name)
{
    const std::string practice = PracticeText(name);
    MorvJson("practice create --sample " + practice);
    return practice;
}

HmrcSandbox::HmrcSandbox(const std::string& scenario)
    : m_server({.scenario = scenario, .issued = [this](const std::string& secret) {
                    const std::lock_guard lock(m_mutex);
                    m_issued.push_back(secret);
                }})
{
    m_server.Start();
}

std::vector<std::string> HmrcSandbox::Issued()
{
    const std::lock_guard lock(m_mutex);
    return m_issued;
}

std::string HmrcSandbox::Send(const std::string& method, const std::string& path, const std::string& body)
{
    httplib::Client client(Base());
    httplib::Request request;
    request.method = method;
    request.path = path;
    request.body = body;
    request.headers = {{"Content-Type", "application/json"}, {"Accept", "application/vnd.hmrc.2.0+json"}};
    const auto answer = client.send(request);
    EXPECT_TRUE(answer) << method << " " << path;
    EXPECT_LT(answer ? answer->status : 999, 400) << method << " " << path << ": " << answer->body;
    return answer ? answer->body : std::string();
}

Ended Authorise(const std::string& practice, const HmrcSandbox& sandbox, const std::string& gateway,
                const std::string& browser)
{
    constexpr int kAttempts = 20;
    for (int attempt = 1;; ++attempt) {
        const Ended ended = RunMorv("hmrc authorise " + practice + " --json --gateway " + gateway + " --base " +
                                    sandbox.Base() + " --browser '" + browser + "'");
        // Tests that run at the same time may hold all three of the program's ports for a moment.
        if (attempt == kAttempts || ended.out.find("NO_REDIRECT_PORT") == std::string::npos)
            return ended;
        std::this_thread::sleep_for(std::chrono::milliseconds(250));
    }
}

std::string AuthorisedPractice(const HmrcSandbox& sandbox)
{
    const std::string practice = SamplePractice();
    EXPECT_EQ(Authorise(practice, sandbox).exit, 0);
    return practice;
}

std::string FetchLine(const std::string& practice, const HmrcSandbox& sandbox, int client)
{
    return "hmrc fetch " + practice + " --client " + std::to_string(client) +
           " --gateway gateway-1 --year 2018 --base " + sandbox.Base();
}

} // namespace Test
