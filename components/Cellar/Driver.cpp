#include "Cellar/Driver.h"

#include "Afx/text/TextFold.h"
#include "Cellar/DatabaseError.h"
#include "Cellar/drivers/sqlite/SqliteDriver.h"

namespace Cellar
{

Driver::~Driver() = default;

void Driver::SetSavepoint(int level) { Execute("SAVEPOINT level" + std::to_string(level), {}); }
void Driver::ReleaseSavepoint(int level) { Execute("RELEASE SAVEPOINT level" + std::to_string(level), {}); }
void Driver::RollbackToSavepoint(int level)
{
    Execute("ROLLBACK TO SAVEPOINT level" + std::to_string(level), {});
    ReleaseSavepoint(level);
}

namespace
{

/// Drops `prefix` from the start of `text`, in any case.
bool TakePrefix(std::string_view& text, std::string_view prefix) noexcept
{
    if (!Afx::EqualNoCase(text.substr(0, prefix.size()), prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

} // namespace

OpenedDriver OpenDriver(std::string_view connectionText, Create create)
{
    if (TakePrefix(connectionText, "odbc:")) // not repeated: it may hold a password
        throw DatabaseError(DatabaseError::Category::CannotOpen, "",
                            "cannot open the server's database: this build has no server driver; name a file instead, "
                            "as in sqlite:practice.db",
                            "");
    TakePrefix(connectionText, "sqlite:");
    return Sqlite::Open(std::string(connectionText), create);
}

} // namespace Cellar
