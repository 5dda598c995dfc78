#pragma once

// Runs morv as a user does, on practices of the test's own, against a sandbox in this process.

#include <nlohmann/json.hpp>

#include <mutex>
#include <string>
#include <vector>

#include "hmrc-sandbox/Server.h"
#include "support/SqliteTool.h"

namespace Test
{

using Json = nlohmann::json;

struct Ended
{
    int exit = -1; // negative: the signal that ended it
    std::string out, err;

    /// The one document on standard output; a discarded value when it is none.
    Json Document() const { return Json::parse(out, nullptr, false); }
};

/// A started morv, still running. The line is one of the shell's: a word in single quotes may hold blanks.
class RunningMorv
{
public:
    explicit RunningMorv(const std::string& line);
    ~RunningMorv();
    RunningMorv(const RunningMorv&) = delete;
    RunningMorv& operator=(const RunningMorv&) = delete;
    void Signal(int signal);
    void Kill() { Signal(9); }
    Ended Wait();

private:
    int m_pid = -1;
    std::string m_out, m_err; // files
};

Ended RunMorv(const std::string& line);
/// The same; fails the test when it does not end with exit code 0. Answers the JSON document (--json is added).
Json MorvJson(const std::string& line);

/// A practice as one names it in a line: a file in the test's folder, or a database of the server, whose password and
/// key stand in files there.
std::string PracticeText(const std::string& name = "practice.db");
/// A new sample practice.
std::string SamplePractice(const std::string& name = "practice.db");

/// A sandbox that runs for the test's length.
class HmrcSandbox
{
public:
    explicit HmrcSandbox(const std::string& scenario = {});
    std::string Base() const { return m_server.Address(); }
    /// One request to it; the body of the answer.
    std::string Send(const std::string& method, const std::string& path, const std::string& body = "{}");
    /// Every code and token that it has given out.
    std::vector<std::string> Issued();

private:
    std::mutex m_mutex; // over m_issued: the server answers on threads of its own
    std::vector<std::string> m_issued;
    Sandbox::Server m_server;
};

/// Gives a gateway authority at the sandbox.
Ended Authorise(const std::string& practice, const HmrcSandbox& sandbox, const std::string& gateway = "gateway-1",
                const std::string& browser = "curl -sSL -o /dev/null");
/// A sample practice in which that has been done.
std::string AuthorisedPractice(const HmrcSandbox& sandbox);
/// The line that fetches the client's records of 2018 by gateway-1.
std::string FetchLine(const std::string& practice, const HmrcSandbox& sandbox, int client = 1);

} // namespace Test
