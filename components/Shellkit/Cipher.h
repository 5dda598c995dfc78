#pragma once

// Enciphering of what rests in files and in the database, and of texts held in memory.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Shellkit/Export.h"

namespace Shellkit
{

using Bytes = std::vector<std::uint8_t>;

/// Which key an envelope was made with; part of the stored format.
enum class KeyId : std::uint8_t
{
    Application = 0, // built in, the same in every copy of the program: hides, does not protect
    Practice = 1     // see SetPracticeKey
};

inline constexpr std::size_t kKeySize = 32;                       // AES-256
inline constexpr std::size_t kEnvelopeOverhead = 1 + 1 + 12 + 16; // format, key id, nonce, tag

/// Enciphers `plain` (AES-256-GCM): format byte 1, key id, nonce of 12 bytes, text, tag of 16 bytes. Nothing when the
/// key is not set or the cipher is not there.
SHELLKIT_API std::optional<Bytes> Seal(KeyId key, std::span<const std::uint8_t> plain);
SHELLKIT_API std::optional<Bytes> Seal(KeyId key, std::string_view plain);
/// The plain text; nothing when the envelope is damaged, of another format, or its key is not the one set.
SHELLKIT_API std::optional<Bytes> Open(std::span<const std::uint8_t> envelope);
SHELLKIT_API std::optional<std::string> OpenText(std::span<const std::uint8_t> envelope);

/// Whether the bytes look like an envelope made with that key, before anything is opened.
SHELLKIT_API bool IsEnvelope(std::span<const std::uint8_t> bytes, KeyId key) noexcept;

/// Sets the practice's key (32 bytes) for this process; an empty span forgets it. False for another length.
SHELLKIT_API bool SetPracticeKey(std::span<const std::uint8_t> key);
SHELLKIT_API bool HasPracticeKey() noexcept;

enum class KeyReaders
{
    Owner, // mode 0600
    Group  // mode 0640; the group is the folder's where that is setgid
};
/// The practice's key file: 64 hexadecimal digits and a line end, readable by its owner only. Beside a file `practice`
/// that its group reads and writes, that group may read the key too.
/// Make refuses to overwrite; it throws as RandomBytes does. Read refuses a file that other users may read. Each false,
/// or nothing, when the file cannot be made, read or is no key.
SHELLKIT_API bool MakeKeyFile(const std::string& path, KeyReaders readers = KeyReaders::Owner);
SHELLKIT_API std::optional<Bytes> ReadKeyFile(const std::string& path, const std::string& practice = {});
/// Why ReadKeyFile gives nothing: one line for people with the path and how to mend it. Empty when the key can be read.
SHELLKIT_API std::string KeyFileProblem(const std::string& path, const std::string& practice = {});

/// `size` bytes that nobody can guess. Throws std::runtime_error when the system gives none.
SHELLKIT_API Bytes RandomBytes(std::size_t size);
/// Throws std::runtime_error when the cipher is not there; DeriveKey too.
SHELLKIT_API Bytes Sha256(std::string_view text);
/// PBKDF2-HMAC-SHA256. Throws std::invalid_argument for 0 rounds.
SHELLKIT_API Bytes DeriveKey(std::string_view password, std::span<const std::uint8_t> salt, unsigned rounds,
                             std::size_t size);
/// Base64 with the URL alphabet and no padding (RFC 4648 section 5).
SHELLKIT_API std::string Base64Url(std::span<const std::uint8_t> data);

/// Overwrites a secret before its memory is given back.
SHELLKIT_API void Wipe(void* data, std::size_t size) noexcept;

} // namespace Shellkit

/// Enciphers, and deciphers, a text held in memory in place with this process's own key; the length stays the same.
/// For memory only: the key goes with the process, equal texts look equal, and damage goes unseen. What is stored uses
/// Shellkit::Seal. Throws std::runtime_error, and the text is as it was, when there is no cipher.
SHELLKIT_API void Encrypt(unsigned char* buffer, unsigned length);
SHELLKIT_API void Decrypt(unsigned char* buffer, unsigned length);
