#pragma once

// What a window shows, and whether all that it says can be read.

#include <string>
#include <vector>

class CDialog;
using GtkWidget = struct _GtkWidget;

namespace Test
{

/// What a widget of the toolkit shows inside it when it is shown itself. A tab that found no room counts, pages behind
/// others do not.
std::vector<GtkWidget*> ShownIn(GtkWidget* widget);

/// What is cut off in the real window of a dialog, one line each, as "Name": needs 78 x 17, has 71 x 17, in the
/// toolkit's pixels. Texts, of buttons, boxes, headings and tabs too, need room for all that they say, fields and combo
/// boxes the height of a line; all stand inside what is around them, none covers another, and the window fits on the
/// screen.
std::vector<std::string> CutOff(const CDialog& dialog);

} // namespace Test
