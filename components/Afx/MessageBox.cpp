#include "Afx/MessageBox.h"

#include "Afx/Resources.h"
#include "Afx/WindowSystem.h"

int AfxMessageBox(const char* text, unsigned style)
{
    const std::string shown = text ? text : "";
    if (Afx::WindowSystem* const system = Afx::WindowSystem::Current())
        return system->MessageBox(shown, style);
    return Afx::ConsoleWindowSystem().MessageBox(shown, style);
}

int AfxMessageBox(unsigned textId, unsigned style) { return AfxMessageBox(Afx::FillPlacesOf(textId, {}), style); }
