#include "CalcArguments.h"

#include <cmath>
#include <limits>

#include "CommandError.h"
#include "Output.h"
#include "WholeNumber.h"

namespace Morv
{

namespace
{

constexpr std::string_view kIdentifier = "identifier"; // of a person: never printed

/// `YYYY-MM-DD`, whether or not there is such a day.
bool ReadIsoFields(std::string_view text, int& year, int& month, int& day)
{
    return text.size() == 10 && text[0] != '-' && text[4] == '-' && text[7] == '-' && text[5] != '-' &&
           text[8] != '-' && ReadWhole(text.substr(0, 4), year) && ReadWhole(text.substr(5, 2), month) &&
           ReadWhole(text.substr(8, 2), day);
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

struct Values::Kind
{
    std::string_view name;
    std::string_view expected;
    bool (*read)(std::string_view, Value&);
};

const Values::Kind* Values::FindKind(std::string_view name)
{
    constexpr std::int64_t kMin32 = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t kMax32 = std::numeric_limits<std::int32_t>::max();
    constexpr std::int64_t kMin64 = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kMax64 = std::numeric_limits<std::int64_t>::max();
    static constexpr Kind kKinds[] = {
        {"date", "a date as 2024-04-05, or null", ReadDate},
        {"longdate", "a long date as 20240405 (or 2024-04-05), null or unknown", ReadLongDate},
        {"pence", "a whole number of pence", ReadNumber<kMin64, kMax64>},
        {"amount", "a whole number of pence, or null", ReadAmount},
        {"decimal", "a decimal number of at most 28 decimals, as 12.3456", ReadDecimal},
        {"percent", "a number in per cent, as 22.5", ReadReal},
        {"year", "a tax year as the calendar year in which it ends, as 2024", ReadNumber<-32768, 32767>},
        {"relative", "a tax year less 1991, as 33 for 2024", ReadNumber<-32768, 32767>},
        {"int", "a whole number of 32 bits", ReadNumber<kMin32, kMax32>},
        {"index", "0, 1, 2 or 3", ReadNumber<0, 3>},
        {"flag", "0 or 1", ReadNumber<0, 1>},
        {"byte", "a whole number from 0 to 255", ReadNumber<0, 255>},
        {"word", "a whole number from 0 to 65535", ReadNumber<0, 65535>},
        {"bytes", "any text", ReadBytes},
        {"text", "any text without a zero byte", ReadText},
        {kIdentifier, "any text without a zero byte; it is not printed again", ReadText},
    };
    for (const Kind& kind : kKinds)
        if (kind.name == name)
            return &kind;
    return nullptr;
}

std::string_view ExpectedOf(std::string_view kind)
{
    const auto* const found = Values::FindKind(kind);
    return found ? found->expected : std::string_view();
}

template<std::int64_t Lowest, std::int64_t Highest>
bool Values::ReadNumber(std::string_view text, Value& value)
{
    return ReadWhole(text, value.number) && value.number >= Lowest && value.number <= Highest;
}

bool Values::ReadReal(std::string_view text, Value& value)
{
    return ReadWhole(text, value.real) && std::isfinite(value.real);
}

bool Values::ReadDate(std::string_view text, Value& value)
{
    if (text == "null")
        return true;
    int year = 0, month = 0, day = 0;
    if (!ReadIsoFields(text, year, month, day))
        return false;
    value.date = Kiln::CDate(year, month, day);
    return value.date.IsValid();
}

bool Values::ReadLongDate(std::string_view text, Value& value)
{
    int year = 0, month = 0, day = 0;
    if (text == "null")
        return true;
    if (text == "unknown")
        value.number = kUnknownDay;
    else if (ReadIsoFields(text, year, month, day))
        value.number = (year * 100 + month) * 100 + day;
    else
        return ReadNumber<std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()>(text,
                                                                                                              value);
    return true;
}

bool Values::ReadAmount(std::string_view text, Value& value)
{
    if (text == "null")
        return true;
    if (!ReadWhole(text, value.number))
        return false;
    value.amount = Kiln::CAmt::FromPence(value.number);
    return true;
}

bool Values::ReadDecimal(std::string_view text, Value& value)
{
    DECIMAL& decimal = value.decimal;
    if (text.starts_with('-')) {
        decimal.sign = 0x80;
        text.remove_prefix(1);
    }
    const std::size_t point = text.find('.');
    const std::size_t decimals = point == text.npos ? 0 : text.size() - point - 1;
    if (text.size() == (point != text.npos) || decimals > 28)
        return false;
    decimal.scale = static_cast<std::uint8_t>(decimals);
    for (std::size_t i = 0; i < text.size(); ++i)
        if (i != point && (text[i] < '0' || text[i] > '9' || !AddDigit(decimal, static_cast<unsigned>(text[i] - '0'))))
            return false;
    return true;
}

bool Values::ReadText(std::string_view text, Value& value)
{
    return text.find('\0') == text.npos && ReadBytes(text, value); // the rules take it for the end
}

bool Values::ReadBytes(std::string_view text, Value& value)
{
    value.text = text;
    return true;
}

X_DateStr_tag Values::Record(std::size_t i) const
{
    X_DateStr_tag record{};
    LtoxD(LongDate(i), &record);
    return record;
}

std::vector<Argument> DeclaredArguments(std::string_view declaration)
{
    std::vector<Argument> arguments;
    while (!declaration.empty()) {
        const std::string_view item = declaration.substr(0, declaration.find(' '));
        declaration.remove_prefix(item.size() + (item.size() < declaration.size()));
        const std::size_t colon = item.find(':');
        const bool isOptional = item[colon - 1] == '?';
        arguments.push_back({item.substr(0, colon - isOptional), item.substr(colon + 1), isOptional});
    }
    return arguments;
}

Values::Values(std::string_view rule, const std::vector<Argument>& declared, const std::vector<std::string>& texts)
{
    const std::string name(rule);
    std::size_t needed = 0;
    for (const Argument& argument : declared)
        needed += !argument.isOptional;
    if (texts.size() < needed || texts.size() > declared.size()) {
        const std::string most = std::to_string(declared.size());
        const std::string range = needed == declared.size() ? most : std::to_string(needed) + " to " + most;
        throw CommandError(Exit::BadInput, "BAD_ARGUMENTS",
                           name + " takes " + range + (range == "1" ? " argument" : " arguments") + ", not " +
                               std::to_string(texts.size()),
                           "morv calc --list names them.");
    }
    m_values.resize(declared.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const Kind* const kind = FindKind(declared[i].kind);
        if (kind && kind->read(texts[i], m_values[i]))
            continue;
        throw CommandError(Exit::BadInput, "BAD_ARGUMENTS",
                           name + ": argument " + std::to_string(i + 1) + " (" + std::string(declared[i].name) +
                               ") is " + (declared[i].kind == kIdentifier ? "no text" : Quoted(texts[i])),
                           "Expected is " + std::string(ExpectedOf(declared[i].kind)) + ".");
    }
}

std::string EchoOf(const Argument& argument, const std::string& text)
{
    return argument.kind == kIdentifier ? std::string(text.size(), '*') : text;
}

} // namespace Morv
