#pragma once

// The pictures of how far an enquiry is, by the values of EnquiryStatus.

#include "Afx/windows/ListCtrl.h"

/// 16 by 16 pixels, white is see-through: an exclamation mark, a tick, three dots. They differ in shape, not in colour
/// alone.
void AddEnquiryStatusImages(CImageList& images);
