#pragma once

// Seeded inputs, and the digest of what the functions make of them; both the same on every target.

#include <bit>
#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"

namespace Compare
{

/// Inputs in a sequence of its own. The order of a call's arguments is the compiler's choice: take each input into a
/// variable first.
class Inputs
{
public:
    explicit Inputs(std::uint64_t seed) noexcept : m_state(seed) {}

    std::uint64_t Bits() noexcept // splitmix64
    {
        std::uint64_t z = m_state += 0x9E3779B97F4A7C15u;
        z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9u;
        z = (z ^ z >> 27) * 0x94D049BB133111EBu;
        return z ^ z >> 31;
    }
    /// Both bounds included.
    int Int(int first, int last) noexcept
    {
        const auto count = static_cast<std::uint64_t>(std::int64_t{last} - first + 1);
        return static_cast<int>(first + static_cast<std::int64_t>(Bits() % count));
    }
    bool OneIn(int n) noexcept { return Int(1, n) == 1; }
    short Year() noexcept { return static_cast<short>(OneIn(20) ? Int(-32768, 32767) : Int(1985, 2030)); }
    /// Of every size, some of them at the ends of what 64 bits hold.
    std::int64_t Pence() noexcept
    {
        const auto bits = static_cast<std::int64_t>(Bits());
        return OneIn(50) ? bits : bits >> Int(20, 60);
    }
    /// Per cent: mostly what rates look like, some of any bits (NaN and infinity among them).
    double Rate() noexcept
    {
        if (OneIn(50))
            return std::bit_cast<double>(Bits());
        return OneIn(3) ? Int(0, 100) : Int(-1'000, 11'000) / 100.0;
    }
    Kiln::CAmt Amount() noexcept
    {
        if (OneIn(30))
            return OneIn(2) ? Kiln::CAmt() : Kiln::CAmt::Invalid();
        const std::int64_t value = Pence();
        return OneIn(4) ? Kiln::CAmt(value) : Kiln::CAmt::FromPence(value);
    }
    Kiln::CDate Date() noexcept
    {
        if (OneIn(30))
            return OneIn(2) ? Kiln::CDate() : Kiln::CDate::Invalid();
        const int day = OneIn(20) ? Int(-660'000, 2'970'000) : Int(20'000, 50'000);
        return Kiln::CDate::FromOleDate(OneIn(10) ? day + Int(0, 86'399) / 86'400.0 : day);
    }
    std::string Text(std::string_view alphabet, int longest)
    {
        std::string text(static_cast<std::size_t>(Int(0, longest)), ' ');
        for (char& c : text)
            c = alphabet[static_cast<std::size_t>(Int(0, static_cast<int>(alphabet.size()) - 1))];
        return text;
    }
    /// `good` with, often, one character replaced or left out.
    std::string Spoilt(std::string good, std::string_view alphabet)
    {
        if (good.empty() || OneIn(2))
            return good;
        const auto at = static_cast<std::size_t>(Int(0, static_cast<int>(good.size()) - 1));
        return good.replace(at, 1, Text(alphabet, 1));
    }
    std::string AmountText()
    {
        constexpr std::string_view alphabet = "0123456789.,-+() A";
        if (OneIn(3))
            return Text(alphabet, 14);
        return Spoilt(Kiln::CAmt(Pence()).Format().Str(), alphabet);
    }
    std::string DateText()
    {
        static constexpr std::string_view kSeparators[] = {"/", "-", ".", " ", ""};
        const std::string_view separator = kSeparators[Int(0, 4)];
        std::string text = std::to_string(Int(1, 32));
        const int month = Int(1, 13), year = OneIn(2) ? Int(0, 99) : Int(1890, 2110);
        for (const int part : {month, year})
            text.append(separator).append(part < 10 ? "0" : "").append(std::to_string(part));
        return Spoilt(text, "0123456789/-. aJn");
    }

private:
    std::uint64_t m_state;
};

/// FNV-1a over everything added.
class Digest
{
public:
    /// Any integer, by value: its width differs between targets.
    template<std::integral T>
    void Add(T value) noexcept
    {
        const auto bits = static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
        for (int shift = 0; shift < 64; shift += 8)
            Byte(static_cast<std::uint8_t>(bits >> shift));
    }
    void Add(double value) noexcept { Add(value != value ? std::uint64_t{1} : std::bit_cast<std::uint64_t>(value)); }
    void Add(std::string_view text) noexcept
    {
        Add(text.size());
        for (const char c : text)
            Byte(static_cast<std::uint8_t>(c));
    }
    void Add(const CString& text) noexcept { Add(text.View()); }
    void Add(const Kiln::CAmt& amount) noexcept
    {
        Add(static_cast<int>(amount.GetStatus()));
        Add(amount.GetValue());
    }
    void Add(const Kiln::CDate& date) noexcept
    {
        Add(static_cast<int>(date.GetStatus()));
        Add(date.GetOleDate());
    }
    std::uint64_t Value() const noexcept { return m_value; }

private:
    void Byte(std::uint8_t byte) noexcept { m_value = (m_value ^ byte) * 0x100000001B3u; }

    std::uint64_t m_value = 0xCBF29CE484222325u;
};

} // namespace Compare
