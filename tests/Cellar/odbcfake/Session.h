#pragma once

// One session of the scripted server: its rules, its transaction, its record.

#include <fstream>
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
};

/// What each '?' of the statement is for; without its type.
std::vector<Parameter> ParametersOf(std::string_view statement);

/// What was written since BEGIN, savepoints within it, and what happened in the end. The record holds DURABLE or UNDONE
/// with each statement that writes.
class Session
{
public:
    /// Of the text it takes `Script=` and `Record=`, files. Throws std::runtime_error when there is no script.
    explicit Session(std::string_view connectionText);

    bool IsSqlServer() const noexcept { return m_script.GetDbms() == "Microsoft SQL Server"; }
    const std::string& GetDbms() const noexcept { return m_script.GetDbms(); }

    /// Answers a statement, several with semicolons between up to the first that fails (the last one's answer), or
    /// CONNECT.
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
    bool m_isLost = false, m_isOpen = false; // the transaction
    bool m_hasFailed = false;                // PostgreSQL refuses everything then
    std::vector<std::string> m_written;
    std::vector<std::pair<std::string, std::size_t>> m_savepoints; // where in m_written
};

} // namespace OdbcFake
