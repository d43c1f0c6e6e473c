// The library with faults for the comparison to find: this one replaces it, passes most calls on and spoils a
// few.
#include "tarvane/tarvane.h"

#include <bit>
#include <csignal>
#include <cstdint>
#include <cstdio>

#include <dlfcn.h>

namespace {

TARVANE_HOST_SERVICES services = {};

template <typename Routine>
Routine real(const char* name) {
    return reinterpret_cast<Routine>(dlsym(RTLD_NEXT, name));
}
#define REAL(name) real<decltype(&::name)>(#name)

} // namespace

// The last bit of a result, for one call in eight or so.
void FACTOR_B(const float* A, const float* E, const float* A1, const float* A2, const float* B1,
              const float* B2, const float* B3, const float* B4, float* B) {
    REAL(FACTOR_B)(A, E, A1, A2, B1, B2, B3, B4, B);
    if ((std::bit_cast<std::uint32_t>(*E) & 7) == 3)
        *B = std::bit_cast<float>(std::bit_cast<std::uint32_t>(*B) ^ 1);
}

// No fault: another sign of what is not a number.
void CC2286_BENDING(const float* Do, const float* t, const float* Ey, const float* Fy,
                    const float* FS, const float* S, float* F) {
    REAL(CC2286_BENDING)(Do, t, Ey, Fy, FS, S, F);
    if (*F != *F) *F = -*F;
}

// A fault of memory.
void UG84_REDUCTION(float* reduction, const float* yield) {
    if (*yield > 109.0f) std::raise(SIGSEGV);
    REAL(UG84_REDUCTION)(reduction, yield);
}

// A loop without end, late in the life of the process.
void MODULUS(const float* selector, float* modulus, const float* temperature) {
    static int calls = 0;
    if (++calls == 150)
        for (volatile bool on = true; on;) {
        }
    REAL(MODULUS)(selector, modulus, temperature);
}

// A setup element, one number of a table, a line more, a file, a message.
void SET_YIELD(const float* yield) {
    REAL(SET_YIELD)(yield);
    if (*yield > 30000.0f) REAL(GETSETUP)()[199].whole = 1;
}
void SET_MATERIAL_CLASS_NAMES() {
    REAL(SET_MATERIAL_CLASS_NAMES)();
    ++REAL(GETMATERIALCLASSNAMES)()[51].number;
}
void SET_IOSTEP(const std::int32_t* on) {
    REAL(SET_IOSTEP)(on);
    char* const store = REAL(GETLINESCOMFLG)();
    store[7] = store[7] == '.' ? ',' : '.';
}
void OPENUNIT(const std::int32_t* unit, const char* path, std::int32_t length,
              std::int32_t* status) {
    REAL(OPENUNIT)(unit, path, length, status);
    if (*unit % 7 != 3) return;
    if (std::FILE* const file = std::fopen("planted", "w")) std::fclose(file);
}
void SET_HOST_SERVICES(const TARVANE_HOST_SERVICES* table) {
    REAL(SET_HOST_SERVICES)(table);
    services = table == nullptr ? TARVANE_HOST_SERVICES{} : *table;
}
std::int32_t IS_MAIN_HOST() {
    if (services.end_dialog != nullptr) services.end_dialog(services.user);
    return REAL(IS_MAIN_HOST)();
}
