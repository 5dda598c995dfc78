#pragma once

// Points, sizes and rectangles of windows. Windows are measured in dialog units, which grow with the font: 4 across are
// an average character, 8 down are a line.

struct CPoint
{
    int x = 0, y = 0;

    friend bool operator==(const CPoint&, const CPoint&) = default;
};

struct CSize
{
    int cx = 0, cy = 0;

    friend bool operator==(const CSize&, const CSize&) = default;
};

/// From `left` and `top` up to, and without, `right` and `bottom`.
struct CRect
{
    int left = 0, top = 0, right = 0, bottom = 0;

    int Width() const noexcept { return right - left; }
    int Height() const noexcept { return bottom - top; }
    CSize Size() const noexcept { return {Width(), Height()}; }

    friend bool operator==(const CRect&, const CRect&) = default;
};
