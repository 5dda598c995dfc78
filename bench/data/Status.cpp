#include "data/Context.h"
#include "MorvUt/MorvUt.h"

void AddStatuses()
{
    Quarry::GetConnection().Script(R"(
        UPDATE BRIXClient SET bTrust = lID % 20 = 0, bTrustOption = lID % 50 = 1, nTrustKind = lID % 3,
            bActive = lID % 9 <> 0, dtDeath = CASE WHEN lID % 30 = 7 THEN '2016-01-02' END,
            strEntityType = CASE WHEN lID % 60 = 0 THEN 'Estate' ELSE strEntityType END;
        INSERT INTO BRIXTaxForm (lClientID, nYear, bDormant, dtFinalised)
            SELECT lID, nYear, lID % 40 = 3, CASE WHEN lID % 3 = 0 THEN '2018-12-01' END
            FROM BRIXClient, (SELECT 2017 AS nYear UNION ALL SELECT 2018) WHERE lID % 10 <> 5;
        INSERT INTO BRIXOtherReturnInfo (lTaxFormID, lClientID, nYear, nTaxPayerStatus, bTradingAllowance)
            SELECT lID, lClientID, nYear, lClientID % 7, lClientID % 4 = 0 FROM BRIXTaxForm;
        INSERT INTO BRIXClientPeriodsInactivity (lClientID, dtStart, dtEnd)
            SELECT lID, '2015-01-01', CASE WHEN lID % 2 = 0 THEN '2017-12-31' END FROM BRIXClient WHERE lID % 15 = 4;
        INSERT INTO BRIXFBISubmissions (lClientID, nYear, nStatus, dtSubmitted)
            SELECT lClientID, nYear, 1 + lClientID % 2, '2018-12-02 10:00:00.000'
            FROM BRIXTaxForm WHERE dtFinalised IS NOT NULL;
        INSERT INTO BRIXPartnership (strCode, strName, bActive, bLLP, dtCessation)
            SELECT 'P' || lID, 'Ash & Birch', lID % 8 <> 0, lID % 2, CASE WHEN lID % 75 = 0 THEN '2015-06-30' END
            FROM BRIXClient WHERE lID % 25 = 0;
        INSERT INTO BRIXPartnershipTaxForm (lpClientID, nYear, bDormant, dtFinalised)
            SELECT lID, 2018, lID % 11 = 0, CASE WHEN lID % 2 = 0 THEN '2018-12-01' END FROM BRIXPartnership;
        INSERT INTO BRIXPartnershipPeriodsInactivity (lpClientID, dtStart)
            SELECT lID, '2010-01-01' FROM BRIXPartnership WHERE lID % 13 = 0;
        INSERT INTO BRIXPartnershipFBISubmissions (lpClientID, nYear, nStatus, dtSubmitted)
            SELECT lpClientID, nYear, 2, '2018-12-02 10:00:00.000' FROM BRIXPartnershipTaxForm
            WHERE dtFinalised IS NOT NULL)");
}

YesCounts AskStatusOfAll()
{
    YesCounts counts{};
    for (const ClientStatus& status : StatusOfAll(kStatusYear))
        for (std::size_t question = 0; question < kStatusQuestions; ++question)
            counts[question] += status.Is(static_cast<StatusQuestion>(question));
    return counts;
}

int CountStatusStatements()
{
    int statements = 0;
    Quarry::GetConnection().OnSent([&](std::string_view) { ++statements; });
    StatusOfAll(kStatusYear);
    Quarry::GetConnection().OnSent(nullptr);
    return statements;
}
