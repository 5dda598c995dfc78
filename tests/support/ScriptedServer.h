#pragma once

// A server that answers by a script, behind the driver manager; see Cellar/odbcfake.

#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "Cellar/Connection.h"
#include "support/Test.h"

namespace Test
{

class ScriptedServer
{
public:
    /// Takes the place of the one before.
    explicit ScriptedServer(const std::string& script = {})
    {
        WriteFile("script", script);
        for (const std::string& old : {Library(), TempDir() + "/record"})
            std::filesystem::remove(old);
        std::filesystem::create_symlink(CELLAR_ODBC_FAKE, Library()); // by whose name it is known for SQL Server
    }

    /// Its connection text, without user and password.
    static std::string Text()
    {
        return "odbc:Driver=" + Library() + ";Script=" + TempDir() + "/script;Record=" + TempDir() + "/record";
    }
    std::unique_ptr<Cellar::CConnection> Open() const
    {
        return Cellar::CConnection::Open((Text() + ";UID=alice;PWD={pass;w}}rd-17}").c_str());
    }

    /// All calls so far, one a line.
    static std::string Record() { return ReadFile(TempDir() + "/record"); }
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
    static std::string Library() { return TempDir() + "/ODBC Driver for SQL Server.so"; }
};

} // namespace Test
