// VB's intrinsic constants under their VB names: message boxes, keys, mouse pointers, colours.
#pragma once

#include <cstdint>
#include <string_view>

namespace vb {

// MsgBox buttons
inline constexpr int vbOKOnly = 0;
inline constexpr int vbOKCancel = 1;
inline constexpr int vbAbortRetryIgnore = 2;
inline constexpr int vbYesNoCancel = 3;
inline constexpr int vbYesNo = 4;
inline constexpr int vbRetryCancel = 5;
// MsgBox icons
inline constexpr int vbCritical = 16;
inline constexpr int vbQuestion = 32;
inline constexpr int vbExclamation = 48;
inline constexpr int vbInformation = 64;
// MsgBox default button and modality
inline constexpr int vbDefaultButton1 = 0;
inline constexpr int vbDefaultButton2 = 256;
inline constexpr int vbDefaultButton3 = 512;
inline constexpr int vbApplicationModal = 0;
inline constexpr int vbSystemModal = 4096;
// MsgBox answers
inline constexpr int vbOK = 1;
inline constexpr int vbCancel = 2;
inline constexpr int vbAbort = 3;
inline constexpr int vbRetry = 4;
inline constexpr int vbIgnore = 5;
inline constexpr int vbYes = 6;
inline constexpr int vbNo = 7;

// Key codes
inline constexpr int vbKeyBack = 8;
inline constexpr int vbKeyTab = 9;
inline constexpr int vbKeyReturn = 13;
inline constexpr int vbKeyEscape = 27;
inline constexpr int vbKeyDelete = 46;
inline constexpr int vbKeyF1 = 112;

// MousePointer
inline constexpr int vbDefault = 0;
inline constexpr int vbArrow = 1;
inline constexpr int vbHourglass = 11;

// Colours (BGR, see color.h)
inline constexpr int32_t vbBlack = 0x000000;
inline constexpr int32_t vbRed = 0x0000FF;
inline constexpr int32_t vbGreen = 0x00FF00;
inline constexpr int32_t vbYellow = 0x00FFFF;
inline constexpr int32_t vbBlue = 0xFF0000;
inline constexpr int32_t vbMagenta = 0xFF00FF;
inline constexpr int32_t vbCyan = 0xFFFF00;
inline constexpr int32_t vbWhite = 0xFFFFFF;

// System colours (&H80000000 + index)
inline constexpr int32_t systemColor(int index) { return static_cast<int32_t>(0x80000000u | static_cast<uint32_t>(index)); }
inline constexpr int32_t vbWindowBackground = systemColor(5);
inline constexpr int32_t vbWindowText = systemColor(8);
inline constexpr int32_t vbHighlight = systemColor(13);
inline constexpr int32_t vbHighlightText = systemColor(14);
inline constexpr int32_t vbButtonFace = systemColor(15);
inline constexpr int32_t vbGrayText = systemColor(17);
inline constexpr int32_t vbButtonText = systemColor(18);
inline constexpr int32_t vbInfoText = systemColor(23);
inline constexpr int32_t vbInfoBackground = systemColor(24);

// Strings
inline constexpr std::string_view vbCr = "\r";
inline constexpr std::string_view vbLf = "\n";
inline constexpr std::string_view vbCrLf = "\r\n";
inline constexpr std::string_view vbTab = "\t";

}  // namespace vb
