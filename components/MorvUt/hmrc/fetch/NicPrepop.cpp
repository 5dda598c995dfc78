#include "MorvUt/hmrc/fetch/NicPrepop.h"

#include "MorvUt/hmrc/fetch/Retrieval.h"
#include "Quarry/Session.h"

namespace HmrcApi
{

CNICPrepop::~CNICPrepop() = default;

std::shared_ptr<CNationalInsurance> CNICPrepop::GetNationalInsuranceEndpoint(CAuthorisation& authorisation)
{
    return MakeEndpoint<CNationalInsurance, CNationalInsuranceOverride>(authorisation);
}

void CNICPrepop::GetNICData(std::string utr, std::shared_ptr<CAPIErrorHandler> errors, Logger* logger)
{
    Retrieval retrieval = MakeRetrieval(std::move(errors), logger);
    Ask(retrieval, utr);
    Stage(retrieval);
}

void CNICPrepop::Ask(Retrieval& retrieval, const std::string& utr)
{
    m_isAnswered = AskGroup(retrieval, kGroup, [&](CAuthorisation& authorisation) {
        const CNationalInsuranceResponse response =
            GetNationalInsuranceEndpoint(authorisation)->GetNationalInsurance(utr, GetYear(), retrieval.GetLogger());
        m_answer.reset();
        if (!response.IsNothingYet())
            m_answer = {response.class1NicableEarnings, response.class2Due, response.maxNicsReached, {}};
    });
}

void CNICPrepop::Stage(Retrieval& retrieval)
{
    if (m_isAnswered)
        StageGroup(retrieval, kGroup, [&](StagingWriter& writer) {
            if (m_answer)
                writer.WriteNationalInsurance(*m_answer);
            else
                writer.NoteAsked();
        });
}

} // namespace HmrcApi
