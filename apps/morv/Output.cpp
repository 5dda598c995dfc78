#include "Output.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <utility>

#include "Afx/text/TextFold.h"
#include "Afx/text/Utf8.h"
#include "Afx/time/FormatTime.h"

namespace Morv
{

namespace
{

// Characters, not bytes: a name may hold accents.
std::size_t Width(const std::string& text) { return static_cast<std::size_t>(Afx::CountCharacters(text)); }

/// Letters to change, add or leave out, whatever their case, to get from one text to the other.
std::size_t Distance(std::string_view from, std::string_view to)
{
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const bool same = Afx::EqualNoCase(from.substr(i, 1), to.substr(j, 1));
            diagonal = std::exchange(row[j + 1], std::min({row[j] + 1, row[j + 1] + 1, diagonal + !same}));
        }
    }
    return row.back();
}

std::string FormatMoment(const COleDateTime& moment, const char* pattern)
{
    return moment.GetStatus() == COleDateTime::valid ? Afx::FormatTime(moment.Fields(), pattern).Str() : "-";
}

/// What would steer a terminal that shows the document stands in its texts only, where an escape says the same.
std::string Escaped(std::string_view document)
{
    std::string escaped;
    escaped.reserve(document.size());
    while (!document.empty()) {
        const char* const begin = document.data();
        if (const unsigned character = Afx::TakeCharacter(document); Afx::SteersTerminal(character)) {
            CString code;
            code.Format("\\u%04x", character);
            escaped += code.Str();
        } else {
            escaped.append(begin, document.data());
        }
    }
    return escaped;
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

std::string Money(const Kiln::CAmt& amount)
{
    if (!amount.IsValid())
        return "-";
    const std::int64_t value = amount.GetPence();
    const std::uint64_t size = value < 0 ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
    std::string pounds = std::to_string(size / 100);
    for (std::size_t at = pounds.size(); at > 3;)
        pounds.insert(at -= 3, ",");
    const std::string pennies = std::to_string(size % 100);
    return (value < 0 ? "-£" : "£") + pounds + (pennies.size() == 1 ? ".0" : ".") + pennies;
}

std::string ShownDate(const Kiln::CDate& date) { return date.IsValid() ? date.Format("%d/%m/%Y").Str() : "-"; }

std::string ShownDate(const COleDateTime& moment) { return FormatMoment(moment, "%d/%m/%Y"); }
std::string ShownMoment(const COleDateTime& moment) { return FormatMoment(moment, "%d/%m/%Y %H:%M:%S"); }

std::string Counted(int count, const std::string& one)
{
    return std::to_string(count) + ' ' + one + (count == 1 ? "" : "s");
}

void PrintJson(const Json& document)
{
    // Text of another program's rows need not be UTF-8; the document must be.
    Write(Escaped(document.dump(-1, ' ', false, Json::error_handler_t::replace)) + "\n");
}

void PrintRaw(std::string_view text) { Write(std::string(text)); }

void PrintText(std::string_view text) { Write(Printable(text) + "\n"); }

void PrintError(const CommandError& error, bool json)
{
    if (json)
        PrintJson({{"error", {{"code", error.code}, {"message", error.what()}, {"action", error.action}}}});
    std::string line = Shown(error.what());
    if (!error.action.empty())
        line += (line.ends_with('.') || line.ends_with('?') ? " " : ". ") + error.action;
    std::fprintf(stderr, "morv: %s\n", Printable(line).c_str());
}

std::string Printable(std::string_view text)
{
    std::string flat;
    for (const char c : text)
        if (c != '\n' || !flat.ends_with('\n')) // a paragraph's end is one blank
            flat += c;
    return Afx::ToPrintable(flat);
}

std::string Cut(std::string_view text, std::size_t most)
{
    const std::string whole = Printable(text);
    const std::string_view shown = Afx::CutUtf8(whole, most);
    return std::string(shown) + (shown.size() < whole.size() ? "…" : "");
}

std::string Shown(std::string_view text)
{
    constexpr std::size_t kMost = 500;
    return Cut(text, kMost);
}

bool HasControlCharacters(std::string_view text) { return Printable(text) != Afx::ToUtf8(text); }

std::string Quoted(std::string_view text)
{
    constexpr std::size_t kMost = 80;
    return '"' + Cut(text, kMost) + '"';
}

std::string DidYouMean(std::string_view given, std::span<const std::string> names)
{
    constexpr std::size_t kFar = 3; // that many letters to change, add or leave out
    std::string_view nearest;
    std::size_t least = std::min(kFar, given.size() / 2 + 1);
    for (const std::string& name : names)
        if (const std::size_t steps = Distance(given.substr(0, 2 * name.size()), name);
            steps < least && !name.empty()) {
            least = steps;
            nearest = name;
        }
    return nearest.empty() ? std::string() : "; did you mean " + std::string(nearest) + "?";
}

void TextTable::Add(std::vector<std::string> cells)
{
    for (std::string& cell : cells)
        cell = Shown(cell);
    m_rows.push_back(std::move(cells));
}

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
