// The list of the materials of Table UCS-23.
#include "data_kind.h"
#include "material_table.h"

#include <algorithm>

namespace tarvane::data {

namespace {

constexpr std::string_view HEAD =
    "; Materials of Table UCS-23, made from materials_viii1.csv.\n[UCS-23]\n";

bool in_list(const Material& material) { return material.row->field("part") == "UCS"; }

bool found(const std::string& name) {
    return (LIS_UCS23_MATERIAL(name.data(), static_cast<std::int32_t>(name.size())) & 1) != 0;
}

} // namespace

void build_name_list(Place& place) {
    const MaterialTable materials(place.sources);
    std::vector<std::string> names; // each once; it may have several rows
    for (const Material& material : materials.materials()) {
        const std::string& name = material.row->field("name");
        if (in_list(material) && std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    }

    std::string text(HEAD);
    for (const std::string& name : names)
        text += name + "\n";
    write_file(place.out / "VIII-1_Matls_By_Table.txt", text + "\n[END]\n");

    for (const Material& material : materials.materials())
        if (found(material.row->field("name")) != in_list(material))
            material.row->fail("part", in_list(material) ? "not in the list when read back"
                                                         : "in the list when read back");
}

} // namespace tarvane::data
