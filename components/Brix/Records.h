#pragma once

// The record classes, made from their declarations in records.def: for each column `Xyz` of ordinal n there are
// kXyz == n, GetXyz() and SetXyz(). A NULL reads as 0, false, empty, a null date or a null amount; IsNull(kXyz) tells,
// and Set(kXyz, nullptr) stores one.

#include "Brix/Export.h"
#include "Brix/Keys.h"
#include "Quarry/DataList.h"

namespace Brix
{

#define BRIX_COLUMN(type, ordinal, name, getter)                                                                       \
    static constexpr int k##name = ordinal;                                                                            \
    type Get##name() const { return Current().getter(ordinal); }                                                       \
    void Set##name(const type& value) { Set(ordinal, value); }

#define RECORD(name, number, sqlName)                                                                                  \
    class BRIX_API name : public Quarry::CDataList                                                                     \
    {                                                                                                                  \
    public:                                                                                                            \
        name() noexcept : CDataList(Declaration()) {}                                                                  \
        static const Quarry::Table& Declaration() noexcept;                                                            \
        static constexpr int kTableNumber = number;
#define KEY(columns)
#define NULLABLE_KEY(columns)
#define PARENT(column, sqlTable)
#define PARENT_BY(column, sqlTable, parentColumn)
#define TAX_FORM_CHILD LONG(1, TaxFormID, "lTaxFormID") LONG(2, ClientID, "lClientID") SHORT(3, Year, "nYear")
#define LONG(ordinal, name, sql) BRIX_COLUMN(long, ordinal, name, GetLong)
#define INT(ordinal, name, sql) BRIX_COLUMN(int, ordinal, name, GetInt)
#define SHORT(ordinal, name, sql) BRIX_COLUMN(short, ordinal, name, GetShort)
#define BIT(ordinal, name, sql, initial) BRIX_COLUMN(bool, ordinal, name, GetBool)
#define TEXT(ordinal, name, sql) BRIX_COLUMN(CString, ordinal, name, GetText)
#define BINARY(ordinal, name, sql) BRIX_COLUMN(Cellar::Bytes, ordinal, name, GetBinary)
#define DATE(ordinal, name, sql) BRIX_COLUMN(Kiln::CDate, ordinal, name, GetDate)
#define DATETIME(ordinal, name, sql) BRIX_COLUMN(COleDateTime, ordinal, name, GetDateTime)
#define MONEY(ordinal, name, sql) BRIX_COLUMN(Kiln::CAmt, ordinal, name, GetAmount)
#define DOUBLE(ordinal, name, sql) BRIX_COLUMN(double, ordinal, name, GetDouble)
#define END_RECORD                                                                                                     \
    }                                                                                                                  \
    ;
#include "Brix/records.def"
#undef BRIX_COLUMN

} // namespace Brix
