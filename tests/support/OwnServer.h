#pragma once

// A PostgreSQL server of one test's own, which it may end and start again.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "support/TestSupport.h"

namespace Test
{

class OwnServer
{
public:
    /// With the files of a certificate and its key it offers encrypted connections.
    explicit OwnServer(const std::string& certificate = {}, const std::string& key = {})
    {
        Do("start", std::to_string(getpid()) + " " + certificate + " " + key);
        setenv("ODBCSYSINI", TempDir().c_str(), 0);
    }
    ~OwnServer() { Do("stop"); }
    OwnServer(const OwnServer&) = delete;
    OwnServer& operator=(const OwnServer&) = delete;

    void Restart() const { Do("restart"); }
    /// The connection text of a database on it, of which "postgres" is there.
    static std::string Text(const std::string& database = "postgres") { return ReadFile(File()) + database; }

private:
    static std::string File() { return TempDir() + "/server"; }
    static void Do(const std::string& action, const std::string& more = {})
    {
        const std::string command = MORVUT_DB_SERVER " " + action + " " + File() + " " + more;
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
    }
};

} // namespace Test
