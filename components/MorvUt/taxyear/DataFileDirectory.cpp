#include "MorvUt/taxyear/DataFileDirectory.h"

#include "Afx/system/Application.h"
#include "Afx/system/Files.h"

CString GetDataFileDirectory()
{
    CString folder;
    if (CWinApp* const app = AfxGetApp())
        folder = app->GetProfileString("Preferences", "DataDirectory");
    while (folder.GetLength() > 1 && (folder.Right(1) == "/" || folder.Right(1) == "\\"))
        folder.Delete(folder.GetLength() - 1);
    return folder.IsEmpty() ? Afx::GetProgramDirectory() : folder;
}
