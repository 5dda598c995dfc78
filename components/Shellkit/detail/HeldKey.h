#pragma once

// A key that this process holds.

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>
#include <span>

#include "Shellkit/cipher/CipherPort.h"
#include "Shellkit/detail/SecretKey.h"

namespace Shellkit::Detail
{

/// One key for any thread. It needs no destruction, so it may be a global.
class HeldKey
{
public:
    std::optional<SecretKey> Get()
    {
        const std::lock_guard lock(m_mutex);
        return m_isSet ? std::optional(SecretKey(m_bytes)) : std::nullopt;
    }
    /// The key that is held, or a random one from now on; nothing when the system gives no random bytes.
    std::optional<SecretKey> GetOrMake()
    {
        const std::lock_guard lock(m_mutex);
        if (!m_isSet)
            m_isSet = CipherPort::FillRandom(m_bytes);
        return m_isSet ? std::optional(SecretKey(m_bytes)) : std::nullopt;
    }
    bool IsSet() noexcept
    {
        const std::lock_guard lock(m_mutex);
        return m_isSet;
    }
    /// `key` has the length of a key, or is empty: then none is held.
    void Set(std::span<const std::uint8_t> key) noexcept
    {
        const std::lock_guard lock(m_mutex);
        CipherPort::Wipe(m_bytes);
        std::copy(key.begin(), key.end(), m_bytes.begin());
        m_isSet = !key.empty();
    }

private:
    std::mutex m_mutex;
    std::array<std::uint8_t, CipherPort::kKeySize> m_bytes{};
    bool m_isSet = false;
};

/// The practice's key.
HeldKey& PracticeKey() noexcept;

} // namespace Shellkit::Detail
