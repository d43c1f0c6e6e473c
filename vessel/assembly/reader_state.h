// What the parts of the reader share: a request while it is read.
#pragma once

#include "assembly/links.h"
#include "assembly/reader.h"
#include "assembly/repeated_reading.h"
#include "assembly/takes.h"
#include "components/fault_list.h"
#include "fields/vessel_keys.h"

#include <array>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvane::vessel {

using Kinds = std::span<const ElementKind* const>;

// A table whose keys apply to every component that does not give them.
struct CommonTable {
    const Table& table;
    std::string prefix; // of paths: "vessel."
    bool newer;         // by the one vocabulary
};

class Reader {
  public:
    // `inputs`: places of values that come later, one for each reading.
    Reader(ReadResult& into, Kinds of_requests, std::span<const Input> inputs = {})
        : request(into.request), faults(into.faults), known_kinds(of_requests), later(inputs) {}

    void read(const Table& root);
    // What read leaves open, with these values of the inputs.
    void read_again(std::span<const double> values);
    // The same where the components of the latest reading need no more than the numbers; false: they are to be read.
    bool take_numbers(std::span<const double> values);
    // Of the components that have inputs.
    std::vector<std::size_t> open_places() const;
    bool takes(std::size_t input) const;

  private:
    Request& request;
    FaultList faults;
    Kinds known_kinds;
    std::span<const Input> later;
    std::vector<const ElementKind*> kinds; // that the request has
    std::vector<CommonTable> commons;
    bool strict = false, newer_form = false;
    MaterialFiles materials;
    DataFilesCheck data_files;

    // A table that describes a component.
    struct Source {
        const ElementKind* kind;
        const Value* value;
        int number;
        std::optional<std::size_t> of = {}; // the vessel asks for the metal temperature of this one
        int metal_temperature = 0;          // number of the [[mdmt]] that is of this one

        const Table& table() const { return *value->table(); }
        std::string path() const {
            return std::string(kind->table) + '[' + std::to_string(number - 1) + ']';
        }
    };
    // A value with the name under which it is written.
    struct Written {
        const Value* value;
        std::string name;
    };

    // A key whose value comes later.
    struct Open {
        std::size_t input;
        const Key* key;
        std::string name, path;
    };
    // A component with the values that are given, before what follows from them.
    struct Draft {
        std::size_t place; // in the request
        std::unique_ptr<Element> element;
        Reading reading;
        std::vector<Open> open;
    };
    std::vector<Draft> drafts; // that inputs have a part in, those first that others name
    std::vector<Source> sources;
    std::deque<Value> implied; // tables of metal temperatures that the vessel asks for
    Links links{{}, faults};
    bool linked = false; // there is one
    bool numbers_alone =
        false; // no component of the latest reading, a sound one, depends on another
    std::array<std::optional<float>, static_cast<std::size_t>(VesselNumber::count)> vessel_values;
    std::vector<std::pair<const Key*, std::size_t>> open_vessel_values; // with their inputs

    bool read_flag(const Table& root, std::string_view key, bool fallback);
    void read_file_keys(const Table& root);
    std::vector<CommonTable> common_tables(const Table& root);
    void check_names(const Table& table, std::string_view prefix, Kinds of, bool holds_for_all,
                     std::span<const std::string_view> others);
    bool check_inner_table(const Table::Entry& entry, std::string_view prefix, Kinds of);
    std::vector<Source> find_components(const Table& root, const ElementKind& kind);
    Written find_own(const Table& table, const KeyTable& keys, const Key& key,
                     const std::string& path);
    bool has_owner(std::string_view name) const;
    Written find_common(const CommonTable& common, const KeyTable& keys, const Key& key) const;
    void read_key(const Written& written, const Key& key, const std::string& path, Element& element,
                  Reading& reading);
    Draft begin_component(const Source& source);
    void finish_component(std::unique_ptr<Element> element, Reading& reading, std::size_t place);
    bool holds_for_all(const Key& key);
    void take_links(std::size_t place, Element& element, Reading& reading);
    void settle_mates_of(std::size_t place);
    void find_sources(const Table& root);
    void add_metal_temperatures(const Table& root);
    bool refuse_metal_temperatures(const Table& root, const Table& vessel, const ElementKind& kind);
    void read_components();
    std::vector<bool> find_drafts(const std::vector<Draft>& begun) const;
    std::optional<Liquid> liquid() const;
    std::optional<std::size_t> input_at(std::string_view path) const;
    // The number of an input in the form that its key needs.
    Value value_for(const Key& key, std::size_t input, double number) const;
    // A fault where the unit of an input is none of its key.
    void check_unit(const Key& key, const Value& value, std::size_t input);
    void read_vessel(const Table& vessel);
    void put_vessel_value(const Key& key, const Value& value);
    void read_document(const Table& root);
    Texts read_texts(const Table& table, std::span<const Key> keys, const std::string& path,
                     std::span<const std::string_view> others);
};

// A code that others are calculated by; else nothing.
std::string code_not_covered(const Value& value, const ElementKind& kind);

} // namespace tarvane::vessel
