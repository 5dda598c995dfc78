#include "MorvUt/enquiries/rules/EnquiryDraft.h"

#include <gtest/gtest.h>

#include "Afx/windows/MessageBox.h"
#include "Brix/Records.h"
#include "MorvUt/enquiries/rules/EnquiryList.h"
#include "MorvUt/enquiries/rules/LinkedEnquiries.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/users/UserData.h"
#include "support/Case.h"
#include "support/Practice.h"

namespace
{

using Kiln::CDate;
using OfField = EnquiryField;

const CDate kToday(2024, 3, 1);

EnquiryDraft GoodDraft()
{
    EnquiryDraft draft;
    draft.description = "P60 of O'Brien";
    draft.start = CDate(2024, 2, 1);
    draft.due = CDate(2024, 2, 2);
    draft.hasReminder = draft.isReceived = draft.isLinked = true;
    draft.reminder = kToday;
    draft.sourceId = 10;
    draft.taskId = 5;
    return draft;
}

using Enquiries = ::Test::OnPractice;
ON_BOTH_DATABASES(Enquiries);

/// Client 1 with a source of three tasks, partnership 1 with one of its own.
void AddWork() { ::Test::Practice::Script(::Test::FileText("MorvUt/enquiries/EnquiryRules.sql")); }

std::string StoredLinks()
{
    return ::Test::Practice::Query("SELECT lClientID, lpClientID, nYear, SourceID, SourceTypeID, TypeID, dtReminder, "
                                   "dtReceived FROM ClientEnquiry ORDER BY lID");
}

} // namespace

TEST(EnquiryStatusOf, ComparesWholeDays)
{
    for (const int hour : {0, 23}) {
        ::Test::SetNow(2024, 3, 1, hour, hour == 0 ? 0 : 59);
        for (int days = -2; days <= 2; ++days)
            for (const double time : {0.0, 0.999}) {
                const CDate due = CDate::FromOleDate((kToday + days).GetOleDate() + time);
                EXPECT_EQ(EnquiryStatusOf({}, due, CDate::Today()),
                          days < 0 ? EnquiryStatus::Overdue : EnquiryStatus::Incomplete)
                    << days;
                EXPECT_EQ(EnquiryStatusOf(due, due, CDate::Today()), EnquiryStatus::Replied);
            }
    }
    EXPECT_EQ(EnquiryStatusOf({}, {}, kToday), EnquiryStatus::Incomplete) << "no due date";
}

TEST(CheckEnquiry, NamesTheFirstThatIsWrong)
{
    // what is spoiled, in the order in which it is asked; each row also has all that stand below it
    const ::Test::Row<void (*)(EnquiryDraft&), OfField, unsigned> rows[] = {
        {[](EnquiryDraft& d) { d.sourceId = 0; }, OfField::Source, IDS_ENQUIRY_NO_SOURCE, "no source"},
        {[](EnquiryDraft& d) { d.taskId = 0; }, OfField::Task, IDS_ENQUIRY_NO_TASK, "no task"},
        {[](EnquiryDraft& d) { d.received = CDate::Invalid(); }, OfField::Received, IDS_ENQUIRY_NO_DATE, "no date"},
        {[](EnquiryDraft& d) { d.description = " "; }, OfField::Description, IDS_ENQUIRY_NO_DESCRIPTION, "blank"},
        {[](EnquiryDraft& d) { d.due = d.start; }, OfField::Due, IDS_ENQUIRY_DUE_TOO_EARLY, "due on the day it starts"},
        {[](EnquiryDraft& d) { d.reminder = d.start; }, OfField::Reminder, IDS_ENQUIRY_REMINDER_TOO_EARLY, "reminder"},
        {[](EnquiryDraft& d) { d.reminder = kToday + -1; }, OfField::Reminder, IDS_ENQUIRY_REMINDER_PASSED, "passed"},
    };
    EXPECT_FALSE(CheckEnquiry(GoodDraft(), kToday));
    EnquiryDraft all = GoodDraft();
    for (auto row = std::rbegin(rows); row != std::rend(rows); ++row) {
        const auto& [spoil, field, text, why] = *row;
        EnquiryDraft one = GoodDraft();
        spoil(one);
        if (text != IDS_ENQUIRY_REMINDER_PASSED || all.reminder == kToday)
            spoil(all);
        for (const EnquiryDraft& draft : {one, all}) {
            const auto problem = CheckEnquiry(draft, kToday);
            ASSERT_TRUE(problem) << why;
            EXPECT_EQ(problem->field, field) << why;
            EXPECT_EQ(problem->text, text) << why;
            EXPECT_EQ(problem->isQuestion, text == IDS_ENQUIRY_REMINDER_PASSED) << why;
        }
    }
    EnquiryDraft draft = GoodDraft();
    draft.hasReminder = draft.isLinked = draft.isReceived = false;
    draft.sourceId = 0;
    draft.received = CDate::Invalid();
    draft.start = CDate();
    EXPECT_FALSE(CheckEnquiry(draft, kToday)) << "no box is ticked, and no start to be after";
}

TEST_P(Enquiries, AreSavedForTheirOwner)
{
    ::Test::SetNow(2024, 3, 1);
    AddWork();
    const auto save = [](EnquiryDraft draft, const TrackerOwner& owner) {
        Brix::CClientEnquiry row;
        return SaveEnquiry(row, draft, owner, 2024);
    };
    EnquiryDraft draft = GoodDraft();
    EXPECT_FALSE(save(draft, {1, false}));
    EXPECT_EQ(save(draft, {1, true})->text, IDS_ENQUIRY_NO_SOURCE) << "another owner's source";
    draft.taskId = 7;
    EXPECT_EQ(save(draft, {1, false})->text, IDS_ENQUIRY_NO_TASK);
    draft.isLinked = draft.hasReminder = false;
    EXPECT_FALSE(save(draft, {1, true}));
    EXPECT_EQ(StoredLinks(), "1|-|2024|10|1|5|2024-03-01|-, -|1|2024|0|0|0|-|-");
    EXPECT_EQ(::Test::Practice::Query("SELECT lID FROM ClientEnquiry ORDER BY lID"), "1, 2") << "none lost";

    Brix::CClientEnquiry row;
    row.Open({{Brix::CClientEnquiry::kClientID, 1}});
    draft = DraftOf(row);
    ::Test::Practice::Script("DELETE FROM SourceTask WHERE TypeID = 5");
    draft.isReceived = true;
    draft.received = kToday;
    EXPECT_FALSE(SaveEnquiry(row, draft, {1, false}, 2025)) << "a link that nobody touched stays";
    EXPECT_EQ(StoredLinks(), "1|-|2024|10|1|5|2024-03-01|2024-03-01, -|1|2024|0|0|0|-|-");
    draft.isLinked = false;
    EXPECT_FALSE(SaveEnquiry(row, draft, {1, false}, 2025));
    EXPECT_EQ(StoredLinks(), "1|-|2024|0|0|0|2024-03-01|2024-03-01, -|1|2024|0|0|0|-|-");
    EXPECT_EQ(DeleteEnquiries(Quarry::GetConnection(), {row.GetID(), 777}), 1);
    EXPECT_EQ(StoredLinks(), "-|1|2024|0|0|0|-|-");
}

TEST_P(Enquiries, AreListedWithTheirTasks)
{
    ::Test::SetNow(2024, 3, 1);
    AddWork();
    ::Test::Practice::Script(
        "INSERT INTO ClientEnquiry (lID, lClientID, nYear, strDescription, SourceID, TypeID, dtDue, dtReceived) VALUES "
        "(1, 1, 2024, 'a', 10, 5, '2024-02-29', NULL), (2, 1, 2024, 'b', 10, 6, NULL, NULL), "
        "(3, 1, 2023, 'c', 10, 19, NULL, '2024-01-01'), (4, 1, 2024, 'd', 10, NULL, NULL, NULL), "
        "(5, 1, 2024, 'e', 66, 5, NULL, NULL), (6, 1, 2024, 'f', 10, 5, NULL, '2024-01-01'), "
        "(7, 99, 2024, 'g', 12, 5, NULL, NULL)");
    const auto list = [](const EnquiryFilter& filter) {
        std::string text;
        for (const EnquiryLine& line : ListEnquiries(Quarry::GetConnection(), {1, false}, filter))
            text += line.description.Str() + ' ' + TextOf(line.status).Str() + ", " + TextOf(line.task.state).Str() +
                    ", " + line.task.TipText().Str() + "; ";
        return text;
    };
    const std::string first = "a Overdue, Task complete, Linked to Return, Received from Client which is complete; "
                              "b Incomplete, Task incomplete, Linked to Return, Sign which is outstanding; ";
    const std::string open = "d Incomplete, , ; e Incomplete, , ; ";
    EXPECT_EQ(list({.year = 2024, .hideCompleted = true}), first + open);
    EXPECT_EQ(list({.allYears = true}),
              first + "c Replied, Task not required, Linked to Return, Repayment Claim Made which is outstanding; " +
                  open + "f Replied, Task complete, Linked to Return, Received from Client which is complete; ");

    for (const auto& [source, task, isCompleted, isLinked, why] :
         ::Test::Table<long, long, int, int>("MorvUt/enquiries/EnquiryRules.tsv")) {
        EXPECT_EQ(AllEnquiriesCompleted(source, task), isCompleted) << why;
        EXPECT_EQ(HasLinkedEnquiries(source, task), isLinked) << why;
    }
}
