#pragma once

// Keys for real windows, beyond what scripts of Hands send.

#include "support/Hands.h"

namespace Test
{

/// Sends a key (VK_...) to whatever window has the keyboard.
void SendKey(unsigned key, unsigned modifiers = 0);
/// The native handle of the window that has the keyboard; null: none of ours.
void* ActiveHandle();
/// Returns when the program has nothing left to do and what it shows no longer changes.
void Settle();

} // namespace Test
