#pragma once

// The text of an amount in pence, without memory of its own.

#include <cstdint>
#include <string_view>

namespace Detail
{

/// What stands in front of the digits.
enum class PenceMark : char
{
    None = '\0',
    Minus = '-',
    Calculated = 'A'
};

class PenceText
{
public:
    /// Pounds, with thousands separators while they are switched on, a point, two digits of pence. 0 is 0.00.
    PenceText(std::uint64_t pence, PenceMark mark) noexcept;
    std::string_view View() const noexcept { return {m_first, static_cast<std::size_t>(m_buffer + kSize - m_first)}; }

private:
    static constexpr int kSize = 32; // "A184,467,440,737,095,516.15" has 27
    char m_buffer[kSize];            // filled from its end
    char* m_first;
};

/// The magnitude of any 64-bit number, the smallest included.
constexpr std::uint64_t Magnitude(std::int64_t value) noexcept
{
    return value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
}

} // namespace Detail
