#pragma once

// One client's rows, written with nothing but the engine's own C interface.

#include <string>
#include <vector>

#include "Cellar/Value.h"

struct sqlite3;
struct sqlite3_stmt;

/// A row as the practice file holds it, but for its id.
struct RawRow
{
    std::size_t statement; // in RawRows::statements
    std::vector<Cellar::Value> values;
};

struct RawRows
{
    std::vector<std::string> statements;
    std::vector<RawRow> staging, schedules;
};

/// The rows of the open practice, which holds one client who has been fetched for and has schedules.
RawRows ReadRawRows();

/// Writes the rows as often as wanted, each time with new ids: staging in one transaction, schedules in another, as
/// ours. Every statement is prepared once. Throws std::runtime_error when the engine refuses.
class RawWriter
{
public:
    /// `path`: a practice that nobody has open.
    RawWriter(const std::string& path, const RawRows& rows);
    RawWriter(const RawWriter&) = delete;
    RawWriter& operator=(const RawWriter&) = delete;
    ~RawWriter();
    void WriteClient();

private:
    void Run(const char* text);
    void WriteAll(const std::vector<RawRow>& rows);
    void Write(const RawRow& row);

    sqlite3* m_database = nullptr;
    std::vector<sqlite3_stmt*> m_statements; // in the order of RawRows::statements
    const RawRows& m_rows;
    long m_lastId = 1'000'000;
};
