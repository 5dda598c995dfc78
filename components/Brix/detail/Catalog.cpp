#include "Brix/detail/Catalog.h"

#include "Afx/text/TextFold.h"

namespace Brix::Detail
{

Catalog ReadCatalog(Cellar::CConnection& connection)
{
    Catalog catalog;
    for (const auto& row : connection.Query(connection.GetDialect().TableColumns(), {}).rows)
        catalog[Afx::FoldLower(Cellar::ToText(row[0]).View())].insert(Afx::FoldLower(Cellar::ToText(row[1]).View()));
    return catalog;
}

} // namespace Brix::Detail
