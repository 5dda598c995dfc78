#include "Who.h"

#include "ArgumentChecks.h"
#include "common/CommandError.h"
#include "Output.h"

namespace Morv
{

namespace
{

ClientView OnlyOne(const std::vector<ClientView>& found, const char* option, const char* what,
                   const std::string& codeOrId)
{
    if (found.empty())
        throw CommandError(Exit::BadInput, "UNKNOWN_CLIENT",
                           std::string(option) + ": there is no " + what + " with code or number " + Quoted(codeOrId),
                           "morv client list shows who there is.");
    if (found.size() > 1)
        throw CommandError(Exit::BadInput, "AMBIGUOUS_CLIENT",
                           std::string(option) + ": there are several with the code " + Quoted(codeOrId),
                           "Give the number of the one that is meant, such as " + std::to_string(found.front().id) +
                               " or " + std::to_string(found.back().id) + '.');
    return found.front();
}

} // namespace

ClientView ClientOf(const std::string& codeOrId)
{
    return OnlyOne(FindClients(codeOrId), "--client", "client", codeOrId);
}

ClientView PartnershipOf(const std::string& codeOrId)
{
    return OnlyOne(FindPartnerships(codeOrId), "--partnership", "partnership", codeOrId);
}

std::vector<ClientView> ListPeople()
{
    std::vector<ClientView> list = ListClients();
    std::erase_if(list, [](const ClientView& each) { return each.IsPartnership(); });
    return list;
}

CLI::Option* AddClientOption(CLI::App& command, std::string& codeOrId)
{
    return command.add_option("--client", codeOrId, "Client (code, or number in the list)")->check(NotEmpty());
}

ClientView WhoArguments::Find() const { return client.empty() ? PartnershipOf(partnership) : ClientOf(client); }

void AddWhoOptions(CLI::App& command, WhoArguments& who, bool isNeeded)
{
    CLI::Option_group* group = command.add_option_group("who");
    AddClientOption(*group, who.client);
    group->add_option("--partnership", who.partnership, "Partnership (code, or number in the list)")->check(NotEmpty());
    group->require_option(isNeeded ? 1 : 0, 1);
}

} // namespace Morv
