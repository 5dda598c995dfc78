// The accountants' page of HMRC's fields says what the code does: every field has its row, and ends where the row says.

#include <regex>
#include <set>
#include <sstream>

#include "fuzz/JsonText.h"
#include "HmrcApi/json/Json.h"
#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/mappings/TypeMappings.h"
#include "support/Table.h"

namespace
{

using HmrcApi::JsonValue;

struct PageRow
{
    std::string field, staged, own; // a column, or words
};

/// The rows below a heading of the page whose first cell is one of HMRC's fields or names.
std::vector<PageRow> RowsBelow(const std::string& heading)
{
    static const std::string page = ::Test::ReadFile(HMRC_FIELDS_PAGE);
    const std::size_t begin = page.find("# " + heading + '\n');
    EXPECT_NE(begin, page.npos) << heading;
    const std::string section = page.substr(begin, page.find("\n#", begin) - begin);
    static const std::regex row("\\| `([A-Za-z0-9.]+)` \\| ([^|\n]*) \\| ([^|\n]*) \\|");
    std::vector<PageRow> rows;
    for (std::sregex_iterator at(section.begin(), section.end(), row), end; at != end; ++at)
        rows.push_back({(*at)[1], (*at)[2], (*at)[3]});
    return rows;
}

/// The names that a source reads, or lists.
std::set<std::string> NamesIn(const char* source, const char* pattern)
{
    const std::string text = ::Test::ReadFile(std::string(HMRC_RECORDS) + source);
    const std::regex name(pattern);
    std::set<std::string> names;
    for (std::sregex_iterator at(text.begin(), text.end(), name), end; at != end; ++at)
        names.insert((*at)[1]);
    return names;
}

/// What stands in `root` at "employments.companyBenefits.amount", of a list's first item, as a column shows it.
std::string ValueAt(const JsonValue& root, const std::string& path)
{
    const JsonValue* value = &root;
    std::istringstream names(path);
    for (std::string name; value && std::getline(names, name, '.');) {
        value = value->Find(name);
        if (value && value->Is(JsonValue::Kind::Array))
            value = &value->items.at(0);
    }
    if (!value)
        return "not in the example: " + path;
    return value->Is(JsonValue::Kind::Boolean) ? value->boolean ? "1" : "0" : value->text;
}

/// All that a column of the page holds, each value between bars.
std::string ValuesOf(const std::string& cell)
{
    const std::size_t point = cell.find('.');
    const std::string table = cell.substr(1, point - 1), column = cell.substr(point + 1, cell.size() - point - 2);
    using Cellar::SqlText;
    return '|' +
           ::Test::Practice::Rows("SELECT " + SqlText::Identifier(column) + " FROM " + SqlText::Identifier(table), "|");
}

/// An answer of each interface, by its heading on the page: every field, each with a value of its own.
const JsonValue& Examples()
{
    static const JsonValue examples = HmrcApi::ParseJson(::Test::FileText("MorvUt/hmrc/fields.json")).value();
    return examples;
}
std::string ExampleOf(const char* heading) { return Fuzz::WriteJson(*Examples().Find(heading)); }

class FieldsPage : public HmrcTest
{
protected:
    /// Each field of the example stands where the page says.
    static void ExpectAsOnPage(const char* heading)
    {
        for (const PageRow& row : RowsBelow(heading)) {
            const std::string value = '|' + ValueAt(*Examples().Find(heading), row.field) + '|';
            for (const std::string& cell : {row.staged, row.own})
                EXPECT_TRUE(!cell.starts_with('`') || ValuesOf(cell).find(value) != std::string::npos)
                    << heading << ": " << row.field << value << " not in " << cell;
        }
    }
};

ON_BOTH_DATABASES(FieldsPage);

} // namespace

TEST_P(FieldsPage, TellsWhereEachFieldEnds)
{
    Fetch(ExampleOf("PAYE interface"));
    Create();
    ExpectAsOnPage("PAYE interface");
    for (const char* figure : {"401.01", "2018-02-03", "2017-09-01", "2019-04-04"})
        EXPECT_EQ(Schedules().find(figure), std::string::npos) << "never in the return: " << figure;
    Forget();
    EmploymentsOf parts(m_client, {{"history", ExampleOf("Employment history")},
                                   {"income", ExampleOf("Income")},
                                   {"benefits", ExampleOf("Benefits")},
                                   {"tax", ExampleOf("Tax")}});
    Fetch(parts);
    parts.CreateNewSchedules();
    for (const char* heading : {"Employment history", "Income", "Benefits", "Tax"})
        ExpectAsOnPage(heading);
    for (const char* figure : {"15.05", "34.04"})
        EXPECT_EQ(Schedules().find(figure), std::string::npos) << "never in the return: " << figure;
    NicOf insurance(m_client, ExampleOf("National Insurance"));
    Fetch(insurance);
    ExpectAsOnPage("National Insurance");
}

TEST(FieldsOnThePage, AreThoseThatAreRead)
{
    std::set<std::string> read = NamesIn("Responses.cpp", "\"([a-z][A-Za-z0-9]+)\""), told;
    read.merge(NamesIn("Summaries.cpp", "\"([a-z][A-Za-z0-9]+)\""));
    for (const std::string& heading : Examples().names)
        for (const PageRow& row : RowsBelow(heading)) {
            std::istringstream names(row.field);
            for (std::string name; std::getline(names, name, '.');)
                told.insert(name);
        }
    EXPECT_EQ(told, read);

    std::set<std::string> kinds;
    for (const PageRow& row : RowsBelow("State benefits"))
        kinds.insert(row.field);
    EXPECT_EQ(kinds, NamesIn("Responses.cpp", "\\{\"([A-Z]\\w+)\", Benefit::"));
}

/// One employment for each type, with that benefit alone.
TEST_P(FieldsPage, TellsTheCodeOfEachCompanyBenefit)
{
    std::set<std::string> types = NamesIn("IabdNumbers.cpp", "\\{\"(\\w+)\", \\d+\\}");
    for (const char* allowance : {"FlatRateJobExpenses", "ProfessionalSubscriptions", "EarlierYearsAdjustment"})
        EXPECT_EQ(types.erase(allowance), 1u) << allowance;
    std::string employments;
    for (const std::string& type : types)
        employments += "employment 1/" + type + " - - " + type + "=1;";
    Fetch(employments);
    Create();
    const std::string made = ", " +
                             Query("SELECT strPAYEReference, nType FROM BRIXNewEmployBenefits JOIN BRIXNewEmploy "
                                   "e ON e.lID = lNewEmployID") +
                             ',';
    for (const PageRow& row : RowsBelow("Company benefits")) {
        const char* caption = "";
        GetMapLongNameFromIndex(mapNewEmployBenefitsGrid, &caption, std::stoi(row.staged));
        EXPECT_EQ(row.own, caption) << row.field;
        EXPECT_EQ(types.erase(row.field), 1u) << row.field;
        EXPECT_NE(made.find(", 1/" + row.field + '|' + row.staged + ','), made.npos) << row.field;
    }
    EXPECT_TRUE(types.empty()) << "no row for " << *types.begin();
}
