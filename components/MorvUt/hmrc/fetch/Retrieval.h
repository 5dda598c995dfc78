#pragma once

// What the groups of one retrieval share.

#include <memory>

#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/oauth/Authorisation.h"
#include "MorvUt/hmrc/access/AuthorisationStore.h"
#include "MorvUt/hmrc/access/Logger.h"
#include "MorvUt/hmrc/access/PracticeOptions.h"
#include "MorvUt/hmrc/fetch/Desk.h"
#include "MorvUt/hmrc/staging/StagingWriter.h"

namespace HmrcApi
{

/// One client's retrieval: who asks, where errors and log lines go, the way out to HMRC, the staging rows. All groups
/// are asked first, then all are staged in one transaction. Asking may happen on another thread than the rest, which
/// then has a desk.
class Retrieval
{
public:
    Retrieval(ClientId client, short year, const CAuthorisationStore& store, std::shared_ptr<CAPIErrorHandler> errors,
              Logger* logger, const PracticeOptions& options, std::shared_ptr<Channel> channel = nullptr,
              Desk* desk = nullptr);

    /// The authorisation; for a live request with the user's tokens. Throws HmrcApiErrorException (NO_CREDENTIALS, the
    /// cause as the third text) when they cannot be loaded.
    CAuthorisation& Authorise(bool isLive);
    /// False within a transaction that has begun, where tokens cannot be kept. At a desk it is looked at beforehand.
    bool MayAsk() const;
    CAPIErrorHandler& GetErrors() const noexcept { return *m_errors; }
    Logger* GetLogger() const noexcept { return m_logger; }
    StagingWriter& GetWriter() noexcept { return m_writer; }

    /// While it lives, the groups are staged in the level that is open: all or none.
    class Together
    {
    public:
        explicit Together(Retrieval& retrieval) noexcept : m_retrieval(retrieval) { retrieval.m_together = true; }
        ~Together() { m_retrieval.m_together = false; }
        Together(const Together&) = delete;
        Together& operator=(const Together&) = delete;

    private:
        Retrieval& m_retrieval;
    };
    bool StagesTogether() const noexcept { return m_together; }

private:
    std::shared_ptr<CAuthorisationStore> m_store;
    std::shared_ptr<CAPIErrorHandler> m_errors;
    Logger* m_logger;
    PracticeOptions m_options;          // read once for the retrieval
    std::shared_ptr<Channel> m_channel; // null: one for this retrieval
    Desk* m_desk;                       // null: this thread has the connection
    std::unique_ptr<CAuthorisation> m_authorisation;
    StagingWriter m_writer;
    bool m_together = false;
};

} // namespace HmrcApi
