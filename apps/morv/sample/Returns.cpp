#include "Returns.h"

#include <cstddef>

namespace Morv::Sample
{

namespace
{

using Kiln::CAmt;
using Kiln::CDate;

constexpr short kAllowanceYear = 2018; // the trading allowance, and the Scottish rates, begin with it
constexpr int kAccepted = 2;           // state of a submission

CDate InYear(const Form& form, int month, int day)
{
    return CDate(month < 4 || (month == 4 && day < 6) ? form.year : form.year - 1, month, day);
}

/// What a client does all his years.
struct Life
{
    const Employer* employer;
    const char* bank;
    int status; // 0 UK, 1 Scottish, 2 Welsh
    int pay;    // pounds a year; 0: not employed
    bool isPensioner, saves, hasAllowance, hasGrid, isAbroad, trades;
};

Life LifeOf(Dice& dice)
{
    Life life{};
    life.employer = &EmployerOf(dice);
    life.bank = BankName(dice);
    const int home = dice.Below(100);
    life.status = home < 12 ? 1 : home < 18 ? 2 : 0;
    life.isPensioner = dice.Chance(18);
    life.pay = !life.isPensioner && dice.Chance(75) ? dice.Between(9'000, 120'000) : 0;
    life.saves = dice.Chance(55);
    life.hasAllowance = dice.Chance(40);
    life.hasGrid = dice.Chance(30);
    life.isAbroad = dice.Chance(6);
    life.trades = life.pay == 0 && !life.isPensioner;
    return life;
}

void AddOtherInfo(const Form& form, const Life& life)
{
    if (form.year < kAllowanceYear || (life.status == 0 && !life.trades))
        return;
    AddUnder<Brix::COtherReturnInfo>(form, [&](Brix::COtherReturnInfo& info) {
        info.SetTaxPayerStatus(life.status);
        info.SetTradingAllowance(life.trades);
    });
}

void AddBenefits(long employment, Dice& dice)
{
    constexpr std::array kBenefits{70, 80, 120, 170};
    Add<Brix::CNewEmployBenefits>([&](Brix::CNewEmployBenefits& benefit) {
        benefit.SetNewEmployID(employment);
        benefit.SetType(dice.Pick(kBenefits));
        benefit.SetBenefit(dice.Pounds(90, 6'000));
        benefit.SetEstimate(dice.Chance(10));
    });
}

void AddEmployment(const Form& form, const Life& life, int ordering, Dice& dice)
{
    const bool isMain = ordering == 1;
    const Employer& employer = isMain ? *life.employer : EmployerOf(dice);
    if (!isMain && &employer == life.employer)
        return;
    const bool hasBenefits = dice.Chance(25);
    const int pay = isMain ? life.pay + 350 * (form.year - 2010) : dice.Between(800, 6'000);
    const long id = AddUnder<Brix::CNewEmploy>(form, [&](Brix::CNewEmploy& employment) {
        employment.SetGUID(MakeGUID(form.client, (form.year - 2000) * 2 + ordering));
        employment.SetOrdering(ordering);
        employment.SetEmployerName(employer.name);
        employment.SetPAYEReference(employer.payeReference);
        employment.SetWorksNumber(CString(std::to_string(10'000 + form.client)));
        employment.SetPay(CAmt::FromPence(std::int64_t{pay} * 100));
        employment.SetTax(CAmt::FromPence(pay > 12'000 ? std::int64_t{pay - 12'000} * 20 : 0));
        if (dice.Chance(12))
            employment.SetStudentLoan(dice.Pounds(50, 900));
        if (!isMain)
            employment.SetEnd(InYear(form, dice.Between(6, 12), dice.Between(1, 28)));
        employment.SetP11D(hasBenefits ? 1 : 0);
        employment.SetCompleted(form.year < kSampleYear);
        if (dice.Chance(3))
            employment.SetNotesEstimate("Last payslip is missing; pay taken from the March one.");
    });
    if (hasBenefits)
        AddBenefits(id, dice);
}

void AddPensions(const Form& form, Dice& dice)
{
    constexpr struct
    {
        int section, type;
        const char *description, *payer;
    } kPensions[] = {{200, 1060, "State Pension", ""},
                     {200, 1050, "Occupational pension", "Old Mill Pension Trustees"}};
    int ordering = 0;
    for (const auto& pension : kPensions)
        AddUnder<Brix::CPensionStateBenefits>(form, [&](Brix::CPensionStateBenefits& row) {
            row.SetSection(pension.section);
            row.SetType(pension.type);
            row.SetDescription(pension.description);
            row.SetPayer(pension.payer);
            row.SetAmount(dice.Pounds(4'000, 9'000));
            row.SetOrdering(++ordering);
        });
}

void AddInterest(const Form& form, const Life& life, bool isFirstYear, Dice& dice)
{
    const long id = AddUnder<Brix::CNewInterest>(form, [&](Brix::CNewInterest& interest) {
        interest.SetName(life.bank);
        interest.SetFlagA(1);
        interest.SetFlagB(0);
        interest.SetType(life.hasGrid ? 1100 : 1000);
        interest.SetOrdering(1);
        if (!life.hasGrid)
            interest.SetIncome(dice.Pounds(5, 900));
        if (life.hasAllowance) {
            if (isFirstYear)
                interest.SetBFWD(dice.Pounds(100, 3'000)); // left empty afterwards
            interest.SetAddition(dice.Pounds(0, 700));
            if (dice.Chance(20))
                interest.SetDeduction(dice.Pounds(1, 100));
        }
        interest.SetCompleted(form.year < kSampleYear);
    });
    for (int half = 0; life.hasGrid && half < 2; ++half)
        Add<Brix::CNewInterestGrid>([&](Brix::CNewInterestGrid& line) {
            line.SetNewInterestID(id);
            line.SetPaid(InYear(form, half == 0 ? 6 : 12, 30));
            line.SetIncome(dice.Pounds(2, 450));
        });
}

void AddForeign(const Form& form, bool isFirstYear, Dice& dice)
{
    const long id = AddUnder<Brix::COtherForeignIncome>(form, [&](Brix::COtherForeignIncome& income) {
        income.SetName("Rents, Valldaura");
        income.SetFlagA(0);
        income.SetFlagB(1);
        if (isFirstYear)
            income.SetBFWD(dice.Pounds(500, 4'000));
        income.SetAddition(dice.Pounds(0, 900));
    });
    Add<Brix::COtherForeignIncomeGrid>([&](Brix::COtherForeignIncomeGrid& line) {
        line.SetOtherForeignIncomeID(id);
        line.SetIncome(dice.Pounds(200, 1'500));
    });
    AddUnder<Brix::CForeignDividend>(form, [&](Brix::CForeignDividend& dividend) {
        dividend.SetOrdering(1);
        dividend.SetCompany("Brantwick Mining Inc");
        dividend.SetCountryAbbr("USA");
        dividend.SetPaid(InYear(form, 9, 15));
        dividend.SetNet(dice.Pounds(80, 1'200));
        dividend.SetForeignTax(dice.Pounds(10, 150));
    });
}

/// Schedules of which the library knows the order of their rows only.
void AddOrderedSchedules(const Form& form, Dice& dice)
{
    if (dice.Chance(8))
        AddUnder<Brix::CPropUK>(form, [](Brix::CPropUK& property) { property.SetOrdering(1); });
    if (dice.Chance(6))
        AddUnder<Brix::COtherOut>(form, [](Brix::COtherOut& outgoing) { outgoing.SetOrdering(1); });
    if (dice.Chance(4))
        AddUnder<Brix::CNewInterestUT>(form, [](Brix::CNewInterestUT& trust) {
            trust.SetName("Rowanfield Income Fund");
            trust.SetOrdering(1);
        });
    const bool hasPlan = dice.Chance(8), hasGain = dice.Chance(5);
    if (hasPlan) {
        const long plan = AddUnder<Brix::CPlan>(form, [](Brix::CPlan& row) { row.SetOrdering(1); });
        for (int payment = 1; payment <= 2; ++payment)
            Add<Brix::CPlanPayment>([&](Brix::CPlanPayment& row) {
                row.SetPlanID(plan);
                row.SetOrdering(payment);
            });
    }
    if (hasGain) {
        const long gain = AddUnder<Brix::CCGT>(form, [](Brix::CCGT&) {});
        Add<Brix::CCGTAcq>([&](Brix::CCGTAcq& row) {
            row.SetCGTID(gain);
            row.SetOrdering(1);
        });
    }
}

void AddMinister(const Form& form, Dice& dice)
{
    constexpr std::array kTypes{10, 20, 40, 50}; // 50: IR214
    const long minister =
        AddUnder<Brix::CMinisters>(form, [](Brix::CMinisters& row) { row.SetName("Minister of religion"); });
    for (const int type : kTypes) {
        if (dice.Chance(60))
            Add<Brix::CCalculatedBenefits>([&](Brix::CCalculatedBenefits& benefit) {
                benefit.SetMinisterID(minister);
                benefit.SetType(type);
                benefit.SetBenefit(dice.Pounds(50, 2'000));
            });
    }
}

void AddSubmissions(const Form& form, Dice& dice)
{
    const bool isAgain = dice.Chance(8);
    for (int attempt = isAgain ? 0 : 1; attempt < 2; ++attempt)
        Add<Brix::CFBISubmissions>([&](Brix::CFBISubmissions& submission) {
            submission.SetClientID(form.client);
            submission.SetYear(form.year);
            submission.SetStatus(attempt == 0 ? kAccepted + 1 : kAccepted); // refused first
            submission.SetSubmitted(COleDateTime(form.year + 1, 1, 10 + 10 * attempt + dice.Below(10),
                                                 9 + dice.Below(9), dice.Below(60), 0));
        });
}

void AddSchedules(const Form& form, const Life& life, bool isFirstYear, Dice& dice)
{
    AddOtherInfo(form, life);
    if (life.pay != 0) {
        AddEmployment(form, life, 1, dice);
        if (dice.Chance(10))
            AddEmployment(form, life, 2, dice);
    }
    if (life.isPensioner)
        AddPensions(form, dice);
    if (life.saves)
        AddInterest(form, life, isFirstYear, dice);
    if (life.isAbroad)
        AddForeign(form, isFirstYear, dice);
    if (form.year == kSampleYear)
        AddOrderedSchedules(form, dice);
}

} // namespace

Form AddForm(long client, short year, bool isDormant)
{
    const long id = Add<Brix::CTaxForm>([&](Brix::CTaxForm& form) {
        form.SetClientID(client);
        form.SetYear(year);
        form.SetDormant(isDormant);
        if (year < kSampleYear) { // done with
            form.SetClientReview(CDate(year, 11, 1 + static_cast<int>(client % 28)));
            form.SetFinalised(CDate(year, 12, 1 + static_cast<int>(client % 28)));
        }
    });
    return {id, client, year};
}

void AddReturns(Individual& client, Dice& dice)
{
    const Life life = LifeOf(dice);
    const auto last = static_cast<short>(client.isActive && dice.Chance(15) ? kSampleYear + 1 : kSampleYear);
    for (short year = client.firstYear; year <= last; ++year) {
        if (year == kSampleYear && !client.isActive)
            break;
        const Form form = AddForm(client.id, year, client.isDormant && year == kSampleYear);
        client.forms.push_back(form);
        if (year < kSampleYear || dice.Chance(10))
            AddSubmissions(form, dice);
        if (client.isDormant && year == kSampleYear)
            continue;
        AddSchedules(form, life, year == client.firstYear, dice);
        if (client.isMinister)
            AddMinister(form, dice);
    }
}

void AddJointInterest(const Individual& client, const Individual& spouse, Dice& dice)
{
    constexpr char kSource[] = "Joint account, Saltmarsh Savings";
    const CAmt whole = dice.Pounds(40, 2'000);
    const CAmt half = CAmt(whole.GetValue() / 2);
    const long joint = Add<Brix::CJointIncomeSourceTaxYear>([&](Brix::CJointIncomeSourceTaxYear& row) {
        row.SetClientID(client.id);
        row.SetYear(kSampleYear);
        row.SetSpouseID(spouse.id);
    });
    Add<Brix::CNewInterest>([&](Brix::CNewInterest& interest) {
        interest.SetJointIncomeSourceTaxYearID(joint);
        interest.SetClientID(client.id);
        interest.SetYear(kSampleYear);
        interest.SetName(kSource);
        interest.SetType(1000);
        interest.SetIncome(whole);
        interest.SetJoint(true);
        interest.SetClientShare(50.0);
        interest.SetOrdering(1);
    });
    for (const Individual* const owner : {&client, &spouse}) {
        for (const Form& form : owner->forms) {
            if (form.year != kSampleYear)
                continue;
            const long row = AddUnder<Brix::CNewInterest>(form, [&](Brix::CNewInterest& interest) {
                interest.SetName(kSource);
                interest.SetType(1000);
                interest.SetIncome(whole);
                interest.SetJoint(true);
                interest.SetClientShare(50.0);
                interest.SetJointView(owner == &client ? 1 : 2);
                interest.SetOrdering(2);
            });
            Add<Brix::CNewInterestJoint>([&](Brix::CNewInterestJoint& share) {
                share.SetNewInterestID(row);
                share.SetIncome(half);
                share.SetBFWD(dice.Pounds(0, 300));
            });
        }
    }
}

} // namespace Morv::Sample
