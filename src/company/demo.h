// The demo company: a sample company folder with realistic Hungarian data, written through the
// engine directly.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace company {

struct DemoResult {
    bool created = false;               // false: the folder already had a Kerova.dsb
    std::vector<std::string> warnings;  // columns or values that had to be skipped
};

// The seed of every random choice: the same day gives the same demo.
inline constexpr long long DemoSeed = 20020611LL;
// The folder of the sibling products' files, under the company folder.
inline constexpr const char* DemoSiblingFolder = "Raktar";

// Creates the sample company in `dir` unless it already has a Kerova.dsb (matched without regard
// to case), in which case nothing is touched. The folder gets every file of the catalogue and
// then: the operator, the parameters, ten vehicles with some deadlines due, drivers, routes between
// Hungarian towns, partners, fuel invoices, four months of trips with their log-sheet groups, a
// kilometre log, service visits with parts, articles, countries, customers, and a small warehouse
// (the sibling files in the subfolder Raktar, named by table Path). Every date is relative to
// `today`. Each file is written in one batch. Engine failures propagate as jet::JetError.
DemoResult createDemo(const std::filesystem::path& dir, std::chrono::sys_days today);
// The same with today's local date.
DemoResult createDemo(const std::filesystem::path& dir);

// Grows the trip table `Utak` of a company's Kerova.dsb to `rows` trips for speed measurements: the
// trips there are copied over and over in one batch, each copy a day earlier.
void growTrips(const std::filesystem::path& kerovaDsb, int rows);

}  // namespace company
