#pragma once

// A key on the stack, overwritten when it goes.

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

#include "Shellkit/cipher/CipherPort.h"

namespace Shellkit::Detail
{

class SecretKey
{
public:
    SecretKey() = default;
    explicit SecretKey(std::span<const std::uint8_t, CipherPort::kKeySize> bytes) noexcept
    {
        std::copy(bytes.begin(), bytes.end(), m_bytes.begin());
    }
    SecretKey(const SecretKey&) = default;
    SecretKey& operator=(const SecretKey&) = default;
    ~SecretKey() { CipherPort::Wipe(m_bytes); }

    std::span<std::uint8_t, CipherPort::kKeySize> Bytes() noexcept { return m_bytes; }
    std::span<const std::uint8_t, CipherPort::kKeySize> Bytes() const noexcept { return m_bytes; }

private:
    std::array<std::uint8_t, CipherPort::kKeySize> m_bytes{};
};

} // namespace Shellkit::Detail
