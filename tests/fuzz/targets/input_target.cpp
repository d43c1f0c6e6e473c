// The text of an input file: refused with faults that a terminal can take, or read, calculated and judged.
#include "catalogue/data_folder.h"
#include "components/element.h"
#include "input_text.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

using namespace tarvane::app;
using namespace tarvane::vessel;

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

constexpr std::size_t MOST_ELEMENTS = 3; // that are calculated

void calculate(const Request& file) {
    const std::size_t count = std::min(file.elements.size(), MOST_ELEMENTS);
    for (std::size_t i = 0; i < count; ++i) {
        const Element& element = *file.elements[i];
        const auto outcome = element.calculate(file);
        const Verdict verdict = element.judge(*outcome, file.units);
        if (verdict.status == Status::stopped) return;
        const Calculated calculated[] = {{&element, outcome.get()}};
        element.kind->tables(calculated, file.units);
        element.chart_point(*outcome);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool FOUND = [] {
        const char* const given = std::getenv("TARVANE_FUZZ_DATA");
        set_data_folder(given != nullptr ? given : BUILT_DATA);
        return true;
    }();
    if (!FOUND) return 0;
    const ReadResult result = read_input({reinterpret_cast<const char*>(data), size});
    if (!fuzz::is_sound(result)) {
        std::fputs(fault_report("f", result.faults).c_str(), stderr);
        __builtin_trap();
    }
    try {
        calculate(result.request);
    } catch (const std::runtime_error&) { // a message of the program
    }
    return 0;
}

// Pieces of the language as often as bytes.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
    fuzz::Damage damage(seed);
    if (size == 0 || damage.below(2) == 0) return LLVMFuzzerMutate(data, size, most);
    std::string text(reinterpret_cast<const char*>(data), size);
    damage.change(text, std::string(text));
    size = std::min(text.size(), most);
    std::memcpy(data, text.data(), size);
    return size;
}
