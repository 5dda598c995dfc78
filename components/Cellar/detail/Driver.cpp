#include "Cellar/detail/Driver.h"

#include "Afx/text/TextFold.h"
#include "Cellar/ConnectionText.h"
#include "Cellar/DatabaseError.h"
#ifdef CELLAR_HAS_ODBC
#include "Cellar/drivers/odbc/OdbcModule.h"
#endif
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

template<class Functions>
Afx::ModuleFunctions<Functions> Load(const char* file, const char* entry)
{
    static const char own = 0;
    return Afx::LoadFunctionsBeside<Functions>(&own, file, entry);
}

// In static builds they are part of the library.
#ifdef MORVUT_MODULE_SQLITE
Afx::ModuleFunctions<Sqlite::SqliteFunctions> LoadSqlite()
{
    return Load<Sqlite::SqliteFunctions>(MORVUT_MODULE_SQLITE, "MorvUtSqlite");
}
#else
Afx::ModuleFunctions<Sqlite::SqliteFunctions> LoadSqlite() { return {MorvUtSqlite(), {}}; }
#endif

template<class Functions>
const Functions& Usable(const Afx::ModuleFunctions<Functions>& module, const char* what)
{
    if (!module.functions)
        throw DatabaseError(DatabaseError::Category::CannotOpen, "",
                            std::string("cannot open ") + what + ": " + module.problem +
                                "; install this program again, with all of its parts",
                            "");
    return *module.functions;
}

// Each is loaded when the first practice of its kind is opened: what needs no database starts without them.
OpenedDriver OpenEmbedded(const std::string& path, Create create)
{
    static const auto module = LoadSqlite();
    return Usable(module, "an embedded database").open(path, create);
}

#ifdef CELLAR_HAS_ODBC
#ifdef MORVUT_MODULE_ODBC
Afx::ModuleFunctions<Odbc::OdbcFunctions> LoadOdbc()
{
    return Load<Odbc::OdbcFunctions>(MORVUT_MODULE_ODBC, "MorvUtOdbc");
}
#else
Afx::ModuleFunctions<Odbc::OdbcFunctions> LoadOdbc() { return {MorvUtOdbc(), {}}; }
#endif

const Afx::ModuleFunctions<Odbc::OdbcFunctions>& TheOdbc()
{
    static const auto module = LoadOdbc();
    return module;
}

OpenedDriver OpenOnServer(std::string_view connectionText)
{
    return Usable(TheOdbc(), "a server's database").open(std::string(connectionText));
}

std::string WhyNoServer() { return TheOdbc().problem; }
std::vector<std::string> ServerDrivers()
{
    const auto& module = TheOdbc();
    return module.functions ? module.functions->installedDrivers() : std::vector<std::string>();
}
#else
std::string WhyNoServer() { return "this build has no server driver"; }
std::vector<std::string> ServerDrivers() { return {}; }

OpenedDriver OpenOnServer(std::string_view) // not repeated: it may hold a password
{
    throw DatabaseError(DatabaseError::Category::CannotOpen, "",
                        "cannot open the server's database: " + WhyNoServer() +
                            "; name a file instead, as in sqlite:practice.db, or build where the headers of ODBC are",
                        "");
}
#endif

} // namespace

OpenedDriver OpenDriver(std::string_view connectionText, Create create)
{
    if (ServerText::Is(connectionText))
        return OpenOnServer(connectionText);
    TakePrefix(connectionText, "sqlite:");
    return OpenEmbedded(std::string(connectionText), create);
}

} // namespace Cellar::Detail

std::string Cellar::ServerDriverProblem() { return Detail::WhyNoServer(); }
std::vector<std::string> Cellar::InstalledServerDrivers() { return Detail::ServerDrivers(); }
