#pragma once

// A value on its way to, or from, a column.

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "Afx/text/CString.h"
#include "Afx/time/DateTime.h"
#include "Cellar/Export.h"
#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"

namespace Cellar
{

using Bytes = std::vector<std::uint8_t>;

/// The SQL type of a column; the dialect says how each database writes it.
enum class ColumnType : std::uint8_t
{
    Int,      // 32 bits
    SmallInt, // 16 bits
    Bit,
    Text,
    Binary,
    Date,
    DateTime, // to the millisecond
    Money,    // ten-thousandths
    Double
};

/// A bound parameter or a column's value. Dates travel as ISO text, money as ten-thousandths of a pound. Texts of up to
/// 24 bytes (every date, nearly every code and name) need no memory of their own.
class CELLAR_API Value
{
public:
    enum class Kind : std::uint8_t
    {
        Null,
        Integer,
        Real,
        Text,
        Binary,
        Date,     // text YYYY-MM-DD
        DateTime, // text YYYY-MM-DD HH:MM:SS.mmm
        Money     // integer of ten-thousandths
    };

    Value() noexcept = default;
    Value(std::nullptr_t) noexcept {}
    Value(bool value) noexcept : Value(Kind::Integer, value ? 1 : 0) {}
    Value(short value) noexcept : Value(Kind::Integer, value) {}
    Value(int value) noexcept : Value(Kind::Integer, value) {}
    Value(long value) noexcept : Value(Kind::Integer, value) {}
    Value(long long value) noexcept : Value(Kind::Integer, value) {}
    Value(unsigned char value) noexcept : Value(Kind::Integer, value) {}
    Value(double value) noexcept : m_kind(Kind::Real) { m_content.real = value; }
    Value(const char* value); // null pointer: NULL
    Value(std::string_view value) : Value(Kind::Text, value) {}
    Value(const std::string& value) : Value(Kind::Text, value) {}
    Value(const CString& value) : Value(Kind::Text, value.View()) {}
    Value(const Bytes& value);
    Value(const Kiln::CDate& value);  // NULL unless valid
    Value(const COleDateTime& value); // NULL unless valid
    Value(const Kiln::CAmt& value);   // NULL unless valid

    Value(const Value& other) : m_kind(other.m_kind), m_size(other.m_size), m_content(other.m_content)
    {
        if (IsHeld())
            Hold(other.View());
    }
    Value(Value&& other) noexcept : m_kind(other.m_kind), m_size(other.m_size), m_content(other.m_content)
    {
        other.Forget();
    }
    Value& operator=(const Value& other);
    Value& operator=(Value&& other) noexcept
    {
        if (this != &other) {
            if (IsHeld())
                Drop();
            m_kind = other.m_kind;
            m_size = other.m_size;
            m_content = other.m_content;
            other.Forget();
        }
        return *this;
    }
    ~Value()
    {
        if (IsHeld())
            Drop();
    }

    Kind GetKind() const noexcept { return m_kind; }
    bool IsNull() const noexcept { return m_kind == Kind::Null; }
    /// Of Integer and Money; 0 for anything else.
    std::int64_t GetInteger() const noexcept
    {
        return m_kind == Kind::Integer || m_kind == Kind::Money ? m_content.integer : 0;
    }
    double GetReal() const noexcept { return m_kind == Kind::Real ? m_content.real : 0.0; }
    /// The bytes of Text, Binary, Date and DateTime, for as long as the value is not changed; empty for anything else.
    std::string_view View() const noexcept
    {
        return IsHeld() ? std::string_view(m_content.held.bytes, m_content.held.size)
                        : std::string_view(m_content.small, m_size);
    }

    // For drivers, and for giving a value the one form that its column has.
    void SetInteger(Kind kind, std::int64_t integer) noexcept // Integer or Money
    {
        if (IsHeld())
            Drop();
        m_kind = kind;
        m_size = 0;
        m_content.integer = integer;
    }
    void SetText(Kind kind, std::string_view text) // Text, Binary, or what is written as the kind says
    {
        if (IsHeld())
            Drop();
        m_kind = kind;
        if (text.size() > sizeof m_content.small)
            return Hold(text);
        m_size = static_cast<std::uint8_t>(text.size());
        if (!text.empty())
            std::memcpy(m_content.small, text.data(), text.size());
    }
    /// The same content as another kind: an integer as Money, a text as the date that it is.
    void SetKind(Kind kind) noexcept { m_kind = kind; }

    friend CELLAR_API bool operator==(const Value& a, const Value& b) noexcept;

private:
    static constexpr std::uint8_t kHeld = 255;
    struct HeldBytes
    {
        char* bytes;
        std::size_t size;
    };
    union Content {
        std::int64_t integer;
        double real;
        HeldBytes held;
        char small[24];
    };
    Value(Kind kind, std::int64_t integer) noexcept : m_kind(kind) { m_content.integer = integer; }
    Value(Kind kind, std::string_view text) { SetText(kind, text); }
    bool IsHeld() const noexcept { return m_size == kHeld; }
    void Forget() noexcept
    {
        m_kind = Kind::Null;
        m_size = 0;
    }
    void Hold(std::string_view text); // takes a copy
    void Drop() noexcept;

    Kind m_kind = Kind::Null;
    std::uint8_t m_size = 0; // of a text that stands in the value itself; kHeld: it has memory of its own
    Content m_content{};
};

// Reading, whatever form the driver gave: a NULL or a value that does not fit the type gives the stated default.
// Numbers are also read from text that is one, whole and decimal; a fraction is no integer; dates are no numbers.
CELLAR_API std::int64_t ToInt64(const Value& value, std::int64_t whenNull = 0) noexcept;
CELLAR_API long ToLong(const Value& value, long whenNull = 0) noexcept;    // outside 32 bits: whenNull
CELLAR_API short ToShort(const Value& value, short whenNull = 0) noexcept; // outside 16 bits: whenNull
CELLAR_API double ToDouble(const Value& value, double whenNull = 0.0) noexcept;
/// Numbers in decimal, money in pounds ("12.50"); bytes only when they are UTF-8.
CELLAR_API CString ToText(const Value& value);
/// Of Binary and Text; empty for anything else.
CELLAR_API Bytes ToBytes(const Value& value);
/// Null date for NULL; of a date-time its day; invalid for any other text or kind.
CELLAR_API Kiln::CDate ToDate(const Value& value) noexcept;
/// Status null for NULL, invalid for any other text or kind; a date is its midnight.
CELLAR_API COleDateTime ToDateTime(const Value& value) noexcept;
/// Null amount for NULL. Integers, and reals without a fraction, are ten-thousandths; text is pounds, as servers write
/// money. Anything else is invalid.
CELLAR_API Kiln::CAmt ToAmount(const Value& value) noexcept;

/// What every kind of row is read with. `Row` has `const Value& Get(Column)` for each way to name a column.
template<class Row>
class RowReader
{
public:
    template<class Column>
    bool IsNull(Column column) const
    {
        return At(column).IsNull();
    }
    template<class Column>
    long GetLong(Column column, long whenNull = 0) const
    {
        return ToLong(At(column), whenNull);
    }
    template<class Column>
    std::int64_t GetInt64(Column column) const
    {
        return ToInt64(At(column));
    }
    template<class Column>
    short GetShort(Column column) const
    {
        return ToShort(At(column));
    }
    template<class Column>
    int GetInt(Column column) const
    {
        return static_cast<int>(ToLong(At(column)));
    }
    template<class Column>
    bool GetBool(Column column) const
    {
        return ToLong(At(column)) != 0;
    }
    template<class Column>
    double GetDouble(Column column) const
    {
        return ToDouble(At(column));
    }
    template<class Column>
    CString GetText(Column column) const
    {
        return ToText(At(column));
    }
    template<class Column>
    Bytes GetBinary(Column column) const
    {
        return ToBytes(At(column));
    }
    template<class Column>
    Kiln::CDate GetDate(Column column) const
    {
        return ToDate(At(column));
    }
    template<class Column>
    COleDateTime GetDateTime(Column column) const
    {
        return ToDateTime(At(column));
    }
    template<class Column>
    Kiln::CAmt GetAmount(Column column) const
    {
        return ToAmount(At(column));
    }

protected:
    RowReader() = default;
    RowReader(const RowReader&) = default;
    RowReader(RowReader&&) noexcept = default;
    RowReader& operator=(const RowReader&) = default;
    RowReader& operator=(RowReader&&) noexcept = default;
    ~RowReader() = default;

private:
    template<class Column>
    const Value& At(Column column) const
    {
        return static_cast<const Row&>(*this).Get(column);
    }
};

} // namespace Cellar
