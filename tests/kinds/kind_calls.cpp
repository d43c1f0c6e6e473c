// The engine's own calls of the kinds that have them in their test file, for tests/vessel/ways_test.py.
//   tarvane_kind_calls               tables of these kinds, one a line
//   tarvane_kind_calls TABLE COUNT   random inputs, one a line, as JSON: numbers in the engine's units
//   tarvane_kind_calls TABLE         of each line key=value<TAB>key=value... of standard input the results, alike; none
//                                    has no value
#include "kind_tests.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>

using namespace tarvane::app;

namespace {

void print_inputs(const KindTests& tests, int count) {
    std::mt19937 random(500u);
    for (int i = 0; i < count; ++i) {
        const char* separator = "{";
        for (const auto& [key, value] : draw_lines(tests.draw, random)) {
            std::cout << separator << '"' << key << "\": " << value;
            separator = ", ";
        }
        std::cout << "}\n";
    }
}

void print_results(const KindTests& tests) {
    for (std::string line; std::getline(std::cin, line);) {
        EngineInput input;
        std::istringstream values(line);
        for (std::string one; std::getline(values, one, '\t');) {
            const std::size_t equals = one.find('=');
            input.values[one.substr(0, equals)] = one.substr(equals + 1);
        }
        const char* separator = "";
        for (const auto& [name, value] : tests.engine(input)) {
            char number[40] = "";
            if (value) std::snprintf(number, sizeof number, "%.9g", static_cast<double>(*value));
            std::cout << separator << name << '=' << number;
            separator = "\t";
        }
        std::cout << std::endl; // the other side waits for it
    }
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        for (const std::string_view table : tables_with_tests())
            if (tests_of(table)->engine != nullptr) std::cout << table << '\n';
        return EXIT_SUCCESS;
    }
    const KindTests* tests = tests_of(arguments[1]);
    if (tests == nullptr || tests->engine == nullptr) {
        std::cerr << "no calls of " << arguments[1] << '\n';
        return EXIT_FAILURE;
    }
    if (count > 2)
        print_inputs(*tests, std::atoi(arguments[2]));
    else
        print_results(*tests);
    return EXIT_SUCCESS;
}
