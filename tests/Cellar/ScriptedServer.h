#pragma once

// A server that answers by a script, behind the driver manager; see odbcfake.

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "CellarTestSupport.h"

class ScriptedServer
{
public:
    /// The password of every connection to it, which must be seen nowhere.
    static constexpr char kPassword[] = "pass;w}rd-17";

    explicit ScriptedServer(const std::string& script = {})
    {
        ::Test::WriteFile("script", script);
        std::filesystem::create_symlink(CELLAR_ODBC_FAKE, Library()); // by whose name it is known for SQL Server
    }

    /// What follows `more` goes to the driver too.
    std::string Text(const std::string& more = {}) const
    {
        const std::string folder = ::Test::TempDir();
        return "odbc:Driver=" + Library() + ";Script=" + folder + "/script;Record=" + folder + "/record;UID=alice;" +
               more + "PWD={pass;w}}rd-17}";
    }
    std::unique_ptr<CConnection> Open(const std::string& more = {}) const
    {
        return CConnection::Open(Text(more).c_str());
    }

    /// All calls so far, one a line.
    static std::string Record() { return ::Test::ReadFile(::Test::TempDir() + "/record"); }
    /// The lines of the record that begin so, without that beginning.
    static std::vector<std::string> Lines(const std::string& beginning)
    {
        std::istringstream record(Record());
        std::vector<std::string> lines;
        for (std::string line; std::getline(record, line);)
            if (line.starts_with(beginning))
                lines.push_back(line.substr(beginning.size()));
        return lines;
    }

private:
    static std::string Library() { return ::Test::TempDir() + "/ODBC Driver for SQL Server.so"; }
};
