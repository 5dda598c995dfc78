#pragma once

// Texts for people, in one form in all programs.

#include <string>
#include <string_view>

#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"

namespace Morv
{

// "-" when there is none.
std::string Money(const Kiln::CAmt& amount);    // "£1,234.56", whole pence
std::string ShownDate(const Kiln::CDate& date); // "20/08/2017"

/// "-" when there is none.
std::string OrDash(const std::string& text);

/// "1 schedule", "2 schedules".
std::string Counted(int count, const std::string& one);

/// `text` for one line of a terminal: as Afx::ToPrintable, an end of a paragraph as one blank.
std::string Printable(std::string_view text);
/// The same, cut behind so many bytes.
std::string Cut(std::string_view text, std::size_t most);
/// The same, cut where it is longer than anybody reads: what comes from HMRC may be.
std::string Shown(std::string_view text);
/// Whether there is something in it that Printable would not show: it could forge lines, or steer a terminal.
bool HasControlCharacters(std::string_view text);
/// What a user gave, for a message: printable, in quotes, cut when it is long.
std::string Quoted(std::string_view text);

} // namespace Morv
