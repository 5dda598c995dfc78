#pragma once

// The keys that this process holds.

#include <optional>

#include "Shellkit/Cipher.h"
#include "Shellkit/detail/SecretKey.h"

namespace Shellkit::Detail
{

/// The key that envelopes with this id are made with; nothing when it is not set or the id is unknown.
std::optional<SecretKey> KeyOf(KeyId id);
/// The key for texts held in memory: random, made on first use, gone with the process. Nothing when the system gives
/// no random bytes.
std::optional<SecretKey> MemoryKey();

} // namespace Shellkit::Detail
