#pragma once

// Enciphering of what rests in files and in the database.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Shellkit/Bytes.h"
#include "Shellkit/Export.h"

namespace Shellkit
{

/// Which key an envelope was made with; part of the stored format.
enum class KeyId : std::uint8_t
{
    Application = 0, // built in, the same in every copy of the program: hides, does not protect
    Practice = 1     // see SetPracticeKey
};

inline constexpr std::size_t kEnvelopeOverhead = 1 + 1 + 12 + 16; // format, key id, nonce, tag

/// Why there is no cipher: the module that holds them, which is loaded when the first is needed, is missing or cannot
/// be loaded; with its path. Empty when there is one. Seal and Open throw std::runtime_error with it otherwise.
SHELLKIT_API std::string CipherProblem();

/// Enciphers `plain` (AES-256-GCM): format byte 1, key id, nonce of 12 bytes, text, tag of 16 bytes. Nothing when the
/// key is not set or the system refuses.
SHELLKIT_API std::optional<Bytes> Seal(KeyId key, std::span<const std::uint8_t> plain);
SHELLKIT_API std::optional<Bytes> Seal(KeyId key, std::string_view plain);
/// The plain text; nothing when the envelope is damaged, of another format, or its key is not the one set.
SHELLKIT_API std::optional<Bytes> Open(std::span<const std::uint8_t> envelope);
SHELLKIT_API std::optional<std::string> OpenText(std::span<const std::uint8_t> envelope);

/// The same for envelopes of KeyId::Practice, with another practice's key (32 bytes) than the one set: for who has two
/// practices open at once. Nothing for a key of another length.
SHELLKIT_API std::optional<Bytes> SealWith(std::span<const std::uint8_t> practiceKey,
                                           std::span<const std::uint8_t> plain);
SHELLKIT_API std::optional<Bytes> OpenWith(std::span<const std::uint8_t> practiceKey,
                                           std::span<const std::uint8_t> envelope);

/// Whether the bytes look like an envelope made with that key, before anything is opened.
SHELLKIT_API bool IsEnvelope(std::span<const std::uint8_t> bytes, KeyId key) noexcept;

} // namespace Shellkit
