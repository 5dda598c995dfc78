#pragma once

// The command "fetch from HMRC".

#include <memory>
#include <string>
#include <vector>

#include "Afx/text/CString.h"
#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/Host.h"
#include "HmrcApi/transport/Channel.h"
#include "MorvUt/Export.h"
#include "MorvUt/hmrc/fetch/FetchStates.h"
#include "MorvUt/hmrc/staging/StagedYear.h"
#include "Quarry/Keys.h"

namespace HmrcApi
{

/// What a fetch did, for programs that show it themselves.
struct FetchResult
{
    /// Why nothing was asked of HMRC.
    enum class Stopped
    {
        No,
        Trust,
        NoRight,
        NotEnabled,
        NotAuthorised, // the gateway id has no authority from HMRC
        NoNINumber,
        NoUTR,
        UnsavedChanges,
        Busy,     // another program writes to the practice: try again
        Unusable, // the practice cannot be written: its disk is full, the connection to its server lost
        Failed    // an exception; some of it may have been done
    };
    enum class Route
    {
        Paye,
        Employments
    };

    bool ok = false;      // all fetches ran and HMRC reported no error
    bool newData = false; // a staging row was written or changed
    bool clear = true;    // no fetched figure differs from what the return holds
    Stopped stopped = Stopped::No;
    CString message; // what was shown when it stopped; empty otherwise, and for a trust
    Route route = Route::Employments;
    StagedCounts staged;
    ItemCounts counts;                // of the year; its items only those that HMRC sent now, National Insurance as one
    std::vector<FetchedGroup> groups; // in the order asked
    std::string chain;                // of the lines that the fetch left in the log; empty when nothing was asked
    std::vector<CString> notes;       // what of HMRC's has no box of its own, for people (see NotesOf)
    std::shared_ptr<const CAPIErrorHandler> errors; // never null

    /// Another workstation or program was in the way, before the fetch or at the tokens: try again.
    bool IsBusy() const { return stopped == Stopped::Busy || (stopped == Stopped::No && HmrcApi::IsBusy(*errors)); }
    /// Why nothing was asked of HMRC, a trust included; empty when something was.
    MORVUT_API CString Reason() const;
};

/// Fetches the client's records of the current tax year and stages them, with every message that GetHMRCApiData shows.
/// All groups are asked first, then all are staged in one transaction, or in a level of an open one that has not begun:
/// its rollback undoes the staging and never a token. `channel`: the way out that several retrievals share; null: one
/// of its own.
MORVUT_API FetchResult FetchFromHmrc(ClientId client, const std::string& gatewayId,
                                     IEndpointOverride::ResponseType type = IEndpointOverride::Live,
                                     std::shared_ptr<Channel> channel = nullptr);

} // namespace HmrcApi

/// Fetches the client's records of the current tax year from HMRC and stages them: PAYE records by the National
/// Insurance number (or, by the practice's option, the individual interfaces' by UTR), then National Insurance by UTR.
/// `newData`: staging rows were written. `clear`: nothing differs from the return. True when all fetches ran and HMRC
/// reported no error; what stopped it, and HMRC's errors, are shown. Nothing is fetched for a trust.
MORVUT_API bool GetHMRCApiData(ClientId client, const std::string& gatewayId, bool& newData, bool& clear,
                               HmrcApi::IEndpointOverride::ResponseType type);
