// user list, show.

#include <map>
#include <memory>

#include "Brix/Records.h"
#include "Commands.h"
#include "MorvUt/MorvUt.h"
#include "Output.h"

namespace Morv
{

namespace
{

Json GroupsOf(const CString& userId)
{
    Json list = Json::array();
    Brix::CGroupUser members;
    for (members.Open({{Brix::CGroupUser::kUserID, userId}}); !members.IsEOL(); members.MoveNext()) {
        Brix::CGroup group;
        if (group.Open({{0, members.GetGroupID()}}))
            list.push_back(TextOf(group.GetName()));
    }
    return list;
}

// The rights that a user's role, or without one the user's own rows, give.
std::map<int, bool> RightsOf(const Brix::CUser& user)
{
    std::map<int, bool> rights;
    if (!user.GetRole().IsEmpty()) {
        Brix::CUserRolePermissions rows;
        for (rows.Open({{Brix::CUserRolePermissions::kRole, user.GetRole()}}); !rows.IsEOL(); rows.MoveNext())
            rights[rows.GetPermission()] = rows.GetAllowed();
        return rights;
    }
    Brix::CUserPermissions rows;
    for (rows.Open({{Brix::CUserPermissions::kUserID, user.GetUserID()}}); !rows.IsEOL(); rows.MoveNext())
        rights[rows.GetPermission()] = rows.GetAllowed();
    return rights;
}

Json ViewOf(const Brix::CUser& user)
{
    const auto rights = RightsOf(user);
    Json list = Json::array();
    for (const auto& permission : CUserData::GetPermissionQueries()) {
        const auto row = rights.find(permission.number);
        list.push_back({{"number", permission.number},
                        {"name", permission.name},
                        {"allowed", row != rights.end() && row->second}});
    }
    return {{"id", TextOf(user.GetUserID())},
            {"name", TextOf(user.GetFullName())},
            {"role", user.GetRole().IsEmpty() ? Json(nullptr) : TextOf(user.GetRole())},
            {"groups", GroupsOf(user.GetUserID())},
            {"rights", list}};
}

std::string JoinTexts(const Json& list)
{
    std::string text;
    for (const Json& item : list)
        text += (text.empty() ? "" : ", ") + item.get<std::string>();
    return text.empty() ? "-" : text;
}

std::string RoleOf(const Json& user) { return user["role"].is_null() ? "-" : user["role"].get<std::string>(); }

void List(const std::string& practice, const CommonOptions& options)
{
    const PracticeSession session(practice, options, Login::IfGiven);
    Json list = Json::array();
    Brix::CUser users;
    for (users.Open({}, {{Brix::CUser::kUserID}}); !users.IsEOL(); users.MoveNext())
        if (users.GetListed())
            list.push_back(ViewOf(users));
    if (options.json)
        return PrintJson(list);
    TextTable table({"Id", "Name", "Role", "Groups"});
    for (const Json& row : list)
        table.Add({row["id"], row["name"], RoleOf(row), JoinTexts(row["groups"])});
    table.Print();
}

void Show(const std::string& practice, const std::string& id, const CommonOptions& options)
{
    const PracticeSession session(practice, options, Login::IfGiven);
    Brix::CUser user;
    if (!user.Open({{Brix::CUser::kUserID, id}}))
        throw CommandError(Exit::BadInput, "UNKNOWN_USER", "there is no user " + Quoted(id) + " in this practice",
                           "morv user list shows who there is.");
    const Json view = ViewOf(user);
    if (options.json)
        return PrintJson(view);
    PrintLine("%s, %s; role %s; groups %s", view["id"].get<std::string>(), view["name"].get<std::string>(),
              RoleOf(view), JoinTexts(view["groups"]));
    TextTable table({"No.", "Right", "Allowed"});
    for (const Json& right : view["rights"])
        table.Add(
            {std::to_string(right["number"].get<int>()), right["name"], right["allowed"].get<bool>() ? "yes" : "no"});
    table.Print();
}

} // namespace

void AddUserCommands(CLI::App& app, Program& program)
{
    CLI::App* user = app.add_subcommand("user", "Users and their rights")->require_subcommand(1);
    auto path = std::make_shared<std::string>();
    auto id = std::make_shared<std::string>();

    CLI::App* list = user->add_subcommand("list", "All listed users");
    list->add_option("practice", *path, "The practice")->required();
    list->callback([=, &program] { List(*path, program.options); });

    CLI::App* show = user->add_subcommand("show", "One user with every right");
    show->add_option("practice", *path, "The practice")->required();
    show->add_option("id", *id, "The user's id")->required();
    show->callback([=, &program] { Show(*path, *id, program.options); });
}

} // namespace Morv
