// From the text of an input file to the flanges that it describes, in the engine's units.
#pragma once

#include "keys.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::app {

inline constexpr int RECORD_ELEMENTS = 200;
inline constexpr std::size_t TEXT_LENGTH = 435;  // the last label of the flange text ends here
inline constexpr std::size_t MOST_FLANGES = 500; // rows of the element tables

struct FlangeInput {
    int line = 0;                                     // of its [[flange]]
    std::array<float, RECORD_ELEMENTS + 1> record{};  // one-based; the engine's units
    std::string text = std::string(TEXT_LENGTH, ' '); // slots of 15 Western characters
    std::array<float, static_cast<std::size_t>(Setting::count)> settings{};
    std::array<std::string, static_cast<std::size_t>(TextSetting::count)> texts;

    float setting(Setting s) const { return settings[static_cast<std::size_t>(s)]; }
    int whole_setting(Setting s) const { return static_cast<int>(setting(s)); }
    const std::string& text_setting(TextSetting s) const {
        return texts[static_cast<std::size_t>(s)];
    }
    int code() const { return whole_setting(Setting::code); }
    int edition() const { return whole_setting(Setting::edition); }
    int type() const { return static_cast<int>(record[2]); }
    int kind() const { return static_cast<int>(record[3]); }
    std::string description() const; // trimmed, Western
    void put_text(int offset, std::size_t width, std::string_view western);
};

struct InputFile {
    UnitSystem units = us_units();
    bool decimal_comma = false;
    bool metric_constants = false; // the code's dimensions of its metric edition
    std::vector<FlangeInput> flanges;
};

struct Fault {
    int line;
    std::string key; // empty: the file as a whole
    std::string message;
};

struct ReadResult {
    InputFile file;
    std::vector<Fault>
        faults; // in the order of the lines; the file holds nothing when there are any
};

ReadResult read_input(std::string_view toml_text);

// "FILE:LINE: KEY: message"
std::string fault_line(std::string_view path, const Fault& fault);

} // namespace tarvane::app
