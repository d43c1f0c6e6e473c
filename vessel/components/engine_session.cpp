#include "components/engine_session.h"

#include "tarvane/tarvane.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>

namespace tarvane::vessel {

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

Outcome* serving = nullptr; // of the innermost object

void serve(Outcome* outcome) {
    serving = outcome;
    if (outcome == nullptr) {
        SET_HOST_SERVICES(nullptr);
        return;
    }
    TARVANE_HOST_SERVICES table{};
    table.version = TARVANE_HOST_SERVICES_VERSION;
    table.message_box = message_box;
    table.report_fatal = report_fatal;
    table.stop = stop;
    table.user = outcome;
    SET_HOST_SERVICES(&table);
}

} // namespace

Services::Services(Outcome& outcome) : before(serving) { serve(&outcome); }

Services::~Services() { serve(before); }

// ---- report ----------------------------------------------------------------------------------------

namespace {

// An exception must not leave through the engine.
std::int32_t TARVANE_CALL take_record(void* user, const char* text, std::int32_t length) {
    try {
        static_cast<std::string*>(user)->append(text, static_cast<std::size_t>(length));
        return 0;
    } catch (const std::bad_alloc&) {
        return 1;
    }
}

} // namespace

ReportUnit::ReportUnit(bool wanted) {
    if (!wanted) return;
    GETNEXTUNIT(&number);
    std::int32_t status = 0;
    OPENHOSTUNIT(&number, take_record, &records, &status);
    if (status != 0) throw std::runtime_error("the engine has no unit left for a report");
}

ReportUnit::~ReportUnit() {
    if (number != 0) CLOSEUNIT(&number);
}

void ReportUnit::switch_on() const {
    if (number == 0) return;
    SET_IOUT(&number);
    SET_IWRITE(&ON);
    SET_IWRTFL(&ON);
    SET_IOSTEP(&ON);
    SET_IWRTCA(&ON);
}

std::string ReportUnit::switch_off_and_read() const {
    if (number == 0) return {};
    SET_IOUT(&OFF);
    CLOSEUNIT(&number);
    std::int32_t lost = 0;
    UNIT_STATUS(&number, &lost);
    if (lost != 0) throw std::runtime_error("lines of the report are lost");
    return records;
}

// ---- settings --------------------------------------------------------------------------------------

void put_blank_padded(char* field, std::size_t width, const std::string& text) {
    std::memset(field, ' ', width);
    std::memcpy(field, text.data(), std::min(width, text.size()));
}

void set_decimal_comma(const Request& file) {
    const std::int32_t comma = file.units.decimal_comma ? ON : OFF;
    SET_DECIMAL_COMMA(&comma);
}

void set_units(const Request& file) {
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

} // namespace tarvane::vessel
