#pragma once

// What a client or partnership is in a tax year: the rules, on values that were read once, each answer with what
// decided it. Years are real tax years.

#include <cstddef>
#include <cstdint>
#include <optional>

#include "Kiln/CDate.h"
#include "MorvUt/Export.h"

/// In the order in which they are listed.
enum class StatusQuestion : std::uint8_t
{
    DeadOrDormant,
    Inactive,
    Dormant,
    Amending,
    Finalised,
    Trust, // kept as one: estates are, too
    Estate,
    ActualTrust, // taxed as one, and no estate
    Llp,
    Scottish,
    TradingAllowance
};
inline constexpr std::size_t kStatusQuestions = 11;

/// "deadOrDormant", "inactive" and so on, as programs write them.
MORVUT_API const char* NameOf(StatusQuestion question) noexcept;

/// What decided. Behind each stands the record that it names; where there is none, no record was there to decide.
enum class StatusReason : std::uint8_t
{
    // Yes.
    Died,              // client: a valid date of death before the current tax year
    Ceased,            // partnership: the same of its cessation
    DormantReturn,     // tax form
    InactivityPeriod,  // period of inactivity
    NotActiveNoReturn, // client
    NotActive,         // partnership
    AcceptedReturn,    // submission
    FinalisedReturn,   // tax form
    TrustFlag,         // client
    TrustOption,       // client: the option is set, and its kind is not 1
    EstateType,        // client
    LlpFlag,           // partnership
    ScottishReturn,    // other return info
    AllowanceClaimed,  // other return info

    // No, although a record is near to a yes.
    DiedTooLate,       // client: a date of death not before the current tax year
    CeasedTooLate,     // partnership: the same of its cessation
    TrustOutlives,     // client: a trust's date of death does not count
    PeriodTooShort,    // period of inactivity: the first with a date, none covers the year
    NotActiveButFiles, // tax form: a client that is not active has a return all the same
    EstateIsNoTrust,   // client: it is an estate
    TrustClaimsNone,   // client: no trading allowance for a trust

    // No.
    NothingEnds,
    NoReturn,
    NotDormant,       // tax form
    NotFinalised,     // tax form
    BeforeAmendments, // the year is before 2008
    NothingAccepted,
    NoSuchOwner, // neither client nor partnership of that id
    IsNoTrust,   // client
    IsNoEstate,  // client: a trust of another entity type
    IsPartnership,
    IsClient,
    NotLlp,      // partnership
    Before2018,  // no taxpayer status and no trading allowance yet
    NoInfo,      // tax form: nothing else is known of the return
    NotScottish, // other return info
    NotClaimed   // other return info
};

/// True of the reasons that stand for a yes.
MORVUT_API bool IsYes(StatusReason reason) noexcept;
/// True of those, and of the ones where a record is near to a yes: what a reader wants to be told.
MORVUT_API bool IsNotable(StatusReason reason) noexcept;

struct StatusAnswer
{
    StatusReason reason = StatusReason::NoSuchOwner;
    long recordId = 0;     // of the row that the reason names; 0: none
    Kiln::CDate from = {}; // its date (death, cessation, finalised, submitted), or the start of the period
    Kiln::CDate to = {};   // end of the period

    explicit operator bool() const noexcept { return IsYes(reason); }
};

/// What the rules look at. A record that there is not, or that was not asked for, is nothing.
struct StatusFacts
{
    struct Owner
    {
        bool isTrust = false; // client, as the next
        bool hasTrustOption = false;
        int trustKind = 0;
        bool isOfEstateType = false;
        bool isLlp = false; // partnership
        bool isActive = false;
        Kiln::CDate ended; // death, or cessation
    };
    struct Return
    {
        long id = 0;
        bool isDormant = false;
        Kiln::CDate finalised;
    };
    struct ReturnInfo
    {
        long id = 0;
        int taxPayerStatus = 0;
        bool claimsTradingAllowance = false;
    };
    struct Period
    {
        long id = 0;
        Kiln::CDate start, end;
    };
    struct Submission
    {
        long id = 0;
        Kiln::CDate submitted;
    };

    long id = 0; // of the client or partnership
    bool isPartnership = false;
    short year = 0;
    Kiln::CDate currentYearStart; // 6 April, of the tax year that is current in the process; null: not asked for

    std::optional<Owner> owner;
    std::optional<Return> form;         // the year's first
    std::optional<ReturnInfo> info;     // its first
    std::optional<Period> period;       // the first that covers the year, else the first with a date
    std::optional<Submission> accepted; // the year's first with status 2
};

/// The answer of one rule; any combination of facts has one.
MORVUT_API StatusAnswer AnswerOf(StatusQuestion question, const StatusFacts& facts);
/// Whether the client counts as a trust; with `checkKind` also by its trust option.
MORVUT_API StatusAnswer TrustAnswerOf(const StatusFacts& facts, bool checkKind);

/// Whether a period of inactivity covers the tax year: 6 April to 5 April lies within, both days included. A null date
/// is an open end; with both null it is no period, and a date that is not valid covers nothing.
MORVUT_API bool CoversTaxYear(const Kiln::CDate& start, const Kiln::CDate& end, short year) noexcept;
/// Takes the next period, in the order of the list, into the facts.
MORVUT_API void ConsiderPeriod(StatusFacts& facts, const StatusFacts::Period& period) noexcept;

/// The first year of taxpayer statuses and of the trading allowance, 2017/18.
inline constexpr short kFirstYearOfReturnInfo = 2018;

// Taxpayer statuses as they are stored.

MORVUT_API int GetTaxPayerStatusUK() noexcept;       // 0
MORVUT_API int GetTaxPayerStatusScottish() noexcept; // 1
MORVUT_API int GetTaxPayerStatusWelsh() noexcept;    // 2
MORVUT_API bool IsTaxPayerStatusScottish(int status) noexcept;
MORVUT_API bool IsTaxPayerStatusWelsh(int status) noexcept;
