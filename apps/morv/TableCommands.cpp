// table list, show, find: the code tables. They need no practice.

#include <memory>
#include <optional>

#include "Afx/text/Numbers.h"
#include "Afx/text/TextFold.h"
#include "Commands.h"
#include "MorvUt/mappings/TypeMappings.h"
#include "Output.h"

namespace Morv
{

namespace
{

const TypeMapping* TableOf(const std::string& nameOrPosition)
{
    const auto position = Afx::ParseWhole<int>(nameOrPosition);
    for (const NamedMapping& mapping : GetNamedMappings()) {
        if (mapping.position != kOutsideMappings && mapping.position == position)
            return mapping.table;
        if (*mapping.name && Afx::EqualNoCase(mapping.name, nameOrPosition))
            return mapping.table;
    }
    std::vector<std::string> names;
    for (const NamedMapping& mapping : GetNamedMappings())
        names.emplace_back(mapping.name);
    throw CommandError(Exit::BadInput, "UNKNOWN_TABLE",
                       "there is no code table " + Quoted(nameOrPosition) + DidYouMean(nameOrPosition, names),
                       "morv table list shows their names and positions.");
}

// As the library looks rows up: the first that matches wins; a key ignores case, a name does not. `text` is taken for a
// code when a row has it, else for a key, else for a name.
const TypeMapping& RowOf(const TypeMapping* table, const std::string& text)
{
    const auto code = Afx::ParseWhole<int>(text);
    const TypeMapping *byCode = nullptr, *byKey = nullptr, *byName = nullptr;
    for (const TypeMapping* row = table; row->shortName; ++row) {
        if (!byCode && code == row->index)
            byCode = row;
        if (!byKey && Afx::EqualNoCase(row->shortName, text))
            byKey = row;
        if (!byName && text == row->longName)
            byName = row;
    }
    for (const TypeMapping* found : {byCode, byKey, byName})
        if (found)
            return *found;
    throw CommandError(Exit::BadInput, "UNKNOWN_KEY", "the table has no code, key or name " + Quoted(text),
                       "morv table show lists its rows; capitals count in names.");
}

Json ViewOf(const TypeMapping& row) { return {{"code", row.index}, {"key", row.shortName}, {"name", row.longName}}; }

void PrintRows(const Json& rows, const CommonOptions& options)
{
    if (options.json)
        return PrintJson(rows);
    TextTable table({"Code", "Key", "Name"});
    for (const Json& row : rows)
        table.Add({std::to_string(row["code"].get<int>()), row["key"], row["name"]});
    table.Print();
}

// Position and name are null for a table that has none.
void List(const CommonOptions& options)
{
    Json list = Json::array();
    TextTable table({"Position", "Name", "Rows", "First key"});
    for (const NamedMapping& mapping : GetNamedMappings()) {
        const bool isPlaced = mapping.position != kOutsideMappings, isNamed = *mapping.name != '\0';
        const unsigned rows = GetMapCount(mapping.table);
        list.push_back({{"position", isPlaced ? Json(mapping.position) : Json(nullptr)},
                        {"name", isNamed ? Json(mapping.name) : Json(nullptr)},
                        {"rows", rows}});
        table.Add({isPlaced ? std::to_string(mapping.position) : "-", isNamed ? mapping.name : "-",
                   std::to_string(rows), mapping.table->shortName});
    }
    if (options.json)
        return PrintJson(list);
    table.Print();
}

void Show(const std::string& name, const CommonOptions& options)
{
    Json rows = Json::array();
    for (const TypeMapping* row = TableOf(name); row->shortName; ++row)
        rows.push_back(ViewOf(*row));
    PrintRows(rows, options);
}

void Find(const std::string& name, const std::string& key, const CommonOptions& options)
{
    PrintRows(Json::array({ViewOf(RowOf(TableOf(name), key))}), options);
}

} // namespace

void AddTableCommands(CLI::App& app, Program& program)
{
    CLI::App* table = app.add_subcommand("table", "The code tables: codes, keys and names")->require_subcommand(1);
    auto name = std::make_shared<std::string>();
    auto key = std::make_shared<std::string>();

    CLI::App* list = table->add_subcommand("list", "All tables");
    list->callback([&program] { List(program.options); });

    CLI::App* show = table->add_subcommand("show", "The rows of one table");
    show->add_option("table", *name, "Its name or position")->required();
    show->callback([=, &program] { Show(*name, program.options); });

    CLI::App* find = table->add_subcommand("find", "One row of a table");
    find->add_option("table", *name, "The table's name or position")->required();
    find->add_option("key", *key, "A code, a key or a name")->required();
    find->callback([=, &program] { Find(*name, *key, program.options); });
}

} // namespace Morv
