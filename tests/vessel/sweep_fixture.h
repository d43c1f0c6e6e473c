// Sweeps beside the calculations of their rows.
#pragma once

#include "vessel_fixture.h"

#include <cmath>
#include <cstdio>
#include <functional>
#include <map>
#include <set>
#include <span>

namespace tarvane::vessel {

struct Swept {
    std::int32_t status = -1;
    std::int64_t done = -1;
    std::vector<double> y;
    std::vector<std::int32_t> fault;
    Value error;
};

inline std::vector<const char*> pointers(const std::vector<std::string>& names) {
    std::vector<const char*> list;
    for (const std::string& name : names)
        list.push_back(name.c_str());
    list.push_back(nullptr);
    return list;
}

constexpr double UNTOUCHED = 12345.0;

inline Swept sweep(const Handle& handle, const std::string& request,
                   const std::vector<std::string>& inputs, const std::vector<std::string>& outputs,
                   const std::vector<double>& x, std::int64_t rows,
                   TARVANE_PROGRESS progress = nullptr, void* user = nullptr) {
    Swept swept;
    swept.y.assign(static_cast<std::size_t>(rows) * outputs.size() + 1, UNTOUCHED);
    swept.fault.assign(static_cast<std::size_t>(rows) + 1, -1);
    swept.status = tarvane_sweep(handle.get(), request.c_str(), pointers(inputs).data(),
                                 pointers(outputs).data(), rows, x.data(), swept.y.data(),
                                 swept.fault.data(), progress, user, &swept.done);
    swept.error = parsed(tarvane_last_error(handle.get()));
    EXPECT_EQ(swept.y.back(), UNTOUCHED);
    EXPECT_EQ(swept.fault.back(), -1);
    return swept;
}

// ---- each row ----------------------------------------------------------------------------------------------

// A number as JSON reads it back.
inline std::string digits(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

// A request with words of the test in place of numbers: "@0" is input 0.
inline std::string filled(std::string request, std::span<const double> values) {
    for (std::size_t i = values.size(); i-- > 0;) {
        const std::string word = '@' + std::to_string(i);
        const std::size_t at = request.find(word);
        EXPECT_NE(at, std::string::npos) << word;
        request.replace(at, word.size(), digits(values[i]));
    }
    return request;
}

struct Range {
    std::string path;
    double from, to;
    bool whole = false;
};

inline const Value& kinds_of(const Handle& handle) {
    static const Value kinds = at(parsed(tarvane_schema(handle.get(), "keys")), "kinds");
    return kinds;
}

// Every result of a component, and the outcome of its checks.
inline std::vector<std::string> all_outputs(const Handle& handle, const std::string& kind) {
    std::vector<std::string> outputs;
    for (const Value& each : *kinds_of(handle).list()) {
        if (text_at(each, "name") != kind) continue;
        const Value& results = at(each, "results");
        for (const Value& field : *results.list())
            outputs.push_back(kind + "[0].results." + text_at(field, "name"));
    }
    for (const char* output : {".ratio", ".passed", ".governing"}) {
        outputs.push_back(kind + "[0]" + output);
        outputs.push_back(std::string("vessel") + output);
    }
    return outputs;
}

inline std::set<std::string> ids_of(const Handle& handle, const std::string& kind,
                                    std::vector<std::string>& in_order) {
    for (const Value& each : *kinds_of(handle).list()) {
        if (text_at(each, "name") != kind) continue;
        const Value& checks = at(each, "checks");
        for (const Value& field : *checks.list())
            in_order.push_back(text_at(field, "id"));
    }
    return {in_order.begin(), in_order.end()};
}

// Numbers of the choices of results, by kind, result and name.
inline std::map<std::string, double> choice_numbers(const Handle& handle) {
    std::map<std::string, double> numbers;
    for (const Value& kind : *kinds_of(handle).list()) {
        const Value& results = at(kind, "results");
        for (const Value& field : *results.list()) {
            const Value& choices = at(field, "choices");
            if (choices.null()) continue;
            for (const Value& choice : *choices.list())
                numbers.emplace(text_at(kind, "name") + ' ' + text_at(field, "name") + ' ' +
                                    text_at(choice, "name"),
                                *at(choice, "number").number());
        }
    }
    return numbers;
}

// The number behind the name that a result has; "flange[0].results.mawp_by".
inline double choice_number(const Handle& handle, const std::string& output,
                            const std::string& name) {
    static const std::map<std::string, double> numbers = choice_numbers(handle);
    const std::size_t dot = output.find(".results.") + std::string(".results.").size();
    return numbers.at(output.substr(0, output.find('[')) + ' ' + output.substr(dot) + ' ' + name);
}

// What the result of a calculation says about an output.
inline double wanted(const Handle& handle, const Value& result, const std::string& output,
                     const std::vector<std::string>& ids) {
    constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
    const std::size_t point = output.find('.');
    const std::string of = output.substr(0, point), what = output.substr(point + 1);
    const bool vessel = of == "vessel";
    const std::string root = vessel ? "" : of + '.';
    if (what == "passed") return text_at(result, root + "verdict") == "pass" ? 1.0 : 0.0;
    if (what == "ratio" || what == "governing") {
        // The only component's; the first check that was requested.
        const std::string component = vessel ? text_at(result, "governing.component") : of;
        const Value& id = at(result, vessel ? "governing.check" : of + ".governing");
        if (id.null()) return NONE;
        const Value& checks = at(result, component + ".checks");
        for (const Value& check : *checks.list()) {
            if (text_at(check, "id") != *id.text()) continue;
            if (what == "governing")
                return vessel ? 0.0
                              : static_cast<double>(std::find(ids.begin(), ids.end(), *id.text()) -
                                                    ids.begin());
            return at(check, "ratio").number().value_or(NONE);
        }
        return NONE;
    }
    const Value& value = at(result, output);
    if (const bool* flag = value.flag()) return *flag ? 1.0 : 0.0;
    if (value.text() != nullptr) return choice_number(handle, output, *value.text());
    return value.number().value_or(NONE);
}

inline bool same(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || static_cast<float>(a) == static_cast<float>(b);
}

// Every output of each row; the number of those without a fault. `request` has "@0" and so on where the inputs go.
inline std::size_t compare_rows(const Handle& handle, const std::string& kind,
                                const std::string& request, const std::vector<std::string>& inputs,
                                const std::vector<double>& x) {
    const std::size_t rows = x.size() / inputs.size();
    std::vector<std::string> ids;
    ids_of(handle, kind, ids);
    const std::vector<std::string> outputs = all_outputs(handle, kind);
    // What is in the places of the inputs is ignored.
    const std::vector<double> nothing(inputs.size(), -1.0e30);
    const Swept swept = sweep(handle, filled(request, nothing), inputs, outputs, x,
                              static_cast<std::int64_t>(rows));
    EXPECT_EQ(swept.status, TARVANE_OK) << inputs[0] << ' ' << text_at(swept.error, "[0].path")
                                        << text_at(swept.error, "[0].reason");
    if (swept.status != TARVANE_OK) return 0;
    EXPECT_EQ(swept.done, static_cast<std::int64_t>(rows));
    std::size_t sound = 0;
    for (std::size_t row = 0; row < rows; ++row) {
        const std::span<const double> values(&x[row * inputs.size()], inputs.size());
        const Answer answer = handle.calculate(filled(request, values));
        const std::int32_t k = swept.fault[row];
        EXPECT_EQ(k == 0, answer.status == TARVANE_OK) << inputs[0] << ' ' << row;
        if ((k == 0) != (answer.status == TARVANE_OK)) continue;
        if (k != 0) {
            const std::string place = '[' + std::to_string(k - 1) + ']';
            for (const char* part : {".path", ".value", ".reason"})
                EXPECT_EQ(text_at(swept.error, place + part),
                          text_at(answer.error, std::string("[0]") + part));
        } else {
            ++sound;
        }
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            const double found = swept.y[row * outputs.size() + i];
            if (k != 0)
                EXPECT_TRUE(std::isnan(found)) << outputs[i];
            else
                EXPECT_TRUE(same(found, wanted(handle, answer.result, outputs[i], ids)))
                    << inputs[0] << ' ' << row << ' ' << outputs[i] << ' ' << found << ' '
                    << wanted(handle, answer.result, outputs[i], ids);
        }
    }
    return sound;
}

// Of random rows.
inline void compare(const std::string& kind, const std::string& request,
                    const std::vector<Range>& ranges, std::int64_t rows, std::size_t least_sound) {
    const Handle handle;
    std::mt19937 chance(static_cast<unsigned>(kind.size()) + 100);
    std::vector<std::string> inputs;
    std::vector<double> x;
    for (const Range& range : ranges)
        inputs.push_back(range.path);
    for (std::int64_t row = 0; row < rows; ++row) {
        for (const Range& range : ranges) {
            std::uniform_real_distribution<double> draw(range.from, range.to);
            const double value = draw(chance);
            x.push_back(range.whole ? std::round(value) : value);
        }
    }
    EXPECT_GE(compare_rows(handle, kind, request, inputs, x), least_sound) << request;
}

} // namespace tarvane::vessel
