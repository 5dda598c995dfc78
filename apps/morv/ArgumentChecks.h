#pragma once

// What the library that reads the command line would let through.

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace Morv
{

/// In place of a rule's arguments: read lines of them.
constexpr char kFromInput[] = "-";

constexpr long kMostRowId = 2147483647;

/// A plain decimal number from 1 to `most`. The library alone reads 010 as eight.
CLI::Validator PlainNumber(long most = kMostRowId);

/// A text that is there, without control characters: --user "$NAME" with NAME not set must not work as somebody else,
/// and `--user --json` names nobody.
CLI::Validator NotEmpty();

// Characters: an id of a user or a gateway as its column has it; a code, a name and a command as people write them.
constexpr int kLongestId = 100, kLongestCode = 100, kLongestName = 255, kLongestCommand = 500;
/// Such a text of so many characters at the most.
CLI::Validator TextUpTo(int most);

/// A text that is stored: other bytes would read as other letters in text, and as none in JSON.
CLI::Validator Utf8();

/// The name of a new database file: none that the engine gives to the journals of another one, and removes.
CLI::Validator NoJournal();

/// One of these words.
CLI::Validator OneOf(std::vector<std::string> words);

/// Makes the year in which it ends, "2018", of "2017/18"; leaves everything else, for UseYear to refuse.
CLI::Validator PlainYear();

/// The arguments behind the program's name, as the library must see them to read them right: --name= as --name and an
/// empty text (it alone takes the next argument for the value), and behind `calc` all but the options of `app` and of
/// calc marked, for WordOf to unmark: a rule takes any text (-.5, --, [5]), which the library would take apart. A "-"
/// that is not behind "--" stays bare.
std::vector<std::string> ArgumentsOf(int argc, char** argv, const CLI::App& app);
std::string WordOf(const std::string& argument);

} // namespace Morv
