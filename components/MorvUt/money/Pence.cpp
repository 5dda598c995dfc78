#include "MorvUt/money/Pence.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <limits>

#include "Afx/text/BoundedCopy.h"
#include "Afx/text/Decimal.h"
#include "Afx/text/Numbers.h"
#include "MorvUt/money/detail/PenceText.h"

namespace
{

using Detail::Magnitude;
using Detail::PenceMark;
using Detail::PenceText;

std::atomic<int> g_showCommas{0};

/// "00" to "99".
constexpr auto kTwoDigits = [] {
    std::array<char, 200> digits{};
    for (std::size_t i = 0; i < 100; ++i) {
        digits[2 * i] = static_cast<char>('0' + i / 10);
        digits[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return digits;
}();

/// Writes `value`, 0 to 99, in front of `end`.
char* WriteTwo(char* end, unsigned value) noexcept
{
    std::memcpy(end - 2, &kTwoDigits[2 * value], 2);
    return end - 2;
}

/// Writes the digits of `value` in front of `end`. Below 2^32 in 32 bits, which divide several times as fast on a
/// 32-bit machine.
template<class UInt>
char* WritePlain(char* end, UInt value) noexcept
{
    for (; value >= 100; value /= 100)
        end = WriteTwo(end, static_cast<unsigned>(value % 100));
    if (value >= 10)
        return WriteTwo(end, static_cast<unsigned>(value));
    *--end = static_cast<char>('0' + value);
    return end;
}

/// The same with a comma between groups of three.
template<class UInt>
char* WriteGrouped(char* end, UInt value) noexcept
{
    for (; value >= 1000; value /= 1000) {
        const auto group = static_cast<unsigned>(value % 1000);
        end = WriteTwo(end, group % 100);
        *--end = static_cast<char>('0' + group / 100);
        *--end = ',';
    }
    return WritePlain(end, static_cast<unsigned>(value));
}

template<class UInt>
char* WritePence(char* end, UInt pence, bool showCommas) noexcept
{
    end = WriteTwo(end, static_cast<unsigned>(pence % 100));
    *--end = '.';
    return showCommas ? WriteGrouped(end, pence / 100) : WritePlain(end, pence / 100);
}

PenceText TextOf(__int64 pence) noexcept
{
    return PenceText(Magnitude(pence), pence < 0 ? PenceMark::Minus : PenceMark::None);
}

} // namespace

Detail::PenceText::PenceText(std::uint64_t pence, PenceMark mark) noexcept
{
    const bool showCommas = g_showCommas.load(std::memory_order_relaxed) != 0;
    char* const end = m_buffer + kSize;
    m_first = pence <= std::numeric_limits<std::uint32_t>::max()
                  ? WritePence(end, static_cast<std::uint32_t>(pence), showCommas)
                  : WritePence(end, pence, showCommas);
    if (mark != PenceMark::None)
        *--m_first = static_cast<char>(mark);
}

// Called for every amount that is shown, so nothing in it is a call that need not be.
[[gnu::flatten]] void CurrencyToCStr(__int64 pence, CString& out)
{
    out.Empty();
    if (pence != 0)
        out += TextOf(pence).View(); // straight into the memory that `out` has
}

void ConvertLongPenceToStr(__int64 pence, char* buffer, unsigned size)
{
    if (pence == 0)
        Afx::BoundedCopy(buffer, size, {});
    else
        Afx::BoundedCopy(buffer, size, TextOf(pence).View());
}

void SetShowCommaSeparators(int show) noexcept { g_showCommas.store(show, std::memory_order_relaxed); }

__int64 CStrToCurrency(const CString& text)
{
    Kiln::CAmt amount;
    return amount.Parse(text) ? amount.GetPence() : 0;
}

__int64 StrToCurrency(const char* text)
{
    Kiln::CAmt amount;
    return amount.Parse(text) ? amount.GetPence() : 0;
}

double PenceToPounds(__int64 pence) noexcept { return static_cast<double>(pence) / 100.0; }

int StringToInt(const char* text) noexcept
{
    constexpr std::int64_t kMin = std::numeric_limits<int>::min(), kMax = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(Afx::AtoI64(text), kMin, kMax));
}

__int64 DecimalToCurrency(DECIMAL value) noexcept { return DecimalToCAmt(value).GetPence(); }

Kiln::CAmt DecimalToCAmt(DECIMAL value) noexcept
{
    const auto tenThousandths = Afx::DecimalToCy(value);
    return tenThousandths ? Kiln::CAmt(*tenThousandths) : Kiln::CAmt::Invalid();
}
