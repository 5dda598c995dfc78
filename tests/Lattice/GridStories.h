#pragma once

// Stories of grids: cells are told of as "1, Amount", by row and heading.

#include "Lattice/Grid.h"
#include "support/Story.h"

namespace Test
{

class GridStories : public Stories
{
protected:
    GridStories()
    {
        On("Go to", [this](const std::string& cell) {
            const auto [row, column] = PlaceOf(cell);
            EXPECT_TRUE(Grid().GoTo(row, column));
        });
        Is("Cell", [this](const std::string& cell) {
            const auto [row, column] = PlaceOf(cell);
            return Grid().GetCellText(row, column);
        });
        Is("Row is", [this] { return Grid().GetCurrentRow(); });
        On("Editing", [this] { EXPECT_TRUE(Grid().IsEditing()); });
        On("Not editing", [this] { EXPECT_FALSE(Grid().IsEditing()); });
        On("The program begins anew", [this] { Grid().BeginEdit(false); });
        On("Undo", [this] { Grid().Undo(); });
        On("Undo all", [this] {
            while (Grid().Undo()) {
            }
        });
        On("Nothing to undo", [this] { EXPECT_FALSE(Grid().Undo()); });
        On("The program deletes row", [this](const std::string& row) { Grid().DeleteRow(std::stoi(row)); });
        On("The program inserts row", [this](const std::string& row) { Grid().InsertRow(std::stoi(row)); });
        On("The program goes to", [this](const std::string& control) { Afx::UserActs::Focus(Control(control)); });
    }
    Lattice::CGrid& Grid() const { return Control<Lattice::CGrid>("Grid"); }
    std::pair<int, int> PlaceOf(const std::string& cell) const
    {
        const std::size_t comma = cell.find(", ");
        for (int column = 0; column < Grid().GetColumnCount(); ++column)
            if (Grid().GetColumn(column)->heading == cell.substr(comma + 2))
                return {std::stoi(cell), column};
        throw std::invalid_argument("no such column: " + cell);
    }
    std::vector<std::string> RowsOf(const CWnd& control) const override
    {
        const auto* const grid = dynamic_cast<const Lattice::CGrid*>(&control);
        if (!grid)
            return Stories::RowsOf(control);
        std::vector<std::string> rows(static_cast<std::size_t>(grid->GetRowCount()));
        for (int row = 0; row < grid->GetRowCount(); ++row)
            for (int column = 0; column < grid->GetColumnCount(); ++column)
                rows[static_cast<std::size_t>(row)] += (column ? "|" : "") + grid->GetCellText(row, column).Str();
        return rows;
    }
};

} // namespace Test
