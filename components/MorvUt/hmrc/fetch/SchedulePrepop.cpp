#include "MorvUt/hmrc/fetch/SchedulePrepop.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "Brix/Subjects.h"
#include "MorvUt/hmrc/fetch/Retrieval.h"
#include "MorvUt/hmrc/review/Differences.h"
#include "MorvUt/res/Strings.h"
#include "Quarry/DataList.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

/// HMRC says that this program may not use the interface, or that there is none.
bool IsNotOffered(const HmrcApiErrorException& error)
{
    constexpr const char* kCodes[] = {"RESOURCE_FORBIDDEN", "MATCHING_RESOURCE_NOT_FOUND", "NOT_IMPLEMENTED"};
    return error.GetThird().empty() &&
           std::find(std::begin(kCodes), std::end(kCodes), error.GetCode()) != std::end(kCodes);
}

} // namespace

CSchedulePrepop::CSchedulePrepop(ClientId client, TaxYear taxYear, std::string identifier,
                                 IEndpointOverride::ResponseType type, const CAuthorisationStore& store)
    : m_client(client), m_taxYear(taxYear), m_identifier(std::move(identifier)), m_type(type), m_store(store)
{}

CSchedulePrepop::~CSchedulePrepop() = default;

Retrieval CSchedulePrepop::MakeRetrieval(std::shared_ptr<CAPIErrorHandler> errors, Logger* logger) const
{
    return Retrieval(m_client, GetYear(), m_store, std::move(errors), logger, ReadPracticeOptions());
}

bool CSchedulePrepop::AskGroup(Retrieval& retrieval, const char* group, const std::function<void(CAuthorisation&)>& ask)
{
    m_counts = {};
    m_hasDifferences = false;
    CAPIErrorHandler& errors = retrieval.GetErrors();
    errors.AddGroup(group);
    if (!retrieval.MayAsk()) {
        errors.AddError(group, CAPIError("UNSAVED_CHANGES", LibraryText(IDS_HMRC_UNSAVED_CHANGES).Str(), {}, {}));
        return false;
    }
    try {
        ask(retrieval.Authorise(IsLive()));
        return true;
    } catch (const HmrcApiErrorException& error) {
        const std::string third = IsNotOffered(error) ? group : error.GetThird();
        errors.AddError(group, CAPIError(error.GetCode(), error.GetText(), third, error.GetStatus()));
        return false;
    }
}

void CSchedulePrepop::StageGroup(Retrieval& retrieval, const char* group,
                                 const std::function<void(StagingWriter&)>& stage)
{
    StagingWriter& writer = retrieval.GetWriter();
    try {
        std::optional<Quarry::CTransaction> level;
        if (!retrieval.StagesTogether())
            level.emplace(Cellar::Intent::Write, Brix::SubjectOf(m_client));
        stage(writer);
        if (level)
            level->Commit();
        m_counts = writer.TakeCounts();
    } catch (const Quarry::ChangedByAnotherUser& changed) {
        writer.TakeCounts(); // undone
        m_hasDifferences = false;
        if (retrieval.StagesTogether())
            throw;
        retrieval.GetErrors().AddError(group, CAPIError("CHANGED_BY_ANOTHER_USER", changed.what(), {}, {}));
    }
}

ReturnYear CSchedulePrepop::LoadReturn() const { return LoadReturnYear(m_client, GetYear()); }

void CSchedulePrepop::CompareWithReturn(StagingWriter& writer, const ReturnYear& own)
{
    m_hasDifferences = IsReviewDue(FindDifferences(writer.GetYear(), own));
}

void CSchedulePrepop::Write(ClientId client, short year, const std::function<void(StagingWriter&)>& write)
{
    Quarry::CTransaction transaction(Cellar::Intent::Write, Brix::SubjectOf(client));
    StagingWriter writer(client, year);
    write(writer);
    transaction.Commit();
    m_counts += writer.TakeCounts();
}

} // namespace HmrcApi
