#pragma once

// The account of what the user changed in a grid, from which it can be taken back.

#include <optional>
#include <vector>

#include "Afx/text/CString.h"
#include "Lattice/Cell.h"

namespace Lattice
{

struct Row
{
    std::vector<Cell> cells;
    CString heading;
    bool isHeading = false; // a line that only says what follows; coloured
    bool isTotal = false;
};

/// What was there before a change of the user's, to be put back.
class LATTICE_API GridUndo
{
public:
    struct Step
    {
        enum class Kind
        {
            Cell,     // put the cell back
            Inserted, // take the row away
            Deleted   // put the row back
        };
        Kind kind;
        int row;
        int column;
        Cell cell;
        Row line;
    };

    /// Changes are recorded from Begin to End; pairs nest, and one undo takes back the outermost.
    void Begin() noexcept { ++m_depth; }
    void End();
    bool IsRecording() const noexcept { return m_depth > 0; }
    void Add(Step step);
    /// The steps of the last change, the last step first; nothing when there is none.
    std::optional<std::vector<Step>> TakeLast();
    std::size_t GetCount() const noexcept { return m_changes.size(); }
    void Clear() noexcept;

private:
    std::vector<std::vector<Step>> m_changes; // the oldest first
    std::vector<Step> m_open;
    int m_depth = 0;
};

} // namespace Lattice
