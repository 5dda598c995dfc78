#pragma once

// Runs benchmarks in pairs and prints how ours compares with each peer.
//
// A subject is a function of ours and its peers, registered in that order: "pence to text/ours", "pence to
// text/snprintf".

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace Bench
{

/// Why ours is slower than a peer that does less, for the reader of a row that misses; and what is allowed, of the
/// peer's processor time.
struct Reason
{
    Reason() = default;
    Reason(std::string text, double most = 1) : why(std::move(text)), limit(most) {}
    Reason(const char* text) : why(text) {}

    std::string why = "no reason is known";
    double limit = 1;
};
using Reasons = std::map<std::string, Reason>; // by subject

/// Runs everything that is registered; ten repetitions, ours and the peers taking turns, unless the command line says
/// otherwise. The fastest repetition of each counts, since other programs can only add to a time.
///
/// Prints the nanoseconds of each entry and then, as Markdown, the ratios of ours to the peers, processor time first
/// and wall time in brackets: first the rows that miss, whose processor time is more than is allowed, then the others.
/// 1 when the command line is not understood or an entry fails.
int RunAll(int argc, char** argv, const Reasons& reasons);

/// What `run` answers; 2, with the reason on stderr, when it throws.
int ResultOf(const std::function<int()>& run);

} // namespace Bench
