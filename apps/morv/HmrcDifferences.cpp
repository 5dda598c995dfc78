// hmrc differences.

#include "HmrcCommands.h"
#include "MorvUt/hmrc/schedules/Differences.h"
#include "MorvUt/hmrc/schedules/StagedWords.h"
#include "MorvUt/taxyear/TaxYearHelpers.h"
#include "Who.h"

namespace Morv
{

namespace
{

Json RowJson(const HmrcApi::DifferenceRow& row)
{
    const bool isDate = row.kind == HmrcApi::DifferenceRow::Kind::Date;
    return {{"caption", TextOf(row.caption)},
            {"return", isDate ? DateOf(row.returnDate) : PenceOf(row.returnAmount)},
            {"hmrc", isDate ? DateOf(row.hmrcDate) : PenceOf(row.hmrcAmount)},
            {"estimate", row.estimate}};
}

Json DifferenceJson(const HmrcApi::Difference& difference)
{
    constexpr const char* kStates[] = {"open", "accepted", "rejected", "skipped"};
    Json rows = Json::array();
    for (const auto& row : difference.rows)
        rows.push_back(RowJson(row));
    const bool isEmployment = difference.schedule == HmrcApi::Difference::Schedule::Employment;
    return {{"number", difference.number},
            {"schedule", isEmployment ? "employment" : "pensionOrBenefit"},
            {"item", TextOf(difference.item)},
            {"state", kStates[static_cast<int>(difference.state)]},
            {"rows", rows}};
}

void Print(const HmrcApi::Difference& difference)
{
    PrintLine("%d. %s", difference.number, difference.item);
    for (const auto& row : difference.rows)
        PrintLine("   %s: return %s, HMRC %s%s", row.caption, row.ReturnText(), row.HmrcText(),
                  row.estimate ? HmrcApi::kForecastMark : "");
}

} // namespace

void Differences(const HmrcArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const ClientId client(ClientOf(arguments.client).id);
    const auto differences = HmrcApi::FindDifferences(client, TaxYearHelpers::GetCurrentTaxYear());
    if (options.json) {
        Json list = Json::array();
        for (const auto& difference : differences)
            list.push_back(DifferenceJson(difference));
        return PrintJson({{"differences", list}});
    }
    if (differences.empty())
        PrintText("No differences between HMRC's figures and the return.");
    for (const auto& difference : differences)
        Print(difference);
}

} // namespace Morv
