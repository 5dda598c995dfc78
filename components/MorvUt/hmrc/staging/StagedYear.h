#pragma once

// HMRC's figures of one client and tax year, as the practice keeps them.

#include <optional>
#include <string>
#include <vector>

#include "Afx/time/DateTime.h"
#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"
#include "MorvUt/Export.h"
#include "Quarry/Keys.h"

namespace HmrcApi
{

/// Kinds of staged pensions and benefits (column nMTDType); part of the database's format.
enum StagedKind : int
{
    kStatePension = 0, // and its lump sum
    kPrivatePension = 1,
    kJobseekersAllowance = 2,
    kIncapacityBenefit = 3,
    kEmploymentAndSupportAllowance = 4,
    kUnknownBenefit = 99 // of a kind that HMRC has added: kept and told, never made into a schedule
};

/// What a lump sum of the State Pension is described as.
inline constexpr char kLumpSumDescription[] = "State Pension lump sum";

/// What a person decided about an item in the review.
struct StagedDecision
{
    enum Made : int
    {
        Open = 0,
        Accepted = 1,
        Rejected = 2
    };
    int made = Open;
    std::string figures; // HMRC's, that it was about: it holds while they are the same
};

/// A company benefit of an employment.
struct StagedBenefit
{
    long id = 0;      // of the row; 0: none yet
    std::string type; // HMRC's name
    int number = 0;   // HMRC's number; 0 when the name is not known
    Kiln::CAmt amount;
    bool isForecast = false; // a coding estimate, not a P11D figure
    bool isWithdrawn = false;
};

struct StagedEmployment
{
    long id = 0;
    std::string key; // for readers outside: see KeyOf
    std::string reference;
    std::string worksNumber; // may be empty
    std::string employer;
    Kiln::CDate start, end;
    Kiln::CAmt pay, tax, studentLoan;
    std::optional<bool> isOffPayroll; // nothing: HMRC did not say
    bool isWithdrawn = false;
    std::vector<StagedBenefit> benefits;
    StagedDecision decision = {};
};

/// A pension or a benefit of the state.
struct StagedPension
{
    long id = 0;
    int kind = kStatePension;
    /// A payer's PAYE reference; of a state pension its description; of an unknown benefit HMRC's name of the kind.
    std::string reference;
    std::string worksNumber;
    std::string payer;
    Kiln::CDate date; // by which it is known: the start; of benefits and lump sums without one the end
    Kiln::CDate end;
    Kiln::CAmt amount, tax;
    bool isWithdrawn = false;
    StagedDecision decision = {};
};

struct StagedAllowance
{
    long id = 0;
    std::string type; // HMRC's name
    int number = 0;   // HMRC's number; 0 when the name is not known
    Kiln::CAmt amount;
    bool isWithdrawn = false;
};

struct StagedNationalInsurance
{
    Kiln::CAmt class1Earnings; // that contributions are due on; 0.00 before HMRC has reconciled the year
    Kiln::CAmt class2Due;
    std::optional<bool> isMaximumReached; // nothing: HMRC did not say
    COleDateTime updated;                 // when a figure last changed
};

/// All of a year's: what an answer of HMRC says that the rows must hold, or what they do hold. Absent figures are null.
struct StagedYear
{
    std::vector<StagedEmployment> employments; // as stored: in the order of their keys
    std::vector<StagedPension> pensions;       // as stored: by date, nulls first
    std::vector<StagedAllowance> allowances;   // as stored: by amount, nulls first
    std::optional<StagedNationalInsurance> nationalInsurance;
};

/// By what two benefits, or two allowances, are of one type: HMRC's number, else its name.
std::string TypeText(const std::string& type, int number);

/// What the practice holds for the client and real tax year, withdrawn rows included: five statements however much it
/// is. Throws Cellar::DatabaseError.
MORVUT_API StagedYear LoadStagedYear(ClientId client, short year);
/// Only its employments and pensions, which schedules answer to: three statements.
MORVUT_API StagedYear LoadStagedItems(ClientId client, short year);
/// What new schedules are made of: those, and the allowances where no employment is there to have them.
StagedYear LoadForSchedules(ClientId client, short year);

/// What a fetch did to the staging rows of a year: those below CMTD_TaxYear, CMTD_NIC among them.
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

} // namespace HmrcApi
