// gateway list, remove.

#include <cstdio>
#include <memory>

#include "Afx/time/Clock.h"
#include "ArgumentChecks.h"
#include "HmrcCommands.h"
#include "MorvUt/hmrc/access/AuthorisationStore.h"
#include "MorvUt/hmrc/access/Logger.h"

namespace Morv
{

namespace
{

void List(const CommonOptions& options)
{
    Json list = Json::array();
    TextTable table({"Government Gateway user ID", "Authorised", "For", "At", "Until", ""});
    for (const HmrcApi::GatewayState& state : HmrcApi::ListGateways()) {
        Json view = ToJson(state);
        const CString warning = WarningOf(state);
        view["warning"] = warning.IsEmpty() ? Json(nullptr) : TextOf(warning);
        list.push_back(view);
        table.Add({state.gateway, state.isAuthorised ? "yes" : "no", state.ScopeInWords(), state.service,
                   ShownDate(state.grantEnds), warning.Str()});
    }
    if (options.json)
        PrintJson(list);
    else if (table.IsEmpty())
        PrintText("No Government Gateway user ID is registered.");
    else
        table.Print();
}

void Remove(const std::string& practice, const std::string& gateway, const CommonOptions& options)
{
    const PracticeSession session(practice, options, Login::Needed);
    const HmrcApi::GatewayState state = HmrcApi::ReadGatewayState(gateway);
    if (!state.isRegistered)
        throw CommandError(Exit::BadInput, "UNKNOWN_GATEWAY",
                           "there is no Government Gateway user ID " + Quoted(gateway),
                           "morv gateway list shows which there are.");
    if (!HmrcApi::CAuthorisationStore::DeleteGatewayId(gateway))
        throw CommandError(Exit::CannotOpen, "NOT_REMOVED", Quoted(gateway) + " could not be removed",
                           "Another program may be writing; try again.");
    HmrcApi::Logger().Log("Removed", "Authorisation", {}, {}, gateway + " and its tokens have been removed");
    // HMRC has no way for a program to end an authority.
    const std::string told = "Removed " + gateway + " with its tokens." +
                             (state.isAuthorised ? " The authority itself is its user's to end, on HMRC's page "
                                                   "\"Manage authorised applications\"."
                                                 : "");
    if (!options.json)
        PrintLine("%s", told);
    else if (!options.quiet)
        std::fprintf(stderr, "morv: %s\n", Printable(told).c_str());
    List(options);
}

} // namespace

CString WarningOf(const HmrcApi::GatewayState& state) { return state.Warning(COleDateTime(Afx::Clock::Utc())); }

Json ToJson(const HmrcApi::GatewayState& state)
{
    const auto orNull = [&](const std::string& text) { return state.isAuthorised ? Json(text) : Json(nullptr); };
    return {{"gateway", state.gateway},           {"authorised", state.isAuthorised},
            {"service", orNull(state.service)},   {"scope", orNull(state.scope)},
            {"expires", MomentOf(state.expires)}, {"grantEnds", MomentOf(state.grantEnds)}};
}

void AddGatewayCommands(CLI::App& app, Program& program)
{
    CLI::App* gateway =
        app.add_subcommand("gateway", "Government Gateway user IDs and their authority")->require_subcommand(1);
    auto practice = std::make_shared<std::string>();
    auto id = std::make_shared<std::string>();

    CLI::App* list = gateway->add_subcommand("list", "All that are registered, and until when they may be used");
    list->add_option("practice", *practice, "The practice")->required();
    list->callback([=, &program] {
        const PracticeSession session(*practice, program.options, Login::Needed);
        List(program.options);
    });

    CLI::App* remove = gateway->add_subcommand("remove", "Forget one with its tokens; answers what remains");
    remove->add_option("practice", *practice, "The practice")->required();
    remove->add_option("id", *id, "The Government Gateway user ID")->required()->check(TextUpTo(kLongestId));
    remove->callback([=, &program] { Remove(*practice, *id, program.options); });
}

} // namespace Morv
