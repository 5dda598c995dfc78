#pragma once

// Runs benchmarks in pairs and prints how ours compares with each peer.
//
// A subject is a function of ours and its peers, registered in that order: "pence to text/ours", "pence to
// text/snprintf".

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace Bench
{

/// By subject: why ours is slower than a peer that does less, for the reader of a row that misses.
using Reasons = std::map<std::string, std::string>;

/// Runs everything that is registered; ten repetitions, ours and the peers taking turns, unless the command line says
/// otherwise. The fastest repetition of each counts, since other programs can only add to a time.
///
/// Prints the nanoseconds of each entry and then, as Markdown, the ratios of ours to the peers, processor time first
/// and wall time in brackets: first the rows that miss, whose processor time is more than the peer's, then the others.
/// 1 when the command line is not understood or an entry fails.
int RunAll(int argc, char** argv, const Reasons& reasons);

} // namespace Bench
