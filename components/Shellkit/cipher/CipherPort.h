#pragma once

// The port to the system's ciphers. Every function answers false when the system cannot do it; its output is then
// worthless and must not be used.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace Shellkit::CipherPort
{

inline constexpr std::size_t kKeySize = 32, kNonceSize = 12, kTagSize = 16, kDigestSize = 32; // bytes

using Input = std::span<const std::uint8_t>;
using Output = std::span<std::uint8_t>;

/// What one AES-256-GCM operation takes beside the text. A nonce is used once with a key.
struct GcmParameters
{
    std::span<const std::uint8_t, kKeySize> key;
    std::span<const std::uint8_t, kNonceSize> nonce;
    Input associated; // authenticated, not enciphered
};

/// Why there is no cipher at all: the module that holds them is missing or cannot be loaded; empty when it can.
std::string Problem();
/// Fills `out` with bytes that nobody can guess.
bool FillRandom(Output out) noexcept;
/// `text` has the length of `plain`.
bool GcmSeal(const GcmParameters& with, Input plain, Output text, std::span<std::uint8_t, kTagSize> tag) noexcept;
/// False too when key, nonce, associated data, text and tag do not belong together.
bool GcmOpen(const GcmParameters& with, Input text, std::span<const std::uint8_t, kTagSize> tag, Output plain) noexcept;
bool Sha256(Input data, std::span<std::uint8_t, kDigestSize> digest) noexcept;
/// PBKDF2-HMAC-SHA256; `rounds` from 1.
bool Pbkdf2(Input password, Input salt, unsigned rounds, Output key) noexcept;
/// Overwrites memory in a way that no optimiser removes.
void Wipe(Output data) noexcept;

} // namespace Shellkit::CipherPort
