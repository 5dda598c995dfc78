// user list, show, add.

#include <memory>
#include <stdexcept>

#include "ArgumentChecks.h"
#include "Commands.h"
#include "MorvUt/users/StaffRights.h"
#include "Output.h"

namespace Morv
{

namespace
{

struct UserArguments
{
    std::string practice, id, name, role;
};

Json ToJson(const StaffMember& user)
{
    Json groups = Json::array(), rights = Json::array();
    for (const CString& group : user.groups)
        groups.push_back(TextOf(group));
    for (const StaffRight& right : user.rights)
        rights.push_back({{"number", right.number}, {"name", right.name}, {"allowed", right.isAllowed}});
    return {{"id", TextOf(user.id)},
            {"name", TextOf(user.name)},
            {"role", user.role.IsEmpty() ? Json(nullptr) : TextOf(user.role)},
            {"groups", groups},
            {"rights", rights}};
}

std::string GroupsOf(const StaffMember& user)
{
    std::string text;
    for (const CString& group : user.groups)
        text += (text.empty() ? "" : ", ") + group.Str();
    return OrDash(text);
}

void List(const std::string& practice, const CommonOptions& options)
{
    const PracticeSession session(practice, options, Login::IfGiven);
    Json list = Json::array();
    TextTable table({"Id", "Name", "Role", "Groups"});
    for (const StaffMember& user : ListStaff()) {
        list.push_back(ToJson(user));
        table.Add({user.id.Str(), user.name.Str(), OrDash(user.role.Str()), GroupsOf(user)});
    }
    if (options.json)
        PrintJson(list);
    else
        table.Print();
}

void Show(const UserArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::IfGiven);
    const auto user = FindStaff(CString(arguments.id));
    if (!user)
        throw CommandError(Exit::BadInput, "UNKNOWN_USER",
                           "there is no user " + Quoted(arguments.id) + " in this practice",
                           "morv user list shows who there is.");
    if (options.json)
        return PrintJson(ToJson(*user));
    PrintLine("%s, %s; role %s; groups %s", user->id, user->name, OrDash(user->role.Str()), GroupsOf(*user));
    TextTable table({"No.", "Right", "Allowed"});
    for (const StaffRight& right : user->rights)
        table.Add({std::to_string(right.number), right.name, right.isAllowed ? "yes" : "no"});
    table.Print();
}

void Add(const UserArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::IfGiven);
    try {
        const StaffMember user = AddStaff(CString(arguments.id), CString(arguments.name), CString(arguments.role));
        if (options.json)
            return PrintJson(ToJson(user));
        PrintLine("Added %s, %s; role %s.", user.id, user.name, OrDash(user.role.Str()));
    } catch (const std::invalid_argument& refused) {
        throw CommandError(Exit::BadInput, "BAD_USER", refused.what(), "Nothing was added.");
    }
}

} // namespace

void AddUserCommands(CLI::App& app, Program& program)
{
    CLI::App* user = app.add_subcommand("user", "Users and their rights")->require_subcommand(1);
    auto arguments = std::make_shared<UserArguments>();

    CLI::App* list = user->add_subcommand("list", "All listed users");
    list->add_option("practice", arguments->practice, "The practice")->required();
    list->callback([=, &program] { List(arguments->practice, program.options); });

    CLI::App* show = user->add_subcommand("show", "One user with every right");
    show->add_option("practice", arguments->practice, "The practice")->required();
    show->add_option("id", arguments->id, "The user's id")->required();
    show->callback([=, &program] { Show(*arguments, program.options); });

    CLI::App* add = user->add_subcommand(
        "add", "Add a user: with the rights of a role; the first user of a practice, without one, with all rights");
    add->add_option("practice", arguments->practice, "The practice")->required();
    add->add_option("id", arguments->id, "The user's id, which nobody else has")
        ->required()
        ->check(TextUpTo(kLongestId))
        ->check(Utf8());
    add->add_option("--name", arguments->name, "The user's name")
        ->required()
        ->check(TextUpTo(kLongestName))
        ->check(Utf8());
    add->add_option("--role", arguments->role, "A role of the practice")->check(NotEmpty());
    add->callback([=, &program] { Add(*arguments, program.options); });
}

} // namespace Morv
