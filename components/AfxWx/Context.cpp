#include "AfxWx/detail/Context.h"

#include <wx/font.h>
#include <wx/settings.h>

#include "AfxWx/detail/Peer.h"

namespace AfxWx
{

MeasuringDC::MeasuringDC() : m_bitmap(1, 1), m_dc(m_bitmap) {}

CSize MeasuringDC::GetTextExtent(const CString& text) const
{
    constexpr float kWhole = 100.0f;
    const CFont& wanted = Font();
    wxFont font = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT).Scaled(static_cast<float>(wanted.percent) / kWhole);
    if (wanted.bold)
        font = font.Bold();
    m_dc.SetFont(font);
    const wxSize size = m_dc.GetTextExtent(ToWx(text));
    return {size.x, size.y > 0 ? size.y : m_dc.GetCharHeight()};
}

} // namespace AfxWx
