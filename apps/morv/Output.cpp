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

/// Text of another program's rows need not be UTF-8; the document must be.
std::string TextOfJson(const Json& document)
{
    return Escaped(document.dump(-1, ' ', false, Json::error_handler_t::replace));
}

} // namespace

Json PenceOf(const Kiln::CAmt& amount) { return amount.IsValid() ? Json(amount.GetPence()) : Json(nullptr); }

Json DateOf(const Kiln::CDate& date) { return date.IsValid() ? Json(date.FormatIso().Str()) : Json(nullptr); }

Json MomentOf(const COleDateTime& moment)
{
    return moment.GetStatus() == COleDateTime::valid ? Json(moment.FormatIso().Str()) : Json(nullptr);
}

Json TextOf(const CString& text) { return Json(text.Str()); }

std::string ShownDate(const COleDateTime& moment) { return FormatMoment(moment, "%d/%m/%Y"); }
std::string ShownMoment(const COleDateTime& moment) { return FormatMoment(moment, "%d/%m/%Y %H:%M:%S"); }

void PrintJson(const Json& document) { Write(TextOfJson(document) + "\n"); }

void JsonList::Add(const Json& element)
{
    Write((m_isEmpty ? "[" : ",") + TextOfJson(element));
    m_isEmpty = false;
}

void JsonList::End()
{
    Write(m_isEmpty ? "[]\n" : "]\n");
    m_hasEnded = true;
}

JsonList::~JsonList()
{
    if (!m_isEmpty && !m_hasEnded)
        Write("\n");
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

void TextColumns::Measure(const std::vector<std::string>& cells)
{
    m_widths.resize(std::max(m_widths.size(), cells.size()));
    for (std::size_t i = 0; i < cells.size(); ++i)
        m_widths[i] = std::max(m_widths[i], Width(cells[i]));
}

void TextColumns::Print(const std::vector<std::string>& cells, const char* indent) const
{
    std::string line = indent;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line += cells[i];
        const std::size_t width = Width(cells[i]);
        if (i + 1 < cells.size()) // a row that came between measuring and printing may be wider
            line.append((width < m_widths[i] ? m_widths[i] - width : 0) + 2, ' ');
    }
    Write(line + "\n");
}

void TextTable::Add(std::vector<std::string> cells)
{
    for (std::string& cell : cells)
        cell = Shown(cell);
    m_rows.push_back(std::move(cells));
}

void TextTable::Print(const char* indent) const
{
    TextColumns columns;
    for (const auto& row : m_rows)
        columns.Measure(row);
    for (const auto& row : m_rows)
        columns.Print(row, indent);
}

} // namespace Morv
