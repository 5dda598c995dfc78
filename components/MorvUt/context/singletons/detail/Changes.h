#pragma once

// Callbacks on changed rows of the practice: a list for each table and event.

#include <span>

#include "Quarry/Listeners.h"

namespace Context::Detail
{

enum class Event
{
    Insert,
    Delete,
    Update
};

struct Callback
{
    int table;
    Event event;
    Quarry::DataChangedListener function;
    friend bool operator==(const Callback&, const Callback&) = default;
};

/// Those that are there already stay once. Adding and removing is allowed in a callback: who was removed meanwhile is
/// not called any more, who was added is called from the next change on.
void AddCallbacks(std::span<const Callback> callbacks);
void RemoveCallbacks(std::span<const Callback> callbacks);

} // namespace Context::Detail
