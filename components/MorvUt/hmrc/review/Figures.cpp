#include "MorvUt/hmrc/review/Figures.h"

#include "MorvUt/hmrc/schedules/BenefitTotals.h"
#include "MorvUt/hmrc/staging/Pairing.h"

namespace HmrcApi
{
namespace
{

template<class Figure>
void AddFigure(std::string& text, const std::string& name, const Figure& figure)
{
    if (figure.IsValid())
        text += (text.empty() ? "" : " ") + name + '=' + TextOf(figure);
}

} // namespace

std::string FiguresOf(const StagedEmployment& item)
{
    std::string text;
    AddFigure(text, "start", item.start);
    AddFigure(text, "end", item.end);
    AddFigure(text, "pay", item.pay);
    AddFigure(text, "tax", item.tax);
    AddFigure(text, "studentLoan", item.studentLoan);
    for (const auto& [code, total] : TotalsOf(item.benefits).totals)
        if (total.amount.IsValid()) {
            AddFigure(text, std::to_string(code), total.amount);
            text += total.isEstimate ? "?" : "";
        }
    return text;
}

std::string FiguresOf(const StagedPension& item)
{
    std::string text;
    AddFigure(text, "date", item.date);
    AddFigure(text, "amount", item.amount);
    AddFigure(text, "tax", item.tax);
    return text;
}

} // namespace HmrcApi
