#pragma once

// The work tracker's rows of a practice: source types with their default tasks, and for the sample sources, tasks and
// enquiries.

namespace Morv::Sample
{

/// Task types, the source types of the two kinds of tax return, and their default tasks.
void SeedTracker();
/// The further source type of the sample's own jobs.
void SeedOtherSources();

struct Owner
{
    long id;
    bool isPartnership;
    bool isTrust = false;
};
/// A source of the owner's tax return of the year, with the default tasks, of which the first `complete` are.
long AddReturnSource(const Owner& owner, short year, int complete, const char* assignedTo);
/// A job that a user added: `what`, with tasks of its own.
void AddJob(const Owner& owner, short year, const char* what, const char* assignedTo);

/// An enquiry, linked to a task of the source; 0: not linked.
void AddEnquiry(const Owner& owner, short year, int which, long source);

} // namespace Morv::Sample
