// VB colours: a Long in BGR order (&H00BBGGRR: red is &HFF, blue is &HFF0000). A value with the
// high bit set (&H80000000 + n) is the Windows system colour n.
#pragma once

#include <cstdint>
#include <iterator>

namespace vb {

constexpr bool isSystemColor(int32_t bgr) {
    return (static_cast<uint32_t>(bgr) & 0xFF000000u) == 0x80000000u;
}

// The classic Windows defaults of the system colours 0..24 as 0xRRGGBB, for designs that name one.
inline constexpr uint32_t SystemColorRgb[] = {
    0xD4D0C8,  // 0 scroll bars
    0x3A6EA5,  // 1 desktop
    0x0A246A,  // 2 active title bar
    0x808080,  // 3 inactive title bar
    0xD4D0C8,  // 4 menu bar
    0xFFFFFF,  // 5 window background
    0x000000,  // 6 window frame
    0x000000,  // 7 menu text
    0x000000,  // 8 window text
    0xFFFFFF,  // 9 active title bar text
    0xD4D0C8,  // 10 active border
    0xD4D0C8,  // 11 inactive border
    0x808080,  // 12 application workspace
    0x0A246A,  // 13 highlight
    0xFFFFFF,  // 14 highlight text
    0xD4D0C8,  // 15 button face
    0x808080,  // 16 button shadow
    0x808080,  // 17 grey text
    0x000000,  // 18 button text
    0xD4D0C8,  // 19 inactive title bar text
    0xFFFFFF,  // 20 button highlight
    0x404040,  // 21 3D dark shadow
    0xD4D0C8,  // 22 3D light
    0x000000,  // 23 tooltip text
    0xFFFFE1,  // 24 tooltip background
};

// A VB colour as 0xRRGGBB: &HFFFF80 is RGB 128,255,255; a system colour gives its default.
constexpr uint32_t toRgb(int32_t bgr) {
    auto u = static_cast<uint32_t>(bgr);
    if (isSystemColor(bgr)) {
        uint32_t index = u & 0xFF;
        return index < std::size(SystemColorRgb) ? SystemColorRgb[index] : 0;
    }
    return ((u & 0xFF) << 16) | (u & 0xFF00) | ((u >> 16) & 0xFF);
}

// 0xRRGGBB as a VB colour.
constexpr int32_t fromRgb(uint32_t rgb) {
    return static_cast<int32_t>(((rgb & 0xFF) << 16) | (rgb & 0xFF00) | ((rgb >> 16) & 0xFF));
}

// VB's RGB(r, g, b): a part above 255 counts as 255, below 0 as 0.
constexpr int32_t RGB(int red, int green, int blue) {
    auto clamp = [](int p) { return p < 0 ? 0 : p > 255 ? 255 : p; };
    return (clamp(blue) << 16) | (clamp(green) << 8) | clamp(red);
}

}  // namespace vb
