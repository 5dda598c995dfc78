#include "Brix/Check.h"

#include <algorithm>

#include "Afx/text/TextFold.h"
#include "Brix/detail/Catalog.h"
#include "Brix/Records.h"
#include "Brix/Schema.h"

namespace Brix
{
namespace
{

// All of it is worked out from the declarations, but for what may not stand twice.

using Cellar::ColumnType;
using Cellar::SqlText;
using Cellar::Value;
using Quarry::Column;
using Quarry::Table;

/// a.[name]
SqlText In(const SqlText& alias, std::string_view name) { return alias + "." + SqlText::Bracketed(name); }

/// Columns whose values together must not stand twice; rows with a null among them do not count.
struct Unique
{
    const Table& (*table)() noexcept;
    std::vector<const char*> columns;
    bool ignoreCase;
    const char* fault;
    const SqlText* among = nullptr; // further conditions on the rows a and b that count
};

constexpr SqlText kWithCode = " AND a.[strCode] <> ''";

const std::vector<Unique>& Uniques()
{
    static const auto& uniques = *new std::vector<Unique>{
        {&CMTD_TaxYear::Declaration, {"lClientID", "nYear"}, false, "the client's staged tax year stands twice"},
        {&CMTD_Employments::Declaration,
         {"lMTD_TaxYearID", "strKey"},
         false,
         "the year's staged employment stands twice"},
        {&CMTD_NIC::Declaration, {"lMTD_TaxYearID"}, false, "the year's staged National Insurance stands twice"},
        {&CTaxForm::Declaration, {"lClientID", "nYear"}, false, "the client's tax form of the year stands twice"},
        {&CPartnershipTaxForm::Declaration,
         {"lpClientID", "nYear"},
         false,
         "the partnership's tax form of the year stands twice"},
        {&CClientYearly::Declaration, {"lClientID", "nYear"}, false, "the client's yearly row stands twice"},
        {&CPartnershipYearly::Declaration, {"lpClientID", "nYear"}, false, "the partnership's yearly row stands twice"},
        {&CClient::Declaration, {"strCode"}, false, "the client's code stands twice", &kWithCode},
        {&CPartnership::Declaration, {"strCode"}, false, "the partnership's code stands twice", &kWithCode},
        {&CPFile::Declaration, {"nYear"}, false, "the year's parameters stand twice"},
        {&CUser::Declaration, {"strUserID"}, true, "the user stands twice"},
        {&CUserRole::Declaration, {"strRole"}, true, "the role stands twice"},
        {&CUserPermissions::Declaration, {"strUserID", "nPermission"}, true, "the user's permission stands twice"},
        {&CUserRolePermissions::Declaration, {"strRole", "nPermission"}, true, "the role's permission stands twice"},
    };
    return uniques;
}

/// Schedules that were made of HMRC's items. HMRC may list several items of one reference and works number; then there
/// are as many schedules, and no more.
struct OfItems
{
    const Table& (*table)() noexcept;
    SqlText reference, key, among; // of the schedules a
    const Table& (*items)() noexcept;
    SqlText itemsOfReference;
    const char* fault;
};

const OfItems kOfItems[] = {
    {&CNewEmploy::Declaration, "a.[strPAYEReference]", "a.[strPAYEReference]", "", &CMTD_Employments::Declaration,
     "[BRIXMTD_Employments] m WHERE m.[strPAYEReference]", "the year's employment from HMRC stands twice"},
    {&CPensionStateBenefits::Declaration, "a.[strReference]", "a.[nType], a.[strReference]",
     " AND a.[nType] IN (1040, 1050)", &CMTD_PensionStateBenefits::Declaration,
     "[BRIXMTD_PensionStateBenefits] m WHERE m.[strReference]", "the year's pension from HMRC stands twice"},
};

class Check
{
public:
    explicit Check(Cellar::CConnection& connection) : m_connection(connection), m_dialect(connection.GetDialect()) {}

    std::vector<Fault> Run()
    {
        if (!m_dialect.FileIntegrity().IsEmpty())
            Try("", [&] { CheckFile(); });
        Detail::Catalog catalog;
        Try("", [&] { catalog = Detail::ReadCatalog(m_connection); });
        for (const Table* const table : AllTables()) {
            if (!CheckColumns(catalog, *table))
                m_incomplete.push_back(table);
        }
        for (const Table* const table : AllTables()) {
            if (!IsWhole(*table))
                continue;
            Try(table->sqlName, [&] { CheckParents(*table); });
            Try(table->sqlName, [&] { CheckCopies(*table); });
            Try(table->sqlName, [&] { CheckValues(*table); });
            Try(table->sqlName, [&] { CheckSequence(*table); });
        }
        for (const Unique& unique : Uniques()) {
            if (IsWhole(unique.table()))
                Try(unique.table().sqlName, [&] { CheckUnique(unique); });
        }
        for (const OfItems& each : kOfItems) {
            if (IsWhole(each.table()) && IsWhole(each.items()) && IsWhole(CMTD_TaxYear::Declaration()) &&
                IsWhole(CTaxForm::Declaration()))
                Try(each.table().sqlName, [&] { CheckOfItems(each); });
        }
        const std::pair<const Table&, void (Check::*)()> single[] = {
            {COptions::Declaration(), &Check::CheckOptions},
            {CClientEnquiry::Declaration(), &Check::CheckEnquiries},
            {CSourceDefaultTask::Declaration(), &Check::CheckDefaultTasks},
        };
        for (const auto& [table, check] : single) {
            if (IsWhole(table))
                Try(table.sqlName, [this, check = check] { (this->*check)(); });
        }
        return std::move(m_faults);
    }

private:
    void Add(const Table& table, const Value& id, std::string fault)
    {
        m_faults.push_back({table.sqlName, Cellar::ToLong(id), std::move(fault)});
    }

    /// What a damaged file answers is a fault of its own. That another program holds it is none.
    template<class Action>
    void Try(const char* table, Action action)
    {
        try {
            action();
        } catch (const Cellar::DatabaseError& error) {
            if (error.GetCategory() != Cellar::DatabaseError::Category::Other)
                throw;
            m_faults.push_back({table, 0, error.GetReason()});
        }
    }

    bool IsWhole(const Table& table) const
    {
        return std::find(m_incomplete.begin(), m_incomplete.end(), &table) == m_incomplete.end();
    }

    void CheckFile()
    {
        for (const auto& row : m_connection.Query(m_dialect.FileIntegrity(), {}).rows) {
            if (const CString text = Cellar::ToText(row.at(0)); text != "ok")
                m_faults.push_back({"", 0, text.Str()});
        }
    }

    bool CheckColumns(const Detail::Catalog& catalog, const Table& table)
    {
        const auto there = catalog.find(Afx::FoldLower(table.sqlName));
        if (there == catalog.end()) {
            Add(table, {}, "the table is missing");
            return false;
        }
        const std::size_t before = m_faults.size();
        const auto require = [&](const char* column) {
            if (!there->second.contains(Afx::FoldLower(column)))
                Add(table, {}, std::string("the column ") + column + " is missing");
        };
        for (const Column& column : table.columns)
            require(column.name);
        if (table.versioned)
            require("nVersion");
        return m_faults.size() == before;
    }

    /// The id of the row, as far as its table has one.
    static SqlText IdOf(const Table& table, const SqlText& alias)
    {
        return *table.key ? In(alias, table.columns[0].name) : SqlText("0");
    }

    /// No parent is meant: null, 0, an empty text.
    static SqlText IsMeant(const Table& table, const Table::Parent& parent)
    {
        const SqlText column = In("c", parent.column);
        const bool isText = table.Find(parent.column)->type == ColumnType::Text;
        return SqlText("(") + column + " IS NOT NULL AND " + column + (isText ? SqlText(" <> '')") : SqlText(" <> 0)"));
    }

    void CheckParents(const Table& table)
    {
        SqlText noParent;
        for (const Table::Parent& parent : table.parents) {
            noParent += noParent.IsEmpty() ? SqlText(" WHERE NOT ") : SqlText(" AND NOT ");
            noParent += IsMeant(table, parent);
            const Table* const parentTable = FindTable(parent.sqlTable);
            if (!IsWhole(*parentTable))
                continue;
            const SqlText statement = SqlText("SELECT ") + IdOf(table, "c") + ", " + In("c", parent.column) + " FROM " +
                                      SqlText::Bracketed(table.sqlName) + " c WHERE " + IsMeant(table, parent) +
                                      " AND NOT EXISTS (SELECT 1 FROM " + SqlText::Bracketed(parent.sqlTable) +
                                      " p WHERE " + In("p", parent.parentColumn) + " = " + In("c", parent.column) + ")";
            for (const auto& row : m_connection.Query(statement, {}).rows)
                Add(table, row[0],
                    std::string("the parent does not exist: ") + parent.sqlTable + " " + Cellar::ToText(row[1]).Str());
        }
        if (noParent.IsEmpty())
            return;
        const SqlText statement =
            SqlText("SELECT ") + IdOf(table, "c") + " FROM " + SqlText::Bracketed(table.sqlName) + " c" + noParent;
        for (const auto& row : m_connection.Query(statement, {}).rows)
            Add(table, row[0], "the row has no parent");
    }

    /// Rows under a tax form repeat its client and year.
    void CheckCopies(const Table& table)
    {
        if (!table.Find("lTaxFormID") || !table.Find("lClientID") || !table.Find("nYear"))
            return;
        const SqlText statement = SqlText("SELECT c.[lID] FROM ") + SqlText::Bracketed(table.sqlName) +
                                  " c, [BRIXTaxForm] f WHERE f.[lID] = c.[lTaxFormID] AND "
                                  "(COALESCE(c.[lClientID], 0) <> COALESCE(f.[lClientID], 0) OR "
                                  "COALESCE(c.[nYear], 0) <> COALESCE(f.[nYear], 0))";
        for (const auto& row : m_connection.Query(statement, {}).rows)
            Add(table, row[0], "client or year differ from those of the tax form");
    }

    void CheckUnique(const Unique& unique)
    {
        const Table& table = unique.table();
        SqlText columns;
        SqlText same;
        for (const char* const column : unique.columns) {
            columns += SqlText(", ") + In("a", column) + ", " + In("b", column);
            same += SqlText(" AND ") + In("a", column) + " = " + In("b", column);
        }
        const SqlText name = SqlText::Bracketed(table.sqlName);
        const SqlText statement = SqlText("SELECT a.[lID]") + columns + " FROM " + name + " a, " + name +
                                  " b WHERE b.[lID] < a.[lID]" + same + (unique.among ? *unique.among : SqlText()) +
                                  " ORDER BY a.[lID]";
        long last = 0;
        for (const auto& row : m_connection.Query(statement, {}).rows) {
            bool isSame = true; // the database compares texts without regard to case
            for (std::size_t i = 1; i + 1 < row.size() && !unique.ignoreCase; i += 2)
                isSame = isSame && row[i] == row[i + 1];
            const long id = Cellar::ToLong(row[0]);
            if (isSame && id != last)
                Add(table, row[0], unique.fault);
            last = isSame ? id : last;
        }
    }

    void CheckOfItems(const OfItems& each)
    {
        const SqlText items = SqlText("SELECT COUNT(*) FROM [BRIXMTD_TaxYear] y, ") + each.itemsOfReference + " = " +
                              each.reference +
                              " AND m.[lMTD_TaxYearID] = y.[lID] AND y.[lClientID] = f.[lClientID] AND "
                              "y.[nYear] = f.[nYear]";
        const SqlText statement =
            SqlText("SELECT MAX(a.[lID]) FROM ") + SqlText::Bracketed(each.table().sqlName) +
            " a, [BRIXTaxForm] f WHERE f.[lID] = a.[lTaxFormID] AND a.[bFromHMRC] <> 0 AND " + each.reference +
            " <> ''" + each.among + " GROUP BY a.[lTaxFormID], f.[lClientID], f.[nYear], " + each.key +
            ", COALESCE(a.[strWorksNumber], '') HAVING COUNT(*) > 1 AND COUNT(*) > (" + items + ") ORDER BY 1";
        for (const auto& row : m_connection.Query(statement, {}).rows)
            Add(each.table(), row[0], each.fault);
    }

    void CheckOptions()
    {
        const Table& table = COptions::Declaration();
        for (const auto& row : m_connection.Queryf("SELECT [lID] FROM [BRIXOptions] WHERE [lID] <> 1").rows)
            Add(table, row[0], "the practice options stand in row 1 only");
    }

    /// Enquiries of the next year are told from those of this one by their descriptions.
    void CheckEnquiries()
    {
        for (const auto& row :
             m_connection.Queryf("SELECT [lID] FROM [ClientEnquiry] WHERE [strDescription] IS NULL").rows)
            Add(CClientEnquiry::Declaration(), row[0], "the enquiry has no description");
    }

    /// A source gets each task once.
    void CheckDefaultTasks()
    {
        const auto twice =
            m_connection.Queryf("SELECT [SourceTypeID], [TypeID] FROM [SourceDefaultTask] WHERE [DefaultTrackerID] IS "
                                "NULL GROUP BY [SourceTypeID], [TypeID] HAVING COUNT(*) > 1");
        for (const auto& row : twice.rows)
            Add(CSourceDefaultTask::Declaration(), row[0],
                "the default task of type " + Cellar::ToText(row[1]).Str() + " stands twice");
    }

    /// Rows that came with an id of their own may have outrun those that are given out.
    void CheckSequence(const Table& table)
    {
        const Column* const counted = table.GetCounted();
        const SqlText statement = counted ? m_dialect.SequenceIsBehind(table.sqlName, counted->name) : SqlText();
        if (statement.IsEmpty())
            return;
        for (const auto& row : m_connection.Query(statement, {}).rows)
            Add(table, row[0], "new rows would get ids that rows have already: the sequence of ids is behind");
    }

    /// Where the database takes any value in any column: those that do not read as their type.
    void CheckValues(const Table& table)
    {
        SqlText columns = IdOf(table, "c");
        SqlText conditions;
        std::vector<const Column*> checked;
        for (const Column& column : table.columns) {
            const SqlText doubt = m_dialect.MayNotRead(column.type, In("c", column.name));
            if (doubt.IsEmpty())
                continue;
            columns += SqlText(", ") + In("c", column.name);
            conditions += (conditions.IsEmpty() ? SqlText(" WHERE ") : SqlText(" OR ")) + doubt;
            checked.push_back(&column);
        }
        if (checked.empty())
            return;
        const SqlText statement =
            SqlText("SELECT ") + columns + " FROM " + SqlText::Bracketed(table.sqlName) + " c" + conditions;
        for (const auto& row : m_connection.Query(statement, {}).rows) {
            for (std::size_t i = 0; i < checked.size(); ++i)
                CheckValue(table, row[0], *checked[i], row[i + 1]);
        }
    }

    void CheckValue(const Table& table, const Value& id, const Column& column, const Value& value)
    {
        if (value.IsNull())
            return;
        const char* what = nullptr;
        switch (column.type) {
        case ColumnType::Date:
        case ColumnType::DateTime:
            what = Cellar::ToDateTime(value).GetStatus() == COleDateTime::valid ? nullptr : "no date";
            break;
        case ColumnType::Money:
            what = Cellar::ToAmount(value).IsValid() ? nullptr : "no amount in ten-thousandths of a pound";
            break;
        default:
            what = Cellar::ToLong(value, 0) == Cellar::ToLong(value, 1) ? nullptr : "no whole number of 32 bits";
        }
        if (what)
            Add(table, id, std::string(column.name) + ": '" + Cellar::ToText(value).Str() + "' is " + what);
    }

    Cellar::CConnection& m_connection;
    const Cellar::Dialect& m_dialect;
    std::vector<const Table*> m_incomplete;
    std::vector<Fault> m_faults;
};

} // namespace

std::vector<Fault> CheckPractice(Cellar::CConnection& connection) { return Check(connection).Run(); }

} // namespace Brix
