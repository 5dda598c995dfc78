#pragma once

// The list of clients, with which the program begins.

#include "Afx/windows/MessageMap.h"
#include "ClientFinder.h"
#include "Kiln/controls/ExDialog.h"

class CComboBox;
class CListCtrl;

namespace Desk
{

/// Searches as the user types; Enter and a double-click open the client. Down goes from the search to the list.
class CClientsDlg : public Kiln::CExDialog
{
public:
    CClientsDlg();
    CString HelpFilePath() const override;
    int DoModal() override;

protected:
    bool OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    bool OnDialogKey(CWnd& focus, unsigned key, unsigned modifiers) override;
    DECLARE_MESSAGE_MAP()
    afx_msg void OnSearch();
    afx_msg void OnYear();
    afx_msg void OnMore();
    afx_msg void OnRefresh();
    afx_msg void OnRollForward();
    afx_msg void OnHelpButton();
    afx_msg void OnDoubleClick(NMHDR* header, LRESULT* result);
    afx_msg void OnSelection(NMHDR* header, LRESULT* result);

private:
    void Fill();
    CListCtrl& List() const;
    CComboBox& Year() const;

    ClientFinder m_finder;
    FoundClients m_found;
    std::size_t m_limit;
};

} // namespace Desk
