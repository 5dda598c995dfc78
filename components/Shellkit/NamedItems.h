#pragma once

// Objects that belong to the process: one per key, shared by every module in it.

#include <atomic>

#include "Shellkit/Export.h"

/// The item `key`, made by `creator` on first use; the key is copied, null is the empty key. A creator may ask for
/// other items; asking for its own gives null, and what it throws goes to the caller. A null item is not kept. Without
/// a creator: the item or null. `destroyer`, if any, ends the item in DeleteGlobalItem and in Shellkit::Shutdown, never
/// in static destruction. Threads that ask while an item is being made wait for it.
SHELLKIT_API void* GetGlobalDataItem(const char* key, void* (*creator)(), void (*destroyer)(void*));
/// The item is there; never makes it.
SHELLKIT_API bool GlobalItemExists(const char* key);
/// Ends the item; false when there is none. The item is out of the store before its destroyer runs.
SHELLKIT_API bool DeleteGlobalItem(const char* key);

namespace Shellkit
{

/// Ends all named items, the youngest first, and those that destroyers make meanwhile (1,000 at most, so that two that
/// revive each other come to an end). An item that a creator asked for is older than the creator's.
SHELLKIT_API void Shutdown();

/// Where the store keeps the item `key`: null before the item is made and after it has left. Makes no item. Stays
/// there for as long as the process lives, so that who asks often need not look the key up.
SHELLKIT_API const std::atomic<void*>& GlobalItemPlace(const char* key);

/// A flag that every module of the process sees (a named item): the read-only PIN.
SHELLKIT_API bool GetSharedFlag(const char* key);
SHELLKIT_API void SetSharedFlag(const char* key, bool on);

} // namespace Shellkit
