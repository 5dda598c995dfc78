#include "MorvUt/context/BusyPractice.h"

#include "Afx/windows/MessageBox.h"
#include "MorvUt/res/Strings.h"

void TellBusyOrThrow(const Cellar::DatabaseError& error)
{
    if (error.GetCategory() != Cellar::DatabaseError::Category::Busy)
        throw;
    AfxMessageBox(LibraryText(IDS_PRACTICE_BUSY));
}
