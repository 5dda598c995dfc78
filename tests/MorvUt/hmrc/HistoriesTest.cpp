// Twenty answers in a row for one client, in which items come, go and change, while schedules are made, changed,
// deleted and decided on: at the end each item of HMRC's has exactly one schedule, or people are told why not.

#include <algorithm>
#include <functional>
#include <set>

#include "fuzz/JsonText.h"
#include "HmrcApi/RandomAnswers.h"
#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/hmrc/PlainMapping.h"
#include "MorvUt/hmrc/review/Review.h"
#include "MorvUt/hmrc/schedules/CreateFromHmrc.h"
#include "MorvUt/hmrc/schedules/Matching.h"
#include "MorvUt/hmrc/schedules/Words.h"

namespace
{

using HmrcApi::Decision;
using HmrcApi::Match;
using HmrcApi::Fakes::Any, HmrcApi::Fakes::kPartNames, HmrcApi::Fakes::RandomAnswers;

enum class Route
{
    Paye,
    Utr,
    Both
};

class Histories : public HmrcTest
{
protected:
    Histories()
    {
        ::Test::SetNow(2018, 9, 1);
        Allow({87, 34, 88, 89});
    }

    void Tell(std::uint32_t seed, Route route)
    {
        RandomAnswers random(seed);
        Plain::Json paye;
        Plain::Parts parts;
        Plain::Rows sent;
        for (int answer = 1; answer <= 20; ++answer) {
            const bool isPaye = route == Route::Paye || (route == Route::Both && random.Perhaps());
            sent = isPaye ? StagePaye(paye = random.After(paye, Any("paye"))) : StageParts(random, parts);
            EXPECT_EQ(Errors(), "");
            if (route != Route::Both) { // else each keeps what the other sent and it cannot
                EXPECT_EQ(LiveRows(m_client), sent);
            }
            if (random.Perhaps())
                HmrcApi::CreateFromHmrc(m_client, TaxYear(kYear));
            if (random.Perhaps(4))
                Work(random);
            Review([&] { return static_cast<Decision>(random.Below(3)); });
        }
        const std::vector<CString> notes = HmrcApi::CreateFromHmrc(m_client, TaxYear(kYear)).created.notes;
        ExpectEachItemOnce(notes);
        Sql("UPDATE BRIXMTD_Employments SET nDecision = 0");
        Sql("UPDATE BRIXMTD_PensionStateBenefits SET nDecision = 0");
        Review([] { return Decision::Accept; });
        if (route != Route::Both)
            for (const char* reference : {"123/AB456", "456/AB456", "789/X"})
                ExpectReference(reference, sent, notes);
    }

private:
    Plain::Rows StagePaye(const Plain::Json& answer)
    {
        Fetch(Fuzz::WriteJson(answer));
        return Plain::RowsOfPaye(answer);
    }

    Plain::Rows StageParts(RandomAnswers& random, Plain::Parts& parts)
    {
        std::map<std::string, std::string> texts;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            parts[i] = random.After(parts[i], Any(kPartNames[i]));
            texts[kPartNames[i]] = Fuzz::WriteJson(parts[i]);
        }
        EmploymentsOf prepop(m_client, texts);
        Fetch(prepop);
        Plain::Rows unstaged;
        return Plain::RowsOfParts(parts, unstaged);
    }

    /// What a person does to the schedules meanwhile.
    static void Work(RandomAnswers& random)
    {
        const std::uint32_t what = random.Below(4);
        Brix::CTaxForm form;
        if (what == 0)
            Sql("UPDATE BRIXNewEmploy SET amtPay = %m WHERE lID IN (SELECT MIN(lID) FROM BRIXNewEmploy)",
                Kiln::CAmt::FromPence(random.Below(90'000)));
        else if (what < 3)
            Sql("DELETE FROM BRIXPensionStateBenefits WHERE lID IN (SELECT MIN(lID) FROM BRIXPensionStateBenefits)");
        else if (form.Open())
            ::Test::Add<Brix::CNewEmploy>([&](Brix::CNewEmploy& schedule) {
                schedule.SetTaxFormID(form.GetID());
                schedule.SetClientID(form.GetClientID());
                schedule.SetYear(form.GetYear());
                schedule.SetPAYEReference("123/AB456");
            });
    }

    /// Decides on all that is listed.
    void Review(const std::function<Decision()>& choose)
    {
        using enum HmrcApi::ReviewResult::Outcome;
        for (const auto& difference : HmrcApi::FindDifferences(m_client, TaxYear(kYear))) {
            const auto outcome = HmrcApi::Decide(m_client, TaxYear(kYear), difference.number, choose()).outcome;
            const bool isRejected = difference.state == HmrcApi::Difference::State::Rejected;
            EXPECT_TRUE(outcome == Done || outcome == NoSchedule || (isRejected && outcome == Gone));
        }
    }

    static int CountTold(const std::vector<CString>& notes, const std::string& what, const char* words)
    {
        return static_cast<int>(std::count_if(notes.begin(), notes.end(), [&](const CString& note) {
            return note.Str().find(what) != std::string::npos && note.Str().find(words) != std::string::npos;
        }));
    }

    void ExpectEachItemOnce(const std::vector<CString>& notes) const
    {
        const HmrcApi::StagedYear staged = HmrcApi::LoadStagedYear(m_client, kYear);
        const HmrcApi::ReturnYear own = HmrcApi::LoadReturnYear(m_client, kYear);
        const auto expect = [&](const auto& items, const std::vector<Match>& matches, const auto& nameOf) {
            std::set<int> taken;
            for (std::size_t i = 0; i < items.size(); ++i) {
                const std::string name = nameOf(items[i]);
                const Match& match = matches[i];
                const bool isOwn = match.state == Match::State::Matched;
                const bool isOfSeveral = match.state == Match::State::Shared || match.state == Match::State::Total;
                const bool isOpen = match.state == Match::State::Ambiguous && CountTold(notes, name, "None was made");
                const bool isNever = match.state == Match::State::Ignored && CountTold(notes, name, "schedule is made");
                EXPECT_TRUE(items[i].isWithdrawn || isOpen || isNever ||
                            (isOwn && taken.insert(match.schedule).second) ||
                            (isOfSeveral && match.schedule != HmrcApi::kNoSchedule))
                    << name << ' ' << static_cast<int>(match.state) << ' ' << match.schedule;
            }
        };
        expect(staged.employments, MatchEmployments(staged, own),
               [](const HmrcApi::StagedEmployment& item) { return HmrcApi::NamedBy(item.employer, item.key).Str(); });
        expect(staged.pensions, MatchPensions(staged, own), [](const HmrcApi::StagedPension& item) {
            return item.kind == HmrcApi::kUnknownBenefit ? item.reference : item.payer;
        });
    }

    /// As many schedules as items of the reference, but for what people are told, and together HMRC's pay; counted
    /// without the library.
    static void ExpectReference(const std::string& reference, const Plain::Rows& sent,
                                const std::vector<CString>& notes)
    {
        SCOPED_TRACE(reference);
        int items = 0;
        std::int64_t pay = 0;
        bool isPaySent = true;
        for (const std::string& row : sent) {
            const bool isPension = row.starts_with("P|1|");
            if (!isPension && row[0] != 'E')
                continue;
            std::vector<std::string> fields;
            std::string field;
            for (std::istringstream parts(row); std::getline(parts, field, '|');)
                fields.push_back(field);
            if (fields[isPension ? 2 : 1] != reference)
                continue;
            const std::string& amount = fields[isPension ? 7 : 6];
            ++items;
            isPaySent = isPaySent && amount != Plain::kNothing;
            pay += amount == Plain::kNothing ? 0 : std::stoll(amount);
        }
        int made = 0, typed = 0;
        std::int64_t scheduled = 0;
        for (const Cellar::SqlText& select :
             {Cellar::SqlText("SELECT amtPay, bFromHMRC FROM BRIXNewEmploy WHERE strPAYEReference = %s"),
              Cellar::SqlText("SELECT amtAmount, bFromHMRC FROM BRIXPensionStateBenefits WHERE strReference = %s AND "
                              "nType = 1050")})
            for (const auto& row : Quarry::GetConnection().Queryf(select, reference).rows) {
                scheduled += Cellar::ToAmount(row[0]).GetValue();
                ++(!row[1].IsNull() && row[1].GetInteger() != 0 ? made : typed);
            }
        const int unsent = CountTold(notes, reference, "which HMRC no longer sends"),
                  open = CountTold(notes, reference, "None was made");
        // An open item may be that of a schedule which does not say which it is.
        const int ofTyped = items - open - (made - unsent);
        EXPECT_TRUE(ofTyped >= -open && ofTyped <= typed)
            << items << " items, " << made << " schedules, " << typed << " typed, " << unsent << " no longer sent, "
            << open << " open";
        if (typed + unsent == 0 && isPaySent) {
            EXPECT_EQ(scheduled, pay) << "all is accepted";
        }
    }
};

ON_BOTH_DATABASES(Histories);

} // namespace

// MORVUT_HISTORIES=100 for as many by each route, and by both in turn.
TEST_P(Histories, EndWithOneScheduleForEachItemOrANote)
{
    const std::uint32_t first = ::Test::Setting("MORVUT_SEED", 1),
                        count = ::Test::Setting("MORVUT_HISTORIES", ::Test::IsOnServer() ? 2 : 3);
    for (std::uint32_t seed = first; seed != first + count && !HasFailure(); ++seed)
        for (const Route route : {Route::Paye, Route::Utr, Route::Both}) {
            SCOPED_TRACE("MORVUT_SEED=" + std::to_string(seed) + ", route " + std::to_string(static_cast<int>(route)));
            Forget();
            Tell(seed, route);
        }
}
