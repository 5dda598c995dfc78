#pragma once

// Names, identifiers and chances of the sample: plausible, made up, and the same in every run.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "Afx/text/CString.h"
#include "Kiln/CAmt.h"

namespace Morv::Sample
{

/// Numbers that look like chance and hang on `seed` and the order of the questions alone.
class Dice
{
public:
    explicit Dice(std::uint64_t seed) noexcept : m_state(seed) {}
    int Below(int limit) noexcept;             // 0 to limit - 1
    int Between(int least, int most) noexcept; // both included
    bool Chance(int percent) noexcept { return Below(100) < percent; }
    Kiln::CAmt Pounds(int least, int most) noexcept; // with pence
    template<class T, std::size_t N>
    const T& Pick(const std::array<T, N>& from) noexcept
    {
        return from[static_cast<std::size_t>(Below(static_cast<int>(N)))];
    }

private:
    std::uint64_t Next() noexcept;
    std::uint64_t m_state;
};

std::string FirstName(Dice& dice);
std::string Surname(Dice& dice);
std::string TrustName(Dice& dice);
/// `isLLP` with that ending.
std::string PartnershipName(Dice& dice, bool isLLP);

struct Employer
{
    const char* name;
    const char* payeReference;
};
const Employer& EmployerOf(Dice& dice);
const char* BankName(Dice& dice);

/// Ten digits of which the first is the right check digit; another one for each serial from 0 to 999,999,999.
CString MakeUTR(std::int64_t serial);
CString MakeNINumber(int serial);
/// An employment's GUID.
CString MakeGUID(long client, int employment);

} // namespace Morv::Sample
