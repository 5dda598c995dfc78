#include "Afx/time/FormatTime.h"

#include "Afx/text/TextFold.h"
#include "Afx/time/Clock.h"

namespace Afx
{
namespace
{

std::string_view MonthName(int month) noexcept
{
    return month >= 1 && month <= 12 ? kMonthNames[month - 1] : std::string_view();
}

/// Appends what `placeholder` (without its %) stands for; false when it is none.
bool AppendTime(CString& out, const LocalTime& time, char placeholder)
{
    switch (placeholder) {
    case 'd':
        out.AppendFormat("%02d", time.day);
        return true;
    case 'm':
        out.AppendFormat("%02d", time.month);
        return true;
    case 'y':
        out.AppendFormat("%02d", (time.year % 100 + 100) % 100);
        return true;
    case 'Y':
        out.AppendFormat("%04d", time.year);
        return true;
    case 'b':
        out += MonthName(time.month).substr(0, 3);
        return true;
    case 'B':
        out += MonthName(time.month);
        return true;
    case 'H':
        out.AppendFormat("%02d", time.hour);
        return true;
    case 'M':
        out.AppendFormat("%02d", time.minute);
        return true;
    case 'S':
        out.AppendFormat("%02d", time.second);
        return true;
    case 'X':
        out.AppendFormat("%02d:%02d:%02d", time.hour, time.minute, time.second);
        return true;
    case '%':
        out += '%';
        return true;
    default:
        return false;
    }
}

/// The placeholders that # writes without a leading zero.
bool AppendShort(CString& out, const LocalTime& time, char placeholder)
{
    if (placeholder != 'd' && placeholder != 'm')
        return false;
    out.AppendFormat("%d", placeholder == 'd' ? time.day : time.month);
    return true;
}

} // namespace

int MonthOf(std::string_view name) noexcept
{
    constexpr std::size_t kShort = 3;
    for (int month = 1; month <= 12; ++month) {
        const std::string_view whole = MonthName(month);
        if (EqualNoCase(name, whole) || EqualNoCase(name, whole.substr(0, kShort)))
            return month;
    }
    return 0;
}

CString FormatTime(const LocalTime& time, std::string_view pattern)
{
    CString out;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '%' && i + 1 < pattern.size()) {
            if (AppendTime(out, time, pattern[i + 1])) {
                ++i;
                continue;
            }
            if (pattern[i + 1] == '#' && i + 2 < pattern.size() && AppendShort(out, time, pattern[i + 2])) {
                i += 2;
                continue;
            }
        }
        out += pattern[i];
    }
    return out;
}

} // namespace Afx
