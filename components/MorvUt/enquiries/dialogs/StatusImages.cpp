#include "MorvUt/enquiries/dialogs/StatusImages.h"

namespace
{

constexpr int kSize = 16;
constexpr std::uint32_t kWhite = 0xFFFFFF;

/// 16 lines of 16 characters; '#' is drawn.
// clang-format off
constexpr const char* kOverdue[kSize] = {
    "                ",
    "      ####      ",
    "      ####      ",
    "      ####      ",
    "      ####      ",
    "      ####      ",
    "      ####      ",
    "       ##       ",
    "       ##       ",
    "       ##       ",
    "                ",
    "       ##       ",
    "      ####      ",
    "      ####      ",
    "       ##       ",
    "                ",
};
constexpr const char* kReplied[kSize] = {
    "                ",
    "                ",
    "             ## ",
    "            ### ",
    "           ###  ",
    "          ###   ",
    "         ###    ",
    " ##     ###     ",
    " ###   ###      ",
    "  ### ###       ",
    "   #####        ",
    "    ###         ",
    "     #          ",
    "                ",
    "                ",
    "                ",
};
constexpr const char* kIncomplete[kSize] = {
    "                ",
    "                ",
    "                ",
    "                ",
    "                ",
    "                ",
    "                ",
    " ###  ###  ###  ",
    " ###  ###  ###  ",
    " ###  ###  ###  ",
    "                ",
    "                ",
    "                ",
    "                ",
    "                ",
    "                ",
};

// clang-format on

struct Drawn
{
    const char* const* lines;
    std::uint32_t colour;
};

} // namespace

void AddEnquiryStatusImages(CImageList& images)
{
    images.Create(kSize, kSize);
    for (const Drawn& drawn : {Drawn{kOverdue, 0xC00000}, {kReplied, 0x007000}, {kIncomplete, 0x404040}}) {
        Afx::Bitmap picture{kSize, kSize, {}};
        for (int y = 0; y < kSize; ++y)
            for (int x = 0; x < kSize; ++x)
                picture.pixels.push_back(drawn.lines[y][x] == '#' ? drawn.colour : kWhite);
        images.Add(std::move(picture), kWhite);
    }
}
