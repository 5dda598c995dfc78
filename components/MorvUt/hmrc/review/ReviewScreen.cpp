#include "MorvUt/hmrc/review/ReviewScreen.h"

#include "Afx/windows/MessageBox.h"
#include "Brix/Subjects.h"
#include "MorvUt/res/Strings.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

/// What the dialog ended with.
Decision DecisionOf(int result) noexcept
{
    return result == CMTDDifferencesDlg::kAccept   ? Decision::Accept
           : result == CMTDDifferencesDlg::kReject ? Decision::Reject
                                                   : Decision::Skip;
}

/// Puts one difference before the person; the dialog's result.
int Show(ClientId client, const Difference& difference, CWnd* parent)
{
    CMTDDifferencesGrid grid(true);
    ShowDifference(grid, difference);
    CMTDDifferencesDlg dialog(grid, client.Get(), LibraryText(IDS_DIFFERENCES_CAPTION),
                              LibraryText(IDS_DIFFERENCES_MESSAGE), difference.item, difference.HmrcSummary(),
                              difference.ReturnSummary(), parent);
    dialog.EnableAccept(difference.scheduleId != 0);
    return dialog.DoModal();
}

/// What follows from a decision, from what the practice holds now. Why it could not be done; empty when it was.
CString Apply(ClientId client, TaxYear taxYear, const Difference& shown, Decision decision)
{
    Quarry::CTransaction transaction(Cellar::Intent::Write, Brix::SubjectOf(client));
    const ReviewResult done = ApplyDecision(client, taxYear, shown.number, decision, shown.Hash());
    if (done.outcome == ReviewResult::Outcome::Done)
        transaction.Commit();
    return done.message;
}

} // namespace

void ShowDifference(CMTDDifferencesGrid& grid, const Difference& difference)
{
    grid.SetHeadingRow(difference.item);
    for (const DifferenceRow& row : difference.rows)
        if (row.kind == DifferenceRow::Kind::Date)
            grid.SetDateRow(row.caption, row.hmrcDate, row.returnDate);
        else if (row.estimate)
            grid.SetEstimateAmountRow(row.caption, row.hmrcAmount, row.returnAmount,
                                      LibraryText(IDS_DIFFERENCES_FORECAST));
        else
            grid.SetAmountRow(row.caption, row.hmrcAmount, row.returnAmount);
}

ReviewCount ReviewDifferences(ClientId client, TaxYear taxYear, CWnd* parent)
{
    ReviewCount count;
    for (const Difference& difference : FindDifferences(client, taxYear)) {
        if (difference.state != Difference::State::Open)
            continue;
        Quarry::CTransaction transaction; // nothing is sent, and nobody waits, before the decision
        const int result = Show(client, difference, parent);
        if (result == IDCANCEL) {
            count.stopped = true;
            break;
        }
        const Decision decision = DecisionOf(result);
        if (decision == Decision::Skip) {
            ++count.skipped;
            continue;
        }
        if (const CString whyNot = Apply(client, taxYear, difference, decision); !whyNot.IsEmpty()) {
            AfxMessageBox(whyNot); // the audit goes with the level
            continue;
        }
        transaction.Commit();
        ++(decision == Decision::Accept ? count.accepted : count.rejected);
    }
    return count;
}

} // namespace HmrcApi
