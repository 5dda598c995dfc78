// What a source of income carries from year to year, what a child's schedule begins with, and the numbers of new rows.
// usage: allowances FILE      makes a practice there

#include <iostream>

#include "Example.h"

namespace
{

long AddForm(long clientId, short year)
{
    Brix::CTaxForm form;
    form.AddNew();
    form.SetClientID(clientId);
    form.SetYear(year);
    form.Update();
    return form.GetID();
}

/// The year's interest row of a gilt. A figure brought forward that is null was not entered.
void AddGilt(long clientId, short year, Kiln::CAmt broughtForward, int addition, int income)
{
    Brix::CNewInterest row;
    row.AddNew();
    row.SetTaxFormID(AddForm(clientId, year));
    row.SetName("Treasury 4%");
    row.SetBFWD(broughtForward);
    row.SetAddition(Kiln::CAmt::FromPence(addition * 100));
    row.SetIncome(Kiln::CAmt::FromPence(income * 100));
    row.Update();
}

void ShowAllowance(long clientId)
{
    AddGilt(clientId, 2021, Kiln::CAmt::FromPence(100'00), 500, 300);
    AddGilt(clientId, 2022, Kiln::CAmt(), 50, 200);
    AddGilt(clientId, 2023, Kiln::CAmt(), 0, 400);
    for (short year = 2021; year <= 2023; ++year) {
        const Kiln::CAmt left = GetAccruedAllowanceBFWD(clientId, SchedTypeInterest, "Treasury 4%", false, false, year);
        std::cout << FormatYearString42Digit(year) << ' ' << left.Format() << '\n';
    }
}

void LinkParent(const Brix::CChild& child, long clientId, const Kiln::CDate& start)
{
    Brix::CChildParentLink link;
    link.AddNew();
    link.SetChildID(child.GetID());
    link.SetClientID(clientId);
    link.SetStart(start);
    link.Update();
}

void ShowChild(long mother, long father)
{
    Brix::CChild child;
    child.AddNew();
    child.SetBirth(Kiln::CDate(2017, 8, 9));
    child.Update();
    LinkParent(child, mother, Kiln::CDate()); // from the beginning
    LinkParent(child, father, Kiln::CDate(2019, 5, 1));
    for (const int year : {2019, 2020})
        std::cout << FormatYearString42Digit(year) << ": " << GetNumParentsResponsibleInYear(child, year) << " of "
                  << GetNumParents(child) << " parents\n";

    Brix::CChildSchedule schedule;
    schedule.AddNew();
    schedule.SetChildID(child.GetID());
    schedule.SetClientID(mother);
    SetChildDefaults(schedule, Kiln::CAmt::kZero, father, true);
    schedule.Update();
    std::cout << "allowance " << schedule.GetAllowance() << (schedule.GetShared() ? ", shared\n" : "\n");
}

void ShowNumbers(long clientId)
{
    Brix::CTaxForm form;
    form.Open({{Brix::CTaxForm::kClientID, clientId}});
    Brix::CNewEmploy employments;
    employments.Open({{Brix::CNewEmploy::kTaxFormID, form.GetID()}});
    for (const char* const employer : {"Ashworth Ltd", "Bell plc"}) {
        employments.AddNew();
        employments.SetEmployerName(employer);
        employments.SetOrdering(GetNewEmployOrderingNumber(form));
        employments.Update();
        std::cout << employments.GetOrdering() << ' ' << employments.GetEmployerName() << '\n';
    }
}

long AddPerson(const char* name)
{
    ClientView person;
    person.code = person.name = name;
    return AddClient(person).id;
}

} // namespace

int main(int argc, char** argv)
{
    return RunExample([&] {
        Quarry::SetConnection(
            Cellar::CConnection::Open(argc == 2 ? argv[1] : "demo.db", Cellar::CConnection::Create::IfMissing));
        Brix::CreateSchema(Quarry::GetConnection());
        const long mother = AddPerson("Harriet"), father = AddPerson("Tobias");
        ShowAllowance(mother);
        ShowChild(mother, father);
        ShowNumbers(mother);
        return 0;
    });
}
