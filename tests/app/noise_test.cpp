// Verdicts, results and checks depend on the engine's results alone: with noise in place of every line of the
// report, while it is written and afterwards, those of all golden inputs and examples are unchanged, and those of the
// input of each kind that is in none of them.
#include "catalogue/data_folder.h"
#include "components/calculation.h"
#include "kind_tests.h"
#include "surface/result_json.h"
#include "tarvane/tarvane.h"

#include <random>

#include <dlfcn.h>

namespace tarvane::app {
namespace {

bool noisy = false;
std::mt19937 random_text(1);

struct Taker {
    TARVANE_TAKE_RECORD take;
    void* user;
};
Taker taker; // one report at a time

// Numbers, words and blanks; the end of a line stays one.
std::string noise(std::string_view text) {
    constexpr std::string_view LETTERS = "0123456789.- =<>[]:|abcxyzWarningExceeds";
    std::string made;
    for (const char c : text)
        made += c == '\n' ? c : LETTERS[random_text() % LETTERS.size()];
    return made;
}

std::int32_t TARVANE_CALL take_noise(void*, const char* text, std::int32_t length) {
    const std::string_view given(text, static_cast<std::size_t>(length));
    const std::string taken = noisy ? noise(given) : std::string(given);
    return taker.take(taker.user, taken.data(), length);
}

} // namespace
} // namespace tarvane::app

// It replaces the library's own, to which it passes the call on.
void TARVANE_CALL OPENHOSTUNIT(const std::int32_t* unit, TARVANE_TAKE_RECORD take, void* user,
                               std::int32_t* status) {
    using namespace tarvane::app;
    taker = {take, user};
    reinterpret_cast<decltype(&::OPENHOSTUNIT)>(dlsym(RTLD_NEXT, "OPENHOSTUNIT"))(unit, take_noise,
                                                                                  user, status);
}

namespace tarvane::app {

using namespace vessel;
namespace {

namespace fs = std::filesystem;

// All output of a calculation except its report.
std::string told(const Request& request, const Calculation& calculation) {
    return result_json(request, calculation, {.results = true}) +
           closing_tables(calculation.calculated, request.units);
}

std::string reports_of(const Calculation& calculation) {
    std::string reports;
    for (const auto& outcome : calculation.outcomes)
        reports += outcome->report;
    return reports;
}

// Counts the components of each kind.
void expect_same_with_noise(const std::string& toml, std::map<std::string_view, int>& kinds) {
    const ReadResult read = read_input(toml);
    ASSERT_TRUE(read.faults.empty()) << fault_line("f", read.faults.front());
    for (const auto& element : read.request.elements)
        ++kinds[element->kind->table];

    noisy = false;
    const Calculation plain = calculate(read.request);
    const std::string expected = told(read.request, plain), report = reports_of(plain);
    noisy = true;
    const Calculation calculation = calculate(read.request);
    noisy = false;
    if (!report.empty()) {
        EXPECT_NE(reports_of(calculation), report);
    }
    EXPECT_EQ(reports_of(calculation).size(), report.size());
    EXPECT_EQ(told(read.request, calculation), expected);
    for (const auto& outcome : plain.outcomes)
        outcome->report = noise(outcome->report);
    EXPECT_EQ(told(read.request, plain), expected);
}

TEST(Noise, InPlaceOfTheReportChangesNoResult) {
    set_data_folder(TARVANE_DATA_DIR);
    std::map<std::string_view, int> kinds;
    for (const char* folder : {"tests/golden", "examples"}) {
        for (const auto& entry : fs::directory_iterator(fs::path(TARVANE_SOURCE_DIR) / folder)) {
            if (entry.path().extension() != ".toml") continue;
            SCOPED_TRACE(entry.path());
            std::ifstream file(entry.path(), std::ios::binary);
            std::ostringstream bytes;
            bytes << file.rdbuf();
            expect_same_with_noise(bytes.str(), kinds);
        }
    }
    EXPECT_GT(kinds["flange"], 60);
    for (const std::string_view table : tables_with_tests()) {
        SCOPED_TRACE(table);
        const std::string& example = tests_of(table)->example;
        if (!example.empty()) expect_same_with_noise(example, kinds);
    }
    for (const ElementKind* kind : element_kinds())
        EXPECT_GT(kinds[kind->table], 0) << "no input with a [[" << kind->table << "]]";
}

} // namespace
} // namespace tarvane::app
