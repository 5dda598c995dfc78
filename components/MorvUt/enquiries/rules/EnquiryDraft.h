#pragma once

// An enquiry as somebody enters it: what is wrong with it, and saving it.

#include <cstdint>
#include <optional>
#include <vector>

#include "Afx/text/CString.h"
#include "Cellar/Connection.h"
#include "Kiln/CDate.h"
#include "MorvUt/enquiries/rules/TrackerOwner.h"
#include "MorvUt/Export.h"

namespace Brix
{
class CClientEnquiry;
}

/// What was entered, free of controls. A date that is not valid stands for a text that is none. What belongs to a box
/// that is not ticked is not looked at, and not stored.
struct EnquiryDraft
{
    CString description;
    Kiln::CDate start, due;
    bool hasReminder = false;
    Kiln::CDate reminder;
    bool isReceived = false;
    Kiln::CDate received;
    bool isLinked = false; // to a task of a source:
    long sourceId = 0;     // 0: none chosen, as the next
    long taskId = 0;       // its type
    bool carriesForward = false;
};
/// Of a new enquiry: it starts today.
MORVUT_API EnquiryDraft NewEnquiryDraft();
/// Of the current row.
MORVUT_API EnquiryDraft DraftOf(const Brix::CClientEnquiry& enquiry);

enum class EnquiryField : std::uint8_t
{
    Description,
    Start,
    Due,
    Reminder,
    Received,
    Source,
    Task
};

/// What keeps a draft from being saved.
struct EnquiryProblem
{
    EnquiryField field;      // where the user goes on
    unsigned text;           // of the library's strings
    bool isQuestion = false; // Yes: the user goes on there; No: it is saved as it is
    bool isWarning = false;  // it is shown with the warning sign
};

/// The first that is wrong with the link: no source, no task.
MORVUT_API std::optional<EnquiryProblem> CheckEnquiryLink(const EnquiryDraft& draft);
/// The first that is wrong with the entries: a text that is no date, no description, then what does not fit of due date
/// and reminder. Days are compared whatever their time, and only with days that there are. A reminder that has passed
/// is the last, and a question, unless `acceptsPastReminder`: the user has answered it with No.
MORVUT_API std::optional<EnquiryProblem> CheckEnquiryEntries(const EnquiryDraft& draft, const Kiln::CDate& today,
                                                             bool acceptsPastReminder = false);
/// Both, in the order in which OK asks.
MORVUT_API std::optional<EnquiryProblem> CheckEnquiry(const EnquiryDraft& draft, const Kiln::CDate& today,
                                                      bool acceptsPastReminder = false);

/// Whether the user may save and delete enquiries: the right to save the return, and nothing that makes the client
/// read-only. A refusal is shown.
MORVUT_API bool MayChangeEnquiries();

/// Writes the draft into the current row, or into a new one where there is none, and saves it. A new row becomes the
/// owner's and the year's (real). Not saved, with what is wrong, when the task that it is newly linked to is not the
/// owner's, or is not there any more. Throws Quarry::ChangedByAnotherUser and Cellar::DatabaseError.
MORVUT_API std::optional<EnquiryProblem> SaveEnquiry(Brix::CClientEnquiry& enquiry, const EnquiryDraft& draft,
                                                     const TrackerOwner& owner, short year);

/// Deletes the enquiries of these ids, all or none, and tells how many there were: somebody else may have deleted one
/// meanwhile, which is no fault. Throws Quarry::ChangedByAnotherUser and Cellar::DatabaseError.
MORVUT_API int DeleteEnquiries(Cellar::CConnection& connection, const std::vector<long>& ids);
