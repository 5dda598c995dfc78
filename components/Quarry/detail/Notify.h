#pragma once

// Telling listeners.

#include "Quarry/Listeners.h"

namespace Quarry::Detail
{

enum class DataEvent
{
    Insert,
    Delete,
    Update
};

/// Whether anybody listens, so that no row need be copied for nobody.
bool IsHeard(DataEvent event, const Table& table, Cellar::CConnection& connection);
/// Calls the listeners of the changed row's table.
void Notify(DataEvent event, const DataChange& change);

} // namespace Quarry::Detail
