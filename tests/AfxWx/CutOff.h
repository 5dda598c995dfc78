#pragma once

// Whether all that a window says can be read.

#include <string>
#include <vector>

class CDialog;

namespace Test
{

/// What is cut off in the real window of a dialog, one line each: the control's number and text, what it needs and what
/// it has, in the toolkit's pixels. Texts, buttons, boxes, headings and tabs need room for all that they say, fields
/// and combo boxes the height of a line; all stand inside what is around them, none covers another, and the window fits
/// on the screen.
std::vector<std::string> CutOff(const CDialog& dialog);

} // namespace Test
