#include <sqlite3.h>

#include <stdexcept>

#include "data/Data.h"

namespace
{

constexpr char kClient[] =
    "SELECT lID, strCode, strName, strUTR, strNINumber, bTrust, bActive, dtDeath, strEntityType, bTrustOption, "
    "nTrustKind, bNoTaxReturnSource, dtModified, strModifiedBy, nVersion FROM BRIXClient";
constexpr char kInsert[] = "INSERT INTO BRIXNewEmploy (lID, lTaxFormID, lClientID, nYear, nOrdering, strGUID, "
                           "strEmployerName, strPAYEReference, dtStart, amtPay, amtTax, nVersion) "
                           "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0)";

std::string TextAt(sqlite3_stmt* statement, int column)
{
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))) : std::string();
}

void Fill(RawClient& client, sqlite3_stmt* row)
{
    client.id = static_cast<long>(sqlite3_column_int64(row, 0));
    client.code = TextAt(row, 1);
    client.name = TextAt(row, 2);
    client.utr = TextAt(row, 3);
    client.nationalInsuranceNumber = TextAt(row, 4);
    client.isTrust = sqlite3_column_int(row, 5) != 0;
    client.isActive = sqlite3_column_int(row, 6) != 0;
    client.death = TextAt(row, 7);
    client.entityType = TextAt(row, 8);
    client.hasTrustOption = sqlite3_column_int(row, 9) != 0;
    client.trustKind = sqlite3_column_int(row, 10);
    client.hasNoTaxReturn = sqlite3_column_int(row, 11) != 0;
    client.modified = TextAt(row, 12);
    client.modifiedBy = TextAt(row, 13);
    client.version = static_cast<long>(sqlite3_column_int64(row, 14));
}

void BindText(sqlite3_stmt* statement, int place, const char* text)
{
    sqlite3_bind_text(statement, place, text, -1, SQLITE_STATIC);
}

} // namespace

RawDatabase::RawDatabase(const std::string& path)
{
    if (sqlite3_open_v2(path.c_str(), &m_database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) != SQLITE_OK)
        throw std::runtime_error("cannot open " + path);
    Run("PRAGMA journal_mode = WAL; PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL; PRAGMA secure_delete = ON");
}

RawDatabase::~RawDatabase()
{
    for (sqlite3_stmt* const statement :
         {m_schema, m_threeColumns, m_whole, m_byId, m_insert, m_change, m_count, m_counted})
        sqlite3_finalize(statement);
    sqlite3_close(m_database);
}

sqlite3_stmt* RawDatabase::Prepare(sqlite3_stmt*& statement, const char* text)
{
    if (!statement && sqlite3_prepare_v2(m_database, text, -1, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(m_database));
    return statement;
}

void RawDatabase::Run(const char* text)
{
    if (sqlite3_exec(m_database, text, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(m_database));
}

void RawDatabase::Finish(sqlite3_stmt* statement)
{
    if (sqlite3_step(statement) != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errmsg(m_database));
    sqlite3_reset(statement);
}

long RawDatabase::ReadSchema()
{
    sqlite3_stmt* const row = Prepare(m_schema, "SELECT * FROM BRIXSchema");
    const bool isThere = sqlite3_step(row) == SQLITE_ROW;
    sqlite3_reset(row);
    return isThere;
}

long RawDatabase::ReadThreeColumns()
{
    sqlite3_stmt* const row = Prepare(m_threeColumns, "SELECT lID, strCode, strName FROM BRIXClient ORDER BY lID");
    long read = 0;
    while (sqlite3_step(row) == SQLITE_ROW) {
        const std::string code = TextAt(row, 1), name = TextAt(row, 2);
        read += static_cast<long>(sqlite3_column_int64(row, 0)) + static_cast<long>(code.size() + name.size());
    }
    sqlite3_reset(row);
    return read;
}

long RawDatabase::ReadWholeList()
{
    const std::string text = std::string(kClient) + " ORDER BY lID";
    sqlite3_stmt* const row = Prepare(m_whole, text.c_str());
    std::vector<RawClient> clients;
    while (sqlite3_step(row) == SQLITE_ROW)
        Fill(clients.emplace_back(), row);
    sqlite3_reset(row);
    return static_cast<long>(clients.size());
}

long RawDatabase::OpenById(long id)
{
    const std::string text = std::string(kClient) + " WHERE lID = ?";
    sqlite3_stmt* const row = Prepare(m_byId, text.c_str());
    sqlite3_bind_int64(row, 1, id);
    std::vector<RawClient> clients;
    while (sqlite3_step(row) == SQLITE_ROW)
        Fill(clients.emplace_back(), row);
    sqlite3_reset(row);
    return clients.at(0).id;
}

/// The first of so many.
long RawDatabase::TakeIds(int count)
{
    sqlite3_stmt* const up =
        Prepare(m_count, "UPDATE BRIXNextID SET lNext = CASE WHEN lNext < (SELECT MAX(lID) FROM BRIXNewEmploy) THEN "
                         "(SELECT MAX(lID) FROM BRIXNewEmploy) + ? ELSE lNext + ? END WHERE strTable = ?");
    sqlite3_bind_int(up, 1, count);
    sqlite3_bind_int(up, 2, count);
    BindText(up, 3, "BRIXNewEmploy");
    Finish(up);
    if (sqlite3_changes(m_database) == 0)
        Run("INSERT INTO BRIXNextID (strTable, lNext) VALUES ('BRIXNewEmploy', 1000)");
    sqlite3_stmt* const row = Prepare(m_counted, "SELECT lNext FROM BRIXNextID WHERE strTable = ?");
    BindText(row, 1, "BRIXNewEmploy");
    sqlite3_step(row);
    const long last = static_cast<long>(sqlite3_column_int64(row, 0));
    sqlite3_reset(row);
    return last - count + 1;
}

void RawDatabase::AddEmployments(int count)
{
    constexpr int kBlock = 32;
    Run("BEGIN IMMEDIATE");
    sqlite3_stmt* const row = Prepare(m_insert, kInsert);
    long id = 0;
    for (int number = 0; number < count; ++number) {
        id = number % kBlock == 0 ? TakeIds(kBlock) : id + 1;
        sqlite3_bind_int64(row, 1, id);
        sqlite3_bind_int64(row, 2, 1);
        sqlite3_bind_int64(row, 3, 1);
        sqlite3_bind_int(row, 4, 2018);
        sqlite3_bind_int(row, 5, number);
        BindText(row, 6, "6F9619FF-8B86-D011-B42D-00C04FC964FF");
        BindText(row, 7, "Acme Widgets");
        BindText(row, 8, "123/AB456");
        BindText(row, 9, "2017-04-06");
        sqlite3_bind_int64(row, 10, 240'000'000);
        sqlite3_bind_int64(row, 11, 25'000'000);
        Finish(row);
    }
    Run("COMMIT");
}

void RawDatabase::ChangeClient(long id)
{
    if (m_version < 0) {
        sqlite3_stmt* read = nullptr;
        sqlite3_bind_int64(Prepare(read, "SELECT nVersion FROM BRIXClient WHERE lID = ?"), 1, id);
        sqlite3_step(read);
        m_version = static_cast<long>(sqlite3_column_int64(read, 0));
        sqlite3_finalize(read);
    }
    sqlite3_stmt* const row = Prepare(
        m_change, "UPDATE BRIXClient SET strName = ?, nVersion = ? WHERE lID = ? AND COALESCE(nVersion, 0) = ?");
    BindText(row, 1, m_version % 2 == 0 ? "Harriet Ashworth" : "Harriet Bell");
    sqlite3_bind_int64(row, 2, m_version + 1);
    sqlite3_bind_int64(row, 3, id);
    sqlite3_bind_int64(row, 4, m_version);
    Finish(row);
    if (sqlite3_changes(m_database) != 1)
        throw std::runtime_error("the row was changed by somebody else");
    ++m_version;
}
