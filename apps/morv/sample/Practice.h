#pragma once

// A practice to try things out on.

#include <functional>

namespace Morv
{

inline constexpr int kSampleClients = 12;

/// Fills an empty practice: `clients` clients, two partnerships and one more for each further 25 clients, users with
/// all rights, without the HMRC rights, and with a role; HMRC retrieval on, by the PAYE interface. The first 12 clients
/// are one of each sort that a fetch meets, with the returns of one year; the others have several years with schedules,
/// spouses, children, jobs and enquiries, in the same way in every run, a client the same whatever the number of
/// clients. `made` is told of each client.
void FillSamplePractice(int clients, const std::function<void()>& made);

/// What every new practice holds: the options record, HMRC retrieval off; the work tracker's source types of tax
/// returns with their default tasks.
void FillNewPractice();

} // namespace Morv
