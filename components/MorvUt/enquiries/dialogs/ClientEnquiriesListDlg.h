#pragma once

// The dialog that lists the enquiries of a client or a partnership.

#include "Afx/windows/MessageMap.h"
#include "Brix/Records.h"
#include "Kiln/controls/ExDialog.h"
#include "Kiln/controls/SortListCtrl.h"
#include "MorvUt/enquiries/rules/EnquiryList.h"
#include "MorvUt/enquiries/rules/EnquirySettings.h"
#include "MorvUt/Export.h"

/// New, Edit and Delete work on the list; a double-click and Enter edit, Delete deletes what is selected after asking.
/// Which enquiries are shown is kept for each user.
class MORVUT_API CClientEnquiriesListDlg : public Kiln::CExDialog
{
    DECLARE_DYNAMIC(CClientEnquiriesListDlg)

    /// Of the client, or of the partnership when `clientId` is 0, for the real tax year. `readOnly`: nothing can be
    /// changed. A new enquiry is linked to `sourceId` and `taskId` unless the first is 0.
    CClientEnquiriesListDlg(Cellar::CConnection& connection, long clientId, long partnershipId, int year, bool readOnly,
                            long sourceId, long taskId, CWnd* parent = nullptr);

    CString HelpFilePath() const override;

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override; // Enter edits
    DECLARE_MESSAGE_MAP()
    afx_msg void OnNew();
    afx_msg void OnEdit();
    afx_msg void OnDelete();
    afx_msg void OnFilter();
    afx_msg void OnDoubleClick(NMHDR* header, LRESULT* result);
    afx_msg void OnKeyDownList(NMHDR* header, LRESULT* result);
    afx_msg void OnSelection(NMHDR* header, LRESULT* result);

    /// Delete and Edit follow the selection.
    void UpdateDeleteButton();

private:
    /// Tells of a row's task while the mouse rests on it.
    class CEnquiryListCtrl : public Kiln::CSortListCtrl
    {
    public:
        CString GetTip(int row) const override;
        std::vector<EnquiryLine> lines;
    };

    void FillList();
    bool IsTicked(unsigned id) const;
    std::vector<long> SelectedIds() const;

    Cellar::CConnection& m_connection;
    long m_clientId, m_partnershipId;
    short m_year;
    bool m_readOnly;
    long m_sourceId, m_taskId;
    CEnquiryListCtrl m_list;
    CImageList m_images;
};

/// Shows the list of enquiries.
MORVUT_API void HandleEnquiriesDialog(Cellar::CConnection& connection, unsigned long clientId,
                                      unsigned long partnershipId, short year, bool readOnly, long sourceId,
                                      long taskId, CWnd* parent = nullptr);
/// Edits the current row of an enquiry list. True when it was saved.
MORVUT_API bool HandleEditEnquiriesDialog(Brix::CClientEnquiry& enquiry);
