#pragma once

// The record classes, made from their declarations in records.def: for each column `Xyz` of ordinal n there are
// kXyz == n, GetXyz() and SetXyz().

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
        static const Quarry::Table& Declaration() noexcept;
#define KEY(columns)
#define PARENT(column, sqlTable)
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
#undef RECORD
#undef KEY
#undef PARENT
#undef LONG
#undef INT
#undef SHORT
#undef BIT
#undef TEXT
#undef BINARY
#undef DATE
#undef DATETIME
#undef MONEY
#undef DOUBLE
#undef END_RECORD

} // namespace Brix
