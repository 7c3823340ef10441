#pragma once

#include <string>
#include <vector>

namespace kerova {

// `kerova jet tables|schema|export|check FILE [TABLE]`; returns the exit code.
int jetTool(const std::vector<std::string>& args);

}  // namespace kerova
