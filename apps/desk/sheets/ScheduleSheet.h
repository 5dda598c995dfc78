#pragma once

// The sheet of one schedule: its record with notes and the completed box.

#include <initializer_list>

#include "Brix/Records.h"
#include "MorvUt/ui/sheets/TXPropertyPage.h"
#include "MorvUt/ui/sheets/TXPropertySheet.h"
#include "Schedules.h"

namespace Desk
{

/// The ordinals of the record's columns for what the sheet itself shows; -1: it has no such column.
struct ScheduleColumns
{
    NotesRows notes;
    int schemeReference = -1, schemeYear = -1;
    int completed = -1;
};

template<class Record>
constexpr ScheduleColumns ColumnsWithNotes() noexcept
{
    return {{Record::kNotesAudit, Record::kNotesReturn, Record::kNotesEstimate, Record::kNotesAvoidance},
            Record::kSchemeReference,
            Record::kSchemeYear,
            Record::kCompleted};
}

/// Saving asks the user's right, and that the return is not finalised. What somebody else has changed meanwhile is
/// told, and the sheet stays open.
class CScheduleSheet : public TXPropertySheet
{
public:
    /// `record` outlives the sheet and stands on the row.
    CScheduleSheet(const ScheduleOwner& owner, ScheduleKind kind, Quarry::CDataList& record,
                   const ScheduleColumns& columns = {});

    void OnCompletedClicked(int completed) override;
    int ShowCompletedCheckBox() override { return m_columns.completed != -1; }
    /// The first page writes the row: a new one must not be written without its return.
    void SetNotes(NotesType type, const CString& notes) override;
    void GetAvoidanceNotes(CString& schemeReference, CString& notes, short& year) override;
    void SetAvoidanceNotes(const CString& schemeReference, const CString& notes, const short& year) override;
    void GetNotesDescription(CString& description) override { description = Text(); }
    CString GetInfoLine(unsigned id) override;
    CString HelpFilePath() const override;

    const ScheduleOwner& Owner() const noexcept { return m_owner; }

protected:
    bool OnInitDialog() override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    /// The first page has something to apply: what the furniture holds is written with it.
    void Modified();

private:
    ScheduleOwner m_owner;
    Quarry::CDataList& m_record;
    ScheduleColumns m_columns;
};

/// Shows these pages, which outlive it. True when OK was accepted.
bool RunSheet(CScheduleSheet& sheet, std::initializer_list<TXPropertyPage*> pages);

/// Whether the user may save schedules of this owner's year, who is told why not.
bool MaySave(const ScheduleOwner& owner);

/// Moves `form` to the client's return of the year, which is made when it is not there.
void MoveToTaxForm(Brix::CTaxForm& form, const ScheduleOwner& owner);

/// Stands the list on the schedule `id`, or on a new one of the owner's. False, and the user is told, when somebody
/// else has deleted it.
template<class Record>
bool StandOn(Record& record, const ScheduleOwner& owner, long id);
/// A row that is new gets its tax form and its place behind the others, which `nextOrdering` tells.
template<class Record, class NextOrdering>
void PutIntoReturn(Record& record, const ScheduleOwner& owner, NextOrdering nextOrdering);

bool TellGone();

/// A grid on a page, which has something to apply once a cell has changed.
template<class Grid>
class AppliedGrid : public Grid
{
public:
    using Grid::Grid;

protected:
    void OnGridCellEndEdit(int row, int column) override
    {
        Grid::OnGridCellEndEdit(row, column);
        static_cast<CPropertyPage&>(*this->GetParent()).SetModified();
    }
};

template<class Record>
bool StandOn(Record& record, const ScheduleOwner& owner, long id)
{
    if (id != 0)
        return record.Open({{0, id}}) || TellGone();
    record.AddNew();
    record.SetClientID(owner.client.id);
    record.SetYear(owner.year);
    return true;
}

template<class Record, class NextOrdering>
void PutIntoReturn(Record& record, const ScheduleOwner& owner, NextOrdering nextOrdering)
{
    if (!record.IsNew())
        return;
    Brix::CTaxForm form;
    MoveToTaxForm(form, owner);
    record.SetTaxFormID(form.GetID());
    record.SetOrdering(static_cast<int>(nextOrdering(form)));
}

} // namespace Desk
