#pragma once

// What the library that reads the command line would let through.

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace Morv
{

constexpr long kMostRowId = 2147483647;

/// A plain decimal number from 1 to `most`. The library alone reads 010 as eight.
CLI::Validator PlainNumber(long most = kMostRowId);

/// A text that is there: --user "$NAME" with NAME not set must not work as somebody else.
CLI::Validator NotEmpty();

/// The arguments behind the program's name, with --name= as --name and an empty text: the library alone takes the next
/// argument for the value.
std::vector<std::string> ArgumentsOf(int argc, char** argv);

} // namespace Morv
