#include "Partnerships.h"

#include "Tracker.h"
#include "Users.h"

namespace Morv::Sample
{

namespace
{

using Kiln::CAmt;
using Kiln::CDate;

constexpr int kFirstYear = 2017;

struct Firm
{
    const char* name;
    std::int64_t serial;
    bool isLLP;
};

template<class Fill>
long AddFirm(int number, const Firm& firm, Fill fill)
{
    return Add<Brix::CPartnership>([&](Brix::CPartnership& partnership) {
        CString code;
        code.Format("P%04d", number);
        partnership.SetCode(code);
        partnership.SetName(firm.name);
        partnership.SetUTR(MakeUTR(firm.serial));
        partnership.SetActive(true);
        partnership.SetLLP(firm.isLLP);
        fill(partnership);
    });
}

void AddReturnsOf(long firm, bool isDormant)
{
    for (int year = kFirstYear; year <= kSampleYear; ++year) {
        const bool isDone = year < kSampleYear;
        Add<Brix::CPartnershipTaxForm>([&](Brix::CPartnershipTaxForm& form) {
            form.SetPClientID(firm);
            form.SetYear(static_cast<short>(year));
            form.SetDormant(isDormant && !isDone);
            if (isDone)
                form.SetFinalised(CDate(year, 12, 10));
        });
        if (isDone)
            Add<Brix::CPartnershipFBISubmissions>([&](Brix::CPartnershipFBISubmissions& submission) {
                submission.SetPClientID(firm);
                submission.SetYear(static_cast<short>(year));
                submission.SetStatus(2); // accepted
                submission.SetSubmitted(COleDateTime(year + 1, 1, 12, 10, 30, 0));
            });
    }
}

/// The partnership's untaxed income of a year, equally shared; the last partner's share was overridden.
void AddSharedIncome(long period, const std::vector<Individual>& partners, Dice& dice)
{
    const auto count = static_cast<int>(partners.size());
    const CAmt share = dice.Pounds(20, 900);
    const long income = Add<Brix::CBTaxNoTaxInvestmentIncome>([&](Brix::CBTaxNoTaxInvestmentIncome& row) {
        row.SetBTaxAccountingPeriodID(period);
        row.SetType(1);
        row.SetAmount(CAmt(share.GetValue() * count));
    });
    for (int i = 0; i < count; ++i)
        Add<Brix::CBTaxNoTaxInvestmentIncomeSplit>([&](Brix::CBTaxNoTaxInvestmentIncomeSplit& split) {
            split.SetBTaxNoTaxInvestmentIncomeID(income);
            split.SetClientID(partners[static_cast<std::size_t>(i)].id);
            split.SetShare(share);
            if (i == count - 1 && dice.Chance(30)) {
                split.SetShareOverride(dice.Pounds(10, 400));
                split.SetOverride(true);
            }
        });
}

void AddAccounts(long firm, const std::vector<Individual>& partners, Dice& dice)
{
    const long business =
        Add<Brix::CBTaxProprietor>([&](Brix::CBTaxProprietor& proprietor) { proprietor.SetPClientID(firm); });
    for (int year = kFirstYear; year <= kSampleYear; ++year) {
        const long period = Add<Brix::CBTaxAccountingPeriod>([&](Brix::CBTaxAccountingPeriod& row) {
            row.SetBTaxProprietorID(business);
            row.SetStart(CDate(year - 2, 10, 1));
            row.SetEnd(CDate(year - 1, 9, 30));
        });
        AddSharedIncome(period, partners, dice);
    }
}

void AddAccruedIncome(const Individual& partner, long firm, const char* name, Dice& dice)
{
    for (const Form& form : partner.forms) {
        if (form.year == kSampleYear || form.year == kFirstYear)
            AddUnder<Brix::CPartnershipAccruedIncome>(form, [&](Brix::CPartnershipAccruedIncome& row) {
                row.SetPClientID(firm);
                row.SetName(name);
                row.SetKind(1);
                if (form.year == kFirstYear)
                    row.SetBFWD(dice.Pounds(100, 1'500));
                row.SetAddition(dice.Pounds(0, 300));
            });
    }
}

} // namespace

void AddFirstPartnerships()
{
    AddFirm(1, {"Ash & Birch", 500'000'001, false}, [](auto&) {});
    AddFirm(2, {"Cedar Advisory LLP", 500'000'002, true}, [](auto&) {});
}

void AddPartnership(int number, const std::vector<Individual>& partners)
{
    // Serials apart from those of the clients, which begin with the same number and move by the same step.
    constexpr std::int64_t kStart = 100'000'000, kStep = 7919, kBehindClients = 2'000'000;
    Dice dice(static_cast<std::uint64_t>(number) + (std::uint64_t{1} << 40));
    const bool isLLP = number % 3 == 0;
    const std::string name = PartnershipName(dice, isLLP);
    const long id = AddFirm(number, {name.c_str(), kStart + (kBehindClients + number) * kStep, isLLP},
                            [&](Brix::CPartnership& firm) {
                                if (number % 20 == 7)
                                    firm.SetCessation(CDate(kSampleYear, 3, 31));
                                firm.SetActive(number % 20 != 13);
                            });
    for (const Individual& partner : partners)
        Add<Brix::CPartnershipClients>([&](Brix::CPartnershipClients& member) {
            member.SetClientID(partner.id);
            member.SetPClientID(id);
        });
    AddReturnsOf(id, number % 20 == 4);
    AddAccounts(id, partners, dice);
    if (!partners.empty())
        AddAccruedIncome(partners.front(), id, name.c_str(), dice);
    if (number % 20 == 9)
        Add<Brix::CPartnershipPeriodsInactivity>([&](Brix::CPartnershipPeriodsInactivity& period) {
            period.SetPClientID(id);
            period.SetStart(CDate(2015, 4, 6));
            period.SetEnd(CDate(2016, 4, 5));
        });
    const Owner owner{id, true};
    const long source = AddReturnSource(owner, kSampleYear, number % 5, AssignedTo(number));
    if (number % 4 == 0)
        AddEnquiry(owner, kSampleYear, number, source);
}

void AddSoleTrade(const Individual& owner)
{
    const long business =
        Add<Brix::CBTaxProprietor>([&](Brix::CBTaxProprietor& proprietor) { proprietor.SetClientID(owner.id); });
    Add<Brix::CBTaxAccountingPeriod>([&](Brix::CBTaxAccountingPeriod& row) {
        row.SetBTaxProprietorID(business);
        row.SetStart(CDate(kSampleYear - 1, 4, 6));
        row.SetEnd(CDate(kSampleYear, 4, 5));
    });
}

} // namespace Morv::Sample
