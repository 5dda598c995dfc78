#include "Cellar/detail/Driver.h"

#include "Afx/text/TextFold.h"
#include "Cellar/DatabaseError.h"
#include "Cellar/drivers/sqlite/SqliteModule.h"

namespace Cellar::Detail
{

CompiledStatement::~CompiledStatement() = default;
Driver::~Driver() = default;

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

using SqliteModule = Afx::ModuleFunctions<Sqlite::SqliteFunctions>;

#ifdef MORVUT_MODULE
SqliteModule LoadSqlite()
{
    static const char own = 0;
    return Afx::LoadFunctionsBeside<Sqlite::SqliteFunctions>(&own, MORVUT_MODULE, "MorvUtSqlite");
}
#else
SqliteModule LoadSqlite() { return {MorvUtSqlite(), {}}; }
#endif

/// Loaded when the first practice is opened: what needs no database starts without it.
const Sqlite::SqliteFunctions& TheSqlite()
{
    static const SqliteModule module = LoadSqlite();
    if (!module.functions)
        throw DatabaseError(DatabaseError::Category::CannotOpen, "",
                            "cannot open an embedded database: " + module.problem +
                                "; install this program again, with all of its parts",
                            "");
    return *module.functions;
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
    return TheSqlite().open(std::string(connectionText), create);
}

} // namespace Cellar::Detail
