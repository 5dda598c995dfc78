#pragma once

// One session of the scripted server: its rules, its transaction, its record.

#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Script.h"

namespace OdbcFake
{

/// A value as it is bound: what a server looks at.
struct Parameter
{
    int sqlType = 0;    // SQL_WVARCHAR ...
    std::string column; // the one it goes into or is compared with, as far as the statement shows
    bool isCompared = false;
};

/// What a connection text names: `Script` and `Record` (files), `Uid`, `MARS_Connection`; keys ignore case.
std::map<std::string, std::string> ReadConnectionText(std::string_view text);
/// The text as it may be written down.
std::string WithoutPasswords(std::string_view text);
/// What each '?' of the statement is for; without its type.
std::vector<Parameter> ParametersOf(std::string_view statement);

/// What was written since BEGIN, savepoints within it, and what happened in the end. The record holds DURABLE or UNDONE
/// with each statement that writes.
class Session
{
public:
    /// Throws std::runtime_error when a file of the connection text cannot be read.
    explicit Session(const std::map<std::string, std::string>& connection);

    bool IsSqlServer() const noexcept { return m_script.GetDbms() == "Microsoft SQL Server"; }
    const std::string& GetDbms() const noexcept { return m_script.GetDbms(); }
    bool IsLost() const noexcept { return m_isLost; }
    bool IsInTransaction() const noexcept { return m_isOpen; }
    /// Several results may be read at once.
    bool HasSeveralResults() const noexcept { return m_hasSeveralResults; }
    void SetAutocommit(bool on);

    /// Answers a statement, several with semicolons between up to the first that fails (the last one's answer), or one
    /// of CONNECT, COMMIT and ROLLBACK.
    Answer Run(std::string_view statement, const std::vector<Parameter>& parameters);
    void Record(std::string_view line);

private:
    Answer RunOne(std::string_view statement, const std::vector<Parameter>& parameters);
    Answer Refuse(Message message, bool endsTransaction = false);
    /// What no script needs to say: how the server refuses it.
    std::optional<Message> Refusal(std::string_view statement, const std::vector<Parameter>& parameters) const;
    Answer Control(std::string_view statement); // of transactions
    Answer Default(std::string_view statement) const;
    void Settle(const char* how, std::size_t from); // what was written from there on
    void End(const char* how);                      // the transaction

    Script m_script;
    std::ofstream m_record;
    bool m_isLost = false, m_hasSeveralResults = false;
    bool m_isAutocommit = true, m_isOpen = false, m_hasFailed = false; // PostgreSQL refuses everything then
    bool m_endsOnError = false;                                        // SET XACT_ABORT ON
    std::vector<std::string> m_written;
    std::vector<std::pair<std::string, std::size_t>> m_savepoints; // where in m_written
};

} // namespace OdbcFake
