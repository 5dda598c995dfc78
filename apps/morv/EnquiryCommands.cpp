// enquiry list, links, add, edit, receive, delete.

#include <memory>
#include <optional>
#include <vector>

#include "ArgumentChecks.h"
#include "Brix/Records.h"
#include "Commands.h"
#include "HmrcCommands.h"
#include "MorvUt/enquiries/rules/EnquiryDraft.h"
#include "MorvUt/enquiries/rules/EnquiryList.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/TaxYear.h"
#include "MorvUt/users/UserData.h"
#include "Output.h"
#include "Quarry/Session.h"
#include "Question.h"
#include "Who.h"

namespace Morv
{

namespace
{

using Brix::CClientEnquiry;

struct EnquiryArguments
{
    std::string practice;
    WhoArguments who;
    long id = 0;
    std::vector<long> ids;
    std::optional<std::string> description, start, due, reminder, received; // an empty date: none
    std::optional<long> source, task;
    std::optional<bool> carriesForward;
    bool isYes = false, allYears = false, hideCompleted = false, isUnlinked = false;
};

Json JsonOf(const EnquiryLine& line)
{
    const CString task = TextOf(line.task.state);
    return {{"id", line.id},
            {"status", TextOf(TextOf(line.status))},
            {"start", DateOf(line.start)},
            {"description", TextOf(line.description)},
            {"due", DateOf(line.due)},
            {"reminder", DateOf(line.reminder)},
            {"taskStatus", task.IsEmpty() ? Json(nullptr) : TextOf(task)},
            {"link", task.IsEmpty() ? Json(nullptr) : TextOf(line.task.TipText())},
            {"year", line.year}};
}

void Print(const std::vector<EnquiryLine>& lines)
{
    TextTable table({"Id", "Status", "Date", "Description", "Due", "Reminder", "Task Status", "Tax Year"});
    for (const EnquiryLine& line : lines)
        table.Add({std::to_string(line.id), TextOf(line.status).Str(), ShownDate(line.start),
                   Shown(line.description.View()), ShownDate(line.due), ShownDate(line.reminder),
                   OrDash(TextOf(line.task.state).Str()), line.YearText().Str()});
    if (table.IsEmpty())
        PrintText("No enquiries.");
    else
        table.Print();
}

void List(const EnquiryArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const ClientView client = arguments.who.Find();
    const std::vector<EnquiryLine> lines =
        ListEnquiries(Quarry::GetConnection(), {client.id, client.IsPartnership()},
                      {GetCurrentRealTaxYear(), arguments.allYears, arguments.hideCompleted});
    if (!options.json)
        return Print(lines);
    Json list = Json::array();
    for (const EnquiryLine& line : lines)
        list.push_back(JsonOf(line));
    PrintJson(list);
}

/// Sources and tasks that an enquiry of the client can be linked to.
void ListLinks(const EnquiryArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const ClientView client = arguments.who.Find();
    Json list = Json::array();
    TextTable table({"Source", "Tax Year", "Name", "Task", "Name"});
    for (const SourceChoice& source : ListSources(Quarry::GetConnection(), {client.id, client.IsPartnership()})) {
        Json tasks = Json::array();
        for (const TaskChoice& task : ListTasks(Quarry::GetConnection(), source.id)) {
            tasks.push_back({{"task", task.typeId}, {"name", TextOf(task.name)}});
            table.Add({std::to_string(source.id), TaxYear(source.year).Format().Str(), Shown(source.name.View()),
                       std::to_string(task.typeId), Shown(task.name.View())});
        }
        list.push_back({{"source", source.id}, {"year", source.year}, {"name", TextOf(source.name)}, {"tasks", tasks}});
    }
    if (options.json)
        PrintJson(list);
    else if (table.IsEmpty())
        PrintText("No sources with tasks.");
    else
        table.Print();
}

/// The enquiry as it is now.
void Answer(long id, const CommonOptions& options)
{
    const auto line = FindEnquiry(Quarry::GetConnection(), id);
    if (options.json)
        PrintJson(JsonOf(line.value()));
    else
        Print({line.value()});
}

CommandError UnknownEnquiry(long id)
{
    return {Exit::BadInput, "UNKNOWN_ENQUIRY", "there is no enquiry " + std::to_string(id) + " in this practice",
            "morv enquiry list shows which there are."};
}

/// Of the two refusals that a message box tells, the one that is meant.
void NeedRight()
{
    const QuietMessages quiet;
    if (MayChangeEnquiries())
        return;
    const bool isReadOnly = TheUser().TaxReturnSaveAllowed(false);
    throw CommandError(Exit::Refused, "REFUSED",
                       Printable(LibraryText(isReadOnly ? IDS_CLIENT_READ_ONLY : IDS_NO_PERMISSION).View()),
                       "Ask whoever administers the practice, or work on a client who may be changed.");
}

/// A date as users type it; null for an empty text.
Kiln::CDate DateFrom(const char* option, const std::string& text)
{
    Kiln::CDate date;
    if (!date.ParseDate(text.c_str()) && !date.IsNull())
        throw CommandError(Exit::BadInput, "BAD_DATE",
                           std::string(option) + ": " + Kiln::CDate::WhyNotDate(text.c_str()).Str(),
                           "A date looks like 2024-04-06 or 6/4/2024.");
    return date;
}

void Fill(EnquiryDraft& draft, const EnquiryArguments& arguments)
{
    if (arguments.description)
        draft.description = arguments.description->c_str();
    if (arguments.start)
        draft.start = DateFrom("--start", *arguments.start);
    if (arguments.due)
        draft.due = DateFrom("--due", *arguments.due);
    if (arguments.reminder) {
        draft.reminder = DateFrom("--reminder", *arguments.reminder);
        draft.hasReminder = !arguments.reminder->empty();
    }
    if (arguments.received) {
        draft.received = DateFrom("--received", *arguments.received);
        draft.isReceived = draft.received.IsValid();
    }
    if (arguments.carriesForward)
        draft.carriesForward = *arguments.carriesForward;
    if (arguments.source || arguments.task) {
        draft.isLinked = true;
        draft.sourceId = arguments.source.value_or(draft.sourceId);
        draft.taskId = arguments.task.value_or(0);
    }
    if (arguments.isUnlinked)
        draft.isLinked = false;
}

CommandError RefusalOf(const EnquiryProblem& problem)
{
    const std::string text = Printable(LibraryText(problem.text).View());
    if (problem.isQuestion)
        return {Exit::Refused, "NOT_CONFIRMED", text, "Give another --reminder, or --yes to save it as it is."};
    return {Exit::BadInput, "BAD_ENQUIRY", text, "Nothing was saved."};
}

void Check(const EnquiryDraft& draft, const EnquiryArguments& arguments)
{
    NeedRight();
    if (const auto problem = CheckEnquiry(draft, Kiln::CDate::Today(), arguments.isYes))
        throw RefusalOf(*problem);
}

/// Answers the enquiry.
void Save(CClientEnquiry& enquiry, const EnquiryDraft& draft, const TrackerOwner& owner, const CommonOptions& options)
{
    if (const auto problem = SaveEnquiry(enquiry, draft, owner, GetCurrentRealTaxYear()))
        throw RefusalOf(*problem);
    Answer(enquiry.GetID(), options);
}

void Add(const EnquiryArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const ClientView client = arguments.who.Find();
    EnquiryDraft draft = NewEnquiryDraft();
    Fill(draft, arguments);
    Check(draft, arguments);
    CClientEnquiry enquiry;
    Save(enquiry, draft, {client.id, client.IsPartnership()}, options);
}

/// `change` of the enquiry's draft.
template<class Change>
void Edit(const EnquiryArguments& arguments, const CommonOptions& options, Change change)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    CClientEnquiry enquiry;
    if (!enquiry.Open({{0, arguments.id}}))
        throw UnknownEnquiry(arguments.id);
    EnquiryDraft draft = DraftOf(enquiry);
    change(draft);
    Check(draft, arguments);
    Save(enquiry, draft, OwnerOf(enquiry.GetClientID(), enquiry.GetPClientID()), options);
}

void Receive(EnquiryArguments arguments, const CommonOptions& options)
{
    arguments.isYes = true; // a reminder that has passed is no matter of an answer
    Edit(arguments, options, [&](EnquiryDraft& draft) {
        draft.received = arguments.received ? DateFrom("--date", *arguments.received) : Kiln::CDate::Today();
        draft.isReceived = true;
    });
}

void Delete(const EnquiryArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    for (const long id : arguments.ids)
        if (!CClientEnquiry().Open({{0, id}}))
            throw UnknownEnquiry(id);
    NeedRight();
    NeedYes(arguments.isYes, LibraryText(IDS_ENQUIRY_DELETE).Str(), "nothing was deleted");
    const int count = DeleteEnquiries(Quarry::GetConnection(), arguments.ids);
    if (options.json)
        return PrintJson({{"deleted", count}});
    PrintLine("Deleted %d %s.", count, count == 1 ? "enquiry" : "enquiries");
}

CLI::App* AddCommand(CLI::App& enquiry, const char* name, const char* meaning, EnquiryArguments& arguments)
{
    CLI::App* command = enquiry.add_subcommand(name, meaning);
    command->add_option("practice", arguments.practice, "The practice")->required();
    return command;
}

void AddEntryOptions(CLI::App& command, EnquiryArguments& arguments)
{
    command.add_option("--description", arguments.description, "What is asked for")
        ->check(TextUpTo(kLongestName))
        ->check(Utf8());
    command.add_option("--start", arguments.start, "When it was raised (default: today)");
    command.add_option("--due", arguments.due, "When the answer is due; an empty text: no date, as below");
    command.add_option("--reminder", arguments.reminder, "When to be reminded");
    command.add_option("--received", arguments.received, "When the answer came");
    command.add_option("--source", arguments.source, "Tracker source that it is linked to, its number")
        ->check(PlainNumber());
    command.add_option("--task", arguments.task, "Task of that source, the number of its type")->check(PlainNumber());
    command.add_flag_function(
        "--carry-forward,!--no-carry-forward",
        [&arguments](std::int64_t count) { arguments.carriesForward = count > 0; },
        "Ask again in the next tax year, or do not");
    command.add_flag("--yes", arguments.isYes, "Save a reminder that has passed already");
}

CLI::Option* AddIdOption(CLI::App& command, EnquiryArguments& arguments)
{
    return command.add_option("--id", arguments.id, "The enquiry's number in the list")
        ->required()
        ->check(PlainNumber());
}

} // namespace

void AddEnquiryCommands(CLI::App& app, Program& program)
{
    CLI::App* enquiry =
        app.add_subcommand("enquiry", "What clients and partnerships are asked for")->require_subcommand(1);
    auto arguments = std::make_shared<EnquiryArguments>();

    CLI::App* list =
        AddCommand(*enquiry, "list", "The enquiries of one client or partnership in the tax year", *arguments);
    AddWhoOptions(*list, arguments->who, true);
    list->add_flag("--all-years", arguments->allYears, "Those of all tax years");
    list->add_flag("--hide-completed", arguments->hideCompleted, "Without those that were answered");
    list->callback([=, &program] { List(*arguments, program.options); });

    CLI::App* links =
        AddCommand(*enquiry, "links", "What enquiries of one client or partnership can be linked to", *arguments);
    AddWhoOptions(*links, arguments->who, true);
    links->callback([=, &program] { ListLinks(*arguments, program.options); });

    CLI::App* add = AddCommand(*enquiry, "add", "Add one in the tax year", *arguments);
    AddWhoOptions(*add, arguments->who, true);
    AddEntryOptions(*add, *arguments);
    add->callback([=, &program] { Add(*arguments, program.options); });

    CLI::App* edit = AddCommand(*enquiry, "edit", "Change what is given of one", *arguments);
    AddIdOption(*edit, *arguments);
    AddEntryOptions(*edit, *arguments);
    edit->add_flag("--unlink", arguments->isUnlinked, "Link it to no task");
    edit->callback(
        [=, &program] { Edit(*arguments, program.options, [&](EnquiryDraft& draft) { Fill(draft, *arguments); }); });

    CLI::App* receive = AddCommand(*enquiry, "receive", "The answer to one has come", *arguments);
    AddIdOption(*receive, *arguments);
    receive->add_option("--date", arguments->received, "When (default: today)")->check(NotEmpty());
    receive->callback([=, &program] { Receive(*arguments, program.options); });

    CLI::App* remove = AddCommand(*enquiry, "delete", "Delete one or several", *arguments);
    remove->add_option("--id", arguments->ids, "Their numbers in the list")->required()->check(PlainNumber());
    remove->add_flag("--yes", arguments->isYes, "Do not ask");
    remove->callback([=, &program] { Delete(*arguments, program.options); });
}

} // namespace Morv
