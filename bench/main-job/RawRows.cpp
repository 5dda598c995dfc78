#include "main-job/RawRows.h"

#include <sqlite3.h>

#include <stdexcept>

#include "Brix/Records.h"

namespace
{

std::string InsertStatement(const Quarry::Table& table)
{
    std::string columns = "lID", places = "?";
    for (const Quarry::Column& column : table.columns)
        if (column.ordinal != 0) {
            columns += std::string(", ") + column.name;
            places += ", ?";
        }
    return "INSERT INTO " + std::string(table.sqlName) + " (" + columns + ") VALUES (" + places + ")";
}

// Adds all rows of the table.
void Append(const Quarry::Table& table, RawRows& all, std::vector<RawRow>& rows)
{
    Quarry::CDataList list(table);
    for (list.Open(); !list.IsEOL(); list.MoveNext()) {
        RawRow row{all.statements.size(), {}};
        for (const Quarry::Column& column : table.columns)
            if (column.ordinal != 0)
                row.values.push_back(list.Get(column.ordinal));
        rows.push_back(std::move(row));
    }
    all.statements.push_back(InsertStatement(table));
}

void Bind(sqlite3_stmt* statement, int place, const Cellar::Value& value)
{
    using Kind = Cellar::Value::Kind;
    if (value.GetKind() == Kind::Null)
        sqlite3_bind_null(statement, place);
    else if (value.GetKind() == Kind::Integer || value.GetKind() == Kind::Money)
        sqlite3_bind_int64(statement, place, value.GetInteger());
    else
        sqlite3_bind_text(statement, place, value.View().data(), static_cast<int>(value.View().size()), SQLITE_STATIC);
}

} // namespace

RawRows ReadRawRows()
{
    RawRows all;
    for (const Quarry::Table* table :
         {&Brix::CMTD_TaxYear::Declaration(), &Brix::CMTD_Employments::Declaration(),
          &Brix::CMTD_EmploymentsCompanyBenefits::Declaration(), &Brix::CMTD_PensionStateBenefits::Declaration(),
          &Brix::CMTD_TaxFreeAllowances::Declaration()})
        Append(*table, all, all.staging);
    for (const Quarry::Table* table :
         {&Brix::CTaxForm::Declaration(), &Brix::CNewEmploy::Declaration(), &Brix::CNewEmployBenefits::Declaration(),
          &Brix::CPensionStateBenefits::Declaration()})
        Append(*table, all, all.schedules);
    return all;
}

RawWriter::RawWriter(const std::string& path, const RawRows& rows) : m_rows(rows)
{
    if (sqlite3_open(path.c_str(), &m_database) != SQLITE_OK)
        throw std::runtime_error("cannot open " + path);
    Run("PRAGMA journal_mode=WAL");
    Run("PRAGMA synchronous=FULL");
    for (const std::string& text : rows.statements) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(m_database, text.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(m_database));
        m_statements.push_back(statement);
    }
}

RawWriter::~RawWriter()
{
    for (sqlite3_stmt* const statement : m_statements)
        sqlite3_finalize(statement);
    sqlite3_close(m_database);
}

void RawWriter::WriteClient()
{
    WriteAll(m_rows.staging);
    WriteAll(m_rows.schedules);
}

void RawWriter::Run(const char* text)
{
    if (sqlite3_exec(m_database, text, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(m_database));
}

void RawWriter::WriteAll(const std::vector<RawRow>& rows)
{
    Run("BEGIN IMMEDIATE");
    for (const RawRow& row : rows)
        Write(row);
    Run("COMMIT");
}

void RawWriter::Write(const RawRow& row)
{
    sqlite3_stmt* const statement = m_statements[row.statement];
    sqlite3_bind_int64(statement, 1, ++m_lastId);
    int place = 2;
    for (const Cellar::Value& value : row.values)
        Bind(statement, place++, value);
    if (sqlite3_step(statement) != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errmsg(m_database));
    sqlite3_reset(statement);
}
