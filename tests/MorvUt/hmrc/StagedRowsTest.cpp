// Whatever HMRC sends, by either route and in whatever order: the staging rows hold it, absent apart from zero, and
// what no row holds is told.

#include <algorithm>
#include <random>

#include "fuzz/JsonText.h"
#include "HmrcApi/interfaces/Examples.h"
#include "HmrcApi/interfaces/Interface.h"
#include "HmrcApi/RandomAnswers.h"
#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/hmrc/PlainMapping.h"
#include "MorvUt/MorvUt.h"

namespace
{

using HmrcApi::Fakes::Any, HmrcApi::Fakes::kPartNames, HmrcApi::Fakes::RandomAnswers;
using Plain::Json;

constexpr std::uint32_t kAnswersOfAClient = 8; // one after the other: each finds what the one before left

/// The same answer, its lists in another order.
Json Shuffled(Json value, std::mt19937& random)
{
    for (Json& item : value.items)
        item = Shuffled(std::move(item), random);
    if (value.Is(Json::Kind::Array))
        std::shuffle(value.items.begin(), value.items.end(), random);
    return value;
}

/// Another value of its kind; `value` is a leaf.
Json Spoiled(Json value)
{
    if (value.Is(Json::Kind::Number))
        value.text = "12345.67";
    else if (value.Is(Json::Kind::Boolean))
        value.boolean = !value.boolean;
    else
        value.text = Plain::ShowDate(value.text) != Plain::kNothing ? "2001-2-3" : value.text + 'X';
    return value;
}

/// Calls `visit(path)` with each member of the answer spoiled in turn.
template<class Visit>
void EachSpoiled(Json& value, const std::string& path, const Visit& visit)
{
    if (value.items.empty() && !value.Is(Json::Kind::Array) && !value.Is(Json::Kind::Object)) {
        const Json whole = std::exchange(value, Spoiled(value));
        visit(path);
        value = whole;
    }
    for (std::size_t i = 0; i < value.items.size(); ++i)
        EachSpoiled(value.items[i], path + '/' + (i < value.names.size() ? value.names[i] : std::to_string(i)), visit);
}

class StagedRows : public HmrcTest
{
protected:
    void ExpectPaye(ClientId client, const Json& answer)
    {
        PayeOf prepop(client, Fuzz::WriteJson(answer));
        Fetch(prepop);
        EXPECT_EQ(Errors(), "");
        EXPECT_EQ(LiveRows(client), Plain::RowsOfPaye(answer));
    }

    /// The client is a new one.
    void ExpectParts(ClientId client, const Plain::Parts& parts, const Json& insurance)
    {
        std::map<std::string, std::string> texts;
        for (std::size_t i = 0; i < parts.size(); ++i)
            if (!parts[i].Is(Json::Kind::Null))
                texts[kPartNames[i]] = Fuzz::WriteJson(parts[i]);
        EmploymentsOf prepop(client, texts);
        Fetch(prepop);
        EXPECT_EQ(Errors(), "");
        NicOf nic(client, Fuzz::WriteJson(insurance));
        Fetch(nic);
        EXPECT_EQ(Errors(), "");
        Plain::Rows unstaged;
        EXPECT_EQ(LiveRows(client), RowsOf(parts, insurance, unstaged));
        for (const std::string& words : unstaged)
            EXPECT_TRUE(std::any_of(prepop.GetNotes().begin(), prepop.GetNotes().end(), [&](const CString& note) {
                return note.Str().starts_with(words);
            })) << words;
        EmploymentsOf again(client, texts);
        EXPECT_EQ(Fetch(again), HmrcApi::StagedCounts{}) << "the same again";
    }

    static Plain::Rows RowsOf(const Plain::Parts& parts, const Json& insurance, Plain::Rows& unstaged)
    {
        Plain::Rows rows = Plain::RowsOfParts(parts, unstaged);
        if (const std::string row = Plain::RowOfInsurance(insurance); !row.empty())
            rows.push_back(row);
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    static Json Example(const HmrcApi::InterfaceFacts& facts, int type)
    {
        return HmrcApi::ParseJson(
                   HmrcApi::ExampleOf(facts, static_cast<HmrcApi::IEndpointOverride::ResponseType>(type)))
            .value();
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

ON_BOTH_DATABASES(StagedRows);

} // namespace

// MORVUT_ANSWERS=10000 for as many of either route.
TEST_P(StagedRows, HoldRandomAnswersInAnyOrder)
{
    const std::uint32_t first = ::Test::Setting("MORVUT_SEED", 1),
                        count = ::Test::Setting("MORVUT_ANSWERS", ::Test::IsOnServer() ? 16 : 60);
    std::mt19937 random(first);
    ClientId client;
    for (std::uint32_t seed = first; seed != first + count && !HasFailure(); ++seed) {
        RandomAnswers answers(seed);
        const Json answer = answers.Next(Any("paye"));
        SCOPED_TRACE("MORVUT_SEED=" + std::to_string(seed) + '\n' + Fuzz::WriteJson(answer));
        if ((seed - first) % kAnswersOfAClient == 0) {
            Forget();
            client = ClientId(::Test::AddClients(1));
        }
        ExpectPaye(client, answer);
        const std::string rows = AllRows();
        ExpectPaye(client, Shuffled(answer, random));
        EXPECT_EQ(AllRows(), rows) << "the same in another order";

        Plain::Parts parts;
        for (std::size_t i = 0; i < parts.size(); ++i)
            if (!answers.Perhaps(6))
                parts[i] = answers.Next(Any(kPartNames[i]));
        const Json insurance = answers.Next(Any("insurance"));
        SCOPED_TRACE(Fuzz::WriteJson(parts[0]) + '\n' + Fuzz::WriteJson(parts[1]) + '\n' + Fuzz::WriteJson(parts[2]) +
                     '\n' + Fuzz::WriteJson(parts[3]) + '\n' + Fuzz::WriteJson(insurance));
        ExpectParts(ClientId(::Test::AddClients(1)), parts, insurance);
    }
}

// HMRC's own examples, and these with each member in turn another: no member is overlooked.
TEST_P(StagedRows, HoldEveryMemberOfEveryExample)
{
    for (int type = 1; type <= 6; ++type) {
        Json answer = Example(HmrcApi::kPaye, type);
        ExpectPaye(m_client, answer);
        const Plain::Rows whole = Plain::RowsOfPaye(answer);
        EachSpoiled(answer, {}, [&](const std::string& path) {
            SCOPED_TRACE(path);
            ExpectPaye(m_client, answer);
            EXPECT_NE(Plain::RowsOfPaye(answer), whole);
        });
    }
    for (int type = 1; type <= 2; ++type) {
        Plain::Parts parts{Example(HmrcApi::kEmploymentHistory, type), Example(HmrcApi::kIncomeSummary, type),
                           Example(HmrcApi::kBenefitsSummary, type), Example(HmrcApi::kTaxSummary, type)};
        Json insurance = Example(HmrcApi::kNationalInsurance, type + 1); // one of each
        Plain::Rows unstaged;
        const Plain::Rows whole = RowsOf(parts, insurance, unstaged);
        const auto expect = [&](const std::string& path) {
            SCOPED_TRACE(path);
            ExpectParts(ClientId(::Test::AddClients(1)), parts, insurance);
            EXPECT_TRUE(path.empty() || RowsOf(parts, insurance, unstaged) != whole);
        };
        expect({});
        for (Json* each : {&parts[0], &parts[1], &parts[2], &parts[3], &insurance})
            EachSpoiled(*each, {}, expect);
    }
}
