// locks list, clear.

#include <cmath>
#include <memory>

#include "Afx/text/TextFold.h"
#include "ArgumentChecks.h"
#include "Commands.h"
#include "MorvUt/users/locks/LockList.h"
#include "MorvUt/users/UserData.h"
#include "Output.h"
#include "Quarry/Session.h"
#include "Question.h"

namespace Morv
{

namespace
{

constexpr char kShowsAll[] = "morv locks list shows which there are.";

struct LockArguments
{
    std::string practice, kind, key;
    bool isYes = false;
};

/// "12 s", "3 min", "5 h", "2 days": whole ones of the greatest unit that there are two of.
std::string AgeInWords(const std::optional<double>& age)
{
    if (!age)
        return "-";
    constexpr struct
    {
        double seconds;
        const char* unit;
    } kUnits[] = {{86'400, " days"}, {3'600, " h"}, {60, " min"}, {1, " s"}};
    for (const auto& [seconds, unit] : kUnits)
        if (*age >= 2 * seconds)
            return std::to_string(static_cast<long>(*age / seconds)) + unit;
    return "now";
}

const char* AliveInWords(const std::optional<bool>& isAlive)
{
    if (!isAlive)
        return "not known";
    return *isAlive ? "running" : "ended";
}

std::string HolderOf(const HeldLock& lock)
{
    return lock.user.Str() + (lock.workstation.IsEmpty() ? "" : " at " + lock.workstation.Str());
}

Json JsonOf(const HeldLock& lock)
{
    return {{"kind", LockKindName(lock.kind)},
            {"key", TextOf(lock.key)},
            {"user", TextOf(lock.user)},
            {"workstation", lock.workstation.IsEmpty() ? Json(nullptr) : TextOf(lock.workstation)},
            {"since", MomentOf(lock.since)},
            {"ageSeconds", lock.age ? Json(static_cast<long long>(std::floor(*lock.age))) : Json(nullptr)},
            {"alive", lock.isAlive ? Json(*lock.isAlive) : Json(nullptr)}};
}

void Print(const CommonOptions& options)
{
    Json list = Json::array();
    TextTable table({"Kind", "Key", "User", "Workstation", "Since", "Age", "Its program"});
    for (const HeldLock& lock : ListLocks(Quarry::GetConnection())) {
        list.push_back(JsonOf(lock));
        table.Add({LockKindName(lock.kind), lock.key.Str(), lock.user.Str(), OrDash(lock.workstation.Str()),
                   ShownMoment(lock.since), AgeInWords(lock.age), AliveInWords(lock.isAlive)});
    }
    if (options.json)
        PrintJson(list);
    else if (table.IsEmpty())
        PrintText("Nothing is locked.");
    else
        table.Print();
}

/// A lock by its key, or a user lock by the user alone. Of several rows with one key the oldest.
HeldLock Find(const LockArguments& arguments)
{
    std::optional<HeldLock> found;
    for (const HeldLock& lock : ListLocks(Quarry::GetConnection())) {
        const bool isMeant = Afx::EqualNoCase(lock.key.View(), arguments.key) ||
                             (lock.kind == LockKind::User && Afx::EqualNoCase(lock.user.View(), arguments.key));
        if (LockKindName(lock.kind) != arguments.kind || !isMeant)
            continue;
        if (found && found->key != lock.key)
            throw CommandError(Exit::BadInput, "AMBIGUOUS_LOCK",
                               "there are several " + arguments.kind + " locks of " + Quoted(arguments.key) + ", " +
                                   found->key.Str() + " and " + lock.key.Str(),
                               "Give the whole key.");
        if (!found)
            found = lock;
    }
    if (!found)
        throw CommandError(Exit::BadInput, "UNKNOWN_LOCK",
                           "there is no " + arguments.kind + " lock " + Quoted(arguments.key), kShowsAll);
    return *found;
}

/// What follows from clearing it, to be decided.
std::string QuestionAbout(const HeldLock& lock)
{
    const std::string what = std::string("The ") + LockKindName(lock.kind) + " lock " + lock.key.Str() +
                             " is held by " + HolderOf(lock) + ", age " + AgeInWords(lock.age) + ". ";
    if (lock.isAlive == false)
        return what + "Its program has ended. Clear it?";
    return what + (lock.isAlive ? "Its program is still running" : "Whether its program still runs is not known") +
           ": cleared too early, two may do at once what only one may. Clear it all the same?";
}

void Clear(const LockArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const HeldLock lock = Find(arguments);
    NeedYes(arguments.isYes, QuestionAbout(lock), "nothing was cleared");
    if (!ClearLock(Quarry::GetConnection(), lock, CUserData::m_strUser))
        throw CommandError(Exit::Refused, "LOCK_GONE",
                           "the " + arguments.kind + " lock " + lock.key.Str() + " was released meanwhile", kShowsAll);
    if (!options.json)
        PrintLine("Cleared the %s lock %s of %s.", arguments.kind, lock.key, HolderOf(lock));
    Print(options);
}

} // namespace

void AddLockCommands(CLI::App& app, Program& program)
{
    CLI::App* locks =
        app.add_subcommand("locks", "Who keeps others out, and what was left behind")->require_subcommand(1);
    auto arguments = std::make_shared<LockArguments>();

    CLI::App* list = locks->add_subcommand("list", "All locks: users at work, features in use, tokens being refreshed");
    list->add_option("practice", arguments->practice, "The practice")->required();
    list->callback([=, &program] {
        const PracticeSession session(arguments->practice, program.options, Login::IfGiven);
        Print(program.options);
    });

    CLI::App* clear = locks->add_subcommand("clear", "Remove a lock that was left behind; answers what remains");
    clear->add_option("practice", arguments->practice, "The practice")->required();
    clear->add_option("kind", arguments->kind, "Its kind: user, feature or token")
        ->required()
        ->check(OneOf({"user", "feature", "token"}));
    clear->add_option("key", arguments->key, "Its key as in the list; of a user lock the user's id suffices")
        ->required()
        ->check(NotEmpty());
    clear->add_flag("--yes", arguments->isYes, "Do not ask");
    clear->callback([=, &program] { Clear(*arguments, program.options); });
}

} // namespace Morv
