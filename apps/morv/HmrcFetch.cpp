// hmrc fetch.

#include <cstdio>
#include <optional>

#include "FetchOutput.h"
#include "Who.h"

namespace Morv
{

namespace
{

using HmrcApi::FetchResult;

Exit FetchOne(const HmrcArguments& arguments, const CommonOptions& options)
{
    const ClientView client = ClientOf(arguments.client); // it must be there before anything is asked or written
    std::optional<QuietMessages> quiet;
    if (!options.json) // the text tells all that the boxes tell
        quiet.emplace();
    const FetchResult result = HmrcApi::FetchFromHmrc(ClientId(client.id), arguments.gateway);
    TellFetched(client, result, arguments, options);
    if (result.IsBusy() || result.stopped == FetchResult::Stopped::Unusable)
        return Exit::CannotOpen;
    if (result.stopped == FetchResult::Stopped::No && HmrcApi::IsUnreachable(*result.errors))
        return Exit::HmrcUnreachable;
    return result.ok ? Exit::Done : Exit::Refused;
}

Exit FetchInPractice(const HmrcArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const CString warning = WarningOf(HmrcApi::ReadGatewayState(arguments.gateway));
    const Exit exit = arguments.all ? FetchAll(arguments, options) : FetchOne(arguments, options);
    if (!warning.IsEmpty() && !options.quiet)
        std::fprintf(stderr, "morv: %s: %s\n", Printable(arguments.gateway).c_str(), warning.GetString());
    return exit;
}

} // namespace

Exit Fetch(const HmrcArguments& arguments, const CommonOptions& options)
{
    UseBase(options);
    std::optional<SignalsWait> signals;
    if (arguments.all)
        signals.emplace();
    return FetchInPractice(arguments, options);
}

} // namespace Morv
