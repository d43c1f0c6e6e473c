// Lookups of material data through the C surface: the last of 3000 material records, and the modulus
// of the first and the last row of a long reference table.
#include "tarvane/tarvane.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr std::int32_t RECORDS = 3000;

// Data folder of the benchmark's own, deleted with it.
class Folder {
  public:
    Folder() : path(std::filesystem::temp_directory_path() / "tarvane_materials_bench") {
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path);
    }
    ~Folder() { std::filesystem::remove_all(path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    // The engine reads here; beside the library there is nothing.
    void use() const {
        RESET_ENGINE();
        const std::string name = path.string();
        SET_SYSTEM_DIR(name.data(), static_cast<std::int32_t>(name.size()));
        SET_MODULE_DIR(name.data(), static_cast<std::int32_t>(name.size()));
    }
    std::ofstream file(const char* name) const { return {path / name, std::ios::binary}; }

  private:
    std::filesystem::path path;
};

// Many records share a reference number, as in the files of the codes.
std::int32_t reference_of(std::int32_t number) { return number % 40; }
std::string name_of(std::int32_t number) { return "SA-516 " + std::to_string(number); }

void write_materials(const Folder& folder) {
    std::ofstream file = folder.file("MATFILE1.BIN");
    TARVANE_MATERIAL_RECORD record;
    const auto write = [&] {
        file.write(reinterpret_cast<const char*>(&record), TARVANE_MATERIAL_BYTES);
    };
    std::memset(&record, 0, sizeof record);
    const std::int32_t counts[2] = {RECORDS, 0};
    std::memcpy(&record, counts, sizeof counts);
    write();
    for (std::int32_t number = 1; number <= RECORDS; ++number) {
        std::memset(&record, 0, sizeof record);
        std::memset(record.name, ' ', sizeof record.name);
        const std::string name = name_of(number);
        std::memcpy(record.name, name.data(), name.size());
        record.reference = reference_of(number);
        write();
    }
}

void read_material(benchmark::State& state, const std::string& name, std::int32_t reference,
                   std::int32_t expected) {
    const Folder folder;
    write_materials(folder);
    folder.use();
    const std::int32_t code = TARVANE_ASME_VIII_1, length = static_cast<std::int32_t>(name.size());
    TARVANE_MATERIAL_RECORD record;
    std::int32_t status = -1;
    for (auto _ : state) {
        READ_MATERIAL(&code, name.data(), length, &reference, &status, &record);
        benchmark::DoNotOptimize(record);
    }
    if (status != expected) state.SkipWithError("the record was not looked up");
    RESET_ENGINE();
}

void read_last_of_3000_materials(benchmark::State& state) {
    read_material(state, name_of(RECORDS), reference_of(RECORDS), 0);
}
BENCHMARK(read_last_of_3000_materials)->Unit(benchmark::kMicrosecond);

void miss_among_3000_materials(benchmark::State& state) { read_material(state, "SA-36", 7, 1); }
BENCHMARK(miss_among_3000_materials)->Unit(benchmark::kMicrosecond);

void count_3000_materials(benchmark::State& state) {
    const Folder folder;
    write_materials(folder);
    folder.use();
    const std::int32_t code = TARVANE_ASME_VIII_1;
    std::int32_t count = 0;
    for (auto _ : state)
        MATERIAL_COUNT(&code, &count);
    if (count != RECORDS) state.SkipWithError("not all records were counted");
    RESET_ENGINE();
}
BENCHMARK(count_3000_materials)->Unit(benchmark::kMicrosecond);

// A table as long as the one of the codes: the reference numbers 1 to 230, the last one asked for.
void write_moduli(const Folder& folder) {
    std::ofstream file = folder.file("ElastAlp07.txt");
    std::string numbers, temperatures;
    for (int i = 0; i < 36; ++i) {
        temperatures += " " + std::to_string(50 * i + 50);
        numbers += " 2" + std::to_string(9 - i / 4) + "." + std::to_string(i % 10);
    }
    file << "[Emod]\n[Temp]   " << temperatures << '\n';
    for (int reference = 1; reference <= 230; ++reference) {
        std::string row = std::to_string(reference) + " 0";
        row.resize(63, ' ');
        file << row << numbers << '\n';
    }
    file << "[CoE]\n";
}

void elastic_modulus(benchmark::State& state, std::int32_t reference) {
    const Folder folder;
    write_moduli(folder);
    folder.use();
    const std::int32_t code = TARVANE_ASME_VIII_1;
    const float temperature = 650.0f;
    float modulus = 0.0f;
    for (auto _ : state)
        benchmark::DoNotOptimize(modulus = ASMEMOD(&temperature, &reference, &code));
    if (!(modulus > 0.0f)) state.SkipWithError("no modulus");
    RESET_ENGINE();
}

void modulus_of_the_first_row(benchmark::State& state) { elastic_modulus(state, 1); }
BENCHMARK(modulus_of_the_first_row)->Unit(benchmark::kMicrosecond);

void modulus_of_the_last_of_230_rows(benchmark::State& state) { elastic_modulus(state, 230); }
BENCHMARK(modulus_of_the_last_of_230_rows)->Unit(benchmark::kMicrosecond);

} // namespace
