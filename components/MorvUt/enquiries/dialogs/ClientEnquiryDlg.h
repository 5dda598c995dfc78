#pragma once

// The dialog that edits one enquiry.

#include "Afx/windows/ComboBox.h"
#include "Afx/windows/MessageMap.h"
#include "Brix/Records.h"
#include "Kiln/controls/DateEdit.h"
#include "Kiln/controls/ExDialog.h"
#include "MorvUt/enquiries/rules/EnquiryDraft.h"
#include "MorvUt/Export.h"

/// Shows the current row of an enquiry list, or a new enquiry where there is none. OK checks what was entered, in the
/// order of CheckEnquiry, and saves it; a refusal is told and the focus goes to the field. The row is the list's own
/// until it is saved.
class MORVUT_API CClientEnquiryDlg : public Kiln::CExDialog
{
    DECLARE_DYNAMIC(CClientEnquiryDlg)

    /// Of the client, or of the partnership when `clientId` is 0, for the real tax year. `enquiry` outlives the dialog.
    CClientEnquiryDlg(long clientId, long partnershipId, int year, Brix::CClientEnquiry& enquiry, bool isNew,
                      CWnd* parent = nullptr);

    /// The task that the enquiry is linked to when the dialog opens; task 0: the user chooses one.
    void SetLink(long sourceId, long taskId);
    /// Whether the enquiry, as it is entered now, has a source and a task.
    bool IsEnquiryLinked() const;

    CString HelpFilePath() const override;

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;
    DECLARE_MESSAGE_MAP()
    afx_msg void OnReminderBox();
    afx_msg void OnReceivedBox();
    afx_msg void OnLinkBox();
    afx_msg void OnSourceChosen();

    /// Source and task can be chosen while the box for the link is ticked.
    void EnableCombos();
    void LoadSourceCombo();
    void LoadTaskCombo();
    /// False when it could not be saved, of which the user has been told.
    bool Save();

private:
    bool Tell(const EnquiryProblem& problem);
    void EnableDate(unsigned boxId, Kiln::CDateEdit& edit);
    CWnd& ControlOf(EnquiryField field);
    CComboBox& Combo(unsigned id) const;
    CButton& Box(unsigned id) const;
    Kiln::CDate DateIn(const Kiln::CDateEdit& edit) const;
    EnquiryDraft Entered() const;

    TrackerOwner m_owner;
    short m_year;
    Brix::CClientEnquiry& m_enquiry;
    EnquiryDraft m_draft;
    Kiln::CDateEdit m_start, m_due, m_reminder, m_received;
    bool m_acceptsPastReminder = false;
};
