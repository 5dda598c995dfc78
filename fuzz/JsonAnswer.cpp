#include "Afx/text/CString.h"
#include "fuzz/JsonText.h"
#include "fuzz/Targets.h"
#include "HmrcApi/json/ExactAmount.h"
#include "HmrcApi/json/Json.h"
#include "Kiln/CAmt.h"

namespace Fuzz
{
namespace
{

using HmrcApi::JsonValue;

void CheckNumbers(const JsonValue& value)
{
    if (value.Is(JsonValue::Kind::Number))
        if (const auto exact = HmrcApi::ExactTenThousandths(value.text)) {
            const CString text = Kiln::CAmt(*exact).Format();
            Require(HmrcApi::ExactTenThousandths(text.View()) == exact, "an exact amount comes back from its text");
        }
    for (const JsonValue& item : value.items)
        CheckNumbers(item);
}

} // namespace

void JsonAnswer(std::string_view input)
{
    HmrcApi::JsonProblem problem;
    const auto value = HmrcApi::ParseJson(input, &problem);
    Require(value.has_value() == problem.text.empty(), "a reason is given exactly for what is refused");
    if (!value)
        return;
    CheckNumbers(*value);
    Require(HmrcApi::ParseJson(WriteJson(*value)) == value, "the value comes back from its text");
}

} // namespace Fuzz
