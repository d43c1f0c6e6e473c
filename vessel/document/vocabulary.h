// What the tables of keys, results and checks say, for people: `tarvane keys`, `tarvane explain`.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// The tables of an input file: "flange", "vessel".
std::vector<std::string> key_tables();

// All keys of an input file, table by table, or those of one of the tables. UTF-8.
std::string key_list(std::string_view only = {});

// What is known about a key, a result or a check, in every kind of component that has it; in one kind for
// "flange.t" or "flange[0].t".
struct Explanation {
    bool known;
    std::string text; // UTF-8; of an unknown name: why, with the nearest name, without a line end
};
Explanation explain(std::string_view name);

// The names that begin so and can be explained, in their order: "flange.t", "mawp", "document".
std::vector<std::string> explained_names(std::string_view begun);

} // namespace tarvane::vessel
