#include "Afx/system/Resources.h"

namespace
{
const Afx::ResourceContext* g_current = nullptr;
}

namespace Afx
{

const char* ResourceContext::FindString(unsigned id) const noexcept
{
    for (std::size_t i = 0; i < m_count; ++i)
        if (m_strings[i].id == id)
            return m_strings[i].text;
    return nullptr;
}

const ResourceContext* ResourceContext::Current() noexcept { return g_current; }

ResourceContextGuard::ResourceContextGuard(const ResourceContext& context) noexcept : m_before(g_current)
{
    g_current = &context;
}

ResourceContextGuard::~ResourceContextGuard() { g_current = m_before; }

CString FillPlaces(std::string_view pattern, std::initializer_list<std::string_view> texts)
{
    std::string filled;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '%' && i + 1 < pattern.size()) {
            const int place = pattern[i + 1] - '1';
            if (place >= 0 && place < 9 && static_cast<std::size_t>(place) < texts.size()) {
                filled += texts.begin()[place];
                ++i;
                continue;
            }
        }
        filled += pattern[i];
    }
    return CString(std::move(filled));
}

CString FillPlacesOf(unsigned id, std::initializer_list<std::string_view> texts)
{
    if (CString pattern; pattern.LoadString(id))
        return FillPlaces(pattern.View(), texts);
    CString missing;
    missing.Format("Message %u", id);
    for (const std::string_view text : texts)
        missing.AppendFormat(" %s", text);
    return missing;
}

} // namespace Afx

void AfxFormatString1(CString& out, unsigned id, const char* text1)
{
    out = Afx::FillPlacesOf(id, {text1 ? text1 : ""});
}

void AfxFormatString2(CString& out, unsigned id, const char* text1, const char* text2)
{
    out = Afx::FillPlacesOf(id, {text1 ? text1 : "", text2 ? text2 : ""});
}

// The text class stands below the resources, so these two of its members stand here.

bool CString::LoadString(unsigned id)
{
    const Afx::ResourceContext* const context = Afx::ResourceContext::Current();
    const char* const text = context ? context->FindString(id) : nullptr;
    if (text)
        m_text = text;
    return text != nullptr;
}

void CString::FormatMessage(unsigned id, std::initializer_list<std::string_view> texts)
{
    *this = Afx::FillPlacesOf(id, texts);
}
