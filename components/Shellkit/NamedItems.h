#pragma once

// Objects that belong to the process: one per key, shared by every module in it.

#include "Shellkit/Export.h"

/// The item `key`, made by `creator` on first use; the key is copied. A creator may ask for other items. `destroyer`
/// ends the item in DeleteGlobalItem and in Shellkit::Shutdown, never in static destruction.
SHELLKIT_API void* GetGlobalDataItem(const char* key, void* (*creator)(), void (*destroyer)(void*));
/// The item is there; never makes it.
SHELLKIT_API bool GlobalItemExists(const char* key);
/// Ends the item; false when there is none. The item is out of the store before its destroyer runs.
SHELLKIT_API bool DeleteGlobalItem(const char* key);

namespace Shellkit
{

/// Ends all named items, the youngest first.
SHELLKIT_API void Shutdown();

/// A flag that every module of the process sees (a named item): the read-only PIN.
SHELLKIT_API bool GetSharedFlag(const char* key);
SHELLKIT_API void SetSharedFlag(const char* key, bool on);

} // namespace Shellkit
