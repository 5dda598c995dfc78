// Whatever HMRC sends, and in whatever order: what is staged adds up to it.

#include <algorithm>
#include <cstdlib>
#include <random>

#include "HmrcApi/RandomAnswers.h"
#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/MorvUt.h"

namespace
{

using Cellar::SqlText;
using HmrcApi::Fakes::AnswerTotals;
using HmrcApi::Fakes::RandomAnswer;

constexpr std::uint32_t kAnswersOfAClient = 8; // one after the other: each finds what the one before left

std::uint32_t Setting(const char* name, std::uint32_t otherwise)
{
    const char* const text = std::getenv(name);
    return text ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10)) : otherwise;
}

class MoneyAddsUp : public HmrcTest
{
protected:
    /// The same answer, its lists in another order.
    static void StageShuffled(ClientId client, const RandomAnswer& answer, std::mt19937& random)
    {
        const HmrcApi::CPayeResponse given = HmrcApi::ReadPayeResponse(answer.Json());
        HmrcApi::CPayeResponse shuffled;
        const auto add = [&](auto at, int last) {
            std::vector<int> order;
            for (int index = 0; index <= last; ++index)
                order.insert(order.begin() + static_cast<std::ptrdiff_t>(random() % (order.size() + 1)), index);
            for (const int index : order) {
                auto item = *(given.*at)(index);
                if constexpr (requires { item.companyBenefits; })
                    std::shuffle(item.companyBenefits.begin(), item.companyBenefits.end(), random);
                shuffled.Add(std::move(item));
            }
        };
        using Response = HmrcApi::CPayeResponse;
        add(&Response::GetEmploymentAt, given.GetEmploymentUpperBound());
        add(&Response::GetPrivatePensionAt, given.GetPrivatePensionUpperBound());
        add(&Response::GetTaxableSocialSecurityBenefitAt, given.GetTaxableSocialSecurityBenefitUpperBound());
        add(&Response::GetTaxFreeAllowanceAt, given.GetTaxFreeAllowanceUpperBound());
        if (given.getStatePension())
            shuffled.SetStatePension(*given.getStatePension());

        PayeOf prepop(client, {});
        prepop.MapPaye(client, TaxYear(kYear), shuffled);
        prepop.UpdateMTDPensionStateBenefits();
        prepop.UpdateMTDPensionsAndOther();
        prepop.UpdateMTDEmployments();
        prepop.UpdateMTDTaxFreeAllowances();
    }

    /// Each sum of the live staging rows is the answer's.
    static void ExpectSums(ClientId client, const AnswerTotals& t)
    {
#define LIVE "JOIN BRIXMTD_TaxYear y ON y.lID = lMTD_TaxYearID WHERE lClientID = %ld AND t.bWithdrawn = 0"
#define BENEFITS "BRIXMTD_EmploymentsCompanyBenefits t JOIN BRIXMTD_Employments e ON e.lID = lMTD_EmploymentsID " LIVE
#define PENSIONS "BRIXMTD_PensionStateBenefits t " LIVE " AND COALESCE(nMTDType, 0) "
        const struct
        {
            SqlText column, rows;
            std::int64_t total;
        } sums[] = {
            {"amtPay", "BRIXMTD_Employments t " LIVE, t.pay},
            {"amtTax", "BRIXMTD_Employments t " LIVE, t.tax},
            {"amtStudentLoan", "BRIXMTD_Employments t " LIVE, t.studentLoan},
            {"t.amtAmount", BENEFITS, t.benefits},
            {"amtAmount", "BRIXMTD_TaxFreeAllowances t " LIVE, t.allowances},
            {"amtAmount", PENSIONS "= 1", t.pensionPay},
            {"amtTax", PENSIONS "= 1", t.pensionTax},
            {"amtAmount", PENSIONS "> 1", t.stateBenefitsPay}, // those of unknown kinds too
            {"amtTax", PENSIONS "> 1", t.stateBenefitsTax},
            {"amtAmount", PENSIONS "= 0", t.statePension + t.lumpSumPay},
            {"amtTax", PENSIONS "= 0", t.lumpSumTax},
        };
        for (const auto& [column, rows, total] : sums) {
            const SqlText select = "SELECT COALESCE(SUM(" + column + "), 0) FROM " + rows;
            EXPECT_EQ(Quarry::GetConnection().Queryf(select, client.Get()).rows[0][0].integer, total) << select.View();
        }
    }
    /// Every staging row with its version.
    std::string AllRows() const
    {
        return Rows("SELECT lID, nVersion, strKey, bWithdrawn FROM BRIXMTD_Employments ORDER BY lID") +
               Rows("SELECT lID, nVersion, bWithdrawn FROM BRIXMTD_EmploymentsCompanyBenefits ORDER BY lID") +
               Rows("SELECT lID, nVersion, bWithdrawn FROM BRIXMTD_PensionStateBenefits ORDER BY lID") +
               Rows("SELECT lID, nVersion, bWithdrawn FROM BRIXMTD_TaxFreeAllowances ORDER BY lID");
    }
};

} // namespace

TEST_F(MoneyAddsUp, InRandomAnswersInAnyOrder)
{
    const std::uint32_t first = Setting("MORVUT_SEED", 1), count = Setting("MORVUT_ANSWERS", 300);
    std::mt19937 random(first);
    ClientId client;
    for (std::uint32_t seed = first; seed != first + count && !HasFailure(); ++seed) {
        const RandomAnswer answer(seed);
        SCOPED_TRACE("MORVUT_SEED=" + std::to_string(seed) + '\n' + answer.Json());
        if ((seed - first) % kAnswersOfAClient == 0) {
            Forget();
            client = ClientId(::Test::AddClients(1));
        }
        PayeOf prepop(client, answer.Json());
        Fetch(prepop);
        ASSERT_EQ(Errors(), "");
        ExpectSums(client, answer.Totals());
        const std::string rows = AllRows();
        StageShuffled(client, answer, random);
        EXPECT_EQ(AllRows(), rows) << "the same in another order";
    }
}
