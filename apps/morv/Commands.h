#pragma once

// The commands, each group in its own source. Each adds its sub-commands, whose callbacks set `exit`.

#include <CLI/CLI.hpp>

#include "common/CommandError.h"
#include "Session.h"

namespace Morv
{

struct Program
{
    CommonOptions options;
    Exit exit = Exit::Done;
};

void AddPracticeCommands(CLI::App& app, Program& program);
void AddClientCommands(CLI::App& app, Program& program);
void AddEnquiryCommands(CLI::App& app, Program& program);
void AddYearCommands(CLI::App& app, Program& program);
void AddUserCommands(CLI::App& app, Program& program);
void AddHmrcCommands(CLI::App& app, Program& program);
void AddGatewayCommands(CLI::App& app, Program& program);
void AddLockCommands(CLI::App& app, Program& program);
void AddTableCommands(CLI::App& app, Program& program);
void AddDoctorCommand(CLI::App& app, Program& program);
void AddCalcCommand(CLI::App& app, Program& program);

} // namespace Morv
