// The calculation of a request: its components in their order, up to the first one that ends the run.
#pragma once

#include "components/request.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

struct Calculation {
    std::vector<std::unique_ptr<Outcome>> outcomes;
    std::vector<Calculated> calculated;
    std::vector<Verdict> verdicts;
    Status status = Status::fine;
    std::vector<std::string> problems; // of the run itself
    bool complete = true;
};

// The request must live as long as the calculation.
Calculation calculate(const Request& request);

// In one word: "pass", "fail", "not made".
inline constexpr std::string_view PASS = "pass", FAIL = "fail", NOT_MADE = "not made";
std::string_view verdict_of(const Verdict& verdict, const Checks& checks);

// "flange[0]"
std::string path_of(const Element& element);

// The closing tables of all kinds, in the order of the kinds.
std::string closing_tables(const std::vector<Calculated>& calculated, const UnitSystem& units);

// What the components use of the data files; a file without items has nothing with a status.
DataUses data_used(const Request& request);

// The approximate figures of the library's own tables that the components use.
OwnFigures own_figures(const std::vector<Calculated>& calculated);

// One line for each data file of which approximate rows were used, and one for such figures of the library.
std::string approximate_lines(const Request& request, const std::vector<Calculated>& calculated);

} // namespace tarvane::vessel
