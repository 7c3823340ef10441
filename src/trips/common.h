// Small pieces the trip module's forms share: the warning box, a quiet FindFirst, today's date.
#pragma once

#include <string>

namespace forms {
class DataControl;
}

namespace trips {

inline constexpr const char* WarnTitle = "FIGYELEM!";

// Arrow, Beep and a warning box (style 48).
void warn(const std::string& text, const std::string& title = WarnTitle);
// FindFirst on the Data control's set with errors resumed; whether a row was found.
bool findFirst(forms::DataControl* dc, const std::string& criterion);
// Today as the program writes a date ("2026.11.23.").
std::string todayText();

}  // namespace trips
