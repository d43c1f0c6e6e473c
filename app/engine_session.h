// The calls of one flange: what the host sets, FLANGE_CALC, and what comes back.
#pragma once

#include "input_file.h"

#include <array>
#include <string>
#include <vector>

namespace tarvane::app {

// What a flange run gives.
struct FlangeOutcome {
    std::array<float, RECORD_ELEMENTS + 1> record{}; // one-based, as the call left it
    float map_nc = 0.0f;
    float t_req_new_cold = 0.0f;
    float t_req_new = 0.0f;
    float mawp = 0.0f;
    float t_req = 0.0f;
    std::string report;                // the report file: records with marks, Western characters
    std::vector<std::string> messages; // text of each message box, once each
    bool stopped = false;              // the engine asked for the end of the run
    int fatal_code = 0;                // and said why

    float result(int element) const { return record[static_cast<std::size_t>(element)]; }
};

// Runs flange `number` (from 1) of the file in the vessel form. Throws std::runtime_error when the
// report file cannot be opened or read.
FlangeOutcome run_flange(const InputFile& file, int number);

// Folder of the data files in place of the library's own.
void set_data_folder(const std::string& folder);

} // namespace tarvane::app
