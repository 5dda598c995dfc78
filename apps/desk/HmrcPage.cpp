// The page of a client's records at HMRC.

#include "Afx/windows/ComboBox.h"
#include "Afx/windows/MessageBox.h"
#include "ClientYearSheet.h"
#include "common/CreateWords.h"
#include "common/FetchWords.h"
#include "common/GiveAuthority.h"
#include "common/Words.h"
#include "layouts/ClientYear.h"
#include "MorvUt/context/BusyPractice.h"
#include "MorvUt/hmrc/access/GatewayState.h"
#include "MorvUt/hmrc/review/ReviewScreen.h"
#include "MorvUt/users/UserData.h"
#include "QuietMessages.h"

namespace Desk
{

using HmrcApi::FetchResult;

namespace
{

constexpr const char* kStates[] = {"open", "accepted", "rejected", "skipped"};

CString RemedyOf(const FetchResult& result)
{
    switch (result.stopped) {
    case FetchResult::Stopped::NotAuthorised:
        return "Give authority first.";
    case FetchResult::Stopped::NotEnabled:
        return "Ask whoever administers the practice to switch it on.";
    default:
        return {};
    }
}

/// Lines, with an empty one between two blocks.
CString Joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += (text.empty() ? "" : "\n") + line;
    return CString(text);
}

CString Capital(std::string text)
{
    if (!text.empty() && text.front() >= 'a' && text.front() <= 'z')
        text.front() = static_cast<char>(text.front() - 'a' + 'A');
    return CString(text);
}

} // namespace

CHmrcPage::CHmrcPage(CClientYearSheet& sheet)
    : CYearPage(sheet, kHmrcLayout, "Differences", IDC_HMRC_DIFFERENCES,
                {{"Item", 140}, {"State", 50}, {"Return", 120}, {"HMRC", 120}}, "hmrc")
{}

BEGIN_MESSAGE_MAP(CHmrcPage, CYearPage)
ON_BN_CLICKED(IDC_HMRC_AUTHORISE, OnAuthorise)
ON_BN_CLICKED(IDC_HMRC_FETCH, OnFetch)
ON_BN_CLICKED(IDC_HMRC_CREATE, OnCreate)
ON_BN_CLICKED(IDC_HMRC_REVIEW, OnReview)
END_MESSAGE_MAP()

bool CHmrcPage::OnInitDialog()
{
    FillGateways();
    return CYearPage::OnInitDialog();
}

/// The registered ones; chosen is the user's own, else the first.
void CHmrcPage::FillGateways()
{
    auto& combo = static_cast<CComboBox&>(*GetDlgItem(IDC_HMRC_GATEWAY));
    CString chosen = combo.Text();
    if (chosen.IsEmpty())
        chosen = TheUser().GetGatewayID();
    combo.ResetContent();
    for (const HmrcApi::GatewayState& gateway : HmrcApi::ListGateways())
        combo.AddString(gateway.gateway.c_str());
    if (combo.SelectString(chosen) == CComboBox::kNone && chosen.IsEmpty())
        combo.SetCurSel(combo.GetCount() > 0 ? 0 : CComboBox::kNone);
    else
        combo.SetWindowText(chosen);
}

std::string CHmrcPage::Gateway()
{
    CWnd& combo = *GetDlgItem(IDC_HMRC_GATEWAY);
    const std::string gateway = CString(combo.Text()).Trim().Str();
    if (gateway.empty())
        Refuse(combo, "Please give the Government Gateway user ID.");
    else if (const std::string why = Morv::WhyNotGateway(gateway); !why.empty())
        Refuse(combo, Capital(why) + ".");
    else
        return gateway;
    return {};
}

void CHmrcPage::Fill()
{
    std::vector<std::vector<CString>> rows;
    for (const HmrcApi::Difference& difference : m_sheet.Shown().differences)
        rows.push_back({difference.item, kStates[static_cast<int>(difference.state)], difference.ReturnSummary(),
                        difference.HmrcSummary()});
    ShowRows(rows);
    GetDlgItem(IDC_HMRC_REVIEW)->EnableWindow(HmrcApi::IsReviewDue(m_sheet.Shown().differences));
}

void CHmrcPage::ShowResult(const CString& text) { GetDlgItem(IDC_HMRC_RESULT)->SetWindowText(text); }

void CHmrcPage::OnAuthorise()
{
    const std::string gateway = Gateway();
    if (gateway.empty())
        return;
    try {
        const auto error = Morv::GiveAuthority(gateway);
        FillGateways();
        if (error)
            AfxMessageBox(CString(error->text.empty() ? "HMRC gave no authority." : error->text) + "\n\n" +
                          CString(HmrcApi::ActionFor(error->code, error->status)));
        else
            ShowResult("HMRC gave authority for " + HmrcApi::ReadGatewayState(gateway).ScopeInWords() + " records.");
    } catch (const Cellar::DatabaseError& error) {
        TellBusyOrThrow(error);
    }
}

/// What came of it, what has no box of its own, and what the gateway's user must know.
void CHmrcPage::ShowFetched(const FetchResult& result, const std::string& gateway)
{
    std::vector<std::string> lines{
        Capital(Morv::FetchedText(result, {RemedyOf(result), "Review differences shows them."})).Str()};
    for (const CString& note : result.notes)
        lines.push_back(note.Str());
    const CString warning = HmrcApi::ReadGatewayState(gateway).Warning(COleDateTime::GetCurrentUtcTime());
    if (!warning.IsEmpty())
        lines.push_back(warning.Str());
    ShowResult(Joined(lines));
}

void CHmrcPage::OnFetch()
{
    const std::string gateway = Gateway();
    if (gateway.empty())
        return;
    const FetchResult result = [&] {
        const QuietMessages quiet; // all is told once, with what to do
        return HmrcApi::FetchFromHmrc(ClientId(m_sheet.Owner().client.id), gateway);
    }();
    try {
        ShowFetched(result, gateway);
    } catch (const Cellar::DatabaseError& error) {
        TellBusyOrThrow(error);
    }
    m_sheet.Refresh();
    if (result.stopped != FetchResult::Stopped::No)
        AfxMessageBox(CString(result.Reason().Str() + ' ' + RemedyOf(result).Str()).Trim());
    else if (const auto errors = Morv::ErrorLines(*result.errors); !errors.empty())
        AfxMessageBox(Joined(errors));
}

void CHmrcPage::OnCreate()
{
    const ScheduleOwner& owner = m_sheet.Owner();
    const ClientId client(owner.client.id);
    try {
        const HmrcApi::CreateResult result = HmrcApi::CreateFromHmrc(client, TaxYear(owner.year));
        if (!result.ok)
            return; // it was told
        std::vector<std::string> lines{Morv::CreatedText(client, owner.year, result.created)};
        for (const CString& note : result.created.notes)
            lines.push_back(note.Str());
        ShowResult(Joined(lines));
        m_sheet.Refresh();
    } catch (const Cellar::DatabaseError& error) {
        TellBusyOrThrow(error);
    }
}

void CHmrcPage::OnReview()
{
    const ScheduleOwner& owner = m_sheet.Owner();
    try {
        const HmrcApi::ReviewCount count =
            HmrcApi::ReviewDifferences(ClientId(owner.client.id), TaxYear(owner.year), this);
        CString text;
        text.Format("%d accepted, %d rejected, %d skipped.", count.accepted, count.rejected, count.skipped);
        ShowResult(text);
        m_sheet.Refresh();
    } catch (const Cellar::DatabaseError& error) {
        TellBusyOrThrow(error);
    } catch (const Quarry::ChangedByAnotherUser& error) {
        AfxMessageBox(error.what());
        m_sheet.Refresh();
    }
}

} // namespace Desk
