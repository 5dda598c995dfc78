// The headers of the records leave alone what others call by plain names, as <windows.h> does.

#include <gtest/gtest.h>

#define TEXT(quote) L##quote
#define RECORD 1
#define KEY 2
#define LONG 3
#define INT 4
#define MONEY 5
#define BINARY 6

#include "Brix/Brix.h"

#if defined(BRIX_RECORD) || defined(BRIX_COLUMN) || defined(BRIX_TEXT) || defined(BRIX_KEY) ||                         \
    defined(BRIX_TAX_FORM_CHILD)
#error "a macro of the declarations is left behind"
#endif

static_assert(sizeof(TEXT("a")) == 2 * sizeof(wchar_t) && RECORD + KEY + LONG + INT + MONEY + BINARY == 21);

TEST(RecordHeaders, DeclareAmongTheMacrosOfOthers)
{
    EXPECT_EQ(Brix::CNewEmploy::Declaration().Find(Brix::CNewEmploy::kNotesAudit)->type, Cellar::ColumnType::Text);
}
