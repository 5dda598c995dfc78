#include "CalcArguments.h"

#include <cmath>

namespace Morv
{

namespace
{

/// `YYYY-MM-DD`, whether or not there is such a day.
bool ReadIsoFields(std::string_view text, int& year, int& month, int& day)
{
    const auto read = [text](std::size_t at, std::size_t length, int& field) {
        const auto number = Afx::ParseWhole<int>(text.substr(at, length));
        field = number.value_or(0);
        return number && text[at] != '-';
    };
    return text.size() == 10 && text[4] == '-' && text[7] == '-' && read(0, 4, year) && read(5, 2, month) &&
           read(8, 2, day);
}

/// `magnitude` of 96 bits times ten plus `digit`; false when it does not fit.
bool AddDigit(DECIMAL& magnitude, unsigned digit)
{
    std::uint64_t carry = digit;
    const auto step = [&carry](std::uint64_t word) {
        carry += (word & 0xFFFF'FFFF) * 10;
        const std::uint64_t low = carry & 0xFFFF'FFFF;
        carry >>= 32;
        return low;
    };
    const std::uint64_t low = step(magnitude.Lo64);
    magnitude.Lo64 = step(magnitude.Lo64 >> 32) << 32 | low;
    magnitude.Hi32 = static_cast<std::uint32_t>(step(magnitude.Hi32));
    return carry == 0;
}

} // namespace

bool ReadValue(std::string_view text, Kiln::CDate& value)
{
    if (text == "null")
        return true;
    int year = 0, month = 0, day = 0;
    if (!ReadIsoFields(text, year, month, day))
        return false;
    value = Kiln::CDate(year, month, day);
    return value.IsValid();
}

bool ReadValue(std::string_view text, LongDate& value)
{
    int number = 0, year = 0, month = 0, day = 0;
    if (text == "unknown")
        number = kUnknownDay;
    else if (ReadIsoFields(text, year, month, day))
        number = (year * 100 + month) * 100 + day;
    else if (text != "null" && !ReadValue(text, number))
        return false;
    value.number = number;
    LtoxD(number, &value);
    return true;
}

bool ReadValue(std::string_view text, Kiln::CAmt& value)
{
    __int64 pence = 0;
    if (text == "null")
        return true;
    if (!ReadValue(text, pence))
        return false;
    value = Kiln::CAmt::FromPence(pence);
    return true;
}

bool ReadValue(std::string_view text, DECIMAL& value)
{
    if (text.starts_with('-')) {
        value.sign = 0x80;
        text.remove_prefix(1);
    }
    const std::size_t point = text.find('.');
    const std::size_t decimals = point == text.npos ? 0 : text.size() - point - 1;
    if (text.size() == (point != text.npos) || decimals > 28)
        return false;
    value.scale = static_cast<std::uint8_t>(decimals);
    for (std::size_t i = 0; i < text.size(); ++i)
        if (i != point && (text[i] < '0' || text[i] > '9' || !AddDigit(value, static_cast<unsigned>(text[i] - '0'))))
            return false;
    return true;
}

bool ReadValue(std::string_view text, double& value)
{
    const auto number = Afx::ParseWhole<double>(text);
    value = number.value_or(0);
    return number && std::isfinite(value);
}

bool ReadValue(std::string_view text, std::string& value)
{
    value = text;
    return true;
}

bool ReadValue(std::string_view text, CString& value)
{
    value = text;
    return text.find('\0') == text.npos; // the rules take it for the end
}

} // namespace Morv
