#pragma once

// What a command prints: one JSON document, or text for people.

#include <nlohmann/json.hpp>

#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "Afx/text/CString.h"
#include "Afx/time/DateTime.h"
#include "Cellar/Value.h"
#include "common/CommandError.h"
#include "common/Words.h"
#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"

namespace Morv
{

using Json = nlohmann::ordered_json;

/// Whole pence, truncated toward zero; null when the amount is not valid.
Json PenceOf(const Kiln::CAmt& amount);
/// ISO text; null when the date is not valid.
Json DateOf(const Kiln::CDate& date);
Json MomentOf(const COleDateTime& moment);
Json TextOf(const CString& text);

// For people; "-" when there is none.
std::string ShownDate(const COleDateTime& moment);   // "20/08/2017"
std::string ShownMoment(const COleDateTime& moment); // "20/08/2017 14:05:09"

/// Prints `document` on one line; what would steer a terminal is escaped.
void PrintJson(const Json& document);

/// Prints a list on one line, however long it is, element by element. One that is not ended is no document; its line
/// is ended then, so that the error object stands on one of its own.
class JsonList
{
public:
    JsonList() = default;
    JsonList(const JsonList&) = delete;
    JsonList& operator=(const JsonList&) = delete;
    ~JsonList();
    void Add(const Json& element);
    void End();

private:
    bool m_isEmpty = true, m_hasEnded = false;
};

/// One line for people on standard error: what, where, how to mend it; and the error object on standard output.
void PrintError(const CommandError& error, bool json);

/// "; did you mean NAME?" for the name that is nearest to what a user gave; empty when none is near.
std::string DidYouMean(std::string_view given, std::span<const std::string> names);

/// Lines of text in columns as wide as their widest cell; the last column is not padded. For tables that are too long
/// to be held: first all lines are measured, then all are printed.
class TextColumns
{
public:
    void Measure(const std::vector<std::string>& cells);
    void Print(const std::vector<std::string>& cells, const char* indent = "") const;

private:
    std::vector<std::size_t> m_widths;
};

/// The same for a table that is held.
class TextTable
{
public:
    explicit TextTable(std::vector<std::string> headings) { m_rows.push_back(std::move(headings)); }
    void Add(std::vector<std::string> cells);
    bool IsEmpty() const { return m_rows.size() == 1; }
    void Print(const char* indent = "") const;

private:
    std::vector<std::vector<std::string>> m_rows;
};

/// A text of this program's own, with its lines.
void PrintRaw(std::string_view text);
/// One line of text, made printable.
void PrintText(std::string_view text);

/// One line of text, formatted as CString::Format does; texts are made printable and cut.
template<class... Args>
void PrintLine(Afx::FormatString<std::type_identity_t<Args>...> format, const Args&... args);

inline std::string ShownArgument(std::string_view text) { return Shown(text); }
inline std::string ShownArgument(const std::string& text) { return Shown(text); }
inline std::string ShownArgument(const char* text) { return Shown(text); }
inline std::string ShownArgument(const CString& text) { return Shown(text.View()); }
template<class Number>
requires std::is_arithmetic_v<Number> Number ShownArgument(Number number) { return number; }

template<class... Args>
void PrintLine(Afx::FormatString<std::type_identity_t<Args>...> format, const Args&... args)
{
    CString line;
    line.Format(format, ShownArgument(args)...);
    PrintText(line.View());
}

} // namespace Morv
