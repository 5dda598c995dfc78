#include "main-job/raw/Job.h"

#include <sys/random.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <stdexcept>
#include <utility>

#include "main-job/raw/Answer.h"
#include "main-job/raw/Records.h"

namespace Raw
{
namespace
{

struct Job
{
    Database& database;
    long client;
    int year;
};

void Require(bool isSo, const char* what)
{
    if (!isSo)
        throw std::runtime_error(what);
}

/// Calls `take` with the statement on each row.
template<class Take>
void ReadRows(const Job& job, Reading reading, Take take)
{
    sqlite3_stmt* const row = Read(job.database, reading, job.client, job.year);
    while (Next(job.database, row))
        take(row);
}

// Reading.

std::vector<Employment> ReadStagedEmployments(const Job& job)
{
    std::vector<Employment> employments;
    ReadRows(job, kReadStagedEmployments, [&](sqlite3_stmt* row) {
        Employment& item = employments.emplace_back();
        item.id = static_cast<long>(NumberAt(row, 0));
        item.key = TextAt(row, 1);
        item.employer = TextAt(row, 3);
        item.reference = TextAt(row, 4);
        item.worksNumber = TextAt(row, 5);
        item.start = TextAt(row, 6);
        item.end = TextAt(row, 7);
        item.pay = AmountAt(row, 8);
        item.tax = AmountAt(row, 9);
        item.studentLoan = AmountAt(row, 10);
        item.offPayroll = IsNullAt(row, 12) ? -1 : static_cast<int>(NumberAt(row, 12));
    });
    return employments;
}

void AddTo(std::vector<Employment>& employments, Benefit benefit)
{
    for (Employment& employment : employments)
        if (employment.id == benefit.employment)
            return employment.benefits.push_back(std::move(benefit));
}

void ReadStagedBenefits(const Job& job, std::vector<Employment>& employments)
{
    ReadRows(job, kReadStagedBenefits, [&](sqlite3_stmt* row) {
        AddTo(employments, {static_cast<long>(NumberAt(row, 1)), TextAt(row, 3), static_cast<int>(NumberAt(row, 2)),
                            AmountAt(row, 4), NumberAt(row, 5) != 0});
    });
}

std::vector<Pension> ReadStagedPensions(const Job& job)
{
    std::vector<Pension> pensions;
    ReadRows(job, kReadStagedPensions, [&](sqlite3_stmt* row) {
        Pension& item = pensions.emplace_back();
        item.id = static_cast<long>(NumberAt(row, 0));
        item.kind = static_cast<int>(NumberAt(row, 2));
        item.date = TextAt(row, 3);
        item.reference = TextAt(row, 4);
        item.payer = TextAt(row, 5);
        item.amount = AmountAt(row, 6);
        item.tax = AmountAt(row, 7);
        item.worksNumber = TextAt(row, 9);
        item.end = TextAt(row, 12);
    });
    return pensions;
}

Year ReadStaged(const Job& job)
{
    Year staged;
    staged.employments = ReadStagedEmployments(job);
    ReadStagedBenefits(job, staged.employments);
    staged.pensions = ReadStagedPensions(job);
    return staged;
}

void ReadSchedules(const Job& job, Year& own)
{
    ReadRows(job, kReadEmployments, [&](sqlite3_stmt* row) {
        Employment& schedule = own.employments.emplace_back();
        schedule.id = static_cast<long>(NumberAt(row, 0));
        schedule.employer = TextAt(row, 6);
        schedule.reference = TextAt(row, 7);
        schedule.worksNumber = TextAt(row, 8);
        schedule.start = TextAt(row, 9);
        schedule.end = TextAt(row, 10);
        schedule.pay = AmountAt(row, 11);
        schedule.tax = AmountAt(row, 12);
        schedule.studentLoan = AmountAt(row, 13);
    });
    ReadRows(job, kReadBenefits, [&](sqlite3_stmt* row) {
        AddTo(own.employments, {static_cast<long>(NumberAt(row, 1)),
                                {},
                                static_cast<int>(NumberAt(row, 2)),
                                AmountAt(row, 3),
                                NumberAt(row, 4) != 0});
    });
    ReadRows(job, kReadPensions, [&](sqlite3_stmt* row) {
        Pension& schedule = own.pensions.emplace_back();
        schedule.id = static_cast<long>(NumberAt(row, 0));
        schedule.kind = static_cast<int>(NumberAt(row, 5));
        schedule.reference = TextAt(row, 7);
        schedule.payer = TextAt(row, 8);
        schedule.date = TextAt(row, 9);
        schedule.amount = AmountAt(row, 10);
        schedule.tax = AmountAt(row, 11);
        schedule.worksNumber = TextAt(row, 13);
    });
}

Year ReadReturn(const Job& job)
{
    Year own;
    ReadRows(job, kReadForms, [&](sqlite3_stmt* row) { own.form = static_cast<long>(NumberAt(row, 0)); });
    if (own.form != 0)
        ReadSchedules(job, own);
    return own;
}

// Staging.

long StageYear(const Job& job)
{
    ReadRows(job, kReadTaxYears, [](sqlite3_stmt*) { Require(false, "the client was fetched for before"); });
    const long id = NewId(job.database, kTaxYears);
    char fetched[40];
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    std::strftime(fetched, sizeof fetched, "%Y-%m-%d %H:%M:%S.000", localtime_r(&now, &parts));
    const std::string text = fetched;
    sqlite3_stmt* const row = Insert(job.database, kTaxYears, 1);
    BindNumber(row, 1, id);
    BindNumber(row, 2, job.client);
    BindNumber(row, 3, job.year);
    BindText(row, 4, text);
    Finish(job.database, row);
    return id;
}

std::vector<long> NewIds(const Job& job, Table table, std::size_t count)
{
    std::vector<long> ids;
    while (ids.size() < count)
        ids.push_back(NewId(job.database, table));
    return ids;
}

/// Adds the items in one statement; `bind` is given the place of the id's parameter, and the item.
template<class T, class Bind>
void Add(const Job& job, Table table, const std::vector<T>& items, const std::vector<long>& ids, int columns, Bind bind)
{
    if (items.empty())
        return;
    sqlite3_stmt* const rows = Insert(job.database, table, static_cast<int>(items.size()));
    int place = 1;
    for (std::size_t i = 0; i < items.size(); ++i, place += columns) {
        BindNumber(rows, place, ids[i]);
        bind(rows, place, items[i]);
    }
    Finish(job.database, rows);
}

template<class T, class Bind>
std::vector<long> Add(const Job& job, Table table, const std::vector<T>& items, int columns, Bind bind)
{
    const std::vector<long> ids = NewIds(job, table, items.size());
    Add(job, table, items, ids, columns, bind);
    return ids;
}

/// Private pensions, then benefits, then state pensions.
std::vector<Pension> InOrder(const std::vector<Pension>& all)
{
    std::vector<Pension> items;
    for (const auto& [first, last] :
         {std::pair(kPrivatePension, kPrivatePension), std::pair(kJobseekersAllowance, kEmploymentAndSupportAllowance),
          std::pair(kStatePension, kStatePension)})
        for (const Pension& item : all)
            if (item.kind >= first && item.kind <= last)
                items.push_back(item);
    return items;
}

void StagePensions(const Job& job, long year, const std::vector<Pension>& items)
{
    Add(job, kStagedPensions, items, 13, [&](sqlite3_stmt* row, int place, const Pension& item) {
        BindNumber(row, place + 1, year);
        BindNumber(row, place + 2, item.kind);
        BindText(row, place + 3, item.date);
        BindText(row, place + 4, item.reference);
        BindText(row, place + 5, item.payer);
        BindAmount(row, place + 6, item.amount);
        BindAmount(row, place + 7, item.tax);
        BindNumber(row, place + 8, 0);
        BindText(row, place + 9, item.worksNumber);
        BindText(row, place + 12, item.end);
    });
}

void StageEmployments(const Job& job, long year, const std::vector<Employment>& items)
{
    const auto bind = [&](sqlite3_stmt* row, int place, const Employment& item) {
        BindText(row, place + 1, item.key);
        BindNumber(row, place + 2, year);
        BindText(row, place + 3, item.employer);
        BindText(row, place + 4, item.reference);
        BindText(row, place + 5, item.worksNumber);
        BindText(row, place + 6, item.start);
        BindText(row, place + 7, item.end);
        BindAmount(row, place + 8, item.pay);
        BindAmount(row, place + 9, item.tax);
        BindAmount(row, place + 10, item.studentLoan);
        BindNumber(row, place + 11, 0);
        if (item.offPayroll >= 0)
            BindNumber(row, place + 12, item.offPayroll);
    };
    const std::vector<long> ids = Add(job, kStagedEmployments, items, 15, bind);
    std::vector<Benefit> benefits;
    for (std::size_t i = 0; i < items.size(); ++i)
        for (Benefit benefit : items[i].benefits) {
            benefit.employment = ids[i];
            benefits.push_back(std::move(benefit));
        }
    Add(job, kStagedBenefits, benefits, 7, [](sqlite3_stmt* row, int place, const Benefit& item) {
        BindNumber(row, place + 1, item.employment);
        BindNumber(row, place + 2, item.number);
        BindText(row, place + 3, item.type);
        BindAmount(row, place + 4, item.amount);
        BindNumber(row, place + 5, item.isForecast);
        BindNumber(row, place + 6, 0);
    });
}

void StageAllowances(const Job& job, long year, const std::vector<Allowance>& items)
{
    Add(job, kAllowances, items, 8, [&](sqlite3_stmt* row, int place, const Allowance& item) {
        BindNumber(row, place + 1, year);
        BindText(row, place + 2, item.type);
        BindAmount(row, place + 3, item.amount);
        BindNumber(row, place + 4, item.number);
        BindNumber(row, place + 5, 0);
    });
}

void Stage(const Job& job, const Year& answer)
{
    Begin(job.database);
    Require(ReadReturn(job).form == 0, "there is a return already");
    const long year = StageYear(job); // without one nothing else is staged
    StagePensions(job, year, InOrder(answer.pensions));
    StageEmployments(job, year, answer.employments);
    StageAllowances(job, year, answer.allowances);
    Commit(job.database);
}

// Schedules.

long AddForm(const Job& job)
{
    const long id = NewId(job.database, kForms);
    sqlite3_stmt* const row = Insert(job.database, kForms, 1);
    BindNumber(row, 1, id);
    BindNumber(row, 2, job.client);
    BindNumber(row, 3, job.year);
    BindNumber(row, 6, 0); // not dormant
    Finish(job.database, row);
    return id;
}

std::string NewGuid()
{
    unsigned char bytes[16];
    Require(getrandom(bytes, sizeof bytes, 0) == sizeof bytes, "no random bytes");
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0f) | 0x40);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3f) | 0x80);
    char text[40];
    std::snprintf(text, sizeof text, "%02X%02X%02X%02X-%02X%02X-%02X%02X-%02X%02X-%02X%02X%02X%02X%02X%02X", bytes[0],
                  bytes[1], bytes[2], bytes[3], bytes[4], bytes[5], bytes[6], bytes[7], bytes[8], bytes[9], bytes[10],
                  bytes[11], bytes[12], bytes[13], bytes[14], bytes[15]);
    return text;
}

/// The benefits by the codes of schedules, in the order of the codes; those of one code are added up.
std::vector<Benefit> ByCode(const std::vector<Benefit>& benefits)
{
    std::vector<Benefit> totals;
    for (const Benefit& benefit : benefits) {
        const int code = BenefitCode(benefit.number);
        const auto same =
            std::find_if(totals.begin(), totals.end(), [&](const Benefit& total) { return total.number == code; });
        if (same == totals.end()) {
            totals.push_back({benefit.employment, {}, code, benefit.amount, benefit.isForecast});
            continue;
        }
        if (benefit.amount != kNoAmount)
            same->amount = (same->amount == kNoAmount ? 0 : same->amount) + benefit.amount;
        same->isForecast = same->isForecast || benefit.isForecast;
    }
    std::sort(totals.begin(), totals.end(), [](const Benefit& a, const Benefit& b) { return a.number < b.number; });
    return totals;
}

/// The schedule of an item, by its payer; null when there is none.
template<class T>
const T* Find(const std::vector<T>& schedules, const T& item)
{
    for (const T& schedule : schedules)
        if (schedule.reference == item.reference && schedule.worksNumber == item.worksNumber)
            return &schedule;
    return nullptr;
}

long CreateEmployments(const Job& job, const std::vector<Employment>& items)
{
    const std::vector<long> ids = NewIds(job, kEmployments, items.size());
    const long form = AddForm(job);
    std::vector<Benefit> benefits;
    std::vector<std::string> guids;
    for (std::size_t i = 0; i < items.size(); ++i) {
        guids.push_back(NewGuid());
        for (Benefit& total : ByCode(items[i].benefits)) {
            total.employment = ids[i];
            benefits.push_back(std::move(total));
        }
    }
    const std::vector<long> benefitIds = NewIds(job, kBenefits, benefits.size());
    int ordering = 0;
    Add(job, kEmployments, items, ids, 23, [&](sqlite3_stmt* row, int place, const Employment& item) {
        BindNumber(row, place + 1, form);
        BindNumber(row, place + 2, job.client);
        BindNumber(row, place + 3, job.year);
        BindText(row, place + 4, guids[static_cast<std::size_t>(ordering)]);
        BindNumber(row, place + 5, ++ordering);
        KeepText(row, place + 6, item.employer);
        KeepText(row, place + 7, item.reference);
        KeepText(row, place + 8, item.worksNumber);
        BindText(row, place + 9, item.start);
        BindText(row, place + 10, item.end);
        BindAmount(row, place + 11, item.pay);
        BindAmount(row, place + 12, item.tax);
        BindAmount(row, place + 13, item.studentLoan);
        BindNumber(row, place + 14, 1); // from HMRC
        BindNumber(row, place + 21, 0); // not completed
    });
    Add(job, kBenefits, benefits, benefitIds, 5, [](sqlite3_stmt* row, int place, const Benefit& total) {
        BindNumber(row, place + 1, total.employment);
        BindNumber(row, place + 2, total.number);
        BindAmount(row, place + 3, total.amount);
        BindNumber(row, place + 4, total.isForecast);
    });
    return form;
}

struct PensionSchedule
{
    int section, type;
    const char* description; // null: of a state pension its reference, else its payer
};

constexpr PensionSchedule kSchedules[] = {
    // by the kind
    {200, 1060, nullptr},
    {200, 1050, nullptr},
    {300, 1090, ""},
    {300, 1140, "Taxable Incapacity Benefit"},
    {300, 1140, "Employment and Support Allowance"},
};

void CreatePensions(const Job& job, long form, std::vector<Pension> items)
{
    std::vector<std::string> descriptions;
    for (Pension& item : items) {
        const bool isState = item.kind == kStatePension;
        const char* const description = kSchedules[item.kind].description;
        descriptions.push_back(description ? description : isState ? item.reference : item.payer);
        if (isState)
            item.reference.clear();
    }
    int ordering = 0;
    std::size_t next = 0;
    Add(job, kPensions, items, 16, [&](sqlite3_stmt* row, int place, const Pension& item) {
        BindNumber(row, place + 1, form);
        BindNumber(row, place + 2, job.client);
        BindNumber(row, place + 3, job.year);
        BindNumber(row, place + 4, kSchedules[item.kind].section);
        BindNumber(row, place + 5, kSchedules[item.kind].type);
        KeepText(row, place + 6, descriptions[next++]);
        KeepText(row, place + 7, item.reference);
        KeepText(row, place + 8, item.payer);
        BindText(row, place + 9, item.date);
        BindAmount(row, place + 10, item.amount);
        BindAmount(row, place + 11, item.tax);
        BindNumber(row, place + 12, 0); // no estimate
        KeepText(row, place + 13, item.worksNumber);
        BindNumber(row, place + 14, ++ordering);
        BindNumber(row, place + 15, 1); // from HMRC
    });
}

void Create(const Job& job)
{
    Begin(job.database);
    const Year staged = ReadStaged(job);
    const Year own = ReadReturn(job);
    for (const Employment& item : staged.employments)
        Require(!Find(own.employments, item), "there is a schedule already");
    for (const Pension& item : staged.pensions)
        Require(!Find(own.pensions, item), "there is a schedule already");
    const long form = CreateEmployments(job, staged.employments);
    CreatePensions(job, form, InOrder(staged.pensions));
    Commit(job.database);
}

// Differences.

bool IsSame(const Employment& item, const Employment& schedule)
{
    if (item.start != schedule.start || item.end != schedule.end || item.pay != schedule.pay ||
        item.tax != schedule.tax || item.studentLoan != schedule.studentLoan)
        return false;
    for (const Benefit& total : ByCode(item.benefits)) {
        const auto own = std::find_if(schedule.benefits.begin(), schedule.benefits.end(),
                                      [&](const Benefit& benefit) { return benefit.number == total.number; });
        if (own == schedule.benefits.end() || own->amount != total.amount)
            return false;
    }
    return true;
}

/// The schedule of this item: pensions by their payer, others by type and date.
const Pension* ScheduleOf(const Pension& item, const std::vector<Pension>& schedules)
{
    if (item.kind == kPrivatePension)
        return Find(schedules, item);
    for (const Pension& schedule : schedules)
        if (schedule.kind == kSchedules[item.kind].type && schedule.date == item.date)
            return &schedule;
    return nullptr;
}

int CountDifferences(const Job& job)
{
    const Year staged = ReadStaged(job), own = ReadReturn(job);
    int differences = 0;
    for (const Employment& item : staged.employments) {
        const Employment* const schedule = Find(own.employments, item);
        differences += !schedule || !IsSame(item, *schedule);
    }
    for (const Pension& item : staged.pensions) {
        const Pension* const schedule = ScheduleOf(item, own.pensions);
        differences += !schedule || item.amount != schedule->amount || item.tax != schedule->tax;
    }
    return differences;
}

} // namespace

void DoJob(Database& database, long client, int year, const std::string& answer)
{
    const Job job{database, client, year};
    ReadRows(job, kReadOptions, [](sqlite3_stmt*) {});
    Stage(job, ReadAnswer(answer));
    Create(job);
    Require(CountDifferences(job) == 0, "a figure differs");
}

} // namespace Raw
