#pragma once

// The values that the rules are timed on: as practices have them, the same in every run.

#include <cstdint>
#include <string>
#include <vector>

#include "Afx/Platform.h"
#include "Kiln/CDate.h"
#include "MorvUt/taxyear/DateStrings.h"

namespace Rules
{

inline constexpr std::size_t kCount = 1024;

/// Numbers that look random.
class Numbers
{
public:
    explicit Numbers(std::uint64_t seed) noexcept : m_state(seed) {}
    /// 0 to `count` - 1.
    unsigned Below(unsigned count) noexcept
    {
        m_state = m_state * 6364136223846793005u + 1442695040888963407u;
        return static_cast<unsigned>((m_state >> 33) % count);
    }

private:
    std::uint64_t m_state;
};

/// Pence: mostly hundreds to tens of thousands of pounds, some millions, some negative, none 0.
std::vector<__int64> Amounts();
/// The same as a ledger prints them, without commas, and every seventh in whole pounds.
std::vector<std::string> AmountTexts();
/// Amounts as users type them: some with commas, with one decimal or with three.
std::vector<std::string> PoundTexts();

/// Days of 1980 to 2029.
std::vector<X_DateStr_tag> Records();
std::vector<Kiln::CDate> Dates();
std::vector<std::string> DateTexts(); // dd/mm/yyyy

/// National Insurance numbers and UTRs; every eighth is mistyped.
std::vector<std::string> NINumbers();
std::vector<std::string> UTRs();

} // namespace Rules
