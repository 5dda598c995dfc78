#include "ClientText.h"

#include "MorvUt/hmrc/schedules/StagedWords.h"
#include "MorvUt/taxyear/YearTitles.h"
#include "Output.h"

namespace Morv
{

namespace
{

using HmrcApi::DisplayName;

// What follows a staged row that HMRC no longer sends.
const char* Mark(bool isWithdrawn) { return isWithdrawn ? " (withdrawn by HMRC)" : ""; }

bool IsWithdrawn(const HmrcApi::ReturnEmployment&) { return false; }
bool IsWithdrawn(const HmrcApi::StagedEmployment& item) { return item.isWithdrawn; }

std::string Text(const CString& text) { return text.Str(); }
std::string Text(const std::string& text) { return text; }

void PrintBenefit(const std::string& employer, const HmrcApi::ReturnBenefit& benefit)
{
    PrintLine("    benefit of %s: %s %s%s", employer, DisplayName(benefit), Money(benefit.amount),
              benefit.isEstimate ? HmrcApi::kForecastMark : "");
}

void PrintBenefit(const std::string& employer, const HmrcApi::StagedBenefit& benefit)
{
    PrintLine("    benefit of %s: %s %s%s%s", employer, DisplayName(benefit), Money(benefit.amount),
              benefit.isForecast ? HmrcApi::kForecastMark : "", Mark(benefit.isWithdrawn));
}

template<class Employment>
void PrintEmployments(const std::vector<Employment>& employments)
{
    TextTable table({"Employment", "Reference", "Works number", "From", "To", "Pay", "Tax", "Student loan"});
    for (const Employment& row : employments)
        table.Add({Text(row.employer) + Mark(IsWithdrawn(row)), Text(row.reference), Text(row.worksNumber),
                   ShownDate(row.start), ShownDate(row.end), Money(row.pay), Money(row.tax), Money(row.studentLoan)});
    if (!table.IsEmpty())
        table.Print("  ");
    for (const Employment& row : employments)
        for (const auto& benefit : row.benefits)
            PrintBenefit(Text(row.employer), benefit);
}

} // namespace

void PrintClient(const ClientView& client, short year)
{
    PrintLine("%s %s, %s, tax year %s", client.code, client.name, NameOf(client.kind), FormatYearString42Digit(year));
    if (client.IsPartnership())
        return;
    if (client.kind == KindOfClient::Individual || !client.nationalInsuranceNumber.IsEmpty())
        PrintLine("National Insurance number %s, UTR %s", OrDash(client.nationalInsuranceNumber.Str()),
                  OrDash(client.utr.Str()));
    else
        PrintLine("UTR %s", OrDash(client.utr.Str()));
}

void PrintStatus(const ClientStatus& status)
{
    PrintLine("Status: %s", status.Word());
    for (const CString& reason : status.Because())
        PrintLine("  %s", reason);
}

void PrintSchedules(const HmrcApi::ReturnYear& own)
{
    PrintText("Schedules of the return:");
    PrintEmployments(own.employments);
    TextTable table({"Pension or benefit", "Reference", "From (or to)", "Amount", "Tax"});
    for (const HmrcApi::ReturnPension& row : own.pensions)
        table.Add(
            {DisplayName(row).Str(), row.reference.Str(), ShownDate(row.start), Money(row.amount), Money(row.tax)});
    if (!table.IsEmpty())
        table.Print("  ");
}

void PrintStaged(const HmrcApi::StagedYear& staged, short year)
{
    PrintText("Received from HMRC:");
    PrintEmployments(staged.employments);
    TextTable table({"Pension or benefit", "Reference", "From (or to)", "To", "Amount", "Tax"});
    for (const HmrcApi::StagedPension& row : staged.pensions)
        table.Add({DisplayName(row).Str() + Mark(row.isWithdrawn), DisplayReference(row).Str(), ShownDate(row.date),
                   ShownDate(row.end), Money(row.amount), Money(row.tax)});
    if (!table.IsEmpty())
        table.Print("  ");
    for (const HmrcApi::StagedAllowance& row : staged.allowances)
        PrintLine("  Allowance in the tax code: %s %s%s (for information; not in the return)", DisplayName(row),
                  Money(row.amount), Mark(row.isWithdrawn));
    if (!staged.nationalInsurance)
        return;
    const HmrcApi::StagedNationalInsurance& insurance = *staged.nationalInsurance;
    PrintLine("  National Insurance: earnings with Class 1 due %s%s; Class 2 due %s; maximum reached: %s",
              Money(insurance.class1Earnings),
              HmrcApi::IsClass1Final(insurance, year, Kiln::CDate::Today()) ? "" : " (not yet final)",
              Money(insurance.class2Due),
              !insurance.isMaximumReached   ? "not told"
              : *insurance.isMaximumReached ? "yes"
                                            : "no");
}

} // namespace Morv
