#pragma once

// What the fetches have in common: whose records, which year, and the two halves of a group's fetch.

#include <functional>
#include <memory>
#include <string>

#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/oauth/Authorisation.h"
#include "MorvUt/Export.h"
#include "MorvUt/hmrc/access/AuthorisationStore.h"
#include "MorvUt/hmrc/access/Logger.h"
#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/hmrc/staging/StagedYear.h"
#include "MorvUt/taxyear/TaxYear.h"
#include "Quarry/Keys.h"

namespace HmrcApi
{

class Retrieval;
class StagingWriter;

/// One group of HMRC's figures for one client and tax year.
class MORVUT_API CSchedulePrepop
{
public:
    CSchedulePrepop(ClientId client, TaxYear taxYear, std::string identifier, IEndpointOverride::ResponseType type,
                    const CAuthorisationStore& store = CAuthorisationStore());
    virtual ~CSchedulePrepop();
    CSchedulePrepop(const CSchedulePrepop&) = delete;
    CSchedulePrepop& operator=(const CSchedulePrepop&) = delete;

    /// The fetch wrote or changed a staging row.
    bool HasNewData() const noexcept { return m_counts.IsAny(); }
    /// A fetched figure differs from what the return holds, so a review is due.
    bool HasDifferences() const noexcept { return m_hasDifferences; }
    const StagedCounts& GetStagedCounts() const noexcept { return m_counts; }

protected:
    ClientId GetClient() const noexcept { return m_client; }
    const std::string& GetIdentifier() const noexcept { return m_identifier; }
    TaxYear GetTaxYear() const noexcept { return m_taxYear; }
    short GetYear() const noexcept { return m_taxYear.GetRealTaxYear(); }
    IEndpointOverride::ResponseType GetResponseType() const noexcept { return m_type; }
    bool IsLive() const noexcept { return m_type == IEndpointOverride::Live; }
    /// The live class, or the one that answers with the example of the response type.
    template<class Endpoint, class Override>
    std::shared_ptr<Endpoint> MakeEndpoint(CAuthorisation& authorisation) const
    {
        if (IsLive())
            return std::make_shared<Endpoint>(authorisation);
        return std::make_shared<Override>(authorisation, m_type);
    }
    Retrieval MakeRetrieval(std::shared_ptr<CAPIErrorHandler> errors, Logger* logger) const;

    /// Registers the group with the error handler and asks HMRC. HMRC's errors become entries of the group: false then.
    /// Refused, with an entry too, within a transaction that has begun: what a refresh of the tokens writes could be
    /// rolled back. Other exceptions go on.
    bool AskGroup(Retrieval& retrieval, const char* group, const std::function<void(CAuthorisation&)>& ask);
    /// Stages in a level of its own, all or nothing. Rows that another user has just changed become an entry of the
    /// group; of groups that are staged together (Retrieval) they throw, and whoever began the level undoes it.
    void StageGroup(Retrieval& retrieval, const char* group, const std::function<void(StagingWriter&)>& stage);
    /// Writes in a transaction of its own, outside a retrieval.
    void Write(ClientId client, short year, const std::function<void(StagingWriter&)>& write);
    ReturnYear LoadReturn() const; // as it is now
    /// Whether a review is due is noted for what the rows hold.
    void CompareWithReturn(StagingWriter& writer, const ReturnYear& own);

private:
    ClientId m_client;
    TaxYear m_taxYear;
    std::string m_identifier;
    IEndpointOverride::ResponseType m_type;
    CAuthorisationStore m_store;
    StagedCounts m_counts;
    bool m_hasDifferences = false;
};

} // namespace HmrcApi
