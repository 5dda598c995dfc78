#include "Quarry/Listeners.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Quarry/detail/Companion.h"
#include "Quarry/detail/Notify.h"

namespace Quarry
{
namespace
{

struct Listener
{
    Detail::DataEvent event;
    std::string database;
    DataChangedListener function;
    friend bool operator==(const Listener&, const Listener&) = default;
};

/// By table.
std::map<int, std::vector<Listener>>& Listeners()
{
    static auto& listeners = *new std::map<int, std::vector<Listener>>;
    return listeners;
}

bool IsThere(int table, const Listener& listener)
{
    const auto found = Listeners().find(table);
    return found != Listeners().end() &&
           std::find(found->second.begin(), found->second.end(), listener) != found->second.end();
}

void Add(int table, Detail::DataEvent event, const char* database, DataChangedListener function)
{
    Listener listener{event, database, function};
    if (!IsThere(table, listener))
        Listeners()[table].push_back(std::move(listener));
}

void Remove(int table, Detail::DataEvent event, const char* database, DataChangedListener function)
{
    std::erase(Listeners()[table], Listener{event, database, function});
}

/// Those whom a change concerns.
std::vector<Listener> Concerned(Detail::DataEvent event, const Table& table, Cellar::CConnection& connection)
{
    std::vector<Listener> concerned;
    const auto found = Listeners().find(table.number);
    const char* const database = Detail::DatabaseOf(connection, table);
    if (found == Listeners().end() || !database)
        return concerned;
    std::copy_if(found->second.begin(), found->second.end(), std::back_inserter(concerned),
                 [&](const Listener& listener) { return listener.event == event && listener.database == database; });
    return concerned;
}

} // namespace

bool Detail::IsHeard(DataEvent event, const Table& table, Cellar::CConnection& connection)
{
    return !Concerned(event, table, connection).empty();
}

void Detail::Notify(DataEvent event, const DataChange& change)
{
    const Table& table = (change.newRow ? change.newRow : change.oldRow)->GetTable();
    for (const Listener& listener : Concerned(event, table, *change.connection)) {
        if (IsThere(table.number, listener)) // one that was called before may have removed it
            listener.function(change);
    }
}

void AddDataChangedListenerForInsert(int table, const char* database, DataChangedListener listener)
{
    Add(table, Detail::DataEvent::Insert, database, listener);
}

void AddDataChangedListenerForDelete(int table, const char* database, DataChangedListener listener)
{
    Add(table, Detail::DataEvent::Delete, database, listener);
}

void AddDataChangedListenerForUpdate(int table, const char* database, DataChangedListener listener)
{
    Add(table, Detail::DataEvent::Update, database, listener);
}

void RemoveDataChangedListenerForInsert(int table, const char* database, DataChangedListener listener)
{
    Remove(table, Detail::DataEvent::Insert, database, listener);
}

void RemoveDataChangedListenerForDelete(int table, const char* database, DataChangedListener listener)
{
    Remove(table, Detail::DataEvent::Delete, database, listener);
}

void RemoveDataChangedListenerForUpdate(int table, const char* database, DataChangedListener listener)
{
    Remove(table, Detail::DataEvent::Update, database, listener);
}

void RemoveAllListeners() noexcept { Listeners().clear(); }

} // namespace Quarry
