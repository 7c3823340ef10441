#pragma once

#include <string>

namespace kerova {

// The engine benchmark (see bench.cpp); returns the exit code.
int benchEngine(const std::string& dir, int rows);

}  // namespace kerova
