#pragma once

// What a command prints: one JSON document, or text for people.

#include <nlohmann/json.hpp>

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Afx/CString.h"
#include "Afx/DateTime.h"
#include "Cellar/Value.h"
#include "CommandError.h"
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

/// "£1,234.56" for people; "-" when there is none.
std::string Money(const Json& pence);

/// Prints `document` on one line.
void PrintJson(const Json& document);

/// One line for people on standard error: what, where, how to mend it; and the error object on standard output.
void PrintError(const CommandError& error, bool json);

/// `text` for a terminal: control characters as blanks, bytes that are not UTF-8 replaced.
std::string Printable(std::string_view text);
/// Whether there is something in it that Printable would blank: it could forge lines, or steer a terminal.
bool HasControlCharacters(std::string_view text);
/// What a user gave, for a message: printable, in quotes, cut when it is long.
std::string Quoted(std::string_view text);
/// "; did you mean NAME?" for the name that is nearest to what a user gave; empty when none is near.
std::string DidYouMean(std::string_view given, std::span<const std::string> names);

/// Columns of text, aligned to the widest cell; the last column is not padded.
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

/// One line of text, formatted as CString::Format does.
template<class... Args>
void PrintLine(const char* format, const Args&... args);
void PrintText(const std::string& text);

template<class... Args>
void PrintLine(const char* format, const Args&... args)
{
    CString line;
    line.Format(format, args...);
    PrintText(line.Str());
}

} // namespace Morv
