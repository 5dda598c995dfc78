#include "Brix/detail/Catalog.h"

#include "Afx/text/TextFold.h"

namespace Brix::Detail
{
namespace
{

constexpr Cellar::SqlText kSqliteColumns =
    "SELECT m.name, c.name FROM sqlite_master m, pragma_table_info(m.name) c WHERE m.type = 'table'";
constexpr Cellar::SqlText kServerColumns = "SELECT TABLE_NAME, COLUMN_NAME FROM INFORMATION_SCHEMA.COLUMNS "
                                           "WHERE TABLE_SCHEMA NOT IN ('pg_catalog', 'information_schema', 'sys')";

} // namespace

Catalog ReadCatalog(Cellar::CConnection& connection)
{
    const bool isSqlite = &connection.GetDialect() == &Cellar::SqliteDialect();
    Catalog catalog;
    for (const auto& row : connection.Query(isSqlite ? kSqliteColumns : kServerColumns, {}).rows)
        catalog[Afx::FoldLower(Cellar::ToText(row[0]).View())].insert(Afx::FoldLower(Cellar::ToText(row[1]).View()));
    return catalog;
}

} // namespace Brix::Detail
