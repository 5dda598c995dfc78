#include "MorvUt/enquiries/rules/EnquiryStatus.h"

#include "MorvUt/res/Strings.h"

EnquiryStatus EnquiryStatusOf(const Kiln::CDate& received, const Kiln::CDate& due, const Kiln::CDate& today) noexcept
{
    if (received.IsValid())
        return EnquiryStatus::Replied;
    return due.IsEarlierDay(today) ? EnquiryStatus::Overdue : EnquiryStatus::Incomplete;
}

CString TextOf(EnquiryStatus status)
{
    constexpr unsigned kTexts[] = {IDS_ENQUIRY_OVERDUE, IDS_ENQUIRY_REPLIED, IDS_ENQUIRY_INCOMPLETE};
    return LibraryText(kTexts[static_cast<int>(status)]);
}
