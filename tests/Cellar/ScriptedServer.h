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
    /// Takes the place of the one before.
    explicit ScriptedServer(const std::string& script = {})
    {
        ::Test::WriteFile("script", script);
        for (const std::string& old : {Library(), ::Test::TempDir() + "/record"})
            std::filesystem::remove(old);
        std::filesystem::create_symlink(CELLAR_ODBC_FAKE, Library()); // by whose name it is known for SQL Server
    }

    std::unique_ptr<CConnection> Open() const
    {
        const std::string folder = ::Test::TempDir();
        return CConnection::Open(("odbc:Driver=" + Library() + ";Script=" + folder + "/script;Record=" + folder +
                                  "/record;UID=alice;PWD={pass;w}}rd-17}")
                                     .c_str());
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
