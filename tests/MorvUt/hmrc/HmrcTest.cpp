#include "MorvUt/hmrc/HmrcTest.h"

namespace
{

std::string Text(const Kiln::CAmt& amount) { return amount.IsValid() ? amount.Format().Str() : "-"; }
std::string Text(const Kiln::CDate& date) { return date.IsValid() ? date.FormatIso().Str() : "-"; }
std::string Text(const CString& text) { return text.Str(); }
std::string Text(long number) { return std::to_string(number); }

template<class... Parts>
std::string Line(const Parts&... parts)
{
    std::string line;
    ((line += Text(parts) + '|'), ...);
    line.pop_back();
    return line;
}

template<class List, class Show>
std::string ShowRows(List& list, Show show)
{
    std::string text;
    for (; !list.IsEOL(); list.MoveNext())
        text += show(list);
    return text;
}

std::string Mark(bool isWithdrawn) { return isWithdrawn ? "! " : ""; }

std::string StagedBenefits(long employment)
{
    using List = Brix::CMTD_EmploymentsCompanyBenefits;
    List list;
    list.Open({{List::kMTD_EmploymentsID, employment}});
    return ShowRows(list, [](const List& row) {
        return Mark(row.GetWithdrawn()) + "+ " + Text(row.GetBenefitType()) + ' ' + row.GetBenefitTypeName().Str() +
               ' ' + Text(row.GetAmount()) + (row.GetForecast() ? " forecast\n" : "\n");
    });
}

std::string StagedYear(long year)
{
    using Employments = Brix::CMTD_Employments;
    using Psb = Brix::CMTD_PensionStateBenefits;
    using Allowances = Brix::CMTD_TaxFreeAllowances;
    Employments employments;
    employments.Open({{Employments::kMTD_TaxYearID, year}}, {{Employments::kKey}});
    Psb psb;
    psb.Open({{Psb::kMTD_TaxYearID, year}}, {{Psb::kMTDType}, {Psb::kStart}});
    Allowances allowances;
    allowances.Open({{Allowances::kMTD_TaxYearID, year}}, {{Allowances::kAllowanceType}});
    return ShowRows(employments,
                    [](const Employments& row) {
                        return Mark(row.GetWithdrawn()) +
                               Line(row.GetKey(), row.GetEmployerName(), row.GetPAYEReference(), row.GetWorksNumber(),
                                    row.GetStart(), row.GetEnd(), row.GetPay(), row.GetTax(), row.GetStudentLoan()) +
                               '\n' + StagedBenefits(row.GetID());
                    }) +
           ShowRows(psb,
                    [](const Psb& row) {
                        return Mark(row.GetWithdrawn()) + Text(row.GetMTDType()) + ' ' +
                               Line(row.GetReference(), row.GetPayer(), row.GetStart(), row.GetAmount(), row.GetTax()) +
                               '\n';
                    }) +
           ShowRows(allowances, [](const Allowances& row) {
               return Mark(row.GetWithdrawn()) + "allowance " + Text(row.GetAllowanceType()) + ' ' +
                      row.GetAllowanceTypeName().Str() + ' ' + Text(row.GetAmount()) + '\n';
           });
}

std::string ScheduleBenefits(long employment)
{
    using List = Brix::CNewEmployBenefits;
    List list;
    list.Open({{List::kNewEmployID, employment}}, {{List::kType}});
    return ShowRows(list, [](const List& row) {
        return "+ " + Text(row.GetType()) + ' ' + Text(row.GetBenefit()) + (row.GetEstimate() ? " estimate\n" : "\n");
    });
}

std::string FormSchedules(long form)
{
    using Employ = Brix::CNewEmploy;
    using Psb = Brix::CPensionStateBenefits;
    Employ employ;
    employ.Open({{Employ::kTaxFormID, form}}, {{Employ::kOrdering}});
    Psb psb;
    psb.Open({{Psb::kTaxFormID, form}}, {{Psb::kOrdering}});
    return ShowRows(employ,
                    [](const Employ& row) {
                        return Text(row.GetOrdering()) + ' ' +
                               Line(row.GetEmployerName(), row.GetPAYEReference(), row.GetWorksNumber(), row.GetStart(),
                                    row.GetEnd(), row.GetPay(), row.GetTax(), row.GetStudentLoan()) +
                               '\n' + ScheduleBenefits(row.GetID());
                    }) +
           ShowRows(psb, [](const Psb& row) {
               return Text(row.GetOrdering()) + ' ' + Text(row.GetSection()) + '/' + Text(row.GetType()) + ' ' +
                      Line(row.GetDescription(), row.GetPayer(), row.GetReference(), row.GetStart(), row.GetAmount(),
                           row.GetTax()) +
                      '\n';
           });
}

std::string Member(const std::string& name, const std::string& value, bool isText = true)
{
    if (value.empty())
        return {};
    return ", \"" + name + "\": " + (isText ? '"' + value + '"' : value);
}

} // namespace

HmrcTest::HmrcTest()
{
    CUserData::ClearPermissions();
    ::Test::Add<Brix::CUser>([](Brix::CUser& row) { row.SetUserID("ANNA"); });
    ::Test::Add<Brix::CUserPermissions>([](Brix::CUserPermissions& row) {
        row.SetUserID("ANNA");
        row.SetPermission(static_cast<int>(CUserData::Permission{87}));
        row.SetAllowed(true);
    });
    CUserData::SetUser("ANNA");
    m_client = ClientId(::Test::Add<Brix::CClient>([](Brix::CClient& row) {
        row.SetNINumber("AA000001A");
        row.SetUTR("2234567890");
    }));
    Sql("DELETE FROM BRIXOptions");
    Sql("INSERT INTO BRIXOptions (lID, nPAYEInterface, nDebugLogging, bHMRCRetrieval, nVersion) VALUES (1, 1, 0, 1, "
        "0)");
    Sql("INSERT INTO MTDAuthorisation (lID, strGatewayID, nAuthorisedStatus) VALUES (7, 'GATEWAY1', 1)");
}

HmrcTest::~HmrcTest()
{
    CUserData::ClearPermissions();
    const CUserData loggedOut;
}

HmrcApi::StagedCounts HmrcTest::Fetch(HmrcApi::CPAYEPrepop& prepop)
{
    m_errors = std::make_shared<HmrcApi::CAPIErrorHandler>();
    HmrcApi::Logger logger;
    prepop.GetPAYEData("AA000001A", m_errors, &logger);
    return prepop.GetStagedCounts();
}

HmrcApi::StagedCounts HmrcTest::Fetch(HmrcApi::IEndpointOverride::ResponseType type)
{
    HmrcApi::CPAYEPrepop prepop(m_client, TaxYear(kYear), "AA000001A", type);
    return Fetch(prepop);
}

std::string HmrcTest::Errors() const
{
    std::string codes;
    for (const auto& group : m_errors->GetGroups())
        for (const auto& error : group.errors)
            codes += (codes.empty() ? "" : " ") + error.GetCode();
    return codes;
}

HmrcApi::CreatedSchedules HmrcTest::Create()
{
    HmrcApi::CPAYEPrepop prepop(m_client, TaxYear(kYear), "AA000001A", HmrcApi::IEndpointOverride::Live);
    prepop.CreateNewSchedules();
    return prepop.GetCreatedSchedules();
}

std::string HmrcTest::Staged() const
{
    using List = Brix::CMTD_TaxYear;
    List years;
    years.Open({{List::kClientID, m_client.Get()}, {List::kYear, kYear}});
    return ShowRows(years, [](const List& row) { return StagedYear(row.GetID()); });
}

std::string HmrcTest::Schedules() const
{
    using List = Brix::CTaxForm;
    List forms;
    forms.Open({{List::kClientID, m_client.Get()}, {List::kYear, kYear}});
    return ShowRows(forms, [](const List& row) { return FormSchedules(row.GetID()); });
}

std::string HmrcTest::Query(const Cellar::SqlText& statement) const
{
    std::string texts;
    Cellar::CBufferedRowList rows(Quarry::GetConnection(), statement);
    for (bool isThere = rows.MoveFirst(); isThere; isThere = rows.MoveNext())
        texts += (texts.empty() ? "" : ", ") + rows.GetText(0).Str();
    return texts;
}

std::string Answer(const std::string& employments, const std::string& pensions, const std::string& benefits,
                   const std::string& more)
{
    return "{\"employments\": [" + employments + "], \"privatePensions\": [" + pensions +
           "], \"taxableSocialSecurityBenefits\": [" + benefits + ']' + more + '}';
}

std::string Employment(const std::string& reference, const std::string& works, const std::string& pay,
                       const std::string& benefits)
{
    return "{\"employerPayeReference\": \"" + reference + "\", \"employerName\": \"Firm\"" +
           Member("worksNumber", works) + Member("taxablePayTotal", pay, false) + ", \"companyBenefits\": [" +
           benefits + "]}";
}

std::string Benefit(const std::string& type, const std::string& amount, bool isForecast)
{
    return "{\"benefitType\": \"" + type + "\"" + Member("amount", amount, false) +
           (isForecast ? ", \"isForecastBenefit\": true}" : "}");
}

std::string Pension(const std::string& reference, const std::string& works, const std::string& pay)
{
    return "{\"employerPayeReference\": \"" + reference + "\", \"employerName\": \"Fund\"" +
           Member("worksNumber", works) + Member("taxablePayTotal", pay, false) + '}';
}

std::string StateBenefit(const std::string& type, const std::string& start, const std::string& pay)
{
    return "{\"benefitType\": \"" + type + "\"" + Member("startDate", start) + Member("taxablePayTotal", pay, false) +
           '}';
}
