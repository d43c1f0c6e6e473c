/*
** tarvane.hpp - vessel.h for C++17: values in, a result out, exceptions. Header only; it needs the standard library
** and libtarvane_vessel, and no other header of tarvane but vessel.h.
**
**   tarvane::Request request = {{"units", "SI"}};
**   request.add("shell", {{"kind", "cylinder"}, {"P", 1.2}, {"t", {12, "mm"}}, ...});
**   const tarvane::Result result = tarvane::Vessel().calculate(request);
**   std::optional<double> mawp = result["shell[0]"].result("mawp");
**
** Texts are UTF-8. Numbers are in the units of the request ("units", or of their own, {12, "mm"}), those of a
** result in the same units, each a single: a cast to float loses nothing. Values have paths: "flange[0].P".
**
** Exceptions: all are tarvane::Error, with the faults of the call: field, value and reason of each; but for
** std::bad_alloc.
**
** Threads: a Vessel, a Request and a Result belong to one thread at a time; a Result that nobody changes may be read by
** many. Calculations of several Vessels take turns.
*/
#ifndef TARVANE_HPP
#define TARVANE_HPP

#include "tarvane/vessel.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace tarvane {

/* What is wrong: the path of the field, empty for the request as a whole; the value that was given, empty where
** none was; and why it can't be accepted. */
struct Fault {
    std::string field, value, reason;
};

/* A call failed; `faults` has all that is wrong, the first one is what() says. */
class Error : public std::runtime_error {
  public:
    Error(std::int32_t call_status, std::vector<Fault> found)
        : std::runtime_error(words(found)), status_(call_status),
          faults_(std::make_shared<const std::vector<Fault>>(std::move(found))) {}

    /* TARVANE_FAULTY and so on, of vessel.h. */
    std::int32_t status() const noexcept { return status_; }
    /* In the order of the request, one at least. */
    const std::vector<Fault>& faults() const noexcept { return *faults_; }
    const std::string& field() const noexcept { return faults_->front().field; }
    const std::string& value() const noexcept { return faults_->front().value; }
    const std::string& reason() const noexcept { return faults_->front().reason; }

  private:
    std::int32_t status_;
    std::shared_ptr<const std::vector<Fault>> faults_;

    static std::string words(std::vector<Fault>& found) {
        if (found.empty()) found.push_back({"", "", "the call failed without a reason"});
        const Fault& first = found.front();
        std::string text = first.field.empty() ? first.reason : first.field + ": " + first.reason;
        if (found.size() > 1) text += " (and " + std::to_string(found.size() - 1) + " more)";
        return text;
    }
};

/* The request can't be calculated as it is, or a path has nothing. */
class InputError : public Error {
  public:
    using Error::Error;
};

/* The engine can't go on with these dimensions; value() is its code. */
class EngineStopped : public Error {
  public:
    using Error::Error;
};

/* The data folder, or a file in it, is missing or unreadable. */
class NoData : public Error {
  public:
    using Error::Error;
};

/* A number and its unit, {12, "mm"}, in place of the unit of the request. */
struct Quantity {
    double number;
    std::string unit;
};

/* What a key may have: a flag, a number (finite), a quantity or a text. */
class Value {
  public:
    Value(bool flag) : content(flag) {}
    template <class Number, std::enable_if_t<std::is_arithmetic_v<Number>, int> = 0>
    Value(Number number) : content(static_cast<double>(number)) {}
    Value(double number, std::string unit) : content(Quantity{number, std::move(unit)}) {}
    Value(Quantity quantity) : content(std::move(quantity)) {}
    Value(const char* text) : content(std::string(text)) {}
    Value(std::string text) : content(std::move(text)) {}

  private:
    friend class Values;
    std::variant<bool, double, Quantity, std::string> content;
};

/* A key, or a path from where it is put, and its value. */
using Member = std::pair<std::string, Value>;

/* A tree of values, by paths. Copies are independent of one another. */
class Values {
  public:
    Values() : Values(std::string()) {}
    /* Of a JSON text; an empty one: no values yet. Throws InputError for what is no JSON. */
    explicit Values(const std::string& json) : tree(tarvane_values(json.c_str())) {
        if (!tree) fail(TARVANE_FAULTY, nullptr);
    }
    Values(const Values& other) : Values(other.json()) {}
    Values& operator=(const Values& other) {
        if (this != &other) *this = Values(other);
        return *this;
    }
    /* The one that was moved from has no values, and takes none. */
    Values(Values&&) noexcept = default;
    Values& operator=(Values&&) noexcept = default;
    ~Values() = default;

    /* Throws InputError for a path that leads nowhere, a number that is not finite and a text that is no UTF-8. */
    void put(const std::string& path, const Value& value) {
        const char* at = path.c_str();
        std::int32_t status;
        if (const auto* flag = std::get_if<bool>(&value.content))
            status = tarvane_put_flag(tree.get(), at, *flag ? 1 : 0);
        else if (const auto* number = std::get_if<double>(&value.content))
            status = tarvane_put_number(tree.get(), at, *number);
        else if (const auto* text = std::get_if<std::string>(&value.content))
            status = tarvane_put_text(tree.get(), at, text->c_str());
        else
            status = put_quantity(at, std::get<Quantity>(value.content));
        if (status != TARVANE_OK) fail(status, nullptr);
    }
    /* JSON of all of it. */
    std::string json() const {
        if (!tree) return "{}"; // moved from
        const char* text = tarvane_json(tree.get());
        if (text == nullptr) throw std::bad_alloc();
        return text;
    }

    /* TARVANE_NOTHING, TARVANE_NULL and so on. */
    std::int32_t kind(const std::string& path) const {
        return tarvane_kind(tree.get(), path.c_str());
    }
    bool has(const std::string& path) const { return kind(path) != TARVANE_NOTHING; }
    /* Of a flag 1 or 0. */
    std::optional<double> number(const std::string& path) const {
        const double found = tarvane_number(tree.get(), path.c_str());
        return std::isnan(found) ? std::nullopt : std::optional<double>(found);
    }
    std::optional<std::string> text(const std::string& path) const {
        const char* found = tarvane_text(tree.get(), path.c_str());
        return found == nullptr ? std::nullopt : std::optional<std::string>(found);
    }
    /* The items of a list, or members of an object. */
    std::size_t count(const std::string& path) const {
        return static_cast<std::size_t>(tarvane_count(tree.get(), path.c_str()));
    }
    /* The names of the members of an object, in their order. */
    std::vector<std::string> names(const std::string& path) const {
        std::vector<std::string> all;
        for (std::int64_t k = 0;; ++k) {
            const char* name = tarvane_name(tree.get(), path.c_str(), k);
            if (name == nullptr) return all;
            all.emplace_back(name);
        }
    }
    /* The texts of a list; items that are none are empty. */
    std::vector<std::string> texts(const std::string& path) const {
        std::vector<std::string> all;
        for (std::size_t k = 0; k < count(path); ++k)
            all.push_back(text(place(path, k)).value_or(""));
        return all;
    }

    /* "flange[0]" */
    static std::string place(const std::string& list, std::size_t number) {
        return list + '[' + std::to_string(number) + ']';
    }

  private:
    friend class Vessel;
    friend class Component;
    friend class Result;
    struct Close {
        void operator()(TARVANE_VALUES* values) const { tarvane_values_close(values); }
    };
    std::unique_ptr<TARVANE_VALUES, Close> tree;

    // The SVG of the item of a list that has the name.
    std::optional<std::string> named(const std::string& list, const std::string& name) const {
        for (std::size_t k = 0; k < count(list); ++k)
            if (text(place(list, k) + ".name") == name) return text(place(list, k) + ".svg");
        return std::nullopt;
    }

    std::int32_t put_quantity(const char* path, const Quantity& quantity) {
        if (!std::isfinite(quantity.number))
            return tarvane_put_number(tree.get(), path, quantity.number);
        char digits[40];
        const auto end = std::to_chars(std::begin(digits), std::end(digits), quantity.number);
        const std::string text = std::string(std::begin(digits), end.ptr) + ' ' + quantity.unit;
        return tarvane_put_text(tree.get(), path, text.c_str());
    }

    /* Throws what tarvane_last_error says. */
    [[noreturn]] static void fail(std::int32_t status, const TARVANE_VESSEL* vessel) {
        std::vector<Fault> faults = faults_of(tarvane_last_error(vessel));
        switch (status) {
        case TARVANE_FAULTY:
            throw InputError(status, std::move(faults));
        case TARVANE_ENGINE_STOPPED:
            throw EngineStopped(status, std::move(faults));
        case TARVANE_NO_DATA:
            throw NoData(status, std::move(faults));
        default:
            throw Error(status, std::move(faults));
        }
    }
    static std::vector<Fault> faults_of(const char* json) {
        std::vector<Fault> faults;
        const std::unique_ptr<TARVANE_VALUES, Close> list(tarvane_values(json));
        if (!list) throw std::bad_alloc();
        const auto text = [&list](const std::string& path) -> std::string {
            const char* found = tarvane_text(list.get(), path.c_str());
            return found != nullptr ? found : "";
        };
        for (std::int64_t k = 0; k < tarvane_count(list.get(), ""); ++k) {
            const std::string at = place("", static_cast<std::size_t>(k));
            faults.push_back({text(at + ".path"), text(at + ".value"), text(at + ".reason")});
        }
        return faults;
    }
};

/* What is to be calculated: keys at the head, and components by kind. */
class Request : public Values {
  public:
    Request() = default;
    /* Of a JSON text, as Values. */
    explicit Request(const std::string& json) : Values(json) {}
    /* Keys at the head, or paths: {{"units", "SI"}, {"vessel.P", 1.2}}. */
    Request(std::initializer_list<Member> members) { put_all("", members); }

    using Values::put;
    /* One more component of a kind, "flange", "shell", "external" or "mdmt"; returns its path, "flange[0]". */
    std::string add(const std::string& kind, std::initializer_list<Member> members) {
        return add<std::initializer_list<Member>>(kind, members);
    }
    template <class Members>
    std::string add(const std::string& kind, const Members& members) {
        const std::string path = place(kind, count(kind));
        // First by itself, so that nothing is added of a component with a fault.
        try {
            Request().put_all("", members);
        } catch (const InputError& error) {
            throw InputError(error.status(),
                             {{path + '.' + error.field(), error.value(), error.reason()}});
        }
        put_all(path + '.', members);
        return path;
    }

  private:
    template <class Members>
    void put_all(const std::string& before, const Members& members) {
        for (const Member& member : members)
            put(before + member.first, member.second);
    }
};

/* A check: `demand` `operation` `limit`, "<=" or ">=", in `unit`. */
struct Check {
    std::string id;        /* "SRa", as the vocabulary has it */
    std::string paragraph; /* of the design code */
    std::string load_case; /* "gasket seating"; empty: there is but one */
    std::string operation, unit;
    std::string state; /* "pass", "fail", "not asked", "not made", "waived" */
    std::string force; /* "decides", "warns", "advises" */
    std::string reason, remark, step;
    bool waivable;
    std::optional<double> demand, limit;
    std::optional<double> ratio; /* at most 1 where it passes */

    bool passed() const { return state == "pass"; }
};

/* A line of a report, of 100 columns at most, and its six style marks. */
struct ReportLine {
    std::string text;
    std::vector<int> marks;
};

/* A component of a result; it keeps the result alive. Unless said otherwise a text that the result does not have is
** empty. Results, checks and the rated pressure need `results` of Want, the report and drawings theirs. */
class Component {
  public:
    /* "flange[0]" */
    const std::string& path() const { return path_; }
    std::string description() const { return text("description"); }
    /* "pass", "fail" or "not made": something that the code asks for could not be checked. */
    std::string verdict() const { return text("verdict"); }
    bool passed() const { return verdict() == "pass"; }
    /* The verdict in words. */
    std::string says() const { return text("says"); }
    /* The id of the check that governs. */
    std::optional<std::string> governing() const { return values->text(at("governing")); }

    /* The names of all results. */
    std::vector<std::string> result_names() const { return values->names(at("results")); }
    /* A number by its name, "mawp", "designed.C", in the units of the request; a flag as 1 or 0. Nothing where there
    ** is no value: `why` says the reason. Throws InputError for a name that is none, and for a choice. */
    std::optional<double> result(const std::string& name) const {
        if (known(name) == TARVANE_TEXT)
            throw InputError(TARVANE_FAULTY, {{at("results." + name), choice(name).value_or(""),
                                               "this result is a choice, no number"}});
        return values->number(at("results." + name));
    }
    /* A result that is a choice, "welding neck". Throws as `result` does. */
    std::optional<std::string> choice(const std::string& name) const {
        const std::int32_t kind = known(name);
        if (kind != TARVANE_TEXT && kind != TARVANE_NULL)
            throw InputError(TARVANE_FAULTY,
                             {{at("results." + name), "", "this result is a number, no choice"}});
        return values->text(at("results." + name));
    }
    /* Why a result has no value; empty where it has one. */
    std::string why(const std::string& name) const {
        known(name);
        return text("why." + name);
    }
    /* The greatest pressure at which the checks pass; nothing where there is none, or it was not looked for. */
    std::optional<double> rated_pressure() const { return values->number(at("rating.pressure")); }
    /* The value of an input key that was used, of a number in the units of the request. */
    std::optional<double> input(const std::string& key) const {
        return values->number(at("inputs." + key + ".value"));
    }

    /* The worst first. */
    std::vector<Check> checks() const {
        std::vector<Check> all;
        for (std::size_t k = 0; k < values->count(at("checks")); ++k) {
            const std::string row = Values::place("checks", k);
            const auto number = [&](const char* name) { return values->number(at(row + name)); };
            Check check;
            check.id = text(row + ".id");
            check.paragraph = text(row + ".paragraph");
            check.load_case = text(row + ".case");
            check.operation = text(row + ".operator");
            check.unit = text(row + ".unit");
            check.state = text(row + ".state");
            check.force = text(row + ".force");
            check.reason = text(row + ".reason");
            check.remark = text(row + ".remark");
            check.step = text(row + ".step");
            check.waivable = number(".waivable").value_or(0.0) != 0.0;
            check.demand = number(".demand");
            check.limit = number(".limit");
            check.ratio = number(".ratio");
            all.push_back(std::move(check));
        }
        return all;
    }
    std::vector<std::string> messages() const { return values->texts(at("messages")); }
    std::vector<std::string> notes() const { return values->texts(at("notes")); }

    std::vector<ReportLine> report_lines() const {
        std::vector<ReportLine> lines;
        for (std::size_t k = 0; k < values->count(at("report")); ++k) {
            const std::string row = at(Values::place("report", k));
            ReportLine line{values->text(row + ".text").value_or(""), {}};
            for (std::size_t mark = 0; mark < values->count(row + ".marks"); ++mark)
                line.marks.push_back(static_cast<int>(
                    values->number(Values::place(row + ".marks", mark)).value_or(0.0)));
            lines.push_back(std::move(line));
        }
        return lines;
    }
    /* The text of the report, its lines each with a line feed. */
    std::string report() const {
        std::string whole;
        for (const ReportLine& line : report_lines())
            (whole += line.text) += '\n';
        return whole;
    }
    /* SVG by name: "section", "chart" of external pressure. */
    std::optional<std::string> drawing(const std::string& name) const {
        return values->named(at("drawings"), name);
    }

  private:
    friend class Result;
    Component(std::shared_ptr<const Values> tree, std::string its_path)
        : values(std::move(tree)), path_(std::move(its_path)) {}
    std::shared_ptr<const Values> values;
    std::string path_;

    std::string at(const std::string& path) const { return path_ + '.' + path; }
    std::string text(const std::string& path) const { return values->text(at(path)).value_or(""); }
    std::int32_t known(const std::string& name) const {
        const std::int32_t kind = values->kind(at("results." + name));
        if (kind == TARVANE_NOTHING)
            throw InputError(TARVANE_FAULTY,
                             {{at("results." + name), "", "there is no result of this name"}});
        return kind;
    }
};

/* A result; copies share it. */
class Result {
  public:
    /* Of the JSON text of tarvane_calculate, or of `tarvane run --json`. Throws InputError for another text. */
    explicit Result(const std::string& json) : values_(std::make_shared<const Values>(json)) {
        if (!values_->text("verdict"))
            throw InputError(TARVANE_FAULTY, {{"verdict", "", "this is no result"}});
    }

    /* As those of a component, of the whole request. */
    std::string verdict() const { return values_->text("verdict").value_or(""); }
    bool passed() const { return verdict() == "pass"; }
    std::string says() const { return values_->text("says").value_or(""); }
    /* Path of the component and id of the check that govern; empty without checks. */
    std::string governing_component() const {
        return values_->text("governing.component").value_or("");
    }
    std::string governing_check() const { return values_->text("governing.check").value_or(""); }
    /* Version of the library that calculated. */
    std::string program() const { return values_->text("program").value_or(""); }

    /* "flange[0]". Throws InputError if there is none. */
    Component operator[](const std::string& path) const {
        if (!values_->text(path + ".verdict"))
            throw InputError(TARVANE_FAULTY, {{path, "", "the result has no such component"}});
        return Component(values_, path);
    }
    /* Kind by kind, each in the order of the request. */
    std::vector<Component> components() const {
        std::vector<Component> all;
        for (const std::string& kind : values_->names(""))
            for (std::size_t k = 0; k < values_->count(kind); ++k)
                if (values_->text(Values::place(kind, k) + ".verdict"))
                    all.push_back((*this)[Values::place(kind, k)]);
        return all;
    }
    /* SVG by name: "outline" of a vessel. */
    std::optional<std::string> drawing(const std::string& name) const {
        return values_->named("drawings", name);
    }

    /* All of it, by paths and as JSON. */
    const Values& values() const { return *values_; }
    std::string json() const { return values_->json(); }

  private:
    std::shared_ptr<const Values> values_;
};

/* What a result has besides verdicts and inputs. */
struct Want {
    bool results = true, report = false, drawings = false;
};

/* The outputs of a sweep, rows by outputs. */
struct Sweep {
    std::size_t rows = 0; /* that were calculated: all, unless the progress ended it */
    std::size_t outputs = 0;
    std::vector<double> y;           /* NaN: no value */
    std::vector<std::int32_t> fault; /* of each row 0, or k: the k-th of `faults`, from 1 on */
    std::vector<Fault> faults;

    /* Nothing where there is no value, or the row has a fault. Throws std::out_of_range outside the table. */
    std::optional<double> value(std::size_t row, std::size_t output) const {
        if (row >= rows || output >= outputs) throw std::out_of_range("a row or output of a sweep");
        const double found = y[row * outputs + output];
        return std::isnan(found) ? std::nullopt : std::optional<double>(found);
    }
    /* The first fault of a row; a null pointer where it has none. */
    const Fault* fault_of(std::size_t row) const {
        const std::int32_t k = fault.at(row);
        return k > 0 ? &faults.at(static_cast<std::size_t>(k - 1)) : nullptr;
    }
};

/* A folder of data files. Movable; of one that was moved from only the destructor and an assignment may be called, all
** else throws Error. */
class Vessel {
  public:
    /* Without a folder the library looks for one, as tarvane_open says. Throws NoData where it, or files in it, are
    ** missing, and Error for a library of another ABI. */
    explicit Vessel(const std::string& data_folder = {}) {
        TARVANE_VESSEL* opened = nullptr;
        const std::int32_t status = tarvane_open(TARVANE_VESSEL_ABI, data_folder.c_str(), &opened);
        handle.reset(opened);
        if (status != TARVANE_OK) Values::fail(status, opened);
    }

    /* Of the library: "1.0.0". */
    static std::string version() { return tarvane_version(); }

    /* Throws InputError with all faults of the request, EngineStopped and NoData. */
    Result calculate(const Request& request, const Want& want = {}) const {
        const std::int32_t wanted = (want.results ? TARVANE_WANT_RESULTS : 0) |
                                    (want.report ? TARVANE_WANT_REPORT : 0) |
                                    (want.drawings ? TARVANE_WANT_DRAWINGS : 0);
        const char* json = nullptr;
        const std::int32_t status = tarvane_calculate(get(), request.json().c_str(), wanted, &json);
        if (status != TARVANE_OK) Values::fail(status, get());
        return Result(json);
    }

    /* "input", "result" or "keys", JSON. Throws InputError for another word. */
    std::string schema(const std::string& what) const {
        const char* text = tarvane_schema(get(), what.c_str());
        if (text == nullptr) Values::fail(TARVANE_FAULTY, get());
        return text;
    }

    /* Called now and then with the rows that are done and all of them; false ends the sweep. What it throws ends the
    ** sweep, and leaves it. */
    using Progress = std::function<bool(std::size_t, std::size_t)>;

    /* One request with many values; `inputs` and `outputs` as tarvane_sweep names them.
    **   x  rows by inputs: a std::vector<double>, std::array, std::span or other contiguous doubles
    ** Throws InputError for a request that is at fault whatever the inputs, an unknown name, and an x that is no whole
    ** number of rows; faults of rows are in the table. */
    template <class Numbers>
    Sweep sweep(const Request& request, const std::vector<std::string>& inputs,
                const std::vector<std::string>& outputs, const Numbers& x,
                const Progress& progress = {}) const {
        const std::size_t numbers = std::size(x);
        if (inputs.empty() || numbers % inputs.size() != 0)
            throw InputError(TARVANE_FAULTY, {{"x", std::to_string(numbers) + " numbers",
                                               "rows of " + std::to_string(inputs.size()) +
                                                   " inputs are expected"}});
        Sweep table;
        table.outputs = outputs.size();
        table.rows = numbers / inputs.size();
        table.y.resize(table.rows * table.outputs);
        table.fault.resize(table.rows);
        const std::vector<const char*> input_names = names(inputs), output_names = names(outputs);
        Call call{progress, nullptr};
        std::int64_t done = 0;
        const std::int32_t status =
            tarvane_sweep(get(), request.json().c_str(), input_names.data(), output_names.data(),
                          static_cast<std::int64_t>(table.rows), std::data(x), table.y.data(),
                          table.fault.data(), progress ? go_on : nullptr, &call, &done);
        if (call.thrown) std::rethrow_exception(call.thrown);
        if (status != TARVANE_OK) Values::fail(status, get());
        table.faults = Values::faults_of(tarvane_last_error(get()));
        table.rows = static_cast<std::size_t>(done);
        table.y.resize(table.rows * table.outputs);
        table.fault.resize(table.rows);
        return table;
    }

    /* For calls of vessel.h. */
    TARVANE_VESSEL* get() const {
        if (!handle) throw Error(TARVANE_INTERNAL, {{"", "", "this Vessel was moved from"}});
        return handle.get();
    }

  private:
    struct Close {
        void operator()(TARVANE_VESSEL* vessel) const { tarvane_close(vessel); }
    };
    std::unique_ptr<TARVANE_VESSEL, Close> handle;

    struct Call {
        const Progress& progress;
        std::exception_ptr thrown;
    };
    static std::int32_t go_on(void* user, std::int64_t done, std::int64_t rows) {
        Call& call = *static_cast<Call*>(user);
        try {
            return call.progress(static_cast<std::size_t>(done), static_cast<std::size_t>(rows))
                       ? 0
                       : 1;
        } catch (...) {
            call.thrown = std::current_exception();
            return 1;
        }
    }
    static std::vector<const char*> names(const std::vector<std::string>& texts) {
        std::vector<const char*> list;
        for (const std::string& text : texts)
            list.push_back(text.c_str());
        list.push_back(nullptr);
        return list;
    }
};

} // namespace tarvane

#endif
