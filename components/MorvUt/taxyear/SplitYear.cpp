#include "MorvUt/taxyear/SplitYear.h"

#include "MorvUt/taxyear/YearTitles.h"

namespace
{

constexpr short kFirstYear = 1802;
constexpr short kLastYear = 2099;

} // namespace

CString SplitYear::Format() const { return FormatYearString42Digit(m_yearEnd); }

Kiln::CDate SplitYear::GetStart() const { return GetYearPeriod(m_yearEnd).GetFrom(); }

Kiln::CDate SplitYear::GetEnd() const { return GetYearPeriod(m_yearEnd).GetTo(); }

bool SplitYear::IsDateInYear(const Kiln::CDate& date) const { return GetYearPeriod(m_yearEnd).IsDateInPeriod(date); }

bool SplitYear::Create(short year) noexcept
{
    if (year < kFirstYear || year > kLastYear) {
        m_state = State::Invalid;
        return false;
    }
    m_yearEnd = year;
    m_state = State::Valid;
    return true;
}

bool SplitYear::Create(const Kiln::CDate& date)
{
    const int calendarYear = date.IsValid() ? date.GetYear() : -1;
    m_state = State::Valid;
    for (const int offset : {0, -1, 1}) {
        m_yearEnd = static_cast<std::int16_t>(calendarYear + offset);
        if (IsDateInYear(date))
            return true;
    }
    m_state = State::Invalid;
    return false;
}
