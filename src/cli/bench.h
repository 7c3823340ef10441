#pragma once

#include <string>

namespace kerova {

// The engine benchmark (see bench.cpp); returns the exit code.
int benchEngine(const std::string& dir, int rows);

// The record-layer benchmark on a company with ROWS trips (bench_records.cpp).
int benchRecords(const std::string& dir, int rows);

// Start-up time to the main form and peak memory after the vehicle form (bench_start.cpp).
int benchStart(const std::string& dir, int rows);

}  // namespace kerova
