#pragma once

// The columns of a result.

#include <string>
#include <vector>

#include "Cellar/drivers/odbc/Handles.h"
#include "Cellar/Value.h"

namespace Cellar::Odbc
{

/// What a result consists of, asked once.
class ResultColumns
{
public:
    /// False when the driver refuses.
    bool Describe(SQLHSTMT statement);
    bool AreKnown() const noexcept { return m_areKnown; }
    int GetCount() const noexcept { return static_cast<int>(m_columns.size()); }
    const std::string& GetName(int column) const { return m_columns.at(static_cast<std::size_t>(column)).name; }
    /// The current row's value; in the order of the columns, each once. False when the driver refuses.
    bool Read(SQLHSTMT statement, int column, Value& value);
    /// About how many bytes the values read so far took.
    std::size_t GetBytesRead() const noexcept { return m_bytes; }
    void CountAnew() noexcept { m_bytes = 0; }

private:
    enum class Form : std::uint8_t
    {
        Integer,
        Real,
        Money,   // numeric(19,4)
        Decimal, // other exact numbers, kept as text
        Date,
        DateTime,
        Text,
        Binary
    };
    struct Column
    {
        std::string name;
        Form form;
    };
    static Form FormOf(SQLSMALLINT type, SQLULEN size, SQLSMALLINT digits) noexcept;
    bool ReadFixed(SQLHSTMT statement, SQLUSMALLINT place, Form form, Value& value);
    bool ReadLong(SQLHSTMT statement, SQLUSMALLINT place, Form form, Value& value);

    std::vector<Column> m_columns;
    std::vector<char16_t> m_wide; // a piece of a long value
    std::u16string m_pending;     // pieces of a text, which may part a pair of surrogates
    std::string m_text;
    std::size_t m_bytes = 0;
    bool m_areKnown = false;
};

} // namespace Cellar::Odbc
