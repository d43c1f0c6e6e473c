// Nothing is allocated inside the engine, and a call that finds the tables read and their files unchanged
// opens no file: this program counts every call of the allocation functions and every opening of a file
// while a call of the library runs, from the first call after load on.
#include "tarvane/tarvane.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

// ---- the counters ------------------------------------------------------------------------------

namespace {
bool counting = false;
int allocations = 0, files_opened = 0;

void note() {
    if (counting) ++allocations;
}

int opened(const char* path, int flags, mode_t mode) {
    if (counting) ++files_opened;
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}
} // namespace

extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);

void* malloc(std::size_t size) {
    note();
    return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
    note();
    return __libc_calloc(count, size);
}
void* realloc(void* block, std::size_t size) {
    note();
    return __libc_realloc(block, size);
}
void* memalign(std::size_t alignment, std::size_t size) {
    note();
    return __libc_memalign(alignment, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }
int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    *block = memalign(alignment, size);
    return *block == nullptr ? 12 : 0;
}
void free(void* block) {
    if (block != nullptr) note();
    __libc_free(block);
}

// The engine opens files by these, and passes the rights with every one that it may create.
int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return opened(path, flags, mode);
}
int open64(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return opened(path, flags, mode);
}
}

void* operator new(std::size_t size) { return malloc(size); }
void* operator new[](std::size_t size) { return malloc(size); }
void operator delete(void* block) noexcept { free(block); }
void operator delete[](void* block) noexcept { free(block); }
void operator delete(void* block, std::size_t) noexcept { free(block); }
void operator delete[](void* block, std::size_t) noexcept { free(block); }

// ---- the flange --------------------------------------------------------------------------------

namespace {

struct Flange {
    float record[TARVANE_RECORD_ELEMENTS] = {};
    char text[TARVANE_TEXT_LENGTH];
    float map_nc = 0, t_new_cold = 0, t_new = 0, mawp = 0, t_req = 0;
    int32_t rigidity = 0;

    Flange(float element, int type, int kind) {
        std::memset(text, ' ', sizeof text);
        put(TARVANE_TEXT_MATERIAL, "SA-105");
        put(TARVANE_TEXT_BOLT_MATERIAL, "SA-193 B7");
        put(TARVANE_TEXT_DESCRIPTION, "no allocation");
        put(TARVANE_TEXT_MATING_LOADS, "N");
        put(TARVANE_TEXT_USE_CORROSION, "Y");
        put(TARVANE_TEXT_CHART, "CS-2");
        const struct {
            int element;
            float value;
        } given[] = {
            {TARVANE_ELEMENT, element},
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
            {TARVANE_go, 0.375f},
            {TARVANE_g1, 1.19f},
            {TARVANE_h, 3.31f},
            {TARVANE_C, 17.0f},
            {TARVANE_a, 0.875f},
            {TARVANE_THREADS, 1.0f},
            {TARVANE_BOLTS, 12.0f},
            {TARVANE_m, 2.0f},
            {TARVANE_y, 1600.0f},
            {TARVANE_SKETCH, 1.0f},
            {TARVANE_COLUMN, 2.0f},
            {TARVANE_MATERIAL_CLASS, 1.0f},
            {TARVANE_DENSITY, 0.2836f},
            {TARVANE_SHELL_ID, 12.0f},
            {TARVANE_SHELL_STRESS, 20000.0f},
            {TARVANE_SHELL_STRESS_COLD, 20000.0f},
            {TARVANE_SHELL_THICKNESS, 0.375f},
        };
        for (const auto& entry : given)
            TARVANE_AT(record, entry.element) = entry.value;
        for (int unit = TARVANE_UNIT_THICKNESS; unit <= TARVANE_UNIT_WEIGHT; ++unit)
            TARVANE_AT(record, unit) = 1.0f;
        TARVANE_AT(record, TARVANE_UNIT_TEMPERATURE_OFFSET) = 0.0f;
    }

    void put(int offset, const char* slot) { std::memcpy(text + offset, slot, std::strlen(slot)); }

    void calculate(int32_t code) {
        const int32_t one = 1, zero = 0;
        const float joint_e = 1.0f, p_operating = 200.0f;
        rigidity = 1;
        FLANGE_CALC(record, text, TARVANE_TEXT_LENGTH, &one, &one, &map_nc, &t_new_cold, &t_new,
                    &mawp, &t_req, &zero, &rigidity, &code, &one, &one, &joint_e, &zero, &zero,
                    &p_operating, &zero, &zero);
    }
};

int failures = 0;

void check(bool fine, const char* where, const char* what) {
    if (fine) return;
    std::fprintf(stderr, "no_allocation: %s: %s\n", where, what);
    ++failures;
}

template <typename Call>
void expect_none(const char* what, Call call) {
    allocations = files_opened = 0;
    counting = true;
    call();
    counting = false;
    if (allocations == 0) return;
    std::fprintf(stderr, "no_allocation: %d allocations in %s\n", allocations, what);
    ++failures;
}

void report_to(int32_t unit) {
    const int32_t one = 1;
    SET_IOUT(&unit);
    SET_IWRITE(&one);
    SET_IWRTFL(&one);
}

void to_store(const char* what, int type, int kind, int32_t code) {
    constexpr float STAND_ALONE = -1.0f;
    Flange flange(STAND_ALONE, type, kind);
    expect_none(what, [&] {
        SET_METRIC_CONSTANTS();
        report_to(-1);
        flange.calculate(code);
    });
    int32_t lines = 0;
    LINE_COUNT(&lines);
    check(lines > 50, what, "the store holds no report");
    check(flange.mawp != TARVANE_NO_VALUE, what, "no result");
}

void to_file(const char* what, int type, int kind, int32_t code) {
    char path[64];
    std::snprintf(path, sizeof path, "/tmp/tarvane_report_%d.txt", static_cast<int>(getpid()));
    const auto path_len = static_cast<int32_t>(std::strlen(path));
    constexpr float IN_A_VESSEL = 1.0f;
    Flange flange(IN_A_VESSEL, type, kind);
    expect_none(what, [&] {
        int32_t unit = 0, status = 1;
        GETNEXTUNIT(&unit);
        OPENUNIT(&unit, path, path_len, &status);
        SET_METRIC_CONSTANTS();
        SET_MODULE_CODE(&code);
        report_to(unit);
        flange.calculate(code);
        CLOSEUNIT(&unit);
    });
    long size = 0;
    if (std::FILE* const report = std::fopen(path, "rb")) {
        std::fseek(report, 0, SEEK_END);
        size = std::ftell(report);
        std::fclose(report);
    }
    unlink(path);
    check(size > 50 * 102, what, "the file holds no report");
}

// The same record under all codes, with nothing left to read.
void warm_calls(const char* what) {
    for (int32_t code = TARVANE_ASME_VIII_1; code <= TARVANE_EN_13445; ++code) {
        for (int type = TARVANE_INTEGRAL_WELD_NECK; type <= TARVANE_LOOSE_REVERSE; ++type) {
            for (int kind = TARVANE_ANALYSE; kind <= TARVANE_DESIGN; ++kind) {
                for (const float element : {-1.0f, 1.0f}) {
                    Flange flange(element, type, kind);
                    expect_none(what, [&] {
                        SET_MODULE_CODE(&code);
                        report_to(element < 0.0f ? -1 : 0);
                        flange.calculate(code);
                    });
                    check(files_opened == 0, what, "a file was opened");
                }
            }
        }
    }
}

// Where the engine's data are: beside the library.
std::string data_folder() {
    Dl_info info;
    if (dladdr(reinterpret_cast<void*>(&FLANGE_CALC), &info) == 0) return {};
    const std::string file = info.dli_fname;
    return file.substr(0, file.rfind('/'));
}

} // namespace

int main() {
    // The counters see what they should see.
    counting = true;
    void* volatile block = malloc(1);
    int* volatile number = new int(1);
    const int null = open("/dev/null", O_RDONLY);
    counting = false;
    check(allocations == 2 && files_opened == 1, "counters", "they do not count");
    free(block);
    delete number;
    close(null);

    using Kind = int;
    constexpr Kind ANALYSE = TARVANE_ANALYSE, THICKNESS = TARVANE_THICKNESS,
                   DESIGN = TARVANE_DESIGN;

    to_store("the first call after load", TARVANE_INTEGRAL_WELD_NECK, ANALYSE, 1);
    check(files_opened > 0, "the first call after load", "it read nothing");
    to_store("the second call", TARVANE_INTEGRAL_WELD_NECK, ANALYSE, 1);
    // A data file that was made just now is read each time.
    for (int tries = 0; files_opened > 0 && tries < 40; ++tries) {
        usleep(100'000);
        to_store("a later call", TARVANE_INTEGRAL_WELD_NECK, ANALYSE, 1);
    }
    // The materials of a code are read at its first call.
    for (int32_t code = TARVANE_ASME_VIII_1; code <= TARVANE_ASME_VIII_2; ++code) {
        SET_MODULE_CODE(&code);
        Flange(1.0f, TARVANE_INTEGRAL_WELD_NECK, ANALYSE).calculate(code);
    }
    warm_calls("a warm call");
    expect_none("RESET_ENGINE", [] { RESET_ENGINE(); });
    to_store("the first call after RESET_ENGINE", TARVANE_INTEGRAL_WELD_NECK, THICKNESS, 1);
    to_store("Division 2", TARVANE_INTEGRAL_WELD_NECK, THICKNESS, 2);
    to_store("PD 5500", TARVANE_INTEGRAL_WELD_NECK, THICKNESS, 3);
    to_store("EN 13445", TARVANE_INTEGRAL_WELD_NECK, THICKNESS, 4);
    to_store("a blind flange", TARVANE_BLIND, THICKNESS, 1);
    to_store("a loose ring", TARVANE_LOOSE_RING, THICKNESS, 1);
    to_store("the design of a flange", TARVANE_INTEGRAL_WELD_NECK, DESIGN, 1);

    expect_none("RESET_ENGINE", [] { RESET_ENGINE(); });
    to_file("a report to a file", TARVANE_INTEGRAL_WELD_NECK, ANALYSE, 1);
    to_file("a second report to a file", TARVANE_INTEGRAL_WELD_NECK, THICKNESS, 1);
    to_file("a report to a file, Division 2", TARVANE_INTEGRAL_WELD_NECK, THICKNESS, 2);
    to_file("a report to a file, EN 13445", TARVANE_INTEGRAL_WELD_NECK, THICKNESS, 4);
    to_file("a report of a blind flange to a file", TARVANE_BLIND, THICKNESS, 1);

    // After RESET_ENGINE too, where the host says where the files are.
    const std::string folder = data_folder();
    const auto length = static_cast<int32_t>(folder.size());
    SET_MODULE_DIR(folder.c_str(), length);
    SET_SYSTEM_DIR(folder.c_str(), length);
    expect_none("RESET_ENGINE", [] { RESET_ENGINE(); });
    warm_calls("a call after RESET_ENGINE");

    expect_none("the data routines", [] {
        RESET_ENGINE();
        const float temperature = 300.0f, dia = 0.875f;
        const int32_t reference = 1, code = 1, series = 1;
        float row[9], diameters[27], rows[27 * 9];
        int32_t found = 0, count = 0;
        ASMEMOD(&temperature, &reference, &code);
        GETBOLTDATA(&dia, &series, row, &found);
        BOLTHELPER(&series, diameters, rows, &count);
        char path[260];
        const int32_t selector = 270;
        GET_SYSTEM_PATH(&selector, "TARVANE", 7, "2024", 4, path, 260);
        HELP_LANGUAGE();
    });

    if (failures == 0) std::puts("no_allocation: none");
    return failures == 0 ? 0 : 1;
}
