#include "engine_session.h"

#include "tarvane/tarvane.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace tarvane::app {

// ---- services --------------------------------------------------------------------------------------

namespace {

void TARVANE_CALL message_box(void* user, const char* text, const char*) {
    auto& messages = static_cast<Outcome*>(user)->messages;
    std::string message(text);
    message.erase(message.find_last_not_of(' ') + 1);
    if (std::find(messages.begin(), messages.end(), message) == messages.end())
        messages.push_back(std::move(message));
}

void TARVANE_CALL report_fatal(void* user, std::int32_t code) {
    static_cast<Outcome*>(user)->fatal_code = code;
}

void TARVANE_CALL stop(void* user, std::int32_t) { static_cast<Outcome*>(user)->stopped = true; }

} // namespace

Services::Services(Outcome& outcome) {
    TARVANE_HOST_SERVICES table{};
    table.version = TARVANE_HOST_SERVICES_VERSION;
    table.message_box = message_box;
    table.report_fatal = report_fatal;
    table.stop = stop;
    table.user = &outcome;
    SET_HOST_SERVICES(&table);
}

Services::~Services() { SET_HOST_SERVICES(nullptr); }

// ---- report file -----------------------------------------------------------------------------------

ReportUnit::ReportUnit() {
    std::random_device random;
    const std::string name = "tarvane-" + std::to_string(random()) + std::to_string(random());
    path = std::filesystem::temp_directory_path() / name;
    GETNEXTUNIT(&number);
    std::int32_t status = 0;
    const std::string text = path.string();
    OPENUNIT(&number, text.data(), static_cast<std::int32_t>(text.size()), &status);
    if (status != 0) throw std::runtime_error("cannot write the report file " + text);
}

ReportUnit::~ReportUnit() {
    CLOSEUNIT(&number);
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}

void ReportUnit::switch_on() const {
    SET_IOUT(&number);
    SET_IWRITE(&ON);
    SET_IWRTFL(&ON);
    SET_IOSTEP(&ON);
    SET_IWRTCA(&ON);
}

std::string ReportUnit::switch_off_and_read() const {
    SET_IOUT(&OFF);
    CLOSEUNIT(&number);
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    if (!file || (file.peek() != std::ifstream::traits_type::eof() && !(bytes << file.rdbuf())))
        throw std::runtime_error("cannot read the report file " + path.string());
    return bytes.str();
}

// ---- settings --------------------------------------------------------------------------------------

void put_blank_padded(char* field, std::size_t width, const std::string& text) {
    std::memset(field, ' ', width);
    std::memcpy(field, text.data(), std::min(width, text.size()));
}

// FLANGE_CALC alone switches the commas. An empty record in the stand-alone form does: its input is
// refused behind the switch.
void set_decimal_comma(const InputFile& file) {
    if (!file.decimal_comma) return;
    Outcome unused;
    const Services services(unused);
    float record[TARVANE_RECORD_ELEMENTS] = {};
    TARVANE_AT(record, TARVANE_ELEMENT) = -1.0f;
    for (int i = TARVANE_UNIT_THICKNESS; i <= TARVANE_UNIT_WEIGHT; ++i)
        TARVANE_AT(record, i) = 1.0f;
    const std::string text(TARVANE_TEXT_LENGTH, ' ');
    const std::int32_t code = TARVANE_ASME_VIII_1;
    const float efficiency = 1.0f, pressure = 0.0f;
    float map_nc, t_req_new_cold, t_req_new, mawp, t_req;
    std::int32_t rigidity = OFF;
    FLANGE_CALC(record, text.data(), TARVANE_TEXT_LENGTH, &OFF, &OFF, &map_nc, &t_req_new_cold,
                &t_req_new, &mawp, &t_req, &OFF, &rigidity, &code, &OFF, &OFF, &efficiency, &OFF,
                &OFF, &pressure, &OFF, &ON);
}

void set_units(const InputFile& file) {
    std::string labels;
    for (const std::string& label : file.units.labels) {
        std::string field = label;
        field.resize(10, ' ');
        labels += field;
    }
    SET_UNITS(file.units.factors.data(), labels.data(), static_cast<std::int32_t>(labels.size()));
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = file.metric_constants ? 1 : 0;
    SET_METRIC_CONSTANTS();
}

} // namespace tarvane::app
