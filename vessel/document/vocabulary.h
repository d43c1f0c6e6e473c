// What the tables of keys, results and checks say, for people: `tarvane keys`, `tarvane explain`.
#pragma once

#include <string>
#include <string_view>

namespace tarvane::vessel {

// All keys of an input file, kind by kind. UTF-8.
std::string key_list();

// What is known about a key, a result or a check, in every kind of component that has it; in one kind for
// "flange.t" or "flange[0].t".
struct Explanation {
    bool known;
    std::string text; // UTF-8; of an unknown name: why, with the nearest name, without a line end
};
Explanation explain(std::string_view name);

} // namespace tarvane::vessel
