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

/// Calls the listeners of the changed row's table.
void Notify(DataEvent event, const DataChange& change);

} // namespace Quarry::Detail
