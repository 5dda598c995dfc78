// What the sheets' stories need beside the program.

#include "apps/desk/DeskTest.h"

namespace
{

class ScheduleSheets : public DeskTest
{
protected:
    ScheduleSheets()
    {
        On("Somebody else:", [](const std::string& sql) { ::Test::Practice::Open()->Script(sql); });
        On("A partnership has 100.00 of investment income, split between two clients", [] { AddInvestmentIncome(); });
    }

private:
    static void AddInvestmentIncome()
    {
        for (const long client : {1L, 2L})
            ::Test::Add<Brix::CPartnershipClients>([&](auto& row) { row.SetClientID(client), row.SetPClientID(1); });
        const long business = ::Test::Add<Brix::CBTaxProprietor>([](auto& row) { row.SetPClientID(1); });
        const long period = ::Test::Add<Brix::CBTaxAccountingPeriod>([&](auto& row) {
            row.SetBTaxProprietorID(business);
            row.SetStart(Kiln::CDate(2016, 10, 1));
            row.SetEnd(Kiln::CDate(2017, 9, 30));
        });
        const long income = ::Test::Add<Brix::CBTaxNoTaxInvestmentIncome>([&](auto& row) {
            row.SetBTaxAccountingPeriodID(period);
            row.SetAmount(Kiln::CAmt::FromPence(10000));
        });
        for (const long client : {1L, 2L})
            ::Test::Add<Brix::CBTaxNoTaxInvestmentIncomeSplit>([&](auto& row) {
                row.SetBTaxNoTaxInvestmentIncomeID(income);
                row.SetClientID(client);
                row.SetShare(Kiln::CAmt::FromPence(5000));
                row.SetOverride(client == 2);
                if (client == 2)
                    row.SetShareOverride(Kiln::CAmt::FromPence(4000));
            });
    }
};

STORIES(ScheduleSheets, "apps/desk/Sheets.story");

} // namespace
