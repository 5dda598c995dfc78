#pragma once

// What screens ask of the context: the status of everybody, and the allowance that a source carries. By us and in C;
// all of it only reads.

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "MorvUt/context/status/StatusRules.h"

struct sqlite3;
struct sqlite3_stmt;

constexpr short kStatusYear = 2018;

/// Gives the clients of the current practice what answers hang on: returns of two years, periods of inactivity,
/// submissions, deaths, trusts and estates, and a partnership for every 25 of them.
void AddStatuses();

/// For each question, how many clients and partnerships answer yes.
using YesCounts = std::array<long, kStatusQuestions>;

YesCounts AskStatusOfAll();
/// The statements that this sends.
int CountStatusStatements();

/// The same answers without their reasons: the columns that decide, by nine statements, in structs that are found by
/// their id.
class RawStatus
{
public:
    explicit RawStatus(const std::string& path);
    RawStatus(const RawStatus&) = delete;
    RawStatus& operator=(const RawStatus&) = delete;
    ~RawStatus();
    YesCounts Ask();

private:
    struct Owner;
    using Owners = std::vector<Owner>; // by id
    void ReadClients(Owners& owners);
    void ReadPartnerships(Owners& owners);
    void ReadReturns(Owners& owners, int statement);
    void ReadReturnInfo(Owners& owners);
    void ReadPeriods(Owners& owners, int statement);
    void ReadSubmissions(Owners& owners, int statement);

    sqlite3* m_database = nullptr;
    std::vector<sqlite3_stmt*> m_statements;
    std::string m_currentYearStart;
};

constexpr char kSource[] = "Treasury 4% 2025";
constexpr short kFirstAllowanceYear = 2003, kLastAllowanceYear = 2022;

/// Gives the first client of the current practice twenty years of returns with three interest rows each. The source is
/// the second of them; what it brought forward was entered in the first year.
void AddAllowances();

/// In ten-thousandths of a pound, at the end of the last year.
std::int64_t AskAllowance();
/// Makes the next question read again.
void ForgetAllowances();

/// The same: the rows of each year from the last back to where the figure was entered.
class RawAllowance
{
public:
    explicit RawAllowance(const std::string& path);
    RawAllowance(const RawAllowance&) = delete;
    RawAllowance& operator=(const RawAllowance&) = delete;
    ~RawAllowance();
    std::int64_t Ask(short last = kLastAllowanceYear); // reads
    std::int64_t LookUp();                             // in a map of all years, which it fills

private:
    struct Figures;
    bool ReadYear(short year, Figures& figures);

    sqlite3* m_database = nullptr;
    sqlite3_stmt *m_form = nullptr, *m_rows = nullptr, *m_lines = nullptr;
    using Key = std::tuple<long, int, std::string_view, bool, bool, short>; // client, type, name, flags, year
    std::map<Key, std::int64_t> m_known;
};
