#pragma once

// What the peer knows of a client's year: HMRC's items, as sent and as staged, and the schedules of the return.

#include <cstdint>
#include <string>
#include <vector>

namespace Raw
{

constexpr std::int64_t kNoAmount = INT64_MIN; // else ten-thousandths of a pound

struct Benefit
{
    long employment = 0;
    std::string type; // HMRC's name; none in a schedule
    int number = 0;   // HMRC's number; in a schedule its code
    std::int64_t amount = kNoAmount;
    bool isForecast = false;
};

/// Dates are YYYY-MM-DD, or empty.
struct Employment
{
    long id = 0;
    std::string key, reference, worksNumber, employer, start, end;
    std::int64_t pay = kNoAmount, tax = kNoAmount, studentLoan = kNoAmount;
    int offPayroll = -1; // whether it applied; -1: HMRC did not say
    std::vector<Benefit> benefits;
};

/// A pension or a benefit of the state.
struct Pension
{
    long id = 0;
    int kind = 0; // as staged; in a schedule its type
    std::string reference, worksNumber, payer, date, end;
    std::int64_t amount = kNoAmount, tax = kNoAmount;
};

enum PensionKind
{
    kStatePension = 0, // and its lump sum
    kPrivatePension = 1,
    kJobseekersAllowance = 2,
    kIncapacityBenefit = 3,
    kEmploymentAndSupportAllowance = 4
};

struct Allowance
{
    std::string type; // HMRC's name
    int number = 0;
    std::int64_t amount = kNoAmount;
};

struct Year
{
    long form = 0; // of the return; 0: none
    std::vector<Employment> employments;
    std::vector<Pension> pensions;
    std::vector<Allowance> allowances;
};

} // namespace Raw
