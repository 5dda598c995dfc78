#include "Documents.h"

#include <functional>
#include <string>
#include <vector>

#include "Afx/text/TextFold.h"
#include "Output.h"

namespace Morv
{

namespace
{

using Apps = std::vector<const CLI::App*>; // from the program to a command
using Options = std::vector<const CLI::Option*>;

/// Every command, those that only hold others too, each with the way to it.
void Walk(Apps path, const std::function<void(const Apps&)>& visit)
{
    visit(path);
    for (const CLI::App* command : path.back()->get_subcommands([](const CLI::App*) { return true; }))
        if (!command->get_name().empty()) { // a group of options has none
            Apps inner = path;
            inner.push_back(command);
            Walk(inner, visit);
        }
}

bool IsLeaf(const CLI::App& command)
{
    for (const CLI::App* inner : command.get_subcommands([](const CLI::App*) { return true; }))
        if (!inner->get_name().empty())
            return false;
    return true;
}

bool IsGeneral(const CLI::Option& option) { return option.check_lname("help") || option.check_lname("version"); }

/// A command's own: the options of its groups, and --help, among them.
Options OptionsOf(const CLI::App& command)
{
    Options options;
    for (const CLI::Option* option : command.get_options())
        options.push_back(option);
    for (const CLI::App* inner : command.get_subcommands([](const CLI::App*) { return true; }))
        if (inner->get_name().empty())
            for (const CLI::Option* option : inner->get_options())
                if (!IsGeneral(*option))
                    options.push_back(option);
    return options;
}

/// Those that every command understands because one of the groups above it does.
Options Inherited(const Apps& path)
{
    Options options;
    for (std::size_t i = 0; i + 1 < path.size(); ++i)
        for (const CLI::Option* option : OptionsOf(*path[i]))
            if (!IsGeneral(*option) && !option->get_positional())
                options.push_back(option);
    return options;
}

std::string NameOf(const Apps& path)
{
    std::string name;
    for (const CLI::App* command : path)
        name += (name.empty() ? "" : " ") + command->get_name();
    return name;
}

/// "--client", "--help"; PRACTICE for what has no name of its own.
std::string ShownOption(const CLI::Option& option)
{
    return option.get_positional() ? Afx::FoldUpper(option.get_name(true)) : option.get_name(false);
}

// ---- completion

std::string WordsBehind(const Apps& path)
{
    std::string names, options;
    for (const CLI::App* command : path.back()->get_subcommands([](const CLI::App*) { return true; }))
        names += command->get_name().empty() ? "" : ' ' + command->get_name();
    Options all = OptionsOf(*path.back());
    const Options inherited = Inherited(path);
    all.insert(all.end(), inherited.begin(), inherited.end());
    for (const CLI::Option* option : all)
        for (const std::string& name : option->get_lnames())
            options += " --" + name;
    return "names='" + names.substr(names.empty() ? 0 : 1) + "' options='" + options.substr(options.empty() ? 0 : 1) +
           "'";
}

/// What follows the program's name, a key of the script's cases.
std::string KeyOf(const Apps& path) { return NameOf(path).substr(path.front()->get_name().size()); }

std::string BashCompletion(const CLI::App& app)
{
    std::string known, cases;
    Walk({&app}, [&](const Apps& path) {
        const std::string key = '"' + KeyOf(path) + '"';
        if (path.size() > 1)
            known += (known.empty() ? "" : "|") + key;
        cases += "        " + key + ") " + WordsBehind(path) + " ;;\n";
    });
    return R"(# Completion of )" + app.get_name() + R"( for bash.
_morv()
{
    local word=${COMP_WORDS[COMP_CWORD]} path= names= options= i
    for ((i = 1; i < COMP_CWORD; i++)); do
        case "$path ${COMP_WORDS[i]}" in
        )" +
           known +
           R"() path="$path ${COMP_WORDS[i]}" ;;
        esac
    done
    case "$path" in
)" + cases +
           R"(    esac
    [[ $word == -* ]] && names=$options
    COMPREPLY=($(compgen -W "$names" -- "$word"))
}
complete -o default -F _morv )" +
           app.get_name() + '\n';
}

// ---- manual page

/// Text that troff takes as it is.
std::string Escaped(const std::string& text)
{
    std::string escaped;
    for (const char c : text)
        escaped += c == '\\' ? "\\e" : c == '-' ? "\\-" : c == '\n' ? "\n.br\n" : std::string(1, c);
    return escaped.starts_with('.') || escaped.starts_with('\'') ? "\\&" + escaped : escaped;
}

std::string OptionLines(const Options& options)
{
    std::string text;
    for (const CLI::Option* option : options) {
        const std::string value = option->get_items_expected_max() > 0 && !option->get_positional() ? " VALUE" : "";
        text += ".TP\n.B " + Escaped(ShownOption(*option) + value) + '\n' + Escaped(option->get_description()) + '\n';
    }
    return text;
}

Options WithoutHelp(const Options& options)
{
    Options rest;
    for (const CLI::Option* option : options)
        if (!option->check_lname("help"))
            rest.push_back(option);
    return rest;
}

std::string ManualPage(const CLI::App& app)
{
    std::string text = ".TH " + Afx::FoldUpper(app.get_name()) + " 1\n.SH NAME\n" + app.get_name() + " \\- " +
                       Escaped(app.get_description()) + "\n.SH SYNOPSIS\n.B " + app.get_name() +
                       "\nCOMMAND [ARGUMENTS] [OPTIONS]\n.SH OPTIONS\nEvery command takes these.\n" +
                       OptionLines(OptionsOf(app)) + ".SH COMMANDS\n";
    Walk({&app}, [&](const Apps& path) {
        if (path.size() == 1)
            return;
        if (!IsLeaf(*path.back())) {
            const Options own = WithoutHelp(OptionsOf(*path.back()));
            if (!own.empty())
                text += ".SS " + NameOf(path) + " ...\n" + OptionLines(own);
            return;
        }
        text += ".SS " + Escaped(NameOf(path)) + '\n' + Escaped(path.back()->get_description()) + ".\n" +
                OptionLines(WithoutHelp(OptionsOf(*path.back())));
    });
    return text + ".SH NOTES\n" + Escaped(app.get_footer()) + '\n';
}

} // namespace

void ListInheritedOptions(CLI::App& app)
{
    Walk({&app}, [](const Apps& path) {
        if (path.size() == 1)
            return;
        auto* const command = const_cast<CLI::App*>(path.back()); // the walk does not change, this visit does
        command->footer([path] {                                  // before the footer that it has
            const auto* const formatter = dynamic_cast<const CLI::Formatter*>(path.front()->get_formatter().get());
            return formatter ? formatter->make_group("Common options", false, Inherited(path)) : std::string();
        });
    });
}

void AddDocumentCommands(CLI::App& app)
{
    CLI::App* completion =
        app.add_subcommand("completion", "Completion of this program's commands")->require_subcommand(1);
    completion->add_subcommand("bash", "For bash: eval \"$(morv completion bash)\"")->callback([&app] {
        PrintRaw(BashCompletion(app));
    });
    app.add_subcommand("man", "This program's manual page, for man")->callback([&app] { PrintRaw(ManualPage(app)); });
}

} // namespace Morv
