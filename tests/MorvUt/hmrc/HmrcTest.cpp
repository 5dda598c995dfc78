#include "MorvUt/hmrc/HmrcTest.h"

#include <algorithm>
#include <sstream>

#include "MorvUt/hmrc/fetch/FetchData.h"
#include "MorvUt/hmrc/review/Differences.h"

namespace
{

/// A further member of an object; none for "-" and nothing.
std::string Member(const char* name, const std::string& value)
{
    return value.empty() || value == "-" || value == "\"-\"" ? "" : ", \"" + std::string(name) + "\": " + value;
}

/// "CarBenefit=44" or, a forecast, "CarBenefit=44?".
std::string CompanyBenefit(const std::string& text)
{
    const std::size_t at = text.find('='), end = text.find('?');
    return "{\"benefitType\": \"" + text.substr(0, at) + '"' + Member("amount", text.substr(at + 1, end - at - 1)) +
           Member("isForecastBenefit", end == text.npos ? "-" : "true") + '}';
}

/// "1/A W1 100 CarBenefit=44", "3/C P1 50" or, of a taxable benefit, "IncapacityBenefit 2017-05-01 10".
std::string ItemOf(const std::string& kind, std::istringstream& words)
{
    std::string of, second, pay, benefits;
    words >> of >> second >> pay;
    for (std::string word; words >> word;)
        benefits += (benefits.empty() ? "" : ",") + CompanyBenefit(word);
    const std::string quoted = '"' + second + '"', paid = Member("taxablePayTotal", pay);
    if (kind == "benefit")
        return "{\"benefitType\": \"" + of + '"' + Member("startDate", quoted) + paid + '}';
    return "{\"employerPayeReference\": \"" + of + '"' + Member("worksNumber", quoted) + paid +
           (kind == "pension" ? R"(, "employerName": "Fund"})"
                              : R"(, "employerName": "Firm", "companyBenefits": [)" + benefits + "]}");
}

} // namespace

HmrcPractice::HmrcPractice()
{
    SetCurrentTaxYear(kYear - 1991);
    Sql("INSERT INTO BRIXUser (lID, strUserID) VALUES (1, 'ANNA')");
    Allow({87, 34});
    Sql("INSERT INTO BRIXClient (lID, strNINumber, strUTR) VALUES (1, 'AA000001A', '2234567890')");
    Sql("DELETE FROM BRIXOptions");
    Sql("INSERT INTO BRIXOptions (lID, nPAYEInterface, bHMRCRetrieval) VALUES (1, 1, 1)");
    Sql("INSERT INTO MTDAuthorisation (lID, strGatewayID, nAuthorisedStatus) VALUES (7, 'GATEWAY1', 1)");
}

HmrcPractice::~HmrcPractice()
{
    CUserData::ClearPermissions();
    const CUserData loggedOut;
}

void HmrcPractice::Allow(const std::vector<int>& permissions)
{
    CUserData::ClearPermissions();
    Sql("DELETE FROM BRIXUserPermissions");
    for (const int permission : permissions)
        Sql("INSERT INTO BRIXUserPermissions (lID, strUserID, nPermission, bAllowed) VALUES (%d, 'ANNA', %d, 1)",
            permission, permission);
    CUserData::SetUser("ANNA");
}

HmrcApi::StagedCounts HmrcPractice::Fetch(HmrcApi::IEndpointOverride::ResponseType type)
{
    HmrcApi::CPAYEPrepop prepop(m_client, TaxYear(kYear), "AA000001A", type);
    return Fetch(prepop);
}

HmrcApi::StagedCounts HmrcPractice::Fetch(const std::string& answer)
{
    PayeOf prepop(m_client, Answer(answer));
    return Fetch(prepop);
}

std::string HmrcPractice::Retrieve(HmrcApi::IEndpointOverride::ResponseType type) const
{
    CUserData::ClearPermissions();
    CUserData::SetUser("ANNA");
    ::Test::Windows().Clear();
    ::Test::Windows().OnUnexpected([](const auto& shown) { return Afx::SafeAnswer(shown.style); });
    bool newData = true, clear = false;
    std::string text = GetHMRCApiData(m_client, kGateway, newData, clear, type) ? "ok" : "not ok";
    text += std::string(newData ? ", new data" : "") + (clear ? ", clear" : "") + '\n';
    for (const auto& shown : ::Test::Windows().Messages())
        text += shown.text + '\n';
    return text;
}

std::string HmrcPractice::Errors() const
{
    std::string codes;
    for (const auto& group : m_errors->GetGroups())
        for (const auto& error : group.errors)
            codes += (codes.empty() ? "" : " ") + error.GetCode();
    return codes;
}

HmrcApi::CreatedSchedules HmrcPractice::Create()
{
    HmrcApi::CPAYEPrepop prepop(m_client, TaxYear(kYear), "AA000001A", HmrcApi::IEndpointOverride::Live);
    prepop.CreateNewSchedules();
    return prepop.GetCreatedSchedules();
}

void HmrcPractice::Forget()
{
    Quarry::GetConnection().Script("DELETE FROM BRIXMTD_Employments; DELETE FROM BRIXMTD_EmploymentsCompanyBenefits; "
                                   "DELETE FROM BRIXMTD_PensionStateBenefits; DELETE FROM BRIXMTD_TaxFreeAllowances; "
                                   "DELETE FROM BRIXNewEmploy; DELETE FROM BRIXNewEmployBenefits; "
                                   "DELETE FROM BRIXPensionStateBenefits;");
}

std::string HmrcPractice::Staged() const
{
    return Rows("SELECT bWithdrawn, strKey, strEmployerName, strPAYEReference, strWorksNumber, dtStart, dtEnd, amtPay, "
                "amtTax, amtStudentLoan FROM BRIXMTD_Employments ORDER BY strKey") +
           Rows("SELECT b.bWithdrawn, strKey, nBenefitType, strBenefitType, amtAmount, bForecast "
                "FROM BRIXMTD_EmploymentsCompanyBenefits b JOIN BRIXMTD_Employments e ON e.lID = lMTD_EmploymentsID "
                "ORDER BY strKey, b.lID") +
           Rows("SELECT bWithdrawn, nMTDType, strReference, strPayer, dtStart, amtAmount, amtTax "
                "FROM BRIXMTD_PensionStateBenefits ORDER BY nMTDType, COALESCE(dtStart, '1900-01-01'), lID") +
           Rows("SELECT bWithdrawn, nAllowanceType, strAllowanceType, amtAmount FROM BRIXMTD_TaxFreeAllowances "
                "ORDER BY nAllowanceType");
}

std::vector<std::string> HmrcPractice::LiveRows(ClientId client)
{
    const auto read = [&](const Cellar::SqlText& select) { // the id, and the other columns in one text
        std::vector<std::pair<std::int64_t, std::string>> rows;
        const Cellar::RowSet set = Quarry::GetConnection().Queryf(select, client.Get());
        for (const auto& row : set.rows) {
            std::string& text = rows.emplace_back(row[0].GetInteger(), std::string()).second;
            for (std::size_t i = 1; i < row.size(); ++i) {
                const bool isAmount = set.columns[i].starts_with("amt");
                const CString value = row[i].IsNull() ? CString()
                                      : isAmount      ? CString(std::to_string(Cellar::ToAmount(row[i]).GetValue()))
                                                      : Cellar::ToText(row[i]);
                const bool isNumber = set.columns[i].starts_with('n'); // 0 is as good as none
                text += (i > 1 ? "|" : "") + (!value.IsEmpty() ? value.Str() : isNumber ? "0" : "-");
            }
        }
        return rows;
    };
#define OF_YEAR " JOIN BRIXMTD_TaxYear y ON y.lID = lMTD_TaxYearID WHERE lClientID = %ld"
#define STILL_SENT OF_YEAR " AND t.bWithdrawn = 0"
    std::map<std::int64_t, std::vector<std::string>> benefits;
    for (const auto& [id, row] :
         read("SELECT lMTD_EmploymentsID, nBenefitType, strBenefitType, amtAmount, bForecast FROM "
              "BRIXMTD_EmploymentsCompanyBenefits t JOIN BRIXMTD_Employments e ON e.lID = "
              "lMTD_EmploymentsID" STILL_SENT))
        benefits[id].push_back(row);
    std::vector<std::string> all;
    for (auto& [id, row] : read("SELECT t.lID, strPAYEReference, strWorksNumber, strEmployerName, dtStart, dtEnd, "
                                "amtPay, amtTax, amtStudentLoan, bOffPayroll FROM BRIXMTD_Employments t" STILL_SENT)) {
        all.push_back("E|" + row);
        std::sort(benefits[id].begin(), benefits[id].end());
        for (const std::string& benefit : benefits[id])
            all.back() += " [" + benefit + ']';
    }
    for (const auto& [id, row] : read("SELECT t.lID, nMTDType, strReference, strWorksNumber, strPayer, dtStart, "
                                      "dtEnd, amtAmount, amtTax FROM BRIXMTD_PensionStateBenefits t" STILL_SENT))
        all.push_back("P|" + row);
    for (const auto& [id, row] : read("SELECT t.lID, nAllowanceType, strAllowanceType, amtAmount FROM "
                                      "BRIXMTD_TaxFreeAllowances t" STILL_SENT))
        all.push_back("A|" + row);
    for (const auto& [id, row] :
         read("SELECT t.lID, amtClass1Earnings, amtClass2Due, bMaxNICsReached FROM BRIXMTD_NIC t" OF_YEAR))
        all.push_back("N|" + row);
    std::sort(all.begin(), all.end());
    return all;
}

std::string HmrcPractice::Schedules() const
{
    return Rows("SELECT nOrdering, strEmployerName, strPAYEReference, strWorksNumber, dtStart, dtEnd, amtPay, amtTax, "
                "amtStudentLoan FROM BRIXNewEmploy ORDER BY nOrdering") +
           Rows("SELECT nOrdering, nType, amtBenefit, bEstimate FROM BRIXNewEmployBenefits "
                "JOIN BRIXNewEmploy e ON e.lID = lNewEmployID ORDER BY nOrdering, nType") +
           Rows("SELECT nOrdering, nSection, nType, strDescription, strPayer, strReference, dtStart, amtAmount, amtTax "
                "FROM BRIXPensionStateBenefits ORDER BY nOrdering");
}

std::string HmrcPractice::Differences() const
{
    std::string text;
    int place = 0;
    for (const auto& difference : HmrcApi::FindDifferences(m_client, TaxYear(kYear))) {
        text += std::to_string(++place) + ' ' + difference.item.Str() +
                (difference.state == HmrcApi::Difference::State::Rejected ? " (rejected):" : ":");
        for (const auto& row : difference.rows)
            text += ' ' + row.caption.Str() + ' ' + row.ReturnText().Str() + '/' + row.HmrcText().Str() +
                    (row.estimate ? " estimate" : "");
        text += '\n';
    }
    return text;
}

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, text.npos) << from;
    return at == text.npos ? text : text.replace(at, from.size(), to);
}

std::string Answer(const std::string& items)
{
    if (items.empty() || items[0] == '{')
        return items;
    std::map<std::string, std::string> lists;
    std::string more;
    std::istringstream list(items);
    for (std::string item; std::getline(list >> std::ws, item, ';');) {
        std::istringstream words(item);
        std::string kind;
        words >> kind;
        if (kind == "more")
            std::getline(words, more);
        else
            lists[kind] += (lists[kind].empty() ? "" : ",") + ItemOf(kind, words);
    }
    return "{\"employments\": [" + lists["employment"] + "], \"privatePensions\": [" + lists["pension"] +
           "], \"taxableSocialSecurityBenefits\": [" + lists["benefit"] + ']' + (more.empty() ? "" : "," + more) + '}';
}
