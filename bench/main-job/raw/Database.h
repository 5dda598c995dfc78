#pragma once

// The engine's own C interface, with every statement prepared once. Everything throws std::runtime_error when the
// engine refuses.

#include <cstdint>
#include <functional>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace Raw
{

/// Tables that rows are added to.
enum Table
{
    kTaxYears, // HMRC's
    kStagedEmployments,
    kStagedBenefits,
    kStagedPensions,
    kAllowances,
    kForms,
    kEmployments,
    kBenefits,
    kPensions,
    kTables
};

/// What is read of a client's year: all columns, in the order of their ordinals.
enum Reading
{
    kReadOptions,
    kReadTaxYears,
    kReadStagedEmployments,
    kReadStagedBenefits,
    kReadStagedPensions,
    kReadForms,
    kReadEmployments,
    kReadBenefits,
    kReadPensions,
    kReadings
};

struct Database
{
    static constexpr int kMostRows = 16; // that one statement adds

    sqlite3* connection = nullptr;
    sqlite3_stmt *begin = nullptr, *commit = nullptr, *readCount = nullptr;
    sqlite3_stmt* readings[kReadings] = {};
    struct
    {
        sqlite3_stmt *countUp = nullptr, *startCount = nullptr;
        sqlite3_stmt* insert[kMostRows + 1] = {}; // by the number of rows
        long nextId = 0;
        int idsLeft = 0; // of the transaction's block
    } tables[kTables];
    std::function<void(const char*)> sent;
};

/// `path`: a practice that nobody has open.
void Open(Database& database, const std::string& path);
void Close(Database& database);
/// Told of every statement, without values; null removes the hook.
void OnSent(Database& database, std::function<void(const char*)> hook);

void Begin(Database& database);
void Commit(Database& database);
/// An id of the transaction's block of 32.
long NewId(Database& database, Table table);

/// Ready for its rows, which are stepped through; binds the client and year where it asks for them.
sqlite3_stmt* Read(Database& database, Reading reading, long client, int year);
bool Next(Database& database, sqlite3_stmt* statement); // false at the end, where the statement is reset
/// Ready for the values of so many rows, one behind the other, in the order of the columns.
sqlite3_stmt* Insert(Database& database, Table table, int rows);
void Finish(Database& database, sqlite3_stmt* statement);

// Texts must live until the statement is finished. No amount is NULL, and so is an empty text, but where it is kept.
void BindText(sqlite3_stmt* statement, int place, const std::string& text);
void KeepText(sqlite3_stmt* statement, int place, const std::string& text);
void BindAmount(sqlite3_stmt* statement, int place, std::int64_t amount);
void BindNumber(sqlite3_stmt* statement, int place, std::int64_t number);
std::string TextAt(sqlite3_stmt* statement, int column);
std::int64_t AmountAt(sqlite3_stmt* statement, int column);
bool IsNullAt(sqlite3_stmt* statement, int column);
std::int64_t NumberAt(sqlite3_stmt* statement, int column);

} // namespace Raw
