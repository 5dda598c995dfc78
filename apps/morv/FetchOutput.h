#pragma once

// What a fetch tells of one client.

#include "HmrcCommands.h"
#include "MorvUt/context/ClientView.h"
#include "MorvUt/hmrc/fetch/FetchData.h"

namespace Morv
{

/// One JSON document, or the lines for people.
void TellFetched(const ClientView& client, const HmrcApi::FetchResult& result, const HmrcArguments& arguments,
                 const CommonOptions& options);

/// hmrc fetch --all, in an open practice.
Exit FetchAll(const HmrcArguments& arguments, const CommonOptions& options);

} // namespace Morv
