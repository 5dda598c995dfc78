#include "MorvUt/ui/lists/ListFile.h"

#include <string>

#include "Afx/system/Files.h"
#include "MorvUt/taxyear/DataFileDirectory.h"

std::vector<CString> SplitList(std::string_view text)
{
    std::vector<CString> entries;
    for (bool isLast = false; !isLast;) {
        const std::size_t end = text.find('\n');
        isLast = end == std::string_view::npos;
        if (CString entry(text.substr(0, end)); !entry.Trim().IsEmpty())
            entries.push_back(std::move(entry));
        text.remove_prefix(isLast ? text.size() : end + 1);
    }
    return entries;
}

std::optional<std::vector<CString>> ReadListFile(const char* fileName)
{
    if (!fileName || !*fileName)
        return std::nullopt;
    const auto text = Afx::ReadTextFile(GetDataFileDirectory().Str() + '/' + fileName);
    return text ? std::optional(SplitList(*text)) : std::nullopt;
}
