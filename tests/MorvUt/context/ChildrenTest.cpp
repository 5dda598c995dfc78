#include "MorvUt/context/Children.h"

#include <limits>

#include "Afx/text/Ascii.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "support/Practice.h"

namespace
{

using Kiln::CAmt;

// Clients: 1 the mother, 2 active, 3 not active, 4 with an active flag of 2, 5 not there. -1 is no client, 0 nobody.
class Children : public ::Test::OnPractice
{
protected:
    Children()
    {
        m_child.AddNew();
        m_child.Update();
        Sql("INSERT INTO BRIXClient (lID, bActive) VALUES (1, 1), (2, 1), (3, 0), (4, 2)");
    }
    ~Children() override { CCurrentTaxYearSingleton::Destroy(); }

    void Link(std::initializer_list<long> parents) const
    {
        Sql("DELETE FROM BRIXChildParentLink");
        Sql("DELETE FROM BRIXChildOtherParentLink");
        for (const long parent : parents)
            if (parent > 0)
                Sql("INSERT INTO BRIXChildParentLink (lChildID, lClientID) VALUES (%ld, %ld)", m_child.GetID(), parent);
            else if (parent < 0)
                Sql("INSERT INTO BRIXChildOtherParentLink (lChildID) VALUES (%ld)", m_child.GetID());
    }

    Brix::CChild m_child;
};

ON_BOTH_DATABASES(Children);

} // namespace

TEST_P(Children, HaveResponsibleParentsWhileLinksTouchTheYear)
{
    // start, end, a year that the link counts for, one that it does not
    const ::Test::Row<const char*, const char*, int, int> rows[] = {
        {"2019-05-01", nullptr, 2020, 2019, "begun after the year before"},
        {"2019-04-05", nullptr, 10000, 2018, "begun on the last day, and never ended"},
        {nullptr, "2019-04-06", 2020, 2021, "ended on the first day"},
        {"some time", "2019-04-05", 0, 2020, "ended on the last day of the year before"},
    };
    Link({1, -1});
    EXPECT_EQ(GetNumParentsResponsibleInYear(m_child, std::numeric_limits<int>::min()), 2) << "no dates: every year";
    Sql("UPDATE BRIXChildOtherParentLink SET dtStart = '1999-01-01', dtEnd = '1999-01-01'");
    for (const auto& [start, end, year, notYear, why] : rows) {
        if (::Test::IsOnServer() && start && !Afx::IsDigit(*start))
            continue; // which takes dates only
        Sql("UPDATE BRIXChildParentLink SET dtStart = %s, dtEnd = %s", start, end);
        EXPECT_EQ(GetNumParentsResponsibleInYear(m_child, year), 1) << why;
        EXPECT_EQ(GetNumParentsResponsibleInYear(m_child, notYear), 0) << why;
    }
    EXPECT_EQ(GetNumParents(m_child), 2);
}

TEST_P(Children, HaveAnAllowanceByTheirResponsibleParents)
{
    // the second and third parent, amount; the other client, the code
    const ::Test::Row<long, long, CAmt, long, int> rows[] = {
        {0, 0, CAmt(1), -1, 1, "one parent"},        {-1, 0, CAmt(0), -1, 1, "the other one is no client"},
        {-1, 0, CAmt(1), -1, 3, "amount is shared"}, {-1, 0, CAmt(), -1, 1, "no amount is not above zero"},
        {3, 0, CAmt(-1), 3, 1, "no longer active"},  {2, 0, CAmt(-1), 2, 3, "active"},
        {4, 0, CAmt(0), 4, 1, "active is 1 only"},   {5, 0, CAmt(0), 5, 1, "no such client"},
        {-1, 2, CAmt(0), 2, 4, "three parents"},     {3, 2, CAmt(1), 3, 4, "whatever the amount"},
    };
    SetCurrentTaxYear(33); // 2023/24
    for (const auto& [second, third, amount, other, code, why] : rows) {
        Link({1, second, third});
        Sql("INSERT INTO BRIXChildOtherParentLink (lChildID, dtEnd) VALUES (%ld, '2023-04-05')",
            m_child.GetID()); // no longer responsible
        EXPECT_EQ(GetOtherParentClientID(m_child, 1), other) << why;
        EXPECT_EQ(GetDefaultAllowance(m_child, 1, amount), code) << why;
    }
}

TEST_P(Children, PresetTheirSchedules)
{
    // current year, birth, the second and third parent, who is given, marked as shared; allowance, in the year, marker
    const std::tuple<int, Kiln::CDate, long, long, long, bool, int, int, bool> rows[] = {
        {2024, {2024, 4, 5}, 0, 0, 2, false, 1, 1, true}, {2024, {2024, 4, 6}, 0, 0, 1, true, 1, 0, true},
        {2002, {2001, 5, 1}, 0, 0, 1, true, 1, 0, true},  {2003, {2002, 5, 1}, 0, 0, 1, true, 1, 1, true},
        {2024, {}, 2, 0, 2, false, 3, 0, false},          {2024, {}, 2, 0, 3, true, 3, 0, false},
        {2024, {2023, 4, 6}, 2, 0, 2, true, 3, 3, true},  {2024, {}, 2, -1, 2, true, 4, 0, false},
    };
    for (const auto& row : rows) {
        const auto& [year, birth, second, third, given, mark, allowance, inYear, marker] = row;
        SetCurrentTaxYear(static_cast<short>(year - 1991));
        Link({1, second, third});
        m_child.SetBirth(birth);
        m_child.Update();
        Brix::CChildSchedule schedule;
        schedule.AddNew();
        schedule.SetChildID(m_child.GetID());
        schedule.SetClientID(1);
        SetChildDefaults(schedule, CAmt(0), given, mark);
        EXPECT_EQ(schedule.GetAllowance(), allowance) << &row - rows;
        EXPECT_EQ(schedule.GetAllowanceInYear(), inYear) << &row - rows;
        EXPECT_EQ(schedule.GetShared(), marker) << &row - rows;
    }
}
