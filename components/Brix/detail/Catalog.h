#pragma once

// What a database holds.

#include <map>
#include <set>
#include <string>

#include "Cellar/Connection.h"

namespace Brix
{

/// Tables and their columns, in lower case.
using Catalog = std::map<std::string, std::set<std::string>>;
Catalog ReadCatalog(Cellar::CConnection& connection);

/// A level on any connection: rolled back at the end of the scope unless committed.
class Level
{
public:
    explicit Level(Cellar::CConnection& connection) : m_connection(connection) { m_connection.Begin(); }
    ~Level();
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    void Commit();

private:
    Cellar::CConnection& m_connection;
    bool m_open = true;
};

} // namespace Brix
