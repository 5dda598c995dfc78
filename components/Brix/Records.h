#pragma once

// The record classes, made from their declarations in records.def: for each column `Xyz` of ordinal n there are
// kXyz == n, GetXyz() and SetXyz(). A NULL reads as 0, false, empty, a null date or a null amount; IsNull(kXyz) tells,
// and Set(kXyz, nullptr) stores one.

#include "Brix/Export.h"
#include "Brix/Kinds.h"
#include "Brix/RowOf.h"
#include "Quarry/Keys.h"

namespace Brix
{

#define BRIX_RECORD(record, number, sqlName)                                                                           \
    class record;                                                                                                      \
    template<>                                                                                                         \
    class RowOf<record> : public Detail::RowView<record>                                                               \
    {                                                                                                                  \
    public:                                                                                                            \
        using RowView::RowView;
#define BRIX_COLUMN(kind, ordinal, name, sqlName, initial)                                                             \
    Kinds::kind::Type Get##name() const { return Kinds::kind::Read(GetRow(), ordinal); }
#define BRIX_END_RECORD                                                                                                \
    }                                                                                                                  \
    ;
#include "Brix/records.def"

#define BRIX_RECORD(record, number, sqlName)                                                                           \
    class BRIX_API record : public Quarry::CDataList                                                                   \
    {                                                                                                                  \
    public:                                                                                                            \
        using Values = RowOf<record>;                                                                                  \
        record() noexcept : CDataList(Declaration()) {}                                                                \
        static const Quarry::Table& Declaration() noexcept;                                                            \
        static constexpr int kTableNumber = number;
#define BRIX_COLUMN(kind, ordinal, name, sqlName, initial)                                                             \
    static constexpr int k##name = ordinal;                                                                            \
    Kinds::kind::Type Get##name() const { return Kinds::kind::Read(Current(), ordinal); }                              \
    void Set##name(const Kinds::kind::Type& value) { Set(ordinal, value); }
#define BRIX_END_RECORD                                                                                                \
    }                                                                                                                  \
    ;
#include "Brix/records.def"

} // namespace Brix
