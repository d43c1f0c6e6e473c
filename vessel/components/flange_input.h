// A [[flange]] of an input file, in the engine's units.
#pragma once

#include "catalogue/bolt_sizes.h"
#include "components/element.h"
#include "fields/flange_keys.h"

#include <array>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

inline constexpr int RECORD_ELEMENTS = 200;
inline constexpr std::size_t TEXT_LENGTH = 435;  // the last label of the flange text ends here
inline constexpr std::size_t MOST_FLANGES = 500; // rows of the element tables

extern const ElementKind FLANGE_KIND;

struct FlangeOutcome;

struct FlangeInput final : Element, Settings<Setting, TextSetting> {
    std::array<float, RECORD_ELEMENTS + 1> record{};  // one-based; the engine's units
    std::string text = std::string(TEXT_LENGTH, ' '); // slots of 15 Western characters

    int code() const { return whole_setting(Setting::code); }
    int edition() const { return whole_setting(Setting::edition); }
    int type() const { return static_cast<int>(record[2]); }
    int analysis() const { return static_cast<int>(record[3]); }
    bool rated() const { return analysis() == KIND_RATED; } // by its rating: no stresses
    // Under external pressure, too: a second calculation.
    bool has_external() const { return !rated() && setting(Setting::external_pressure) > 0.0f; }
    // The geometry of a given calculation, of kind "analyse": that of kind "thickness" at what it found.
    FlangeInput as_judged(const FlangeOutcome& outcome) const;
    // "ASME B16.5 class 150 NPS 20" of the table standard; empty without it.
    const std::string& standard() const { return standard_name; }
    bool takes_bolt_size() const; // the given one is neither selected nor that of a root area
    bool asks_for_heat_treatment() const; // by UCS-56, of its material
    const BoltSizes& bolt_sizes() const;  // of the thread series
    void write_slot(int offset, std::size_t width, std::string_view western);

    std::unique_ptr<Element> copy() const override { return std::make_unique<FlangeInput>(*this); }
    std::string description() const override;
    void put_number(const Key& key, float value) override;
    void put_text(const Key& key, const std::string& western) override;
    float number_of(const Key& key) const override;
    std::string text_of(const Key& key) const override;
    void complete(Reading& reading) override;
    bool replace(const Key& key, float value) override;
    bool rule(std::string_view id, const Reading& reading) const override;
    std::unique_ptr<Outcome> calculate(const Request& file) const override;
    void calculate_again(const Request& file, std::unique_ptr<Outcome>& last) const override;
    std::vector<Result> results(const Outcome& outcome) const override;
    std::vector<Result> results_at(const Outcome& outcome,
                                   std::span<const std::size_t> places) const override;
    Checks find_checks(const Outcome& outcome, const UnitSystem& units) const override;
    RatingBasis rating_basis(const Outcome& outcome) const override;
    void put_pressure(float P) override;

  private:
    std::optional<Material> sized_material; // whose stresses are used
    std::string standard_name;
    // By series: what this flange and its copies have read.
    std::shared_ptr<std::map<int, BoltSizes>> sizes_read =
        std::make_shared<std::map<int, BoltSizes>>();
    float mated_bolts = 0.0f; // area of the bolts, which its mate has too; 0: not known

    void write_description();
    void check_bolt_size(Reading& reading) const;
    void check_values(Reading& reading) const;
    bool is_free(const Key& key, float value) const;
    bool names_material(int at) const; // in a slot of the text
    void take_standard(Reading& reading);
    void take_raised_face(Reading& reading, const std::string& standard);
    void complete_rated(Reading& reading);
    MaterialSelection material_selection() const;
    void take_material(Reading& reading);
    void take_bolt_material(Reading& reading);
    void note_tables(Reading& reading) const;
};

// The flanges of a file in their order.
std::vector<const FlangeInput*> flanges_of(const Request& file);

} // namespace tarvane::vessel
