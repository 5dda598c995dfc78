#include "roll-forward/RollForward.h"

#include <regex>

#include "Brix/Schema.h"
#include "Cellar/Transaction.h"
#include "MorvUt/MorvUt.h"

namespace
{

/// `statements` in the database's own dialect: {Date + year}, {Count}, {New}, {Old}.
std::string InDialect(Cellar::CConnection& connection, std::string statements, int clients = 0)
{
    const bool isEmbedded = connection.GetDialect().HasOneWriter();
    const auto replace = [&](const char* from, const std::string& to) {
        statements = std::regex_replace(statements, std::regex(from), to);
    };
    replace("\\{Later (\\S+)\\}", isEmbedded ? "date($1, '+1 year')" : "($1 + interval '1 year')");
    replace("\\{Count\\}", std::to_string(clients));
    replace("\\{New\\}", std::to_string(kNewYear));
    replace("\\{Old\\}", std::to_string(kNewYear - 1));
    return statements;
}

constexpr char kFill[] = R"(
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < {Count})
  INSERT INTO BRIXClient (lID, strCode, strName) SELECT i, 'C' || i, 'Client ' || i FROM n;
INSERT INTO Source (SourceID, ClientID, Year, SourceTypeID, Status, ShowReminder, Description, bUserCreated)
  SELECT lID, lID, {Old}, 1, 'done', 1, 'Tax Return', 0 FROM BRIXClient;
INSERT INTO Source (SourceID, ClientID, Year, SourceTypeID, Status, ShowReminder, Description, bUserCreated)
  SELECT {Count} + lID, lID, {Old}, 2, 'open', 0, 'Rental accounts', 1 FROM BRIXClient WHERE lID % 5 = 0;
INSERT INTO SourceTask (SourceID, TypeID, ListOrder, DueDate, bRequired, bComplete)
  SELECT lID, TypeID, ListOrder + lID % 3, CASE WHEN TypeID = 7 THEN {Old Date} END, CASE WHEN TypeID < 19 THEN 1 ELSE lID % 2 END, 1
  FROM BRIXClient, SourceDefaultTask WHERE SourceTypeID = 1;
INSERT INTO SourceTask (SourceID, TypeID, ListOrder, DueDate, bRequired, bComplete)
  SELECT {Count} + lID, TypeID, TypeID, {Old Date}, 1, 0 FROM BRIXClient, SourceDefaultTask
  WHERE SourceTypeID = 1 AND TypeID IN (2, 3, 5) AND lID % 5 = 0;
INSERT INTO ClientEnquiry (lID, lClientID, nYear, strDescription, bCarryForward, SourceID, SourceTypeID, TypeID)
  SELECT lID, lID, {Old}, 'P60 of ' || strName, 1, lID, 1, 5 FROM BRIXClient WHERE lID % 3 = 0;
)";

constexpr char kRoll[] = R"(
INSERT INTO Source (SourceID, ClientID, Year, SourceTypeID, Status, ShowReminder, Description, bUserCreated, bCFStaff)
  SELECT (SELECT MAX(SourceID) FROM Source) + row_number() OVER (ORDER BY SourceID), ClientID, {New}, SourceTypeID, '?', ShowReminder,
    Description, bUserCreated, bCFStaff FROM Source s
  WHERE Year = {Old} AND NOT EXISTS (SELECT 1 FROM Source h WHERE h.ClientID = s.ClientID AND h.Year = {New} AND
    h.SourceTypeID = s.SourceTypeID AND h.Description = s.Description) AND (bUserCreated = 0 OR EXISTS
    (SELECT 1 FROM SourceTask t WHERE t.SourceID = s.SourceID AND t.bComplete = 0));
INSERT INTO SourceTask (SourceID, TypeID, ListOrder, DueDate, ReminderDate, bRequired)
  SELECT n.SourceID, d.TypeID, CASE WHEN d.TypeID IN (1, 19, 20) THEN d.ListOrder ELSE t.ListOrder END,
    CASE WHEN d.TypeID IN (1, 19, 20) THEN d.DueDate ELSE {Later t.DueDate} END,
    CASE WHEN d.TypeID IN (1, 19, 20) THEN d.ReminderDate ELSE {Later t.ReminderDate} END, t.bRequired
  FROM Source n JOIN Source o ON o.ClientID = n.ClientID AND o.Year = {Old} AND o.SourceTypeID = n.SourceTypeID AND
    o.Description = n.Description JOIN SourceDefaultTask d ON d.SourceTypeID = n.SourceTypeID AND
    d.DefaultTrackerID IS NULL JOIN SourceTask t ON t.SourceID = o.SourceID AND t.TypeID = d.TypeID
  WHERE n.Year = {New};
INSERT INTO SourceTask (SourceID, TypeID, ListOrder, DueDate, ReminderDate, bRequired)
  SELECT n.SourceID, t.TypeID, t.ListOrder, {Later t.DueDate}, {Later t.ReminderDate}, t.bRequired
  FROM Source n JOIN Source o ON o.ClientID = n.ClientID AND o.Year = {Old} AND o.SourceTypeID = n.SourceTypeID AND
    o.Description = n.Description JOIN SourceTask t ON t.SourceID = o.SourceID
  WHERE n.Year = {New} AND n.bUserCreated = 1;
INSERT INTO ClientEnquiry (lID, lClientID, nYear, strDescription, bCarryForward, SourceID, SourceTypeID, TypeID)
  SELECT (SELECT MAX(lID) FROM ClientEnquiry) + row_number() OVER (ORDER BY e.lID), e.lClientID, {New}, e.strDescription, 1,
    n.SourceID, 1, t.TypeID
  FROM ClientEnquiry e JOIN Source n ON n.ClientID = e.lClientID AND n.Year = {New} AND n.SourceTypeID = 1
    LEFT JOIN SourceTask t ON t.SourceID = n.SourceID AND t.TypeID = e.TypeID
  WHERE e.nYear = {Old} AND e.bCarryForward <> 0 AND NOT EXISTS (SELECT 1 FROM ClientEnquiry h WHERE
    h.lClientID = e.lClientID AND h.nYear = {New} AND h.strDescription = e.strDescription);
)";

} // namespace

void FillPractice(Cellar::CConnection& connection, int clients)
{
    SeedTrackerTypes();
    const bool isEmbedded = connection.GetDialect().HasOneWriter();
    const std::string date = isEmbedded ? "'2024-01-31'" : "timestamp '2024-01-31'";
    Cellar::CTransaction transaction(connection, Cellar::Intent::Write);
    connection.Script(InDialect(connection, std::regex_replace(kFill, std::regex("\\{Old Date\\}"), date), clients));
    Brix::PutIdsBehindRows(connection);
    transaction.Commit();
    connection.Script("ANALYZE");
}

void RollForwardRaw(Cellar::CConnection& connection)
{
    Cellar::CTransaction transaction(connection, Cellar::Intent::Write);
    connection.Script(InDialect(connection, kRoll));
    transaction.Commit();
}

std::string SummaryOf(Cellar::CConnection& connection)
{
    std::string text;
    const auto add = [&](const Cellar::SqlText& query) {
        for (const auto& row : connection.Queryf(query, kNewYear).rows)
            for (const Cellar::Value& value : row)
                text += Cellar::ToText(value).Str() + ' ';
    };
    add("SELECT COUNT(*), SUM(ClientID), SUM(SourceTypeID), SUM(bUserCreated), SUM(ShowReminder) FROM Source WHERE "
        "Year "
        "= %d");
    add("SELECT COUNT(*), SUM(TypeID), SUM(ListOrder), SUM(bRequired), SUM(bComplete), COUNT(DueDate), MIN(DueDate), "
        "MAX(DueDate) FROM SourceTask t, Source s WHERE s.SourceID = t.SourceID AND s.Year = %d");
    add("SELECT COUNT(*), SUM(e.TypeID), SUM(ClientID) FROM ClientEnquiry e, Source s WHERE s.SourceID = e.SourceID "
        "AND "
        "s.ClientID = e.lClientID AND s.Year = e.nYear AND e.nYear = %d");
    return text;
}
