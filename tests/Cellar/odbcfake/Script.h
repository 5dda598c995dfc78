#pragma once

// What the scripted server answers.

#include <istream>
#include <optional>
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
    void Read(std::istream& lines);
    const std::string& GetDbms() const noexcept { return m_dbms; }
    /// Null when nothing is scripted for the text. Counts.
    const Answer* Find(std::string_view text);

private:
    void ReadLine(const std::string& word, const std::string& rest);

    std::string m_dbms = "Microsoft SQL Server";
    std::vector<Answer> m_answers;
};

} // namespace OdbcFake
