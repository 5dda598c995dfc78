#pragma once

// The notes of a schedule: a page for each kind that it has, and special ones.

#include <memory>
#include <vector>

#include "MorvUt/Export.h"
#include "MorvUt/ui/edits/NotesEdit.h"
#include "MorvUt/ui/sheets/AvoidanceNotes.h"
#include "MorvUt/ui/sheets/TXPropertyPage.h"
#include "MorvUt/ui/sheets/TXPropertySheet.h"

/// Notes of one kind: a description, and a text of several lines.
class MORVUT_API CNotesPage : public TXPropertyPage
{
    DECLARE_DYNAMIC(CNotesPage)

    CNotesPage(const CString& caption, const CString& description, const CString& text);
    const CString& GetNotes() const noexcept { return m_text; }

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;

private:
    CString m_description, m_text;
    CNotesEdit m_edit{true};
};

/// The scheme's reference, the tax year in which its advantage arises, and notes. A year of three digits or fewer is
/// completed when the page is left, or refused when it is too early; so is a page without a reference.
class MORVUT_API CNotesAvoidancePage : public TXPropertyPage
{
    DECLARE_DYNAMIC(CNotesAvoidancePage)

    /// Real tax years; `year` 0: none.
    CNotesAvoidancePage(const CString& reference, const CString& notes, short year, int earliestYear,
                        const CString& tooEarly);
    const CString& GetReference() const noexcept { return m_reference; }
    const CString& GetNotes() const noexcept { return m_notes; }
    short GetYear() const noexcept { return m_year; }

    bool OnKillActive() override;

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    DECLARE_MESSAGE_MAP()
    afx_msg void OnYearChoice();
    afx_msg void OnYearLeft();

private:
    bool HasYear() const;
    bool IsOtherYear() const;
    int TypedYear() const;

    CString m_reference, m_notes, m_tooEarly;
    short m_year;
    int m_earliestYear;
    CNotesEdit m_edit{true};
};

/// The notes of a sheet, for as long as they are open.
class MORVUT_API CNotesSheet : public TXPropertySheet
{
    DECLARE_DYNAMIC(CNotesSheet)

    /// What the owner hands on.
    struct Handling
    {
        int estimatesDoNotApply = 0; // 1: to the current form
        int extra = 0;
        CString description; // in the caption, behind "Notes"
    };
    /// Pages of these kinds, filled from the owner, and behind them the special ones.
    CNotesSheet(TXPropertySheet& owner, unsigned kinds, const std::vector<TXPropertyPage*>& special,
                const Handling& handling);
    ~CNotesSheet() override;

    /// Shows them, the page of `first` on top. True when they were accepted; they are written back to the owner then.
    bool Run(NotesType first);

protected:
    /// Writes them back while the sheet can stay open, so that no note is lost in a busy practice.
    void OnOK() override;

private:
    void WriteBack();

    TXPropertySheet& m_owner;
    Handling m_handling;
    std::vector<NotesPageInfo> m_kinds;
    std::vector<std::unique_ptr<CNotesPage>> m_notes; // beside m_kinds; null for avoidance
    std::unique_ptr<CNotesAvoidancePage> m_avoidance;
};
