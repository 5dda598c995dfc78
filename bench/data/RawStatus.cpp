#include <sqlite3.h>

#include <cstring>
#include <stdexcept>

#include "data/Context.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/DateRules.h"

namespace
{

enum
{
    kClients,
    kReturns,
    kInfo,
    kPeriods,
    kSubmissions,
    kPartnerships,
    kPartnershipReturns,
    kPartnershipPeriods,
    kPartnershipSubmissions,
    kStatements
};

constexpr const char* kTexts[kStatements] = {
    "SELECT lID, bActive, dtDeath, bTrust, bTrustOption, nTrustKind, strEntityType FROM BRIXClient ORDER BY lID",
    "SELECT lClientID, bDormant, dtFinalised, lID FROM BRIXTaxForm WHERE nYear = 2018 ORDER BY lID",
    "SELECT lClientID, nTaxPayerStatus, bTradingAllowance, lTaxFormID FROM BRIXOtherReturnInfo WHERE lTaxFormID IN "
    "(SELECT lID FROM BRIXTaxForm WHERE nYear = 2018) ORDER BY lID",
    "SELECT lClientID, dtStart, dtEnd FROM BRIXClientPeriodsInactivity ORDER BY lID",
    "SELECT lClientID FROM BRIXFBISubmissions WHERE nYear = 2018 AND nStatus = 2 ORDER BY lID",
    "SELECT lID, bActive, dtCessation, bLLP FROM BRIXPartnership ORDER BY lID",
    "SELECT lpClientID, bDormant, dtFinalised, lID FROM BRIXPartnershipTaxForm WHERE nYear = 2018 ORDER BY lID",
    "SELECT lpClientID, dtStart, dtEnd FROM BRIXPartnershipPeriodsInactivity ORDER BY lID",
    "SELECT lpClientID FROM BRIXPartnershipFBISubmissions WHERE nYear = 2018 AND nStatus = 2 ORDER BY lID",
};

const char* TextAt(sqlite3_stmt* row, int column)
{
    return reinterpret_cast<const char*>(sqlite3_column_text(row, column)); // null: NULL
}

bool FlagAt(sqlite3_stmt* row, int column) { return sqlite3_column_int(row, column) != 0; }

/// Calls `take` with the row.
template<class Take>
void EachRow(sqlite3_stmt* statement, Take take)
{
    while (sqlite3_step(statement) == SQLITE_ROW)
        take(statement);
    if (sqlite3_reset(statement) != SQLITE_OK)
        throw std::runtime_error("a status was not read");
}

} // namespace

struct RawStatus::Owner
{
    bool isThere, isPartnership, isActive, isTrust, hasTrustOption, isEstate, isLlp;
    bool isOver, isCovered, isAccepted;
    bool isDormant, isFinalised, isScottish, claimsAllowance;
    long form; // 0: none
    int trustKind;

    void AddTo(YesCounts& counts) const
    {
        const bool ends = isOver && !isTrust;
        const bool isOut = isPartnership ? !isActive : !isActive && form == 0;
        const bool estate = isTrust && isEstate;
        const bool answers[kStatusQuestions] = {ends || isDormant || isCovered,
                                                ends || isDormant || isCovered || isOut,
                                                isDormant,
                                                isAccepted,
                                                isFinalised,
                                                isTrust,
                                                estate,
                                                (isTrust || (hasTrustOption && trustKind != 1)) && !estate,
                                                isLlp,
                                                isScottish,
                                                claimsAllowance && !isTrust};
        for (std::size_t question = 0; question < kStatusQuestions; ++question)
            counts[question] += answers[question];
    }
};

RawStatus::RawStatus(const std::string& path)
    : m_statements(kStatements), m_currentYearStart(GetTaxYearStart(GetCurrentRealTaxYear()).FormatIso().Str())
{
    bool isGood =
        sqlite3_open_v2(path.c_str(), &m_database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) == SQLITE_OK;
    for (int i = 0; i < kStatements; ++i)
        isGood = isGood && sqlite3_prepare_v2(m_database, kTexts[i], -1, &m_statements[static_cast<std::size_t>(i)],
                                              nullptr) == SQLITE_OK;
    if (!isGood)
        throw std::runtime_error("cannot read " + path);
}

RawStatus::~RawStatus()
{
    for (sqlite3_stmt* const statement : m_statements)
        sqlite3_finalize(statement);
    sqlite3_close(m_database);
}

void RawStatus::ReadClients(Owners& owners)
{
    EachRow(m_statements[kClients], [&](sqlite3_stmt* row) {
        const auto id = static_cast<std::size_t>(sqlite3_column_int64(row, 0));
        owners.resize(id + 1);
        Owner& owner = owners[id];
        owner.isThere = true;
        owner.isActive = FlagAt(row, 1);
        const char* const death = TextAt(row, 2);
        owner.isOver = death && m_currentYearStart > death;
        owner.isTrust = FlagAt(row, 3);
        owner.hasTrustOption = FlagAt(row, 4);
        owner.trustKind = sqlite3_column_int(row, 5);
        const char* const type = TextAt(row, 6);
        owner.isEstate = type && strcasecmp(type, "Estate") == 0;
    });
}

void RawStatus::ReadPartnerships(Owners& owners)
{
    EachRow(m_statements[kPartnerships], [&](sqlite3_stmt* row) {
        const auto id = static_cast<std::size_t>(sqlite3_column_int64(row, 0));
        owners.resize(id + 1);
        Owner& owner = owners[id];
        owner.isThere = owner.isPartnership = true;
        owner.isActive = FlagAt(row, 1);
        const char* const cessation = TextAt(row, 2);
        owner.isOver = cessation && m_currentYearStart > cessation;
        owner.isLlp = FlagAt(row, 3);
    });
}

void RawStatus::ReadReturns(Owners& owners, int statement)
{
    EachRow(m_statements[static_cast<std::size_t>(statement)], [&](sqlite3_stmt* row) {
        Owner& owner = owners.at(static_cast<std::size_t>(sqlite3_column_int64(row, 0)));
        if (owner.form != 0)
            return; // the first counts
        owner.isDormant = FlagAt(row, 1);
        owner.isFinalised = TextAt(row, 2) != nullptr;
        owner.form = static_cast<long>(sqlite3_column_int64(row, 3));
    });
}

void RawStatus::ReadReturnInfo(Owners& owners)
{
    EachRow(m_statements[kInfo], [&](sqlite3_stmt* row) {
        Owner& owner = owners.at(static_cast<std::size_t>(sqlite3_column_int64(row, 0)));
        if (owner.form != sqlite3_column_int64(row, 3))
            return;
        owner.isScottish = sqlite3_column_int(row, 1) == 1;
        owner.claimsAllowance = FlagAt(row, 2);
    });
}

void RawStatus::ReadPeriods(Owners& owners, int statement)
{
    EachRow(m_statements[static_cast<std::size_t>(statement)], [&](sqlite3_stmt* row) {
        const char *const start = TextAt(row, 1), *const end = TextAt(row, 2);
        if ((start || end) && (!start || std::strcmp(start, "2017-04-06") <= 0) &&
            (!end || std::strcmp(end, "2018-04-05") >= 0))
            owners.at(static_cast<std::size_t>(sqlite3_column_int64(row, 0))).isCovered = true;
    });
}

void RawStatus::ReadSubmissions(Owners& owners, int statement)
{
    EachRow(m_statements[static_cast<std::size_t>(statement)], [&](sqlite3_stmt* row) {
        owners.at(static_cast<std::size_t>(sqlite3_column_int64(row, 0))).isAccepted = true;
    });
}

YesCounts RawStatus::Ask()
{
    Owners clients, partnerships;
    ReadClients(clients);
    ReadReturns(clients, kReturns);
    ReadPeriods(clients, kPeriods);
    ReadSubmissions(clients, kSubmissions);
    ReadReturnInfo(clients);
    ReadPartnerships(partnerships);
    ReadReturns(partnerships, kPartnershipReturns);
    ReadPeriods(partnerships, kPartnershipPeriods);
    ReadSubmissions(partnerships, kPartnershipSubmissions);
    YesCounts counts{};
    for (const Owners* const owners : {&clients, &partnerships})
        for (const Owner& owner : *owners)
            if (owner.isThere)
                owner.AddTo(counts);
    return counts;
}
