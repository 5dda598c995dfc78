// HMRC's answer as text becomes records. The peers make a document of it and read the same members into structs; a peer
// that reads other figures ends the program.

#include "hmrc/Hmrc.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

#ifdef BENCH_HAS_RAPIDJSON
#include <rapidjson/document.h>
#endif

#include "HmrcApi/interfaces/Examples.h"
#include "HmrcApi/interfaces/Interface.h"
#include "HmrcApi/records/Responses.h"
#include "main-job/raw/Answer.h"
#include "main-job/raw/AnswerOf.h"
#include "Ratios.h"

namespace
{

const std::string& Answer()
{
    static const std::string answer(HmrcApi::ExampleOf(HmrcApi::kPaye, HmrcApi::IEndpointOverride::Everything));
    return answer;
}

/// What everybody must have found: items, and the sum of their first amounts in ten-thousandths of a pound.
struct Found
{
    std::size_t items = 0;
    std::int64_t sum = 0;

    void Add(std::int64_t amount)
    {
        ++items;
        sum += amount == Raw::kNoAmount ? 0 : amount;
    }
    friend bool operator==(const Found&, const Found&) = default;
};

Found FoundIn(const Raw::Year& year)
{
    Found found;
    for (const Raw::Employment& item : year.employments) {
        found.Add(item.pay);
        for (const Raw::Benefit& benefit : item.benefits)
            found.Add(benefit.amount);
    }
    for (const Raw::Pension& item : year.pensions)
        found.Add(item.amount);
    for (const Raw::Allowance& item : year.allowances)
        found.Add(item.amount);
    return found;
}

std::int64_t AmountOf(const Kiln::CAmt& amount) { return amount.IsValid() ? amount.GetValue() : Raw::kNoAmount; }

Found FoundIn(const HmrcApi::CPayeResponse& response)
{
    Found found;
    for (int at = 0; at <= response.GetEmploymentUpperBound(); ++at) {
        const auto item = response.GetEmploymentAt(at);
        found.Add(AmountOf(item->taxablePayTotal));
        for (const HmrcApi::CompanyBenefit_t& benefit : item->companyBenefits)
            found.Add(AmountOf(benefit.amount));
    }
    for (int at = 0; at <= response.GetPrivatePensionUpperBound(); ++at)
        found.Add(AmountOf(response.GetPrivatePensionAt(at)->taxablePayTotal));
    for (int at = 0; at <= response.GetTaxableSocialSecurityBenefitUpperBound(); ++at)
        found.Add(AmountOf(response.GetTaxableSocialSecurityBenefitAt(at)->taxablePayTotal));
    for (int at = 0; at <= response.GetTaxFreeAllowanceUpperBound(); ++at)
        found.Add(AmountOf(response.GetTaxFreeAllowanceAt(at)->amount));
    if (const auto pension = response.getStatePension()) {
        found.Add(AmountOf(pension->grossAmount));
        if (pension->lumpSum)
            found.Add(AmountOf(pension->lumpSum->taxablePayTotal));
    }
    return found;
}

#ifdef BENCH_HAS_RAPIDJSON

class RapidNode
{
public:
    explicit RapidNode(const rapidjson::Value& value) : m_value(&value) {}
    std::string Text(const char* name) const
    {
        const auto* const member = Member(name);
        return member ? std::string(member->GetString(), member->GetStringLength()) : std::string();
    }
    std::int64_t Amount(const char* name) const
    {
        const auto* const member = Member(name);
        return member ? std::llround(member->GetDouble() * 10'000) : Raw::kNoAmount;
    }
    bool Flag(const char* name) const
    {
        const auto* const member = Member(name);
        return member && member->GetBool();
    }
    bool Has(const char* name) const { return Member(name) != nullptr; }
    std::optional<RapidNode> Find(const char* name) const
    {
        const auto* const member = Member(name);
        return member ? std::optional(RapidNode(*member)) : std::nullopt;
    }
    template<class Take>
    void Each(const char* name, Take take) const
    {
        if (const auto* const member = Member(name))
            for (const rapidjson::Value& item : member->GetArray())
                take(RapidNode(item));
    }

private:
    const rapidjson::Value* Member(const char* name) const
    {
        const auto at = m_value->FindMember(name);
        return at == m_value->MemberEnd() ? nullptr : &at->value;
    }
    const rapidjson::Value* m_value;
};

Raw::Year ReadByRapidJson(const std::string& json)
{
    rapidjson::Document document;
    document.Parse(json.data(), json.size());
    if (document.HasParseError())
        throw std::runtime_error("the answer is not JSON");
    return Raw::ReadYear(RapidNode(document));
}

#endif

template<class Read>
void Register(const char* entry, Read read)
{
    if (!(FoundIn(read(Answer())) == FoundIn(HmrcApi::kPaye.read(Answer()))))
        throw std::runtime_error(std::string(entry) + " reads other figures");
    benchmark::RegisterBenchmark((std::string("PAYE answer to records/") + entry).c_str(),
                                 [read](benchmark::State& state) {
                                     for (auto _ : state)
                                         benchmark::DoNotOptimize(read(Answer()));
                                 });
}

} // namespace

int RunDecoding(int argc, char** argv)
{
    Register("ours", HmrcApi::kPaye.read);
    Register("nlohmann::json", &Raw::ReadAnswer);
#ifdef BENCH_HAS_RAPIDJSON
    Register("RapidJSON", &ReadByRapidJson);
#endif
    return Bench::RunAll(
        argc, argv,
        {{"PAYE answer to records",
          "ours reads amounts exactly and dates as dates, knows two members of one name, depth, size and what is "
          "required, and says where something is wrong; the peers read doubles and check nothing"}});
}
