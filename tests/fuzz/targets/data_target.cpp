// A data file of any content: the routines that read it are called, and the commands of the program that show
// it. The input is the file.
//
//   fuzz_data --file=NAME ...      without a name that it knows it prints them
#include "ground.h"
#include "routines.h"

#include "catalogue/data_files_check.h"
#include "catalogue/data_folder.h"
#include "catalogue/en_materials.h"
#include "commands/chart_command.h"
#include "commands/flanges_command.h"
#include "commands/materials_command.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);
extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments);

namespace {

using namespace calls;
namespace app = tarvane::app;
namespace vessel = tarvane::vessel;

// Calls of each routine that looks things up; calculations take their time.
constexpr int ROUNDS = 3;
constexpr std::size_t USERS_ONE_IN = 8;

// ---- what the program does with a file --------------------------------------------------------------------

void show_charts(std::ostream& out) {
    for (const char* const name : {"CS-1", "CS-2", "CS-3"}) {
        app::ChartOptions options;
        options.name = name;
        options.temperature = 300.0f;
        options.yield = 38000.0f;
        options.A = 0.001f;
        app::show_chart(options, out, out);
    }
}

void list_flanges(std::ostream& out) {
    constexpr struct {
        const char *name, *size;
        bool slip_on;
    } ASKED[] = {{"", "", false}, {"600", "12", true}, {"PN16", "DN 50", false}};
    for (const auto& [name, size, slip_on] : ASKED) {
        app::FlangesOptions options;
        options.name = name;
        options.size = size;
        options.slip_on = slip_on;
        app::list_flanges(options, out, out);
    }
}

void list_materials(std::ostream& out) {
    constexpr struct {
        const char* name;
        bool metric;
    } ASKED[] = {{"", false}, {"SA-516 70", true}, {"SA-193 B7", false}};
    for (const auto& [name, metric] : ASKED) {
        app::MaterialsOptions options;
        options.name = name;
        options.selection.metric = metric;
        app::list_materials(options, out, out);
    }
}

void read_moduli(std::ostream&) { vessel::modulus_tables(); }

void show_en_materials(std::ostream& out) {
    for (const char* const name : {"P265GH", "1.0425"})
        for (const vessel::EnMaterial& material : vessel::en_materials_named(name))
            out << vessel::strengths_of(material, 300.0f);
}

void ask_approximate(std::ostream&) {
    vessel::is_approximate("ElastAlp07.txt", "modulus 5");
    vessel::is_approximate("", "");
}

// ---- the files --------------------------------------------------------------------------------------------

struct DataFile {
    std::string_view name;
    std::string_view others;   // that have the same content
    std::string_view routines; // that look things up in it
    std::string_view users;    // calculations that use it
    void (*show)(std::ostream& out);
};
constexpr DataFile FILES[] = {
    {"BOLTDATA.TXT", "", "GETBOLTDATA BOLTHELPER", "FLANGE_CALC", nullptr},
    {"ElastAlp07.txt", "", "ASMEMOD MODULUS MODULUS_STATUS", "FLANGE_CALC SHLEXT", read_moduli},
    {"ExtChartData.txt", "", "READ_CHART GET_YIELD_STRESS_FROM_CHART", "SHLEXT", show_charts},
    {"TableGData.txt", "", "TABLE_G_FACTOR_A", "SHLEXT", nullptr},
    {"ANSIFlangeDimensions.txt", "", "GET_FLANGE_SIZES GET_FLANGE_DIMENSIONS", "", list_flanges},
    {"VIII-1_Matls_By_Table.txt", "", "LIS_UCS23_MATERIAL", "SHLINT", nullptr},
    {"MATFILE1.BIN",
     "MATFILE1M.BIN MATFILE2.BIN MATFILE2M.BIN MatFileD2C1.BIN MatFileD2C1M.BIN MATFIL98.BIN "
     "MATFIL10M.BIN MATFILE43-74.BIN",
     "READ_MATERIAL MATERIAL_COUNT MATERIAL_BY_NUMBER CHECK_BOLT_MATL_VS_DIAMETER PWHT_NEEDED "
     "GETUCSCURVE",
     "MDMT_ELEMENT FORMING_STRAIN", list_materials},
    {"YIELDSTR.BIN", "YIELDSTRM.BIN JPNYLDM.BIN", "READ_YIELD_STRESS", "APP_1_4F_HEAD", nullptr},
    {"ENMATDATA.BIN", "", "READ_EN_MATERIAL", "", show_en_materials},
    {"approximate.txt", "", "", "", ask_approximate},
    {"PLWXML.TXT", "", "FOUNDATION_RECORD_DEFAULTS WRITE_FOUNDATION_FILES", "", nullptr},
    {"iotext.txt", "", "GET_KEYED_TEXT WRITE_KEYED_LINE", "", nullptr},
    {"Settings.ini", "", "GET_SYSTEM_PATH HELP_LANGUAGE HELP_FOLDER", "", nullptr},
};
const DataFile* file = nullptr;

// The words of a list.
template <typename Use>
void for_each_word(std::string_view list, const Use& use) {
    while (!list.empty()) {
        const std::string_view word = list.substr(0, list.find(' '));
        use(word);
        list.remove_prefix(std::min(word.size() + 1, list.size()));
    }
}

std::string shipped; // the content of the file before it was written over

// The other names lead to the file itself.
void link_others() {
    const std::filesystem::path& folder = fuzz::ground().folders().data_folder();
    shipped = content_of(folder / file->name);
    for_each_word(file->others, [&](std::string_view other) {
        std::filesystem::remove(folder / other);
        std::filesystem::create_symlink(file->name, folder / other);
    });
}

void write(const std::filesystem::path& path, const std::uint8_t* data, std::size_t size) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

std::uint64_t digest_of(const std::uint8_t* data, std::size_t size) {
    std::uint64_t digest = 14695981039346656037u;
    for (std::size_t i = 0; i < size; ++i)
        digest = (digest ^ data[i]) * 1099511628211u;
    return digest;
}

std::vector<const Routine*> routines_of(std::string_view names) {
    std::vector<const Routine*> list;
    for_each_word(
        names, [&](std::string_view name) { list.push_back(&routines()[routine_number(name)]); });
    return list;
}

// Drawn by the content, so that the file alone decides what happens.
void call_readers(std::uint64_t digest) {
    static const std::vector<const Routine*> READERS = routines_of(file->routines),
                                             USERS = routines_of(file->users);
    static const Routine* const FLANGE_CALC = &routines()[routine_number("FLANGE_CALC")];
    const fuzz::Ground& ground = fuzz::ground();
    Chance chance(digest, 0);
    Host host(ground.library, chance);
    ground.reset(host);
    host.begin();
    host.set_folders("../real", "../real");
    const auto call = [&](const Routine& routine) {
        Manner manner;
        if (&routine == FLANGE_CALC) host.prepare_flange(manner);
        const Noise noise = chance.one_in(4) ? Noise::edge : Noise::none;
        if (routine.call(ground.library, chance, noise, manner, routine.recipe) != Outcome::good)
            __builtin_trap();
    };
    for (int round = 0; round < ROUNDS; ++round)
        for (const Routine* const routine : READERS)
            call(*routine);
    for (const Routine* const routine : USERS)
        if (chance.one_in(USERS_ONE_IN)) call(*routine);
}

void show() {
    std::ostringstream out;
    try {
        vessel::set_data_folder("../real");
        vessel::data_file_fault(file->name);
        if (file->show != nullptr) file->show(out);
    } catch (const std::runtime_error&) { // a message of the program
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    constexpr std::string_view OPTION = "--file=";
    for (int i = 1; i < *count; ++i) {
        const std::string_view argument = (*arguments)[i];
        for (const DataFile& known : FILES)
            if (argument.starts_with(OPTION) && known.name == argument.substr(OPTION.size()))
                file = &known;
    }
    if (file == nullptr) {
        for (const DataFile& known : FILES)
            std::printf("%s\n", std::string(known.name).c_str());
        std::exit(2);
    }
    link_others();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Inside inside;
    write(fuzz::ground().folders().data_folder() / file->name, data, size);
    call_readers(digest_of(data, size));
    show();
    return 0;
}

// The damages of the other tests as often as bytes, now and then to the file as it is shipped.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
    Chance chance(seed, 0);
    if (chance.one_in(2)) return LLVMFuzzerMutate(data, size, most);
    const bool anew = chance.one_in(4);
    const std::string content =
        damaged(chance, anew ? shipped : std::string(reinterpret_cast<const char*>(data), size));
    size = std::min(content.size(), most);
    std::memcpy(data, content.data(), size);
    return size;
}
