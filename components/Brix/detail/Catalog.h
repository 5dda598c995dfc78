#pragma once

// What a database holds.

#include <map>
#include <set>
#include <string>

#include "Cellar/Connection.h"

namespace Brix::Detail
{

/// Tables and their columns, in lower case.
using Catalog = std::map<std::string, std::set<std::string>>;
Catalog ReadCatalog(Cellar::CConnection& connection);

} // namespace Brix::Detail
