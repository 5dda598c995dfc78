#include "Afx/windows/MessageBox.h"

#include "Afx/system/Resources.h"
#include "Afx/windows/WindowSystem.h"

int AfxMessageBox(const char* text, unsigned style)
{
    const std::string shown = text ? text : "";
    if (Afx::WindowSystem* const system = Afx::WindowSystem::Current())
        return system->MessageBox(shown, style);
    return Afx::ConsoleWindowSystem().MessageBox(shown, style);
}

int AfxMessageBox(unsigned textId, unsigned style) { return AfxMessageBox(Afx::FillPlacesOf(textId, {}), style); }
