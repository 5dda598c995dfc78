#pragma once

// Measuring texts in the desktop's fonts.

#include <wx/bitmap.h>
#include <wx/dcmemory.h>

#include "Afx/windows/Drawing.h"

namespace AfxWx
{

class MeasuringDC : public CDC
{
public:
    MeasuringDC();
    CSize GetTextExtent(const CString& text) const override;

private:
    wxBitmap m_bitmap;
    mutable wxMemoryDC m_dc;
};

} // namespace AfxWx
