#pragma once

// The grid that shows HMRC's figures beside the return's.

#include "Afx/text/Collections.h"
#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"
#include "Lattice/Grid.h"
#include "MorvUt/Export.h"

/// One row of the grid, as it is shown.
struct GridAction
{
    enum class Kind
    {
        Heading,
        Text,
        Date,
        Amount,
        EstimateAmount
    };
    Kind kind = Kind::Text;
    CString caption;
    Lattice::Value left, right; // HMRC's, the return's
    CString note;               // beside an amount that may be an estimate
};

/// Rows of a caption, HMRC's value and the return's; none can be edited. The rows are gathered first and shown by DDX.
class MORVUT_API CMTDDifferencesGrid : public Lattice::CGrid
{
    DECLARE_DYNAMIC(CMTDDifferencesGrid)

    /// Columns of the grid.
    enum Place
    {
        kCaption,
        kHmrc,
        kReturn,
        kNote
    };

    /// `hasEstimates`: with a column that tells which amounts are estimates. Begins the class's rows anew.
    explicit CMTDDifferencesGrid(bool hasEstimates);

    void SetHeadingRow(const CString& text);
    void SetTextRow(const CString& caption, const CString& hmrc, const CString& ofReturn);
    void SetDateRow(const CString& caption, const Kiln::CDate& hmrc, const Kiln::CDate& ofReturn);
    void SetAmountRow(const CString& caption, const Kiln::CAmt& hmrc, const Kiln::CAmt& ofReturn);
    /// `note`: what the estimate is, as "forecast".
    void SetEstimateAmountRow(const CString& caption, const Kiln::CAmt& hmrc, const Kiln::CAmt& ofReturn,
                              const CString& note);

    /// While loading, shows the rows.
    void DDX(CDataExchange* exchange);

    /// The rows of the grid that was made last: one review is open at a time.
    static CArray<GridAction> m_arrGridActions;
};
