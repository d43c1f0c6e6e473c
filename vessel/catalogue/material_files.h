// The materials of the data files: the file of a code, edition and unit system as a list.
#pragma once

#include "catalogue/units.h"
#include "tarvane/tarvane.h"

#include <compare>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// Which file: the arguments of SET_MATERIAL_SELECTION, and the design code.
struct MaterialSelection {
    int code = 1;
    bool metric = false;
    bool force_div1 = false;
    int d2_class = 0;
    int year = 0;

    // clang-tidy 14 finds a null pointer in the code that the compiler generates.
    auto operator<=>(const MaterialSelection&) const = default; // NOLINT(modernize-use-nullptr)

    // The code whose file is read.
    int file_code() const { return force_div1 ? TARVANE_ASME_VIII_1 : code; }
    // "MATFILE1.BIN", or the words for an older edition.
    std::string file() const;
};

// A record with its texts trimmed. Stresses in psi, lengths in inches, temperatures in degrees F.
struct Material {
    std::string name;
    int reference = 0;
    std::string form, uns, note; // the note without the mark of an approximate record
    bool approximate = false;
    std::string p_number, chart;
    int group = 0;
    int curve = 0, curve_normalized = 0; // see curve_name
    float tensile = 0.0f, yield = 0.0f;
    int modulus = 0, expansion = 0; // reference numbers of the tables; 0: none
    float thickness_limit = 0.0f;   // 0: none
    float size_above = -1.0f, size_to = -1.0f;
    int impact_temperature = 1; // below 1: impact tested
    int reduction_66g = 0;
    MaterialSelection selection;
    TARVANE_MATERIAL_RECORD record{};

    // The temperatures that have an allowable stress, and the stresses.
    struct Allowable {
        float temperature, stress;
    };
    std::vector<Allowable> allowables() const;
    // The last of these temperatures; 0 without any.
    float last_temperature() const;
    // Between these temperatures on a straight line; the first stress below the first one. Only up to
    // the last one.
    float allowable_at(float temperature) const;
    bool has_allowable_at(float temperature) const;
    // The first stress is valid down to this temperature: the head of the first column of the tables.
    float coldest() const { return selection.metric ? -22.0f : -20.0f; }
    // A bolt of this size, or another product of this thickness, belongs to this record, if it has
    // limits.
    bool takes_size(float size) const;
};

// "SA-516 70, 1": the name and the reference, as data_sources.txt lists the record.
std::string item_of(const Material& material);

// "above 2.5000 in., up to 4.0000 in."; empty without limits.
std::string size_range(const Material& material, const UnitSystem& units);

// "A" to "D", "impact" (tested by its specification), "exempt"; empty without a curve.
std::string_view curve_name(int curve);

// Selects the file that the engine reads from now on.
void select_materials(const MaterialSelection& selection);

// Reads each file once. Reading changes the engine's material selection.
class MaterialFiles {
  public:
    // In the order of the file; empty without a file.
    const std::vector<Material>& all(const MaterialSelection& selection);
    // The records of a name, compared as in the engine: without case, blanks, "." "/" "-".
    std::vector<const Material*> named(std::string_view name, const MaterialSelection& selection);
    // Up to `count` similar names, the nearest first.
    std::vector<std::string> near_names(std::string_view name, const MaterialSelection& selection,
                                        std::size_t count);

  private:
    struct File {
        std::vector<Material> materials;
        std::map<std::string, std::vector<const Material*>> by_key; // see material_key
    };
    std::map<MaterialSelection, File> files;

    const File& file(const MaterialSelection& selection);
};

// "MATFILE1.BIN is missing in the data folder ...": why there are none.
std::string no_materials(const MaterialSelection& selection);

// "no material "SA-517 70" in MATFILE1.BIN; the nearest are SA-516 70, SA-515 70"
std::string unknown_material(std::string_view name, const MaterialSelection& selection,
                             MaterialFiles& files);

// The name as the engine compares it.
std::string material_key(std::string_view name);

} // namespace tarvane::vessel
