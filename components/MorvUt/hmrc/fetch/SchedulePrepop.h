#pragma once

// What the fetches have in common: whose records, which year, and how a group's fetch begins and ends.

#include <functional>
#include <memory>
#include <string>

#include "Brix/Keys.h"
#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/oauth/Authorisation.h"
#include "MorvUt/Export.h"
#include "MorvUt/hmrc/access/AuthorisationStore.h"
#include "MorvUt/hmrc/access/Logger.h"
#include "MorvUt/taxyear/TaxYear.h"

namespace HmrcApi
{

/// What a fetch did to the staging rows of a year: those below CMTD_TaxYear, and CMTD_NIC.
struct StagedCounts
{
    int added = 0;
    int changed = 0;   // with other figures, or sent again after HMRC had withdrawn it
    int withdrawn = 0; // HMRC no longer sends it; the row stays, marked

    bool IsAny() const noexcept { return added != 0 || changed != 0 || withdrawn != 0; }
    StagedCounts& operator+=(const StagedCounts& other) noexcept
    {
        added += other.added;
        changed += other.changed;
        withdrawn += other.withdrawn;
        return *this;
    }
    friend bool operator==(const StagedCounts&, const StagedCounts&) = default;
};

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
    bool HasNewData() const noexcept { return m_hasNewData; }
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

    /// Registers the group with the handler, loads the user's tokens (live requests only) and runs `fetch`. HMRC's
    /// errors, and rows that another user has just changed, become entries of the group; other exceptions go on.
    void RunGroup(const char* group, CAPIErrorHandler& errors, Logger* logger,
                  const std::function<void(CAuthorisation&)>& fetch);
    void Count(const StagedCounts& counts) noexcept;
    void SetHasDifferences(bool hasDifferences) noexcept { m_hasDifferences = hasDifferences; }

private:
    ClientId m_client;
    TaxYear m_taxYear;
    std::string m_identifier;
    IEndpointOverride::ResponseType m_type;
    CAuthorisationStore m_store;
    StagedCounts m_counts;
    bool m_hasNewData = false;
    bool m_hasDifferences = false;
};

} // namespace HmrcApi
