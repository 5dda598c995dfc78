#include "Tracker.h"

#include <array>

#include "MorvUt/context/TrackerTypes.h"
#include "MorvUt/mappings/TypeMappings.h"
#include "Quarry/NewId.h"
#include "Quarry/Session.h"
#include "Rows.h"

namespace Morv::Sample
{

namespace
{

using Kiln::CDate;

constexpr int kTaskTable = 99, kSourceTable = 100; // of ppAllMappings
constexpr int kSubmitted = 7, kReceivedFromClient = 5;

const char* NameOf(int table, int code)
{
    const char* name = "";
    GetMapLongNameFromIndex(ppAllMappings[table], &name, code);
    return name;
}

/// A new source; its id.
long AddSource(const Owner& owner, short year, int type, const char* description, bool isJob)
{
    return Add<Brix::CSource>([&](Brix::CSource& source) {
        source.SetSourceID(Quarry::NewId(source.GetTable()));
        if (owner.isPartnership)
            source.SetPClientID(owner.id);
        else
            source.SetClientID(owner.id);
        source.SetYear(year);
        source.SetSourceTypeID(type);
        source.SetStatus("?");
        source.SetShowReminder(true);
        source.SetDescription(description);
        source.SetUserCreated(isJob);
    });
}

void AddJobTask(long source, int type, short year, const char* assignedTo)
{
    Add<Brix::CSourceTask>([&](Brix::CSourceTask& task) {
        task.SetSourceID(source);
        task.SetTypeID(type);
        task.SetListOrder(type);
        task.SetDueDate(CDate(year, 9, 30));
        task.SetReminderDate(CDate(year, 9, 1));
        task.SetAssignedTo(assignedTo);
        task.SetDescription(NameOf(kTaskTable, type));
    });
}

} // namespace

long AddReturnSource(const Owner& owner, short year, int complete, const char* assignedTo)
{
    const int type = owner.isPartnership ? kPartnershipReturnSource : kTaxReturnSource;
    const long source =
        AddSource(owner, year, type, owner.isTrust ? "Tax Return SA900" : NameOf(kSourceTable, type), false);
    // Repayment claims are tasks that not every return has.
    Quarry::GetConnection().ExecuteDirectf(
        "INSERT INTO [SourceTask] ([SourceID], [TypeID], [ListOrder], [DueDate], [ReminderDate], [bRequired], "
        "[bComplete], [strAssignedTo]) SELECT %ld, [TypeID], [ListOrder], "
        "CASE WHEN [TypeID] = %d THEN %t WHEN [TypeID] = %d THEN %t END, CASE WHEN [TypeID] = %d THEN %t END, "
        "CASE WHEN [TypeID] IN (19, 20) THEN 0 ELSE 1 END, CASE WHEN [ListOrder] <= %d THEN 1 ELSE 0 END, %s "
        "FROM [SourceDefaultTask] WHERE [SourceTypeID] = %d AND [DefaultTrackerID] IS NULL",
        source, kSubmitted, CDate(year + 1, 1, 31), kReceivedFromClient, CDate(year, 10, 5), kSubmitted,
        CDate(year + 1, 1, 1), complete, assignedTo, type);
    return source;
}

void AddJob(const Owner& owner, short year, const char* what, const char* assignedTo)
{
    const long source = AddSource(owner, year, kOtherSource, what, true);
    for (const int type : {1, 2, 3})
        AddJobTask(source, type, year, assignedTo);
}

void AddEnquiry(const Owner& owner, short year, int which, long source)
{
    constexpr std::array kQuestions{
        "Statement of interest for the joint account", "Date of purchase of the flat", "P60 of the second employment",
        "Receipts for the gift aid donations",         "Log of business miles",        "Letter about the tax code"};
    const bool isOpen = which % 3 != 0;
    Add<Brix::CClientEnquiry>([&](Brix::CClientEnquiry& enquiry) {
        if (owner.isPartnership)
            enquiry.SetPClientID(owner.id);
        else
            enquiry.SetClientID(owner.id);
        enquiry.SetYear(year);
        enquiry.SetDescription(kQuestions[static_cast<std::size_t>(which) % kQuestions.size()]);
        enquiry.SetCarryForward(which % 4 == 1);
        if (source != 0) {
            enquiry.SetSourceID(source);
            enquiry.SetSourceTypeID(owner.isPartnership ? kPartnershipReturnSource : kTaxReturnSource);
            enquiry.SetTypeID(kReceivedFromClient);
        }
        enquiry.SetStart(CDate(year, 6, 1 + which % 28));
        enquiry.SetDue(CDate(year, 7, 1 + which % 28));
        enquiry.SetReminder(CDate(year, 6, 15 + which % 14));
        if (!isOpen)
            enquiry.SetReceived(CDate(year, 6, 20 + which % 10));
    });
}

} // namespace Morv::Sample
