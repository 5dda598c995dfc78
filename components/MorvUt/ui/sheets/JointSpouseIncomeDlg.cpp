#include "MorvUt/ui/sheets/JointSpouseIncomeDlg.h"

#include <limits>

#include "Afx/windows/ComboBox.h"
#include "Afx/windows/DataExchange.h"
#include "MorvUt/res/layouts/JointSpouse.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/ui/sheets/TXPropertySheet.h"

using Kiln::CExDialog;

IMPLEMENT_DYNAMIC(CJointSpouseIncomeDlg, CExDialog)

BEGIN_MESSAGE_MAP(CJointSpouseIncomeDlg, CExDialog)
ON_BN_CLICKED(IDC_JOINT_BOX, OnBox)
ON_EN_KILLFOCUS(IDC_JOINT_SHARE, OnShareLeft)
ON_CBN_SELCHANGE(IDC_JOINT_VIEW, OnView)
END_MESSAGE_MAP()

CJointSpouseIncomeDlg::CJointSpouseIncomeDlg(TXPropertySheet& sheet) : CExDialog(kJointSpouseLayout), m_sheet(sheet)
{
    constexpr int kShareDecimals = 8;
    m_share.SetDecimals(kShareDecimals);
}

bool CJointSpouseIncomeDlg::OnInitDialog()
{
    auto* const view = static_cast<CComboBox*>(GetDlgItem(IDC_JOINT_VIEW));
    for (const unsigned text : {IDS_JOINT_VIEW_WHOLE, IDS_JOINT_VIEW_CLIENT, IDS_JOINT_VIEW_SPOUSE})
        view->AddString(LibraryText(text));
    const bool setsFocus = CExDialog::OnInitDialog();
    Load();
    return setsFocus;
}

void CJointSpouseIncomeDlg::DoDataExchange(CDataExchange* exchange) { DDX_Control(exchange, IDC_JOINT_SHARE, m_share); }

void CJointSpouseIncomeDlg::Load()
{
    JointIncome values;
    m_sheet.GetJointSpouseIncome(values.isJoint, values.clientShare, values.view);
    m_share.SetDouble(values.clientShare);
    static_cast<CComboBox*>(GetDlgItem(IDC_JOINT_VIEW))->SetCurSel(values.view);
    SetJoint(values.isJoint);
}

JointIncome CJointSpouseIncomeDlg::Get() const
{
    return {static_cast<CButton*>(GetDlgItem(IDC_JOINT_BOX))->GetCheck(),
            m_share.GetDouble().value_or(std::numeric_limits<double>::quiet_NaN()),
            static_cast<CComboBox*>(GetDlgItem(IDC_JOINT_VIEW))->GetCurSel()};
}

void CJointSpouseIncomeDlg::SetJoint(int isJoint)
{
    static_cast<CButton*>(GetDlgItem(IDC_JOINT_BOX))->SetCheck(isJoint);
    EnableParts();
}

void CJointSpouseIncomeDlg::EnableParts()
{
    CString reason;
    const bool canEdit = m_sheet.EnableJointSpouseIncome(reason) != 0;
    GetDlgItem(IDC_JOINT_BOX)->EnableWindow(canEdit);
    m_share.EnableWindow(canEdit && Get().isJoint);
    GetDlgItem(IDC_JOINT_VIEW)->EnableWindow(canEdit && Get().isJoint);
    CWnd* const why = GetDlgItem(IDC_JOINT_REASON);
    why->SetWindowText(reason);
    why->ShowWindow(!canEdit && !reason.IsEmpty());
}

void CJointSpouseIncomeDlg::OnBox()
{
    EnableParts();
    m_sheet.OnJointSpouseIncome();
}

void CJointSpouseIncomeDlg::OnShareLeft() { m_sheet.OnJointSpouseShareKillFocus(); }
void CJointSpouseIncomeDlg::OnView() { m_sheet.OnJointSpouseView(); }
