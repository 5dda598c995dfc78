#pragma once

// The property sheet of the suite's data-entry screens.

#include <memory>
#include <vector>

#include "Afx/windows/MessageMap.h"
#include "Kiln/controls/ExDialog.h"
#include "MorvUt/Export.h"
#include "MorvUt/ui/sheets/Furniture.h"
#include "MorvUt/ui/sheets/NotesKinds.h"
#include "Quarry/DataList.h"

class CJointSpouseIncomeDlg;
class CNotesStatusDlg;
class TXPropertyPage;

namespace Quarry
{
class CTransaction;
}

/// A sheet with one level of the data services' transaction and, as far as the derived sheet switches it on by
/// overriding a query, furniture under the tabs: two information lines, a completed box, a button for notes, the name
/// of a partnership, and a panel for income shared with a spouse. Everything is off by default.
///
/// The level begins when the sheet opens. OK and Apply commit it once all pages have accepted, and after Apply the next
/// begins; Cancel, and a refused start, roll it back. When another program is writing to the practice the user is told,
/// and the sheet stays open with what was typed.
class MORVUT_API TXPropertySheet : public Kiln::CExPropertySheet
{
    DECLARE_DYNAMIC(TXPropertySheet)

    using NotesType = NotesKind;

    explicit TXPropertySheet(const char* caption = "", int firstPage = 0);
    ~TXPropertySheet() override;

    // What a derived sheet may override; the order of these is fixed.

    /// The notes button was pressed: opens the notes, at the page of `first`.
    virtual void OnNotesClicked(NotesType first);
    /// The completed box was clicked: stores 0 or 1.
    virtual void OnCompletedClicked(int completed);
    /// Whether the split with the spouse may be edited; `reason` tells why not.
    virtual int EnableJointSpouseIncome(CString& reason);
    /// The joint box was toggled, the share was left, the view was chosen; the new value is stored already.
    virtual void OnJointSpouseIncome();
    virtual void OnJointSpouseShareKillFocus();
    virtual void OnJointSpouseView();
    /// The text of information line kInfoLine1Id or kInfoLine2Id. The sheet has the line if it is not empty when the
    /// sheet opens.
    virtual CString GetInfoLine(unsigned id);
    /// Whether that line is visible while page `page` (from 0) is active.
    virtual int ShowInfoLine(int page, unsigned id);
    virtual int ShowCompletedCheckBox();
    virtual int ShowPartnershipNameBox();
    virtual int ShowJointSpouseIncome();
    /// What the joint panel shows first: 0 or 1; the client's share in per cent; 0 the whole, 1 the client's share, 2
    /// the spouse's.
    virtual void GetJointSpouseIncome(int& isJoint, double& share, int& view);
    /// The kinds of notes that there are (NotesType, added up).
    virtual unsigned GetNotesTypes();
    virtual CString GetPartnershipName();
    /// The notes of one kind, from and to the current row of the notes' list.
    virtual void GetNotes(NotesType type, CString& notes);
    virtual void SetNotes(NotesType type, const CString& notes);
    /// `year` is a real tax year; 0: none.
    virtual void GetAvoidanceNotes(CString& schemeReference, CString& notes, short& year);
    virtual void SetAvoidanceNotes(const CString& schemeReference, const CString& notes, const short& year);
    /// The heading of the notes.
    virtual void GetNotesDescription(CString& description);
    /// The first real tax year that is accepted of an avoidance scheme; the current one.
    virtual int GetAvoidanceValidationYear();
    /// Takes the place of the message about an earlier year, unless empty.
    virtual void GetAlternateValidationYearErrorMessage(CString& message);
    virtual int IsClientAPartnership();
    /// Joins the notes button's label when there are special pages.
    virtual CString GetSpecialNotesPanelText();
    /// Brings the schedule up to date with HMRC's data before it is shown. False: the sheet does not open.
    virtual bool UpdateMTDScheduleData();
    /// The sheet is about to move or to be resized: the furniture keeps its place.
    virtual void OnWindowPosChanging(WINDOWPOS* position);

    CString HelpFilePath() const override;

    int GetCompletedStatus() const noexcept { return m_completed; }
    void SetCompletedStatus(int completed);

    /// `list` keeps the notes in its current row, in the columns of these ordinals (-1: no such notes). `extra1` is 1
    /// where notes on estimates do not apply to the form; both extras are handed on to the notes.
    void SetNotesRowHandling(Quarry::CDataList* list, int auditRow, int returnRow, int estimateRow, int avoidanceRow,
                             int extra1, int extra2);
    /// Whether the notes button can be pressed.
    void EnableNotes(bool enable);
    /// A page that the notes show behind their own, once; not owned. Null: none.
    void AddSpecialNotesPage(TXPropertyPage* page);
    void RemoveSpecialNotesPage(TXPropertyPage* page);
    /// Tells on the notes button which kinds hold text.
    void UpdateNotesPanelText();
    void UpdatePartnershipNameBox();

    /// Asks the derived sheet for the joint panel's values again.
    void UpdateJointSpouseIncome();
    /// False, and the user is told, when the client's share is no percentage; true where there is nothing to check.
    bool ValidateJointSpouseIncome();
    int JointSpouseIncomeDDX() const;
    void JointSpouseIncomeDDX(int isJoint);
    /// Per cent; 0 without the panel.
    double GetJointSpouseShare();
    int GetJointSpouseView();
    bool IsJointSpouseIncome() const;

    /// Keeps the control `id` in its place under the tabs.
    void OnSizeDlgItem(int id);

protected:
    bool OnInitDialog() override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnAddExtraControls(int& width, int& height) override;
    void PageSetActive(int page) override;
    void OnDestroy() override;
    DECLARE_MESSAGE_MAP()

private:
    friend class CNotesStatusDlg; // which notes come first
    friend class TXPropertyPage;  // what it leaves of notifications

    void DisplayInfoControl(unsigned id, int& height);
    void PlacePanel(CDialog& panel, unsigned id, int& width, int& height);
    void SizeFurniture(int id, int sheetWidth);
    NotesType FirstNotesType();
    void CommitEdits(bool staysOpen);

    std::unique_ptr<Quarry::CTransaction> m_level;
    std::unique_ptr<CNotesStatusDlg> m_status;
    std::unique_ptr<CJointSpouseIncomeDlg> m_joint;
    std::vector<TXPropertyPage*> m_specialPages;
    Quarry::CDataList* m_notesList = nullptr;
    NotesRows m_notesRows;
    int m_notesExtra1 = 0, m_notesExtra2 = 0;
    int m_completed = 0;
    bool m_notesEnabled = true;
};
