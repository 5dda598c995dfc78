#include "HmrcCommands.h"

#include <cstdint>
#include <cstdio>
#include <limits>

#include "ArgumentChecks.h"
#include "HmrcApi/transport/Pace.h"
#include "MorvUt/hmrc/access/ClientData.h"
#include "Who.h"

namespace Morv
{

namespace
{

class SilentWindowSystem : public Afx::WindowSystem
{
public:
    int MessageBox(const std::string&, unsigned style) override { return Afx::SafeAnswer(style); }
};

using Arguments = std::shared_ptr<HmrcArguments>;

CLI::App* AddCommand(CLI::App& hmrc, const char* name, const char* meaning, const Arguments& arguments)
{
    CLI::App* command = hmrc.add_subcommand(name, meaning);
    command->add_option("practice", arguments->practice, "The practice")->required();
    return command;
}

/// The option for all.
CLI::Option* AddOneOrAll(CLI::App& command, const Arguments& arguments)
{
    CLI::Option_group* who = command.add_option_group("who");
    AddClientOption(*who, arguments->client);
    CLI::Option* all = who->add_flag("--all", arguments->all, "All clients");
    who->require_option(1);
    return all;
}

} // namespace

QuietMessages::QuietMessages() : m_before(Afx::WindowSystem::Install(std::make_unique<SilentWindowSystem>())) {}
QuietMessages::~QuietMessages() { Afx::WindowSystem::Install(std::move(m_before)); }

SignalsWait::~SignalsWait() { std::fflush(stdout); } // a signal ends the program without that

void UseBase(const CommonOptions& options)
{
    if (options.base.empty())
        return;
    if (!HmrcApi::CClientData::SetLoopbackOverride(options.base))
        throw CommandError(Exit::BadInput, "BAD_BASE",
                           "--base: " + Quoted(options.base) + " is not an address of this machine",
                           "A base looks like http://127.0.0.1:8080/; 127.0.0.1, [::1] and localhost are taken, ports "
                           "from 1 to 65535.");
    HmrcApi::PaceLoopback(options.paced);
}

void AddHmrcCommands(CLI::App& app, Program& program)
{
    CLI::App* hmrc = app.add_subcommand("hmrc", "A client's records at HMRC")->require_subcommand(1);
    CLI::Option* base = hmrc->add_option("--base", program.options.base, "Ask a server on this machine instead of HMRC")
                            ->check(NotEmpty());
    hmrc->add_flag("--paced", program.options.paced, "Ask it at the pace that HMRC allows, too")->needs(base);
    auto arguments = std::make_shared<HmrcArguments>();

    CLI::App* authorise = AddCommand(*hmrc, "authorise", "Ask a Government Gateway user for authority", arguments);
    authorise
        ->add_option("--gateway", arguments->gateway, "Government Gateway user ID; registered when it is not there")
        ->required()
        ->check(TextUpTo(kLongestId))
        ->check(Utf8());
    authorise->add_option("--browser", arguments->browser, "Command that opens the address")
        ->check(TextUpTo(kLongestCommand));
    authorise->callback([=, &program] { Authorise(*arguments, program.options); });

    CLI::App* fetch = AddCommand(*hmrc, "fetch", "Fetch and stage the records of one client or of all", arguments);
    fetch->add_option("--gateway", arguments->gateway, "Government Gateway user ID whose authority is used")
        ->required()
        ->check(TextUpTo(kLongestId));
    CLI::Option* all = AddOneOrAll(*fetch, arguments);
    fetch
        ->add_flag("--anew", arguments->anew,
                   "With --all: ask about every client. Otherwise a run that did not come to its end (killed, "
                   "cancelled, HMRC absent) within the last twelve hours is gone on with, and who was fetched since it "
                   "began is left out")
        ->needs(all);
    fetch->callback([=, &program] { program.exit = Fetch(*arguments, program.options); });

    CLI::App* create =
        AddCommand(*hmrc, "create", "Create the schedules that the return of one client or of all lacks", arguments);
    AddOneOrAll(*create, arguments);
    create->callback([=, &program] { program.exit = Create(*arguments, program.options); });

    CLI::App* differences = AddCommand(*hmrc, "differences", "List what differs from the return", arguments);
    AddClientOption(*differences, arguments->client)->required();
    CLI::Option_group* decision = differences->add_option_group("decision");
    CLI::Option* accept =
        decision->add_option("--accept", arguments->accept, "Put HMRC's figures of this difference into the schedule");
    decision->add_option("--reject", arguments->reject, "Keep the return's; not offered again until HMRC's change");
    decision->add_option("--skip", arguments->skip, "Decide another time");
    for (CLI::Option* option : decision->get_options())
        option->type_name("NUMBER")->check(CLI::Range(std::int64_t{1}, std::numeric_limits<std::int64_t>::max()));
    decision->require_option(0, 1);
    differences->add_option("--as", arguments->as, "Only while the figures are those of this hash")
        ->needs(accept)
        ->type_name("HASH")
        ->check(NotEmpty());
    differences->callback([=, &program] { Differences(*arguments, program.options); });

    CLI::App* history = AddCommand(*hmrc, "history", "Who decided what about a client's figures, and when", arguments);
    AddClientOption(*history, arguments->client)->required();
    history->callback([=, &program] { History(*arguments, program.options); });

    CLI::App* log = AddCommand(*hmrc, "log", "The log of what was asked of HMRC, masked", arguments);
    log->add_option("--chain", arguments->chain, "Only this chain of events")->check(NotEmpty());
    log->callback([=, &program] { ShowLog(*arguments, program.options); });
}

} // namespace Morv
