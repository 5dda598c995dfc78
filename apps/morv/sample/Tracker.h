#pragma once

// The sample's rows of the work tracker: sources, tasks and enquiries.

namespace Morv::Sample
{

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
