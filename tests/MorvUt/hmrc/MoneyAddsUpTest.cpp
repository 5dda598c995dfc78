// Whatever HMRC sends, and in whatever order: what is staged adds up to it.

#include <algorithm>
#include <random>

#include "fuzz/JsonText.h"
#include "HmrcApi/RandomAnswers.h"
#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/MorvUt.h"

namespace
{

using Cellar::SqlText;
using HmrcApi::Fakes::RandomAnswer;

constexpr std::uint32_t kAnswersOfAClient = 8; // one after the other: each finds what the one before left

class MoneyAddsUp : public HmrcTest
{
protected:
    /// The same answer, its lists in another order.
    static HmrcApi::JsonValue Shuffled(HmrcApi::JsonValue value, std::mt19937& random)
    {
        for (HmrcApi::JsonValue& item : value.items)
            item = Shuffled(std::move(item), random);
        if (value.Is(HmrcApi::JsonValue::Kind::Array))
            std::shuffle(value.items.begin(), value.items.end(), random);
        return value;
    }
    void Stage(ClientId client, const std::string& json)
    {
        PayeOf prepop(client, json);
        Fetch(prepop);
        ASSERT_EQ(Errors(), "");
    }

    /// Each sum of the live staging rows is the answer's.
    static void ExpectSums(ClientId client, const RandomAnswer& answer)
    {
#define LIVE "JOIN BRIXMTD_TaxYear y ON y.lID = lMTD_TaxYearID WHERE lClientID = %ld AND t.bWithdrawn = 0"
#define BENEFITS "BRIXMTD_EmploymentsCompanyBenefits t JOIN BRIXMTD_Employments e ON e.lID = lMTD_EmploymentsID " LIVE
#define PENSIONS "BRIXMTD_PensionStateBenefits t " LIVE " AND COALESCE(nMTDType, 0) "
        const struct
        {
            SqlText column, rows;
            const char *path, *other = "";
        } sums[] = {
            {"amtPay", "BRIXMTD_Employments t " LIVE, "/employments/taxablePayTotal"},
            {"amtTax", "BRIXMTD_Employments t " LIVE, "/employments/taxTotal"},
            {"amtStudentLoan", "BRIXMTD_Employments t " LIVE, "/employments/studentLoan"},
            {"t.amtAmount", BENEFITS, "/employments/companyBenefits/amount"},
            {"amtAmount", "BRIXMTD_TaxFreeAllowances t " LIVE, "/taxFreeAllowances/amount"},
            {"amtAmount", PENSIONS "= 1", "/privatePensions/taxablePayTotal"},
            {"amtTax", PENSIONS "= 1", "/privatePensions/taxTotal"},
            {"amtAmount", PENSIONS "> 1",
             "/taxableSocialSecurityBenefits/taxablePayTotal"}, // those of unknown kinds too
            {"amtTax", PENSIONS "> 1", "/taxableSocialSecurityBenefits/taxTotal"},
            {"amtAmount", PENSIONS "= 0", "/statePension/lumpSum/taxablePayTotal", "/statePension/grossAmount"},
            {"amtTax", PENSIONS "= 0", "/statePension/lumpSum/taxTotal"},
        };
        for (const auto& [column, rows, path, other] : sums) {
            const SqlText select = "SELECT COALESCE(SUM(" + column + "), 0) FROM " + rows;
            EXPECT_EQ(Cellar::ToAmount(Quarry::GetConnection().Queryf(select, client.Get()).rows[0][0]).GetValue(),
                      answer.Total(path) + answer.Total(other))
                << select.View();
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

ON_BOTH_DATABASES(MoneyAddsUp);

} // namespace

TEST_P(MoneyAddsUp, InRandomAnswersInAnyOrder)
{
    const std::uint32_t first = ::Test::Setting("MORVUT_SEED", 1), count = ::Test::Setting("MORVUT_ANSWERS", 300);
    std::mt19937 random(first);
    ClientId client;
    for (std::uint32_t seed = first; seed != first + count && !HasFailure(); ++seed) {
        const RandomAnswer answer(seed);
        const std::string json = Fuzz::WriteJson(answer.Answer());
        SCOPED_TRACE("MORVUT_SEED=" + std::to_string(seed) + '\n' + json);
        if ((seed - first) % kAnswersOfAClient == 0) {
            Forget();
            client = ClientId(::Test::AddClients(1));
        }
        Stage(client, json);
        ExpectSums(client, answer);
        const std::string rows = AllRows();
        Stage(client, Fuzz::WriteJson(Shuffled(answer.Answer(), random)));
        EXPECT_EQ(AllRows(), rows) << "the same in another order";
    }
}
