#pragma once

// What hands do in real windows alone, beyond the scripts of Hands.

#include "support/Hands.h"

namespace Test
{

/// Sends a key (VK_...) to whatever window has the keyboard.
void SendKey(unsigned key, unsigned modifiers = 0);
/// The native handle of the window that has the keyboard; null: none of ours.
void* ActiveHandle();
/// The width of a list's or a grid's column as it is shown, in dialog units.
int ShownWidth(const CWnd& list, int column);
/// Drags the right edge of a column's heading, by so many dialog units; a double click asks for the width that its
/// texts need.
void DragEdge(CWnd& list, int column, int by);
void DoubleClickEdge(CWnd& list, int column);
/// Returns when the program has nothing left to do and what it shows no longer changes.
void Settle();

} // namespace Test
