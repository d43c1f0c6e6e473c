// Random requests through the surface, compiled with AddressSanitizer and UBSan: whatever the input, the status is one of
// the documented ones, results and faults are JSON, and the next sound request finds what it always finds.
//   surface_fuzz FOLDER_OF_THE_DATA_FILES [COUNT] [SEED]
#include "tarvane/vessel.h"
#include "values/json.h"

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

using tarvane::vessel::Faults;
using tarvane::vessel::read_json;

const std::string SEEDS[] = {
    R"({"tarvane": 1, "units": "US", "vessel": {"code": "VIII-1", "T": 300}, "flange": [{"description": "N1",
"type": "weld neck", "standard": {"class": 150, "size": 12}, "material": "SA-105", "bolt_material": "SA-193 B7",
"P": 150, "ci": 0.125, "rigidity": true, "bolting": "TEMA", "Fid": 12.0,
"gasket": {"m": 3, "y": 10000, "facing": "1a", "Go": 14.75, "Gi": 14.0, "tg": 0.175}}]})",
    R"({"units": {"base": "SI", "pressure": {"factor": 0.0689, "label": "bar"}}, "decimal_comma": true, "P": 1.2,
"shell": [{"kind": "elliptical", "T": 150, "D": 1500, "t": 14, "material": "SA-516 70", "E": 0.85, "ci": 3,
"P_external": 0.1}, {"kind": "flat", "D": 300.0, "t": 30, "T": 20, "S": 138, "Sa": 138, "C": 0.3}]})",
    R"({"external": [{"kind": "cylinder", "P_external": 15, "T": 300, "D": 60, "t": 0.5, "chart": "CS-2",
"length": 150, "S": 20000}, {"kind": "cone", "P_external": 15, "T": 300, "Do": 60, "t": 0.5, "material": "SA-516 70",
"alpha": 30, "Dsmall": 20, "cone_length": 40}], "mdmt": [{"material": "SA-516 70", "tg": 1, "MDMT": -20}]})",
    R"({"tarvane": 1, "document": {"number": "1", "revisions": [{"revision": "A"}]}, "vessel": {"P": 150, "T": 300,
"MDMT": -20, "material": "SA-516 70", "liquid": {"density": 0.036, "level": 90}}, "mdmt": [{"of": "Head"}],
"shell": [{"description": "Head", "kind": "elliptical", "on": "Shell", "end": "bottom", "t": 0.75},
{"description": "Shell", "kind": "cylinder", "Do": 12.75, "t": 0.375, "length": 150, "elevation": 0}],
"flange": [{"description": "N1", "type": "weld neck", "standard": {"class": 150, "size": 12}, "attached_to": "Shell",
"bolt_material": "SA-193 B7", "bolting": "TEMA", "Fid": 12.0, "m": 3, "y": 10000, "facing": "1a", "Go": 14.75,
"Gi": 14.0}, {"description": "Cover", "type": "blind", "standard": {"class": 150, "size": 12}, "mates_with": "N1",
"bolt_material": "SA-193 B7", "bolting": "TEMA", "Fid": 12.0, "m": 3, "y": 10000, "facing": "1a", "Go": 14.75,
"Gi": 14.0}]})"};

const char* const WORDS[] = {"{",
                             "}",
                             "[",
                             "]",
                             ",",
                             ":",
                             "\"",
                             "\\u0000",
                             "null",
                             "true",
                             "1e308",
                             "-1e-45",
                             "1e39",
                             "-0",
                             "\xE9",
                             "\xC2\xB0",
                             "[[[[",
                             "\n",
                             "16777217",
                             "\"P\": 1,",
                             "\"t\": 0,",
                             "\\ud800",
                             "\"flange\": [],"};

class Chance {
  public:
    explicit Chance(unsigned seed) : numbers(seed) {}
    std::size_t below(std::size_t n) { return numbers() % n; }

  private:
    std::mt19937 numbers;
};

void spoil(std::string& text, Chance& chance) {
    const std::size_t at = chance.below(text.size() + 1);
    switch (chance.below(5)) {
    case 0:
        if (at < text.size()) text[at] = static_cast<char>(chance.below(256));
        break;
    case 1:
        text.erase(at, chance.below(20));
        break;
    case 2:
        text.insert(at, WORDS[chance.below(std::size(WORDS))]);
        break;
    case 3: { // a number replaced by another
        const std::size_t digit = text.find_first_of("0123456789", at);
        if (digit != std::string::npos)
            text.replace(digit, 1 + chance.below(3), WORDS[8 + chance.below(6)]);
        break;
    }
    default:
        text.insert(at, text.substr(chance.below(text.size() + 1), chance.below(40)));
    }
}

bool is_json(const char* text) {
    Faults faults;
    return text != nullptr && read_json(text, faults).has_value();
}

int fail(const char* what, const std::string& request) {
    std::fprintf(stderr, "surface_fuzz: %s: %s\n", what, request.c_str());
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    const int count = argc > 2 ? std::atoi(argv[2]) : 600;
    Chance chance(argc > 3 ? static_cast<unsigned>(std::atoi(argv[3])) : 1u);
    TARVANE_VESSEL* vessel = nullptr;
    if (tarvane_open(TARVANE_VESSEL_ABI, argv[1], &vessel) != TARVANE_OK)
        return fail(tarvane_last_error(nullptr), argv[1]);
    std::vector<std::string> wanted;
    int of_status[5] = {};
    const auto sound = [&](std::size_t i) {
        const char* result = nullptr;
        tarvane_calculate(vessel, SEEDS[i].c_str(), 3, &result);
        return std::string(result != nullptr ? result : tarvane_last_error(vessel));
    };
    for (std::size_t i = 0; i < std::size(SEEDS); ++i) {
        wanted.push_back(sound(i));
        if (wanted.back().front() != '{') return fail("a seed is at fault", wanted.back());
    }
    for (int i = 0; i < count; ++i) {
        std::string request = SEEDS[chance.below(std::size(SEEDS))];
        for (std::size_t k = chance.below(3); k > 0; --k)
            spoil(request, chance);
        const char* result = nullptr;
        const std::int32_t want =
            static_cast<std::int32_t>(chance.below(4)) | (chance.below(8) == 0 ? 8 : 0);
        const std::int32_t status = tarvane_calculate(vessel, request.c_str(), want, &result);
        if (status < TARVANE_OK || status > TARVANE_NO_DATA) return fail("another status", request);
        if ((status == TARVANE_OK) != (result != nullptr))
            return fail("a result of its own", request);
        if (result != nullptr && !is_json(result)) return fail("the result is no JSON", request);
        if (!is_json(tarvane_last_error(vessel))) return fail("the faults are no JSON", request);
        ++of_status[status];

        // What was put at any path is read there, and the values remain JSON.
        if (TARVANE_VALUES* values = tarvane_values(request.c_str())) {
            std::string path = "flange[0].standard.class";
            spoil(path, chance);
            tarvane_kind(values, path.c_str());
            if (tarvane_put_number(values, path.c_str(), 7.0) == TARVANE_OK &&
                tarvane_number(values, path.c_str()) != 7.0)
                return fail("another number is read", path);
            if (!is_json(tarvane_json(values)) || !is_json(tarvane_last_error(nullptr)))
                return fail("the values are no JSON", path);
            tarvane_values_close(values);
        }

        if (i % 4 == 0) {
            std::string path = "flange[0].ci";
            if (chance.below(2) == 0) spoil(path, chance);
            const char* inputs[] = {path.c_str(), nullptr};
            const char* outputs[] = {"vessel.passed", "vessel.ratio", nullptr};
            const double x[] = {0.1, -1e300, 1e-300, 0.0};
            double y[8];
            std::int32_t fault[4];
            std::int64_t done = 0;
            const std::int32_t swept = tarvane_sweep(vessel, request.c_str(), inputs, outputs, 4, x,
                                                     y, fault, nullptr, nullptr, &done);
            if (swept < TARVANE_OK || swept > TARVANE_NO_DATA)
                return fail("another status", request);
            if (!is_json(tarvane_last_error(vessel)))
                return fail("the faults are no JSON", request);
        }
        if (i % 100 == 99 && sound(0) != wanted[0])
            return fail("another result afterwards", request);
    }
    tarvane_close(vessel);
    std::printf("%d requests: %d calculated, %d faulty, %d stopped, %d without data\n", count,
                of_status[0], of_status[1], of_status[2], of_status[3]);
    return of_status[0] > count / 50 && of_status[1] > count / 10
               ? 0
               : fail("the requests are too much alike", "");
}
