// A real flange for the tests of driver and kernel: the integral flange of the published Division 2
// example 4.16.1, corroded dimensions, as a record and text block.
#pragma once

#include "flange/driver.h"
#include "frame/element_tables.h"
#include "frame/switches.h"
#include "frame/units.h"
#include "host/services.h"
#include "report/channel.h"
#include "tarvane/tarvane.h"
#include "test_paths.h"

#include <array>
#include <cstring>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace tarvane {

struct SampleFlange {
    std::array<Real, 200> elements{};
    std::array<char, 435> text{};
    Int reportKernel = 1, writeCase = 1, quietOverstress = 0, rigidity = 0, code = 1, element = 1,
        boltRow = 1, corrodedRigidity = 0, standardFlange = 0, div2Edition = 0, decimalComma = 0;
    Real jointE = 1.0f, pOperating = 135.0f;
    Real mapNc = -7.0f, tReqNewCold = -7.0f, tReqNew = -7.0f, mawp = -7.0f, tReq = -7.0f;

    SampleFlange() {
        text.fill(' ');
        set({{1, 1.0f},     {2, 1.0f},      {3, 1.0f},      {4, 135.0f},    {5, 650.0f},
             {6, 17800.0f}, {7, 20000.0f},  {8, 1.4375f},   {10, 26.25f},   {11, 32.875f},
             {12, 30.5f},   {13, 26.25f},   {14, 30.0f},    {15, 29.0f},    {16, 0.3125f},
             {17, 0.6875f}, {18, 2.125f},   {19, 25000.0f}, {20, 25000.0f}, {21, 31.25f},
             {22, 0.75f},   {23, 1.0f},     {24, 44.0f},    {25, 3.75f},    {26, 7600.0f},
             {27, 5.0f},    {28, 2.0f},     {30, 0.125f},   {34, 1.0f},     {53, 0.2836f},
             {54, 26.25f},  {60, 17800.0f}, {61, 20000.0f}, {71, 0.3125f}});
        put(0, "SA-105");
        put(15, "SA-193 B7");
        put(30, "Sample");
        put(60, "N");
        put(120, "CS-2");
        for (Real& x : units())
            x = 1.0f;
        at(108) = 0.0f;
        for (const auto& [slot, label] :
             std::initializer_list<std::pair<int, const char*>>{{285, "in."},
                                                                {300, "psig"},
                                                                {315, "in."},
                                                                {330, "psi"},
                                                                {360, "lbf"},
                                                                {375, "ft-lbs"},
                                                                {390, "in\xB2"},
                                                                {405, "F"},
                                                                {420, "lbm"}})
            put(slot, label);
    }

    Real& at(Int i) { return elements[static_cast<std::size_t>(i - 1)]; }
    void set(std::initializer_list<std::pair<Int, Real>> values) {
        for (const auto& [i, x] : values)
            at(i) = x;
    }
    void put(int offset, std::string_view slot) {
        std::memset(text.data() + offset, ' ', 15);
        std::memcpy(text.data() + offset, slot.data(), slot.size());
    }
    std::vector<std::reference_wrapper<Real>> units() {
        std::vector<std::reference_wrapper<Real>> factors;
        for (Int i = 100; i <= 110; ++i)
            factors.emplace_back(at(i));
        return factors;
    }

    FLANGE_ARGUMENTS arguments() {
        return {elements.data(),   text.data(),     &reportKernel, &writeCase,   &mapNc,
                &tReqNewCold,      &tReqNew,        &mawp,         &tReq,        &quietOverstress,
                &rigidity,         &code,           &element,      &boltRow,     &jointE,
                &corrodedRigidity, &standardFlange, &pOperating,   &div2Edition, &decimalComma};
    }
    void run() {
        FLANGE_ARGUMENTS all = arguments();
        FLANGE_CALC(all);
    }
};

// Engine as at load, data of the source tree, report to the line store.
inline void fresh_engine() {
    RESET_ENGINE();
    SYSTEM_DIR = Text<260>(TARVANE_DATA_DIR);
    SYSTEM_DIR_LENGTH = SYSTEM_DIR.trimmed_length();
    MODULE_DIR = Text<256>(TARVANE_DATA_DIR);
    MODULE_DIR_LENGTH = MODULE_DIR.trimmed_length();
    UNITS = UNIT_CONSTANTS{};
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;
    SET_METRIC_CONSTANTS();
    moduleCode = 1;
    for (SETUP_ELEMENT& element : SETUP)
        element.whole = 0;
    IWRITE = IWRTFL = 1;
    IOUT = -1;
}

// The lines of the store, trimmed, without margin and marks.
inline std::vector<std::string> stored_lines() {
    std::vector<std::string> lines;
    for (Int i = 0; i < tarvane::LINE_COUNT; ++i) {
        const std::string_view record(LINESCOM[i], STORE_WIDTH);
        const std::size_t end = record.find('\0');
        const std::string_view shown = record.substr(4, end - 12 - 4);
        lines.emplace_back(trimmed(shown));
    }
    return lines;
}

inline bool has_line(const std::vector<std::string>& lines, std::string_view wanted) {
    for (const std::string& line : lines)
        if (line.find(wanted) != std::string::npos) return true;
    return false;
}

} // namespace tarvane
