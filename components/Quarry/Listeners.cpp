#include "Quarry/Listeners.h"

#include <algorithm>
#include <string>

#include "Quarry/detail/Notify.h"

namespace Quarry
{
namespace
{

struct Listener
{
    int table;
    Detail::DataEvent event;
    std::string database;
    DataChangedListener function;
    friend bool operator==(const Listener&, const Listener&) = default;
};

std::vector<Listener>& Listeners()
{
    static auto& listeners = *new std::vector<Listener>;
    return listeners;
}

bool IsThere(const Listener& listener)
{
    return std::find(Listeners().begin(), Listeners().end(), listener) != Listeners().end();
}

void Add(int table, Detail::DataEvent event, const char* database, DataChangedListener function)
{
    Listener listener{table, event, database, function};
    if (!IsThere(listener))
        Listeners().push_back(std::move(listener));
}

void Remove(int table, Detail::DataEvent event, const char* database, DataChangedListener function)
{
    std::erase(Listeners(), Listener{table, event, database, function});
}

} // namespace

void Detail::Notify(DataEvent event, const DataChange& change)
{
    const Table& table = (change.newRow ? change.newRow : change.oldRow)->GetTable();
    std::vector<Listener> concerned;
    for (const Listener& listener : Listeners()) {
        if (listener.table == table.number && listener.event == event && listener.database == table.database)
            concerned.push_back(listener);
    }
    for (const Listener& listener : concerned) {
        if (IsThere(listener)) // one that was called before may have removed it
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
