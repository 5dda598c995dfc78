#pragma once

// Notices of changed rows.

#include "Quarry/DataList.h"
#include "Quarry/Export.h"

namespace Quarry
{

/// A change of one row. An insert has no old row, a delete no new one.
struct DataChange
{
    const Row* oldRow;
    const Row* newRow;
    Cellar::CConnection* connection = nullptr; // on which the row was changed
};

/// Called on the thread that changed the data, at once. Listeners may be added and removed meanwhile.
using DataChangedListener = void (*)(const DataChange& change);

/// Adds `listener` for changes of the table with this number in `database`: "BRIX" is the practice of the current
/// connection, another name that of the connection that SetDatabase gave it to. One that is there already stays once.
QUARRY_API void AddDataChangedListenerForInsert(int table, const char* database, DataChangedListener listener);
QUARRY_API void AddDataChangedListenerForDelete(int table, const char* database, DataChangedListener listener);
QUARRY_API void AddDataChangedListenerForUpdate(int table, const char* database, DataChangedListener listener);
QUARRY_API void RemoveDataChangedListenerForInsert(int table, const char* database, DataChangedListener listener);
QUARRY_API void RemoveDataChangedListenerForDelete(int table, const char* database, DataChangedListener listener);
QUARRY_API void RemoveDataChangedListenerForUpdate(int table, const char* database, DataChangedListener listener);
/// Forgets all listeners (shut-down).
QUARRY_API void RemoveAllListeners() noexcept;

} // namespace Quarry
