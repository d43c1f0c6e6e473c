// The components of a request, and what a kind of component consists of: its table of keys, its
// checks, its calculation, its verdict and its closing tables. The reader and the calculation know
// components through these alone; element_kinds.cpp lists the kinds.
#pragma once

#include "catalogue/data_files_check.h"
#include "catalogue/material_files.h"
#include "components/check.h"
#include "components/rated_pressure.h"
#include "fields/keys.h"
#include "values/fault.h"
#include "values/value.h"

#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

struct ElementKind;
struct Request;

// Exit statuses of `tarvane run`, the more serious the higher.
enum class Status { fine = 0, fails = 1, bad_input = 2, stopped = 3 };

struct Verdict {
    Status status = Status::fine;
    std::vector<std::string> reasons; // one line each, UTF-8

    void say(Status grave, std::string reason);
};

// Approximate figures of the library's own tables that a calculation uses, by what they are, each with its source.
using OwnFigures = std::map<std::string, std::string>;

// What a calculation gives. A kind adds the results of its own.
struct Outcome {
    std::string report;                // the report file: records with marks, Western characters
    std::vector<std::string> messages; // text of each message box, once each
    bool stopped = false;              // the engine ended the run
    int fatal_code = 0;                // and said why
    std::optional<RatedPressure> rated_pressure; // where it was looked for
    OwnFigures figures;                          // that the calculation came to use
    bool words = true; // reasons and steps of its checks are wanted; else they can be left out

    virtual ~Outcome() = default;
    // The input can't be calculated.
    virtual bool refused() const { return false; }
};

// What a calculation uses of the data files: by file, the items, and whether they are approximate.
using DataUses = std::map<std::string, std::map<std::string, bool>>;

// Where the value of a key comes from.
struct Origin {
    Value given;      // as it is written; null: it isn't
    std::string from; // "file", "default", "material SA-105 at 300 °F", "not read: facing 1a"
};
using Origins = std::map<std::string_view, Origin>;

// The table of one component as it is read: which keys are given, and where faults go.
class Reading {
  public:
    // `line` and `path` ("flange[0]") are those of the table.
    Reading(const UnitSystem& file_units, MaterialFiles& files, DataFilesCheck& check, int line,
            std::string path, Faults& into)
        : units(file_units), materials(files), data_files(check), table_line(line),
          table_path(std::move(path)), faults(into) {}

    const UnitSystem& units;
    MaterialFiles& materials;
    DataUses data;
    OwnFigures figures;
    std::vector<std::string> notes; // UTF-8

    // A note for the user, once.
    void tell(std::string note);
    bool given(std::string_view key) const { return keys.contains(key); }
    // Given with a value that can be used, too.
    bool sound(std::string_view key) const;
    // A fault at the line of a key; at that of the table for a key that is not given.
    void fault(std::string_view key, std::string message) {
        fault_at(key, key, std::move(message));
    }
    // The same at the line of another key.
    void fault_at(std::string_view place, std::string_view key, std::string message);
    // The calculation depends on a data file: a fault where it is missing or damaged.
    void rely_on(std::string_view file);
    // The same for an item of the file: reported at the end when it is approximate.
    void use(const std::string& file, const std::string& item);
    // The same for a material record, which says itself whether it is approximate.
    void use(const Material& material);
    // A key that isn't given, but whose value comes from elsewhere: it isn't missing then.
    void supply(std::string_view key, std::string from = {}) {
        keys[key] = {.line = table_line, .sound = true, .supplied = true};
        origins[key] = {{}, std::move(from)};
    }
    // The same for a key that is not missing either way: where its value comes from is all that changes.
    void comes_from(std::string_view key, std::string from) {
        if (!given(key)) origins[key] = {{}, std::move(from)};
    }
    bool supplied(std::string_view key) const {
        const auto at = keys.find(key);
        return at != keys.end() && at->second.supplied;
    }
    // In the table of the component itself, not in one that holds for all of them.
    bool own(std::string_view key) const {
        const auto at = keys.find(key);
        return at != keys.end() && at->second.own;
    }
    // A key that is given, under a name and at a path.
    void note(std::string_view key, const Value& value, std::string written, std::string path,
              bool is_sound, bool is_own) {
        keys[key] = {.line = value.at.line,
                     .sound = is_sound,
                     .own = is_own,
                     .written = std::move(written),
                     .path = std::move(path)};
        origins[key] = {value, "file"};
    }
    // Something is added to a value that is given.
    void adds(std::string_view key, const std::string& what) { origins[key].from += ", " + what; }
    Origins take_origins() { return std::move(origins); }

  private:
    struct Place {
        int line;
        bool sound;
        bool supplied = false;
        bool own = false;
        std::string written = {}; // the name: that of an alias, perhaps
        std::string path = {};
    };
    DataFilesCheck& data_files;
    int table_line;
    std::string table_path;
    Faults& faults;
    std::map<std::string_view, Place> keys;
    Origins origins;
};

// A point of an external pressure chart that a result is based on.
struct ChartPoint {
    std::string chart;
    float temperature, yield; // F, psi
    float A;
};

struct Element {
    const ElementKind* kind = nullptr;
    int line = 0;              // of its table
    int number = 1;            // among the elements of its kind
    int metal_temperature = 0; // number of the [[mdmt]] that is of this part; 0: none
    DataUses data;
    OwnFigures figures;                    // of its input
    float liquid_head = 0.0f;              // between the top of the vessel and it
    std::vector<std::string> notes;        // of the reading, UTF-8
    Origins origins;                       // of every key
    std::vector<const Unheeded*> unheeded; // that hold for every component and are not 0

    virtual ~Element() = default;
    virtual std::unique_ptr<Element> copy() const = 0;

    // Trimmed, Western; empty when the file gives none.
    virtual std::string description() const = 0;

    // ---- reading, in this order ----
    // The fallback of each key, then its value when the file gives one, in the engine's units.
    virtual void put_number(const Key& key, float value) = 0;
    virtual void put_text(const Key& key, const std::string& western) = 0;
    // What a key holds now: what was put, or what followed from other values.
    virtual float number_of(const Key& key) const = 0;
    virtual std::string text_of(const Key& key) const = 0;
    // Values that follow from others, and checks over several keys. A key whose value is at fault
    // still has its fallback here.
    virtual void complete(Reading& reading) = 0;
    // Another number of a key that was read, after complete. False where more than the calculation may depend on
    // it: a fault, a note, the value of another key; it takes a new reading then.
    virtual bool replace(const Key&, float) { return false; }
    // The answer to a rule of the kind's table, after complete.
    virtual bool rule(std::string_view, const Reading&) const { return false; }

    // ---- running ----
    // The whole calculation with its report, from RESET_ENGINE on. Throws std::runtime_error when lines
    // of the report are lost.
    virtual std::unique_ptr<Outcome> calculate(const Request& file) const = 0;
    // The same once more, after replace. `last` is the latest calculation that the engine made, of this element with
    // other numbers.
    virtual void calculate_again(const Request& file, std::unique_ptr<Outcome>& last) const {
        last = calculate(file);
    }
    // From what calculate returned: results in the order of the kind's table, checks in the order of theirs.
    virtual std::vector<Result> results(const Outcome&) const { return {}; }
    // Those at some places of the table.
    virtual std::vector<Result> results_at(const Outcome& outcome,
                                           std::span<const std::size_t> places) const;
    virtual Checks find_checks(const Outcome&, const UnitSystem&) const { return {}; }
    // The same with those waived that the user waives.
    Checks checks(const Outcome& outcome, const UnitSystem& units) const;
    // By the checks alone: those that keep it from passing, and what others have to say.
    Verdict judge(const Outcome& outcome, const UnitSystem& units) const;
    // The ids of the checks that the user waives.
    std::string waivers() const;
    bool waives(std::string_view id) const;
    // The file gives the key, of this element or of all of them.
    bool gives(std::string_view key) const;
    // The row of a pressure part for its lowest metal temperature: where that is found.
    Check temperature_check(const CheckField& field) const;
    // A check for each of the keys that this element does not heed.
    void add_unmade_checks(Checks& checks) const;
    // The geometry as it was judged, for the search of its rated pressure.
    virtual RatingBasis rating_basis(const Outcome&) const { return {}; }
    // Another design pressure, and what follows it, in a copy of that geometry.
    virtual void put_pressure(float) {}
    // The point of a chart that a drawing can mark.
    virtual std::optional<ChartPoint> chart_point(const Outcome&) const { return std::nullopt; }
};

// An element whose values are all in settings.
template <class Number, class Text>
struct SettingsElement : Element, Settings<Number, Text> {
    void put_number(const Key& key, float value) override {
        this->settings[static_cast<std::size_t>(key.index)] = value;
    }
    void put_text(const Key& key, const std::string& western) override {
        this->texts[static_cast<std::size_t>(key.index)] = western;
    }
    float number_of(const Key& key) const override { return this->number_at(key.index); }
    std::string text_of(const Key& key) const override { return this->text_at(key.index); }
};

// An element with its outcome, for the tables that close the output.
struct Calculated {
    const Element* element;
    const Outcome* outcome;
};

struct ElementKind {
    std::string_view table;  // [[table]] in the file, "table 2" in messages
    std::string_view plural; // in messages
    const KeyTable& keys;
    std::size_t most; // elements of this kind in a file
    bool single;      // a [table] is enough for one of them
    std::unique_ptr<Element> (*make)();
    // The closing tables of the elements of this kind, UTF-8; never called for none.
    std::string (*tables)(std::span<const Calculated> elements, const UnitSystem& units);
    std::span<const ResultField> results = {};
    std::span<const CheckField> checks = {};
};

// All kinds, in the order of their closing tables.
std::span<const ElementKind* const> element_kinds();

// A closing table: the rows of the results that it lists by its title, beside each other for the elements;
// empty without any.
std::string closing_table(std::string_view title, std::span<const Calculated> elements,
                          const UnitSystem& units);

// "the engine stopped with code 25"
std::string stop_reason(const Outcome& outcome);

// Heading of its column in the closing tables, Western: its description or "flange 2".
std::string column_heading(const Element& element);

// "flange 2 (cover)", UTF-8.
std::string name_of(const Element& element);

} // namespace tarvane::vessel
