#include "Output.h"

#include <algorithm>
#include <cstdio>

namespace Morv
{

namespace
{

// Characters, not bytes: a name may hold accents.
std::size_t Width(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

void Write(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

} // namespace

Json PenceOf(const Kiln::CAmt& amount) { return amount.IsValid() ? Json(amount.GetPence()) : Json(nullptr); }

Json DateOf(const Kiln::CDate& date) { return date.IsValid() ? Json(date.FormatIso().Str()) : Json(nullptr); }

Json MomentOf(const COleDateTime& moment)
{
    return moment.GetStatus() == COleDateTime::valid ? Json(moment.FormatIso().Str()) : Json(nullptr);
}

Json TextOf(const CString& text) { return Json(text.Str()); }

std::string Money(const Json& pence)
{
    if (!pence.is_number_integer())
        return "-";
    const auto value = pence.get<std::int64_t>();
    const std::uint64_t size = value < 0 ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
    std::string pounds = std::to_string(size / 100);
    for (std::size_t at = pounds.size(); at > 3;)
        pounds.insert(at -= 3, ",");
    const std::string pennies = std::to_string(size % 100);
    return (value < 0 ? "-£" : "£") + pounds + (pennies.size() == 1 ? ".0" : ".") + pennies;
}

void PrintJson(const Json& document)
{
    // Text of another program's rows need not be UTF-8; the document must be.
    Write(document.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n");
}

void PrintText(const std::string& text) { Write(text + "\n"); }

void TextTable::Print(const char* indent) const
{
    std::vector<std::size_t> widths;
    for (const auto& row : m_rows)
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i == widths.size())
                widths.push_back(0);
            widths[i] = std::max(widths[i], Width(row[i]));
        }
    for (const auto& row : m_rows) {
        std::string line = indent;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i];
            if (i + 1 < row.size())
                line.append(widths[i] - Width(row[i]) + 2, ' ');
        }
        Write(line + "\n");
    }
}

} // namespace Morv
