#include "MorvUt/context/DateFormat.h"

#include <string_view>

#include "Brix/Records.h"
#include "Kiln/CDate.h"
#include "MorvUt/taxyear/DateStrings.h"
#include "Quarry/Listeners.h"
#include "Quarry/Session.h"

namespace
{

using Kiln::CDate;

constexpr int kFormats = 4;

CDate::ParseOrder OrderOf(int format)
{
    const bool isDayFirst =
        format < 0 || format >= kFormats || std::string_view(arrDateFormatStrings[format]).starts_with("%d");
    return isDayFirst ? CDate::ParseOrder::DayFirst : CDate::ParseOrder::MonthFirst;
}

void ReadFormat()
{
    Brix::COptions options;
    CDate::SetParseOrder(OrderOf(options.Open() ? options.GetDateFormat() : 0));
}

void OnChanged(const Quarry::DataChange& change)
{
    CDate::SetParseOrder(OrderOf(change.newRow ? Brix::COptions::Values(*change.newRow).GetDateFormat() : 0));
}

void OnReload()
{
    if (!Quarry::HasConnection())
        return;
    try {
        ReadFormat();
    } catch (const Cellar::DatabaseError&) {
        // The order stays as it is until the option can be read.
    }
}

} // namespace

void FollowDateFormat()
{
    constexpr int kTable = Brix::COptions::kTableNumber;
    Quarry::AddDataChangedListenerForInsert(kTable, "BRIX", &OnChanged);
    Quarry::AddDataChangedListenerForUpdate(kTable, "BRIX", &OnChanged);
    Quarry::AddDataChangedListenerForDelete(kTable, "BRIX", &OnChanged);
    [[maybe_unused]] static const int number = Quarry::AddRollbackListener(&OnReload);
    ReadFormat();
}
