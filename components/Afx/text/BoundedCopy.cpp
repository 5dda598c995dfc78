#include "Afx/text/BoundedCopy.h"

#include <cstring>

#include "Afx/Exceptions.h"

namespace Afx
{

void BoundedCopy(char* buffer, unsigned size, std::string_view text)
{
    if (!buffer || size == 0)
        throw new CInvalidArgException("There is no buffer to copy the text into");
    if (text.size() >= size) {
        buffer[0] = '\0';
        CString message;
        message.Format("The buffer of %u bytes is too small for a text of %I64u and its end mark", size,
                       static_cast<std::uint64_t>(text.size()));
        throw new CInvalidArgException(message);
    }
    if (!text.empty())
        std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
}

} // namespace Afx
