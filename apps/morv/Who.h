#pragma once

// Whom a command is about.

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

#include "MorvUt/context/ClientView.h"

namespace Morv
{

/// The client, or the partnership, that a user named by code or number. Throws CommandError when there is none.
ClientView ClientOf(const std::string& codeOrId);
ClientView PartnershipOf(const std::string& codeOrId);

/// All clients but the partnerships, by their id: whom HMRC's records are about.
std::vector<ClientView> ListPeople();

/// --client, read into `codeOrId`.
CLI::Option* AddClientOption(CLI::App& command, std::string& codeOrId);

/// A client or a partnership, as --client and --partnership name them.
struct WhoArguments
{
    std::string client, partnership;

    bool IsAnyone() const { return !client.empty() || !partnership.empty(); }
    /// Throws CommandError when there is none.
    ClientView Find() const;
};
/// The two options, one of which must stand there; or none, for everybody.
void AddWhoOptions(CLI::App& command, WhoArguments& who, bool isNeeded);

} // namespace Morv
