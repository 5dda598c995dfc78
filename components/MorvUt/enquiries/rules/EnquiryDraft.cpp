#include "MorvUt/enquiries/rules/EnquiryDraft.h"

#include "Brix/Records.h"
#include "Cellar/Transaction.h"
#include "MorvUt/enquiries/rules/EnquiryList.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/users/UserData.h"

namespace
{

using Brix::CClientEnquiry;
using Kiln::CDate;

struct EntryRule
{
    bool (*isBroken)(const EnquiryDraft& draft, const CDate& today);
    EnquiryProblem problem;
};

bool IsNoDate(const CDate& date) { return date.GetStatus() == CDate::Status::Invalid; }

/// In the order in which the user meets them.
constexpr EntryRule kEntryRules[] = {
    {[](const EnquiryDraft& d, const CDate&) { return IsNoDate(d.start); }, {EnquiryField::Start, IDS_ENQUIRY_NO_DATE}},
    {[](const EnquiryDraft& d, const CDate&) { return IsNoDate(d.due); }, {EnquiryField::Due, IDS_ENQUIRY_NO_DATE}},
    {[](const EnquiryDraft& d, const CDate&) { return d.hasReminder && IsNoDate(d.reminder); },
     {EnquiryField::Reminder, IDS_ENQUIRY_NO_DATE}},
    {[](const EnquiryDraft& d, const CDate&) { return d.isReceived && IsNoDate(d.received); },
     {EnquiryField::Received, IDS_ENQUIRY_NO_DATE}},
    {[](const EnquiryDraft& d, const CDate&) { return CString(d.description).Trim().IsEmpty(); },
     {EnquiryField::Description, IDS_ENQUIRY_NO_DESCRIPTION}},
    {[](const EnquiryDraft& d, const CDate&) { return d.due.IsNotLaterDay(d.start); },
     {EnquiryField::Due, IDS_ENQUIRY_DUE_TOO_EARLY}},
    {[](const EnquiryDraft& d, const CDate&) { return d.hasReminder && d.reminder.IsNull(); },
     {EnquiryField::Reminder, IDS_ENQUIRY_NO_REMINDER}},
    {[](const EnquiryDraft& d, const CDate&) { return d.hasReminder && d.reminder.IsNotLaterDay(d.start); },
     {EnquiryField::Reminder, IDS_ENQUIRY_REMINDER_TOO_EARLY}},
    {[](const EnquiryDraft& d, const CDate& today) { return d.hasReminder && d.reminder.IsEarlierDay(today); },
     {EnquiryField::Reminder, IDS_ENQUIRY_REMINDER_PASSED, true}},
};

constexpr EnquiryProblem kNoSourceChosen{EnquiryField::Source, IDS_ENQUIRY_NO_SOURCE, false, true};
constexpr EnquiryProblem kNoTaskChosen{EnquiryField::Task, IDS_ENQUIRY_NO_TASK, false, true};

/// What a row is linked to, with the source's type; zeros when it is not linked.
struct StoredLink
{
    long source = 0, type = 0, task = 0;
};

/// A link that nobody touched stays as it is, also one to what is gone, or to a source alone.
bool IsLinkAsStored(const CClientEnquiry& enquiry, const EnquiryDraft& draft)
{
    return !enquiry.IsNew() && draft.sourceId != 0 && draft.isLinked == IsEnquiryLinked(enquiry) &&
           draft.sourceId == enquiry.GetSourceID() && draft.taskId == enquiry.GetTypeID();
}

/// The link as it is to be stored, to a task that the owner has.
std::optional<EnquiryProblem> FindLink(Cellar::CConnection& connection, const EnquiryDraft& draft,
                                       const TrackerOwner& owner, StoredLink& link)
{
    if (!draft.isLinked)
        return std::nullopt;
    Brix::CSource source;
    if (!source.Open(connection, {OwnedBy<Brix::CSource>(owner), {Brix::CSource::kSourceID, draft.sourceId}}))
        return kNoSourceChosen;
    Brix::CSourceTask task;
    if (!task.Open(connection,
                   {{Brix::CSourceTask::kSourceID, draft.sourceId}, {Brix::CSourceTask::kTypeID, draft.taskId}}))
        return kNoTaskChosen;
    link = {draft.sourceId, source.GetSourceTypeID(), draft.taskId};
    return std::nullopt;
}

std::optional<EnquiryProblem> SetLink(CClientEnquiry& enquiry, const EnquiryDraft& draft, const TrackerOwner& owner)
{
    if (IsLinkAsStored(enquiry, draft))
        return std::nullopt;
    StoredLink link;
    if (const auto problem = FindLink(enquiry.Connection(), draft, owner, link))
        return problem;
    enquiry.SetSourceID(link.source);
    enquiry.SetSourceTypeID(link.type);
    enquiry.SetTypeID(link.task);
    return std::nullopt;
}

} // namespace

EnquiryDraft NewEnquiryDraft()
{
    EnquiryDraft draft;
    draft.start = CDate::Today();
    return draft;
}

EnquiryDraft DraftOf(const CClientEnquiry& enquiry)
{
    EnquiryDraft draft;
    draft.description = enquiry.GetDescription();
    draft.start = enquiry.GetStart();
    draft.due = enquiry.GetDue();
    draft.reminder = enquiry.GetReminder();
    draft.hasReminder = draft.reminder.IsValid();
    draft.received = enquiry.GetReceived();
    draft.isReceived = draft.received.IsValid();
    draft.isLinked = IsEnquiryLinked(enquiry);
    draft.sourceId = enquiry.GetSourceID();
    draft.taskId = enquiry.GetTypeID();
    draft.carriesForward = enquiry.GetCarryForward();
    return draft;
}

std::optional<EnquiryProblem> CheckEnquiryLink(const EnquiryDraft& draft)
{
    if (draft.isLinked && draft.sourceId == 0)
        return kNoSourceChosen;
    if (draft.isLinked && draft.taskId == 0)
        return kNoTaskChosen;
    return std::nullopt;
}

std::optional<EnquiryProblem> CheckEnquiryEntries(const EnquiryDraft& draft, const CDate& today,
                                                  bool acceptsPastReminder)
{
    for (const EntryRule& rule : kEntryRules)
        if (!(rule.problem.isQuestion && acceptsPastReminder) && rule.isBroken(draft, today))
            return rule.problem;
    return std::nullopt;
}

std::optional<EnquiryProblem> CheckEnquiry(const EnquiryDraft& draft, const CDate& today, bool acceptsPastReminder)
{
    const auto problem = CheckEnquiryLink(draft);
    return problem ? problem : CheckEnquiryEntries(draft, today, acceptsPastReminder);
}

bool MayChangeEnquiries() { return TheUser().TaxReturnSaveAllowed(true) && !CUserData::CheckForReadOnlyWithError(); }

std::optional<EnquiryProblem> SaveEnquiry(CClientEnquiry& enquiry, const EnquiryDraft& draft, const TrackerOwner& owner,
                                          short year)
{
    if (enquiry.IsEOL()) {
        StoredLink link;
        if (const auto problem = FindLink(enquiry.Connection(), draft, owner, link))
            return problem;
        enquiry.AddNew(); // takes an id, which a refusal would lose, and outside a transaction one alone
    }
    Cellar::CTransaction transaction(enquiry.Connection(), Cellar::Intent::Write, SubjectOf(owner));
    if (const auto problem = SetLink(enquiry, draft, owner))
        return problem;
    if (enquiry.IsNew()) {
        SetOwner(enquiry, owner);
        enquiry.SetYear(year);
    }
    enquiry.SetDescription(draft.description);
    enquiry.SetStart(draft.start);
    enquiry.SetDue(draft.due);
    enquiry.SetReminder(draft.hasReminder ? draft.reminder : CDate());
    enquiry.SetReceived(draft.isReceived ? draft.received : CDate());
    enquiry.SetCarryForward(draft.carriesForward);
    enquiry.Update();
    transaction.Commit();
    return std::nullopt;
}

int DeleteEnquiries(Cellar::CConnection& connection, const std::vector<long>& ids)
{
    int count = 0;
    Cellar::CTransaction transaction(connection);
    for (const std::vector<long>& piece : Quarry::Where::InPieces(ids)) {
        CClientEnquiry enquiries;
        for (enquiries.Open(connection, {Quarry::Where::In(0, piece)}); !enquiries.IsEOL(); ++count)
            enquiries.Delete();
    }
    transaction.Commit();
    return count;
}
