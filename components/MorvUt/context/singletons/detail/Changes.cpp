#include "MorvUt/context/singletons/detail/Changes.h"

#include <algorithm>
#include <vector>

namespace Context::Detail
{
namespace
{

constexpr char kDatabase[] = "BRIX";

using Register = void (*)(int table, const char* database, Quarry::DataChangedListener listener);

struct EventRow
{
    Event event;
    Register add;
    Register remove;
};

constexpr EventRow kEvents[] = {
    {Event::Insert, &Quarry::AddDataChangedListenerForInsert, &Quarry::RemoveDataChangedListenerForInsert},
    {Event::Delete, &Quarry::AddDataChangedListenerForDelete, &Quarry::RemoveDataChangedListenerForDelete},
    {Event::Update, &Quarry::AddDataChangedListenerForUpdate, &Quarry::RemoveDataChangedListenerForUpdate},
};

const EventRow& RowOf(Event event) noexcept
{
    return *std::find_if(std::begin(kEvents), std::end(kEvents), [&](const EventRow& r) { return r.event == event; });
}

std::vector<Callback>& Callbacks()
{
    static auto& callbacks = *new std::vector<Callback>; // never destroyed: singletons end at any time
    return callbacks;
}

bool IsThere(const Callback& callback)
{
    return std::find(Callbacks().begin(), Callbacks().end(), callback) != Callbacks().end();
}

auto Concerns(int table, Event event)
{
    return [=](const Callback& callback) { return callback.table == table && callback.event == event; };
}

/// What Quarry calls, for all tables and events.
void Dispatch(const Quarry::DataChange& change)
{
    const Event event = !change.oldRow ? Event::Insert : !change.newRow ? Event::Delete : Event::Update;
    const int table = (change.newRow ? change.newRow : change.oldRow)->GetTable().number;
    std::vector<Callback> concerned; // a copy: callbacks add and remove
    std::copy_if(Callbacks().begin(), Callbacks().end(), std::back_inserter(concerned), Concerns(table, event));
    for (const Callback& callback : concerned)
        if (IsThere(callback))
            callback.function(change);
}

} // namespace

void AddCallbacks(std::span<const Callback> callbacks)
{
    for (const Callback& callback : callbacks) {
        if (!IsThere(callback))
            Callbacks().push_back(callback);
        // Again for each: Quarry keeps one, and may have been told to forget all.
        RowOf(callback.event).add(callback.table, kDatabase, &Dispatch);
    }
}

void RemoveCallbacks(std::span<const Callback> callbacks)
{
    for (const Callback& callback : callbacks) {
        std::erase(Callbacks(), callback);
        if (std::none_of(Callbacks().begin(), Callbacks().end(), Concerns(callback.table, callback.event)))
            RowOf(callback.event).remove(callback.table, kDatabase, &Dispatch);
    }
}

} // namespace Context::Detail
