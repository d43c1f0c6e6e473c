// RESET_ENGINE leaves no trace: every byte of the library's own storage is again what it was at load,
// after calculations of all kinds and with every switch turned. What the host provides is restored by
// hand, since the engine must not forget it. Tables that a look at their files shows unchanged may
// stay, until a look finds the files gone.
//   reset_trace libtarvane.so
#include "tarvane/tarvane.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <string_view>
#include <vector>

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// ---- the library, loaded by name and with all its calls bound, so that binding changes nothing -----

void* library = nullptr;

void* address(const char* name) {
    void* const found = dlsym(library, name);
    if (found == nullptr) {
        std::fprintf(stderr, "reset_trace: no %s\n", name);
        std::exit(1);
    }
    return found;
}

#define ENGINE(name) reinterpret_cast<decltype(&::name)>(address(#name))
#define VARIABLE(name) (*static_cast<int32_t*>(address(#name)))

// ---- its storage -----------------------------------------------------------------------------------

struct Storage {
    std::uintptr_t base = 0; // addresses of the file begin here
    const char* first = nullptr;
    std::size_t size = 0;
};

int find_storage(dl_phdr_info* info, std::size_t, void* into) {
    if (std::string_view(info->dlpi_name).find("libtarvane") == std::string_view::npos) return 0;
    // What the loader writes, and protects afterwards, is before the variables.
    std::uintptr_t written_by_loader = 0;
    for (int i = 0; i < info->dlpi_phnum; ++i)
        if (info->dlpi_phdr[i].p_type == PT_GNU_RELRO)
            written_by_loader = info->dlpi_phdr[i].p_vaddr + info->dlpi_phdr[i].p_memsz;
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const auto& segment = info->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W) == 0) continue;
        const std::uintptr_t end = segment.p_vaddr + segment.p_memsz;
        std::uintptr_t begin = segment.p_vaddr;
        if (written_by_loader > begin && written_by_loader <= end) begin = written_by_loader;
        *static_cast<Storage*>(into) = {
            info->dlpi_addr, reinterpret_cast<const char*>(info->dlpi_addr + begin), end - begin};
    }
    return 1;
}

// ---- work that leaves something everywhere -----------------------------------------------------------

struct Flange {
    float record[TARVANE_RECORD_ELEMENTS] = {};
    char text[TARVANE_TEXT_LENGTH];

    Flange(float element, int type, int kind) {
        std::memset(text, ' ', sizeof text);
        for (const auto& [offset, slot] : std::initializer_list<std::pair<int, const char*>>{
                 {TARVANE_TEXT_MATERIAL, "SA-105"},
                 {TARVANE_TEXT_BOLT_MATERIAL, "SA-193 B7"},
                 {TARVANE_TEXT_DESCRIPTION, "Trace"},
                 {TARVANE_TEXT_EXTERNAL_LOADS, "Y"},
                 {TARVANE_TEXT_MATING_LOADS, "N"},
                 {TARVANE_TEXT_CHANNEL_COVER, "Y"},
                 {TARVANE_TEXT_USE_CORROSION, "Y"},
                 {TARVANE_TEXT_PARTITION, "Y"},
                 {TARVANE_TEXT_CHART, "CS-2"},
                 {TARVANE_TEXT_THICKNESS_LABEL, "in."},
                 {TARVANE_TEXT_PRESSURE_LABEL, "psig"},
                 {TARVANE_TEXT_DIAMETER_LABEL, "in."},
                 {TARVANE_TEXT_STRESS_LABEL, "psi"},
                 {TARVANE_TEXT_FORCE_LABEL, "lbf"},
                 {TARVANE_TEXT_MOMENT_LABEL, "ft-lbs"},
                 {TARVANE_TEXT_AREA_LABEL, "in\xB2"},
                 {TARVANE_TEXT_TEMPERATURE, "F"},
                 {TARVANE_TEXT_WEIGHT_LABEL, "lbm"}})
            std::memcpy(text + offset, slot, std::strlen(slot));
        for (const auto& [place, value] :
             std::initializer_list<std::pair<int, float>>{{TARVANE_ELEMENT, element},
                                                          {TARVANE_TYPE, static_cast<float>(type)},
                                                          {TARVANE_KIND, static_cast<float>(kind)},
                                                          {TARVANE_P, 200.0f},
                                                          {TARVANE_T_DESIGN, 300.0f},
                                                          {TARVANE_Sfo, 20000.0f},
                                                          {TARVANE_Sfa, 20000.0f},
                                                          {TARVANE_Sb, 25000.0f},
                                                          {TARVANE_Sa, 25000.0f},
                                                          {TARVANE_t, 2.0f},
                                                          {TARVANE_ci, 0.0625f},
                                                          {TARVANE_B, 12.0f},
                                                          {TARVANE_A, 19.0f},
                                                          {TARVANE_Fod, 15.0f},
                                                          {TARVANE_Fid, 12.0f},
                                                          {TARVANE_Go, 15.0f},
                                                          {TARVANE_Gi, 12.75f},
                                                          {TARVANE_go, 0.5f},
                                                          {TARVANE_g1, 1.19f},
                                                          {TARVANE_h, 3.31f},
                                                          {TARVANE_C, 17.0f},
                                                          {TARVANE_a, 0.875f},
                                                          {TARVANE_THREADS, 1.0f},
                                                          {TARVANE_BOLTS, 16.0f},
                                                          {TARVANE_m, 2.0f},
                                                          {TARVANE_y, 1600.0f},
                                                          {TARVANE_SKETCH, 1.0f},
                                                          {TARVANE_COLUMN, 2.0f},
                                                          {TARVANE_lp, 10.0f},
                                                          {TARVANE_tp, 0.375f},
                                                          {TARVANE_mPart, 2.0f},
                                                          {TARVANE_yPart, 1600.0f},
                                                          {TARVANE_SKETCH_PART, 1.0f},
                                                          {TARVANE_COLUMN_PART, 2.0f},
                                                          {TARVANE_MATERIAL_CLASS, 1.0f},
                                                          {TARVANE_AXIAL_FORCE, 500.0f},
                                                          {TARVANE_BENDING_MOMENT, 100.0f},
                                                          {TARVANE_DENSITY, 0.2836f},
                                                          {TARVANE_SHELL_ID, 12.0f},
                                                          {TARVANE_SHELL_STRESS, 20000.0f},
                                                          {TARVANE_SHELL_STRESS_COLD, 20000.0f},
                                                          {TARVANE_SHELL_THICKNESS, 0.5f},
                                                          {TARVANE_SHELL_CA, 1.0f},
                                                          {TARVANE_HOLES, 1.0f},
                                                          {TARVANE_HOLE_D1, 3.0f},
                                                          {TARVANE_HOLE_D2, 3.0f},
                                                          {TARVANE_HOLE_EDGE1, 0.2f},
                                                          {TARVANE_HOLE_EDGE2, 0.2f},
                                                          {TARVANE_HOLE_PITCH, 4.0f},
                                                          {TARVANE_MATERIAL_METRIC, 1.0f},
                                                          {TARVANE_MATERIAL_DIV1, 1.0f}})
            TARVANE_AT(record, place) = value;
        for (int unit = TARVANE_UNIT_THICKNESS; unit <= TARVANE_UNIT_WEIGHT; ++unit)
            TARVANE_AT(record, unit) = 1.0f;
        TARVANE_AT(record, TARVANE_UNIT_TEMPERATURE_OFFSET) = 0.0f;
    }

    void calculate(int32_t code) {
        const int32_t one = 1, zero = 0;
        const float joint_e = 0.85f, p_operating = 210.0f;
        float out[5] = {};
        int32_t rigidity = 1;
        ENGINE(FLANGE_CALC)
        (record, text, TARVANE_TEXT_LENGTH, &one, &one, &out[0], &out[1], &out[2], &out[3], &out[4],
         &zero, &rigidity, &code, &one, &one, &joint_e, &one, &zero, &p_operating, &zero, &one);
    }
};

constexpr float STAND_ALONE = -1.0f, IN_A_VESSEL = 1.0f;

void turn_switches() {
    for (const char* const name :
         {"FLAGS_mp_IINOSPECIAL", "FLAGS_mp_LBSAREA", "FLAGS_mp_LCHORD", "GLOBALS_mp_G_NUSE_TABLEG",
          "GLOBALS_mp_G_NUSE_CORRODEDK", "GLOBALS_mp_G_NUSE_OLD_DIV_2",
          "GLOBALS_mp_G_NUSE_CASE2286", "METRICCONSTANTS_mp_G_NMETRIC_CONSTANT"})
        *static_cast<int32_t*>(address(name)) = 1;
    const int32_t one = 1, zero = 0, two = 2;
    const float stress = 38000.0f;
    ENGINE(SET_GLOBALS_FROM_TVN)(&one, &one, &zero, &one, &one, &one, &one);
    for (int i = 0; i < TARVANE_SETUP_ELEMENTS; ++i)
        ENGINE(GETSETUP)()[i].real = 1.0f;
    ENGINE(SET_METRIC_CONSTANTS)();
    ENGINE(SET_IOSTEP)(&one);
    ENGINE(SET_IWRTCA)(&one);
    ENGINE(SET_YIELD)(&stress);
    ENGINE(SET_SWITCHES)(&one, &one);
    ENGINE(SET_MATERIAL_SELECTION)(&one, &one, &two, &one);
    ENGINE(SET_TOUGHNESS_SWITCHES)(&one, &one, &one, &one, &one, &zero, &one);
}

void report_to(int32_t unit) {
    const int32_t one = 1;
    ENGINE(SET_IOUT)(&unit);
    ENGINE(SET_IWRITE)(&one);
    ENGINE(SET_IWRTFL)(&one);
}

void calculate_flanges(int32_t unit) {
    for (int32_t code = TARVANE_ASME_VIII_1; code <= TARVANE_EN_13445; ++code)
        for (int type = TARVANE_INTEGRAL_WELD_NECK; type <= TARVANE_LOOSE_REVERSE; ++type)
            for (int kind = TARVANE_ANALYSE; kind <= TARVANE_DESIGN; ++kind) {
                ENGINE(SET_MODULE_CODE)(&code);
                report_to(unit);
                Flange(IN_A_VESSEL, type, kind).calculate(code);
                Flange(STAND_ALONE, type, kind).calculate(code);
            }
}

// What a call sets by itself, left at values of its own: the rules of Division 2, and a line with
// marks that found no file.
void leave_in_the_middle() {
    constexpr int32_t NO_SUCH_UNIT = 40;
    Flange(STAND_ALONE, TARVANE_INTEGRAL_WELD_NECK, TARVANE_ANALYSE).calculate(TARVANE_ASME_VIII_2);
    report_to(NO_SUCH_UNIT);
    Flange(IN_A_VESSEL, TARVANE_INTEGRAL_WELD_NECK, TARVANE_ANALYSE).calculate(TARVANE_ASME_VIII_2);
    VARIABLE(METRICCONSTANTS_mp_G_NMETRIC_CONSTANT) = 1;
    VARIABLE(GLOBALS_mp_G_NUSE_OLD_DIV_2) = 1;
}

void ask_for_data() {
    const float warm = 250.0f, titanium = 0.95f, dia = 0.875f;
    const int32_t asme = 1, series = 4, none_such = 99, on = 1, reference = 1;
    float result = 0.0f, limits[2], row[9], diameters[27], rows[27 * 9];
    int32_t found = 0, count = 0, pwht[3] = {};
    ENGINE(MODULUS)(&titanium, &result, &warm);
    ENGINE(ASMEMOD)(&warm, &none_such, &asme);
    ENGINE(GET_YIELD_STRESS_FROM_CHART)("HA-3", 4, &warm, &result);
    ENGINE(GETBOLTDATA)(&dia, &series, row, &found);
    ENGINE(BOLTHELPER)(&series, diameters, rows, &count);
    ENGINE(PWHT_NEEDED)
    ("SA-516 70", 9, &reference, &asme, &on, &dia, &pwht[0], &pwht[1], &on, &pwht[2]);
    ENGINE(CHECK_BOLT_MATL_VS_DIAMETER)
    ("SA-193 B7", 9, &reference, &limits[0], &limits[1], &found, &dia, &on, &asme, &on, &on, &on);
    ENGINE(TABLE_G_FACTOR_A)(&warm, &dia, &result);
    ENGINE(SET_MATERIAL_CLASS_NAMES)();
    char folder[20];
    ENGINE(HELP_FOLDER)(&asme, folder, 20);
}

// An impact table and an element that reads the edition, from a host's record that is blank before and
// after.
void ask_for_toughness() {
    TARVANE_HOST_INPUT& host = *ENGINE(GETHOSTINPUT)();
    const TARVANE_HOST_INPUT blank = host;
    std::memcpy(host.impact_switches, "1111", 4);
    for (int k = 0; k < 3; ++k) {
        std::memcpy(host.impact_counts[k], "11", 2);
        for (int i = 0; i < 11; ++i) {
            std::memcpy(host.impact_names[k][i], "SA-350 LF2", 10);
            std::memcpy(host.impact_numbers[k][i], "-50", 3);
        }
    }
    std::memcpy(host.single_name, "SA-350 LF2", 10);
    std::memcpy(host.single_number, "-50", 3);
    ENGINE(READ_IMPACT_TABLE)();
    host = blank;

    const int32_t curve = TARVANE_CURVE_B, code = 1, on = 1, off = 0;
    const float tg = 1.0f, one = 1.0f, zero = 0.0f, tr = 0.5f;
    float t_min, mdmt, t_ug20, ratio = 0.0f, estar_used = 0.0f, reduction = 0.0f;
    int32_t warnings = 0;
    ENGINE(MDMT_ELEMENT)
    (&curve, &tg, &t_min, &mdmt, &t_ug20, &one, &zero, &zero, &tr, &warnings, &code, &ratio, &on,
     &on, &zero, &on, &zero, &estar_used, "SA-350 LF2", 10, &on, &on, &reduction, &off, &zero,
     &off);
}

// The library and its data under links in a folder of their own.
class Links {
  public:
    explicit Links(const fs::path& file)
        : folder(fs::temp_directory_path() / ("tarvane_trace_" + std::to_string(getpid()))),
          library_link(folder / file.filename()) {
        fs::create_directories(folder);
        for (const fs::directory_entry& entry : fs::directory_iterator(file.parent_path()))
            if (entry.is_regular_file())
                fs::create_symlink(fs::absolute(entry.path()), folder / entry.path().filename());
        if (!fs::exists(library_link)) fs::create_symlink(fs::canonical(file), library_link);
    }
    ~Links() { fs::remove_all(folder); }
    Links(const Links&) = delete;
    Links& operator=(const Links&) = delete;

    const fs::path folder, library_link;
};

// The lookups no longer find a file.
void find_nothing(const Links& links) {
    for (const char* const name : {"ElastAlp07.txt", "BOLTDATA.TXT", "MATFILE1.BIN"})
        fs::remove(links.folder / name);
    const float warm = 250.0f, dia = 0.875f;
    const int32_t reference = 1, asme = 1, series = 1, inch = 0;
    float row[9], limits[2];
    int32_t found = 0;
    ENGINE(ASMEMOD)(&warm, &reference, &asme);
    ENGINE(GETBOLTDATA)(&dia, &series, row, &found);
    ENGINE(CHECK_BOLT_MATL_VS_DIAMETER)
    ("SA-193 B7", 9, &reference, &limits[0], &limits[1], &found, &dia, &inch, &asme, &inch, &inch,
     &inch);
}

std::size_t differences(const Storage& storage, const std::vector<char>& at_load) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < storage.size; ++i)
        count += storage.first[i] != at_load[i] ? 1 : 0;
    return count;
}

} // namespace

int main(int count, char** arguments) {
    const Links links(count == 2 ? arguments[1] : "libtarvane.so");
    library = dlopen(links.library_link.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::fprintf(stderr, "reset_trace: no library\n");
        return 1;
    }
    Storage storage;
    dl_iterate_phdr(find_storage, &storage);
    const std::vector<char> at_load(storage.first, storage.first + storage.size);

    // A host that survives: messages to no one, a report file, a stop that returns.
    TARVANE_HOST_SERVICES services = {};
    services.version = TARVANE_HOST_SERVICES_VERSION;
    services.stop = [](void*, int32_t) {};
    const int32_t on = 1, off = 0, unit = 20;
    void* window = &services;
    char path[64];
    std::snprintf(path, sizeof path, "/tmp/tarvane_trace_%d.txt", static_cast<int>(getpid()));
    int32_t status = 1;
    ENGINE(SET_HOST_SERVICES)(&services);
    ENGINE(SET_HOST_WINDOW)(&window);
    ENGINE(SET_NO_DIALOG)(&on);
    ENGINE(OPENUNIT)(&unit, path, static_cast<int32_t>(std::strlen(path)), &status);

    turn_switches();
    calculate_flanges(unit);
    ask_for_data();
    ask_for_toughness();
    report_to(-1);
    calculate_flanges(-1);
    leave_in_the_middle();

    const std::size_t touched = differences(storage, at_load);
    ENGINE(RESET_ENGINE)();
    const std::size_t kept = differences(storage, at_load);
    find_nothing(links);
    ENGINE(RESET_ENGINE)();

    ENGINE(CLOSEUNIT)(&unit);
    unlink(path);
    window = nullptr;
    ENGINE(SET_HOST_SERVICES)(nullptr);
    ENGINE(SET_HOST_WINDOW)(&window);
    ENGINE(SET_NO_DIALOG)(&off);

    int traces = 0;
    for (std::size_t i = 0; i < storage.size; ++i) {
        if (storage.first[i] == at_load[i]) continue;
        if (++traces <= 20)
            std::fprintf(stderr, "reset_trace: %#zx of the library holds %#04x, at load %#04x\n",
                         reinterpret_cast<std::uintptr_t>(storage.first + i) - storage.base,
                         static_cast<unsigned char>(storage.first[i]),
                         static_cast<unsigned char>(at_load[i]));
    }
    std::printf("reset_trace: %zu bytes of %zu were in use, %zu were kept, %d are not as at load\n",
                touched, storage.size, kept, traces);
    return status == 0 && touched > 20000 && traces == 0 ? 0 : 1;
}
