#pragma once

// Whether the enquiries that are linked to a task of the work tracker are answered. Both read the current connection
// and throw Cellar::DatabaseError.

#include "MorvUt/Export.h"

/// 1 when none of the source's owner's enquiries that are linked to this task is without an answer: also when nothing
/// is linked to it, and when the source or its owner is not there. Task 0: enquiries that are linked to the source
/// without a task.
MORVUT_API int AllEnquiriesCompleted(long sourceId, long taskId);
/// 1 when there is one, answered or not; 0 when the source or its owner is not there.
MORVUT_API int HasLinkedEnquiries(long sourceId, long taskId);
