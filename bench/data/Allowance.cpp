#include <sqlite3.h>

#include <algorithm>
#include <stdexcept>

#include "data/Context.h"
#include "MorvUt/MorvUt.h"

void AddAllowances()
{
    Quarry::GetConnection().Script(R"(
        WITH years AS (SELECT 2003 AS nYear UNION ALL SELECT nYear + 1 FROM years WHERE nYear < 2022)
            INSERT INTO BRIXTaxForm (lClientID, nYear) SELECT 1, nYear FROM years;
        WITH sources AS (SELECT 'Bank' AS strName UNION ALL SELECT 'Treasury 4% 2025' UNION ALL SELECT 'Savings')
            INSERT INTO BRIXNewInterest (lTaxFormID, lClientID, nYear, strName, nFlagA, nFlagB, nType, amtIncome, amtBFWD,
                                         amtAddition, amtDeduction)
            SELECT lID, lClientID, nYear, strName, 0, 0, 1100, NULL, CASE WHEN nYear = 2003 THEN 1000000 END, 5000000,
                   10000 FROM BRIXTaxForm, sources;
        INSERT INTO BRIXNewInterestGrid (lNewInterestID, dtPaid, amtIncome)
            SELECT lID, nYear || '-03-01', amount
            FROM BRIXNewInterest, (SELECT 2000000 AS amount UNION ALL SELECT 1500000))");
}

std::int64_t AskAllowance()
{
    return GetAccruedAllowanceBFWD(1, SchedTypeInterest, kSource, false, false, kLastAllowanceYear).GetValue();
}

void ForgetAllowances() { ClearAccruedAllowanceBFWDCache(); }

struct RawAllowance::Figures
{
    bool isEntered;
    std::int64_t broughtForward, addition, deduction, income;
};

RawAllowance::RawAllowance(const std::string& path)
{
    const auto prepare = [&](sqlite3_stmt*& statement, const char* text) {
        return sqlite3_prepare_v2(m_database, text, -1, &statement, nullptr) == SQLITE_OK;
    };
    if (sqlite3_open_v2(path.c_str(), &m_database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) != SQLITE_OK ||
        !prepare(m_form, "SELECT lID FROM BRIXTaxForm WHERE lClientID = ? AND nYear = ? ORDER BY lID") ||
        !prepare(m_rows,
                 "SELECT lID, strName, nFlagA, nFlagB, nType, amtIncome, amtBFWD, amtAddition, amtDeduction FROM "
                 "BRIXNewInterest WHERE lTaxFormID = ? ORDER BY lID") ||
        !prepare(m_lines, "SELECT amtIncome FROM BRIXNewInterestGrid WHERE lNewInterestID = ? ORDER BY lID"))
        throw std::runtime_error("cannot read " + path);
}

RawAllowance::~RawAllowance()
{
    for (sqlite3_stmt* const statement : {m_form, m_rows, m_lines})
        sqlite3_finalize(statement);
    sqlite3_close(m_database);
}

/// False without a return.
bool RawAllowance::ReadYear(short year, Figures& figures)
{
    sqlite3_bind_int(m_form, 1, 1);
    sqlite3_bind_int(m_form, 2, year);
    const bool hasForm = sqlite3_step(m_form) == SQLITE_ROW;
    const sqlite3_int64 form = hasForm ? sqlite3_column_int64(m_form, 0) : 0;
    sqlite3_reset(m_form);
    sqlite3_bind_int64(m_rows, 1, form);
    while (sqlite3_step(m_rows) == SQLITE_ROW) {
        const auto* const name = reinterpret_cast<const char*>(sqlite3_column_text(m_rows, 1));
        if (!name || std::string_view(name) != kSource || sqlite3_column_int(m_rows, 2) == 1 ||
            sqlite3_column_int(m_rows, 3) != 0)
            continue;
        figures = {sqlite3_column_type(m_rows, 6) != SQLITE_NULL, sqlite3_column_int64(m_rows, 6),
                   sqlite3_column_int64(m_rows, 7), sqlite3_column_int64(m_rows, 8), 0};
        if (sqlite3_column_int(m_rows, 4) != 1100) {
            figures.income = sqlite3_column_int64(m_rows, 5);
            break;
        }
        sqlite3_bind_int64(m_lines, 1, sqlite3_column_int64(m_rows, 0));
        while (sqlite3_step(m_lines) == SQLITE_ROW)
            figures.income += sqlite3_column_int64(m_lines, 0);
        sqlite3_reset(m_lines);
        break;
    }
    sqlite3_reset(m_rows);
    return hasForm;
}

std::int64_t RawAllowance::Ask(short last)
{
    std::vector<Figures> years;
    std::int64_t left = 0;
    Figures figures{};
    for (short year = last; year >= kFirstAllowanceYear && ReadYear(year, figures); --year) {
        years.push_back(figures);
        if (figures.isEntered) {
            left = figures.broughtForward;
            break;
        }
    }
    for (; !years.empty(); years.pop_back()) {
        const Figures& of = years.back();
        left = std::max<std::int64_t>(left + of.addition - of.income - of.deduction, 0);
    }
    return left;
}

std::int64_t RawAllowance::LookUp()
{
    const auto keyOf = [](short year) { return Key(1, SchedTypeInterest, kSource, false, false, year); };
    if (m_known.empty())
        for (short year = kFirstAllowanceYear; year <= kLastAllowanceYear; ++year)
            m_known.emplace(keyOf(year), Ask(year));
    return m_known.at(keyOf(kLastAllowanceYear));
}
