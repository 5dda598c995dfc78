#include "Cellar/drivers/sqlite/SqliteError.h"

#include <string>

#include "Cellar/DatabaseError.h"

namespace Cellar::Sqlite
{
namespace
{

using Category = DatabaseError::Category;

struct Meaning
{
    int code; // primary or extended
    Category category;
    const char* phrase;
};

/// Extended codes before the primary ones that they belong to.
constexpr Meaning kMeanings[] = {
    {SQLITE_CONSTRAINT_PRIMARYKEY, Category::DuplicateKey, "a row with this key is there already"},
    {SQLITE_CONSTRAINT_UNIQUE, Category::DuplicateKey, "a row with this key is there already"},
    {SQLITE_CONSTRAINT_ROWID, Category::DuplicateKey, "a row with this key is there already"},
    {SQLITE_CONSTRAINT, Category::Constraint, "the row breaks a rule of its table"},
    {SQLITE_BUSY, Category::Busy, "another program is writing to the database; try again"},
    {SQLITE_LOCKED, Category::Busy, "another statement holds the table; try again"},
    {SQLITE_FULL, Category::ReadOnly, "the disk is full; free some space and try again"},
    {SQLITE_IOERR_SHMSIZE, Category::ReadOnly, "there is no room for the files beside the database; free some space"},
    {SQLITE_READONLY, Category::ReadOnly, "the database can only be read; ask for the right to write to its folder"},
    {SQLITE_PERM, Category::ReadOnly, "there is no right to write to the database"},
    {SQLITE_IOERR, Category::Other, "the disk did not read or write the database; check the disk"},
    {SQLITE_CORRUPT, Category::Other, "the database file is damaged; go back to a copy of it"},
    {SQLITE_NOTADB, Category::CannotOpen, "the file is no database"},
    {SQLITE_CANTOPEN, Category::CannotOpen, "the database file, or one beside it, cannot be opened"},
};

const Meaning* Find(int code) noexcept
{
    for (const Meaning& meaning : kMeanings)
        if (meaning.code == code || meaning.code == (code & 0xFF))
            return &meaning;
    return nullptr;
}

} // namespace

void Throw(sqlite3* database, Doing doing)
{
    const int code = sqlite3_extended_errcode(database);
    const std::string detail = sqlite3_errmsg(database);
    if (const Meaning* const meaning = Find(code))
        throw DatabaseError(meaning->category, std::to_string(code), meaning->phrase + (": " + detail), "");
    const bool badStatement = doing == Doing::Preparing && (code & 0xFF) == SQLITE_ERROR;
    throw DatabaseError(badStatement ? Category::Syntax : Category::Other, std::to_string(code), detail, "");
}

} // namespace Cellar::Sqlite
