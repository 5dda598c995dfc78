#pragma once

// What is written from the declarations of the commands: help, completion, the manual page.

#include <CLI/CLI.hpp>

namespace Morv
{

/// Lets the help of every command list the options of the groups above it.
void ListInheritedOptions(CLI::App& app);

/// `completion bash`, `man`.
void AddDocumentCommands(CLI::App& app);

} // namespace Morv
