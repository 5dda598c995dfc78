#pragma once

// What the scripted server answers.

#include <algorithm>
#include <istream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace OdbcFake
{

/// A result's column; the type as T-SQL names it, without lengths.
struct Column
{
    std::string name, type;
};
using Cell = std::optional<std::string>; // null, or as text: 2024-04-06 10:11:12.123, 12.3400, 0xAB

struct Message
{
    std::string state; // SQLSTATE
    int native = 0;
    std::string text;
};

/// The answer to the statements of one pattern.
struct Answer
{
    std::string pattern; // '*' is any text; CONNECT is that call
    long times = -1;     // so often, then the next answer's turn; -1: always
    std::optional<Message> error, info;
    bool isLater = false;         // the error: behind a first result, when the next one is asked for
    bool endsTransaction = false; // the error: the server rolls back
    bool hidesLength = false;     // of long values until their last piece
    long count = 1;
    std::vector<Column> columns; // none: a statement without result
    std::vector<std::vector<Cell>> rows;
};

/// One answer after another, the first that fits is taken:
///
///     dbms PostgreSQL             what the server calls itself; otherwise Microsoft SQL Server
///     on SELECT * FROM [Note]*    begins an answer
///     columns lID:int strText:nvarchar
///     row 1|text                  NULL is written null; | stands between cells
///     count 0
///     error 23000 2627 Violation of PRIMARY KEY constraint
///     info 01000 5701 Changed database context
///     times 2
///     later | ends | nototal      see isLater, endsTransaction, hidesLength
///
/// Throws std::runtime_error for a line that it cannot read.
class Script
{
public:
    void Read(std::istream& lines)
    {
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string word, rest;
            if (!(words >> word) || word.front() == '#')
                continue;
            words >> std::ws;
            std::getline(words, rest);
            ReadLine(word, rest);
        }
    }
    const std::string& GetDbms() const noexcept { return m_dbms; }
    /// Null when nothing is scripted for the text. Counts.
    const Answer* Find(std::string_view text)
    {
        const auto found = std::find_if(m_answers.begin(), m_answers.end(), [&](const Answer& each) {
            return each.times != 0 && Fits(each.pattern, text);
        });
        if (found == m_answers.end())
            return nullptr;
        found->times -= found->times > 0 ? 1 : 0;
        return &*found;
    }

private:
    void ReadLine(const std::string& word, const std::string& rest)
    {
        if (word == "dbms") {
            m_dbms = rest;
            return;
        }
        if (word == "on")
            m_answers.emplace_back();
        if (m_answers.empty())
            throw std::runtime_error("the script begins with no answer: " + word);
        Answer& answer = m_answers.back();
        if (word == "on")
            answer.pattern = rest;
        else if (word == "columns")
            answer.columns = ToColumns(rest);
        else if (word == "row")
            answer.rows.push_back(ToRow(rest));
        else if (word == "count")
            answer.count = std::stol(rest);
        else if (word == "error" || word == "info")
            (word == "error" ? answer.error : answer.info) = ToMessage(rest);
        else if (word == "later")
            answer.isLater = true;
        else if (word == "ends")
            answer.endsTransaction = true;
        else if (word == "nototal")
            answer.hidesLength = true;
        else if (word == "times")
            answer.times = std::stol(rest);
        else
            throw std::runtime_error("the script has an unknown line: " + word);
    }
    static Message ToMessage(const std::string& rest)
    {
        std::istringstream words(rest);
        Message message;
        words >> message.state >> message.native >> std::ws;
        std::getline(words, message.text);
        return message;
    }
    static std::vector<Column> ToColumns(const std::string& rest)
    {
        std::istringstream words(rest);
        std::vector<Column> columns;
        for (std::string word; words >> word;) {
            const std::size_t colon = word.find(':');
            columns.push_back(
                {word.substr(0, colon), colon == std::string::npos ? "nvarchar" : word.substr(colon + 1)});
        }
        return columns;
    }
    static std::vector<Cell> ToRow(const std::string& rest)
    {
        std::vector<Cell> row;
        std::istringstream cells(rest);
        for (std::string cell; std::getline(cells, cell, '|');)
            row.push_back(cell == "null" ? Cell() : Cell(cell));
        return row;
    }
    /// '*' in the pattern is any text.
    static bool Fits(std::string_view pattern, std::string_view text) noexcept
    {
        if (pattern.empty())
            return text.empty();
        if (pattern.front() != '*')
            return !text.empty() && pattern.front() == text.front() && Fits(pattern.substr(1), text.substr(1));
        for (std::size_t skipped = 0; skipped <= text.size(); ++skipped)
            if (Fits(pattern.substr(1), text.substr(skipped)))
                return true;
        return false;
    }

    std::string m_dbms = "Microsoft SQL Server";
    std::vector<Answer> m_answers;
};

} // namespace OdbcFake
