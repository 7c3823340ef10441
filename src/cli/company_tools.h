// The tools on a company folder: init, check, sql, demo-data, and the usage text.
#pragma once

#include <string>
#include <vector>

namespace kerova {

// Each takes the arguments after the command's name and returns the exit status. Every failure
// prints one line on standard error.
int initTool(const std::vector<std::string>& args);
int checkTool(const std::vector<std::string>& args);
int sqlTool(const std::vector<std::string>& args);
int demoDataTool(const std::vector<std::string>& args);

void printUsage(bool toError);

}  // namespace kerova
