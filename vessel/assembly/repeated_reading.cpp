#include "assembly/repeated_reading.h"
#include "assembly/reader_state.h"
#include "catalogue/value_units.h"
#include "components/read_value.h"
#include "values/decimal.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvane::vessel {

namespace {

constexpr double LARGEST_INTEGER = 9007199254740992.0; // a double holds it and all below it
constexpr int EVERY_DIGIT = 17;                        // a double is read back from them

} // namespace

std::optional<std::size_t> Reader::input_at(std::string_view path) const {
    const auto input = std::find_if(later.begin(), later.end(),
                                    [path](const Input& each) { return each.path == path; });
    if (input == later.end()) return std::nullopt;
    return static_cast<std::size_t>(input - later.begin());
}

Value Reader::value_for(const Key& key, std::size_t input, double number) const {
    const std::string& unit = later[input].unit;
    if (!unit.empty()) return general_text(number, EVERY_DIGIT) + ' ' + unit;
    const bool flag = key.quantity == Quantity::flag && (number == 0.0 || number == 1.0);
    if (flag) return number == 1.0;
    const bool integer = key.quantity == Quantity::choice || key.quantity == Quantity::whole;
    if (integer && number == std::floor(number) && std::fabs(number) < LARGEST_INTEGER)
        return static_cast<std::int64_t>(number);
    return number;
}

void Reader::check_unit(const Key& key, const Value& value, std::size_t input) {
    const std::string& unit = later[input].unit;
    if (unit.empty() || find_value_unit(unit, key.quantity) != nullptr) return;
    faults.add(value.at, key.name,
               take_number(value_for(key, input, 1.0), key, request.units).fault);
    faults.list().back().path = later[input].path;
    faults.list().back().value = unit;
}

std::vector<std::size_t> Reader::open_places() const {
    std::vector<std::size_t> places;
    for (const Draft& draft : drafts)
        places.push_back(draft.place);
    return places;
}

bool Reader::takes(std::size_t input) const {
    const bool of_vessel =
        std::any_of(open_vessel_values.begin(), open_vessel_values.end(),
                    [input](const auto& value) { return value.second == input; });
    return of_vessel || std::any_of(drafts.begin(), drafts.end(), [input](const Draft& draft) {
               return std::any_of(draft.open.begin(), draft.open.end(),
                                  [input](const Open& open) { return open.input == input; });
           });
}

bool Reader::take_numbers(std::span<const double> values) {
    if (!std::exchange(numbers_alone, false)) return false;
    for (const Draft& draft : drafts) {
        for (const Open& open : draft.open) {
            const Value value = value_for(*open.key, open.input, values[open.input]);
            const Taken<float> number = take_number(value, *open.key, request.units);
            if (!number.value || !request.elements[draft.place]->replace(*open.key, *number.value))
                return false;
        }
    }
    return numbers_alone = true;
}

void Reader::read_again(std::span<const double> values) {
    faults.list().clear();
    data_files.tell_again();
    for (const auto& [key, input] : open_vessel_values)
        put_vessel_value(*key, value_for(*key, input, values[input]));
    for (const Draft& draft : drafts) {
        std::unique_ptr<Element> element = draft.element->copy();
        Reading reading = draft.reading;
        for (const Open& open : draft.open) {
            const Value value = value_for(*open.key, open.input, values[open.input]);
            read_key({&value, open.name}, *open.key, open.path, *element, reading);
        }
        finish_component(std::move(element), reading, draft.place);
    }
    numbers_alone = faults.size() == 0 && !linked && !liquid();
}

struct RepeatedReading::Parts {
    ReadResult result;
    Reader reader;

    Parts(const Table& root, std::span<const Input> inputs)
        : reader(result, element_kinds(), inputs) {
        reader.read(root);
    }
};

RepeatedReading::RepeatedReading(const Table& root, std::span<const Input> inputs)
    : parts(std::make_unique<Parts>(root, inputs)) {
    sort_faults(parts->result.faults);
}
RepeatedReading::~RepeatedReading() = default;

const ReadResult& RepeatedReading::result() const { return parts->result; }
Request& RepeatedReading::request() { return parts->result.request; }
bool RepeatedReading::takes(std::size_t input) const { return parts->reader.takes(input); }
std::vector<std::size_t> RepeatedReading::changing() const { return parts->reader.open_places(); }

bool RepeatedReading::take_numbers(std::span<const double> values) {
    return parts->reader.take_numbers(values);
}

const Faults& RepeatedReading::read(std::span<const double> values) {
    parts->reader.read_again(values);
    sort_faults(parts->result.faults);
    return parts->result.faults;
}

} // namespace tarvane::vessel
