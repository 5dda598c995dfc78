#pragma once

// Texts of a module, and which module's texts are current.

#include <initializer_list>
#include <string_view>

#include "Afx/Export.h"
#include "Afx/text/CString.h"

namespace Afx
{

struct StringResource
{
    unsigned id;
    const char* text;
};

/// The resources of one module: its string table, sorted or not, which must outlive the context.
class AFX_API ResourceContext
{
public:
    ResourceContext(const StringResource* strings, std::size_t count) noexcept : m_strings(strings), m_count(count) {}
    /// Null when this module has no such string.
    const char* FindString(unsigned id) const noexcept;
    /// The module whose resources are used now; null before the first is set.
    static const ResourceContext* Current() noexcept;

private:
    friend class ResourceContextGuard;
    const StringResource* m_strings;
    std::size_t m_count;
};

/// Makes `context` current while the guard lives, then the one before.
class AFX_API ResourceContextGuard
{
public:
    explicit ResourceContextGuard(const ResourceContext& context) noexcept;
    ~ResourceContextGuard();
    ResourceContextGuard(const ResourceContextGuard&) = delete;
    ResourceContextGuard& operator=(const ResourceContextGuard&) = delete;

private:
    const ResourceContext* m_before;
};

/// `pattern` with %1, %2 ... replaced by `texts` in order; a text's own %n is left as it is.
AFX_API CString FillPlaces(std::string_view pattern, std::initializer_list<std::string_view> texts);
/// The same with string resource `id` of the current module. Without such a string: its number and the texts, so that
/// nothing of a message is lost.
AFX_API CString FillPlacesOf(unsigned id, std::initializer_list<std::string_view> texts);

} // namespace Afx

/// String resource `id` of the current module with %1 (and %2) filled in.
AFX_API void AfxFormatString1(CString& out, unsigned id, const char* text1);
AFX_API void AfxFormatString2(CString& out, unsigned id, const char* text1, const char* text2);
