// Requests that a host makes, and results that it reads, value by value.
#include "surface/last_error.h"
#include "tarvane/vessel.h"
#include "values/json.h"
#include "values/paths.h"
#include "values/text.h"

#include <cmath>
#include <limits>
#include <memory>

using namespace tarvane::vessel;

struct TARVANE_VALUES {
    Value tree = Table();
    std::string json;
};

namespace {

std::string shown(const char* path) { return path != nullptr ? printable(path) : ""; }

// What the work finds wrong becomes the error of the thread.
template <class Work>
std::int32_t guarded(const Work& work) noexcept {
    LastError& error = error_of_thread();
    try {
        const Faults faults = work();
        if (faults.empty()) return TARVANE_OK;
        error.put(faults);
        return TARVANE_FAULTY;
    } catch (...) { // no memory left
        error.last_error = NO_MEMORY;
        return TARVANE_INTERNAL;
    }
}

// What is no UTF-8 would make JSON that nobody reads.
bool is_utf8(const char* text) {
    Faults faults;
    return read_json(JsonWriter().text(text).str(), faults).has_value();
}

std::int32_t put(TARVANE_VALUES* values, const char* path, Value value) noexcept {
    return guarded([&]() -> Faults {
        if (values == nullptr || path == nullptr)
            return {{.message = "values and a path are expected"}};
        if (!is_utf8(path))
            return {{.message = "a path in UTF-8 is expected", .path = shown(path)}};
        const std::string given = value.shown();
        if (const auto reason = put_at(values->tree, path, std::move(value)))
            return {{.message = *reason, .path = shown(path), .value = given}};
        return {};
    });
}

const Value* found(const TARVANE_VALUES* values, const char* path) noexcept {
    return values != nullptr ? value_at(values->tree, path != nullptr ? path : "") : nullptr;
}

} // namespace

TARVANE_VALUES* tarvane_values(const char* json) {
    std::unique_ptr<TARVANE_VALUES> values;
    guarded([&] {
        auto read = std::make_unique<TARVANE_VALUES>();
        Faults faults;
        if (json != nullptr && *json != '\0')
            if (std::optional<Value> tree = read_json(json, faults)) read->tree = std::move(*tree);
        if (faults.empty()) values = std::move(read);
        return faults;
    });
    return values.release();
}

void tarvane_values_close(TARVANE_VALUES* values) { delete values; }

int32_t tarvane_put_number(TARVANE_VALUES* values, const char* path, double number) {
    if (std::isfinite(number)) return put(values, path, Value(number));
    return guarded([&]() -> Faults {
        return {{.message = "a finite number is expected", .path = shown(path)}};
    });
}

int32_t tarvane_put_text(TARVANE_VALUES* values, const char* path, const char* text) {
    std::optional<Value> value;
    const std::int32_t status = guarded([&]() -> Faults {
        if (text == nullptr) return {{.message = "a text is expected", .path = shown(path)}};
        if (!is_utf8(text))
            return {{.message = "a text in UTF-8 is expected", .path = shown(path)}};
        value = Value(text);
        return {};
    });
    return status == TARVANE_OK ? put(values, path, std::move(*value)) : status;
}

int32_t tarvane_put_flag(TARVANE_VALUES* values, const char* path, int32_t flag) {
    return put(values, path, Value(flag != 0));
}

const char* tarvane_json(TARVANE_VALUES* values) {
    if (values == nullptr) return nullptr;
    const std::int32_t status = guarded([&]() -> Faults {
        values->json = JsonWriter().value(values->tree).take();
        return {};
    });
    return status == TARVANE_OK ? values->json.c_str() : nullptr;
}

int32_t tarvane_kind(const TARVANE_VALUES* values, const char* path) {
    const Value* value = found(values, path);
    if (value == nullptr) return TARVANE_NOTHING;
    if (value->null()) return TARVANE_NULL;
    if (value->flag() != nullptr) return TARVANE_FLAG;
    if (value->text() != nullptr) return TARVANE_TEXT;
    if (value->list() != nullptr) return TARVANE_LIST;
    return value->table() != nullptr ? TARVANE_OBJECT : TARVANE_NUMBER;
}

double tarvane_number(const TARVANE_VALUES* values, const char* path) {
    const Value* value = found(values, path);
    if (value != nullptr)
        if (const bool* flag = value->flag()) return *flag ? 1.0 : 0.0;
    const std::optional<double> number = value != nullptr ? value->number() : std::nullopt;
    return number.value_or(std::numeric_limits<double>::quiet_NaN());
}

const char* tarvane_text(const TARVANE_VALUES* values, const char* path) {
    const Value* value = found(values, path);
    return value != nullptr && value->text() != nullptr ? value->text()->c_str() : nullptr;
}

int64_t tarvane_count(const TARVANE_VALUES* values, const char* path) {
    const Value* value = found(values, path);
    if (value == nullptr) return 0;
    if (const List* list = value->list()) return static_cast<std::int64_t>(list->size());
    return value->table() != nullptr ? static_cast<std::int64_t>(value->table()->size()) : 0;
}

const char* tarvane_name(const TARVANE_VALUES* values, const char* path, int64_t place) {
    const Value* value = found(values, path);
    const Table* table = value != nullptr ? value->table() : nullptr;
    if (table == nullptr || place < 0 || place >= static_cast<std::int64_t>(table->size()))
        return nullptr;
    return (table->begin() + static_cast<std::ptrdiff_t>(place))->key.c_str();
}
