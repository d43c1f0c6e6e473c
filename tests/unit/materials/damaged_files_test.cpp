// Damaged data files of every kind: cut short, and with bytes changed at random.
#include "bolting/bolt_material.h"
#include "materials/material_record.h"
#include "materials/stress_tables.h"
#include "materials/table_g.h"

#include "../data_folder.h"
#include "../material_file.h"
#include "frame/switches.h"

#include <functional>
#include <random>

namespace tarvane {
namespace {

using material_test::Record;

constexpr Real GIVEN = -7.0f; // in an output before the call

// A file, and a lookup of the entry at its end.
struct KIND {
    const char* file;
    const char* place;
    std::string content;
    // Looks up. Says whether the result is the one of a missing entry; any other result must be
    // whole, which it checks.
    std::function<bool()> empty;
};

// ---- binary files ------------------------------------------------------------------------------------

constexpr Int RECORDS = 40;
std::string name_of(Int i) { return "SA-" + std::to_string(100 + i); }

std::string binary_file(std::size_t bytes, const std::function<std::string(Int)>& record) {
    Record head("", 0);
    head.put(0, RECORDS - 1).put(4, Int{1});
    std::string file(head.view().substr(0, bytes));
    for (Int i = 1; i <= RECORDS; ++i)
        file += record(i);
    return file;
}

KIND material_file() {
    const auto record = [](Int i) {
        return std::string(Record(name_of(i), i).put(164, 70.0f).view());
    };
    return {"MATFILE1.BIN", "system", binary_file(414, record), [] {
                MATERIAL_RECORD r;
                r.tensile = GIVEN;
                Int status = 7;
                READ_MATERIAL(ASME_VIII_1, name_of(RECORDS), RECORDS, status, r);
                if (status == 0) {
                    EXPECT_EQ(r.reference, RECORDS);
                    return false;
                }
                EXPECT_EQ(status, 1);
                const MATERIAL_RECORD cleared;
                EXPECT_EQ(std::memcmp(&r, &cleared, sizeof r), 0);
                return true;
            }};
}

KIND material_list() {
    KIND kind = material_file();
    kind.empty = [] {
        Int count = -1, status = 7;
        MATERIAL_COUNT(ASME_VIII_1, count);
        EXPECT_GE(count, 0);
        EXPECT_LE(count, RECORDS);
        MATERIAL_RECORD r;
        MATERIAL_BY_NUMBER(ASME_VIII_1, count + 1, status, r);
        EXPECT_EQ(status, 1);
        if (count > 0) {
            MATERIAL_BY_NUMBER(ASME_VIII_1, count, status, r);
            EXPECT_EQ(status, 0);
        }
        return count < RECORDS;
    };
    return kind;
}

KIND bolt_material_file() {
    const auto record = [](Int i) {
        return std::string(Record(name_of(i), i).put(364, 0.5f).put(368, 4.0f).view());
    };
    return {"MATFILE2.BIN", "system", binary_file(414, record), [] {
                Real minDia = GIVEN, maxDia = GIVEN;
                Int ok = 7;
                CHECK_BOLT_MATL_VS_DIAMETER(name_of(RECORDS), RECORDS, minDia, maxDia, ok, 1.0f, 0,
                                            ASME_VIII_2, 0, 0, 1);
                EXPECT_TRUE(ok == -1 || ok == 0 || ok == 1) << ok;
                return ok == -1 && minDia == -1.0f && maxDia == -1.0f;
            }};
}

KIND yield_file() {
    const auto record = [](Int i) {
        return std::string(Record(name_of(i), i).put(164, 70.0f).view().substr(0, 364));
    };
    return {"YIELDSTR.BIN", "system", binary_file(364, record), [] {
                Real result = GIVEN;
                READ_YIELD_STRESS(name_of(RECORDS), 70.0f, 300.0f, result);
                EXPECT_NE(result, GIVEN);
                return result == 0.0f;
            }};
}

KIND en_file() {
    const auto record = [](Int i) {
        std::string bytes(EN_RECORD_BYTES, 'x');
        std::memcpy(bytes.data(), &i, sizeof i);
        return bytes;
    };
    return {"ENMATDATA.BIN", "system", binary_file(EN_RECORD_BYTES, record), [] {
                std::string r(EN_RECORD_BYTES, '?');
                const std::string untouched = r;
                Int status = 7;
                READ_EN_MATERIAL(RECORDS, status, r.data());
                if (r != untouched) {
                    EXPECT_EQ(status, 0);
                    EXPECT_EQ(r[0], RECORDS);
                    return false;
                }
                EXPECT_TRUE(status == 0 || status == 1);
                return status == 1; // the file ends before its counts do
            }};
}

// ---- texts ---------------------------------------------------------------------------------------------

KIND chart_file() {
    std::string text;
    for (const char* chart : {"CS-1", "CS-2", "HA-1", "NFN-1"}) {
        text += std::string("[") + chart + "]\n";
        for (int i = 1; i <= 8; ++i)
            text += std::to_string(i * 100) +
                    " 0 29.0 0.4E-03 5800 0.1 1.7E+04 0.123E+05 -0.4321E+04 0.5678E+03\n";
        text += "\n";
    }
    return {"ExtChartData.txt", "system", text + "[END]\n", [] {
                Text<12> name("NFN-1");
                Real t_used = GIVEN, E = GIVEN, Aelastic = GIVEN, second = GIVEN, Amax = GIVEN;
                Real Bmax = GIVEN, c0 = GIVEN, c1 = GIVEN, c2 = GIVEN;
                READ_CHART(name.data(), 12, 800.0f, t_used, E, Aelastic, second, Amax, Bmax, c0, c1,
                           c2, 0.0f);
                Int untouched = 0;
                for (const Real x : {t_used, E, Aelastic, second, Amax, Bmax, c0, c1, c2})
                    untouched += x == GIVEN ? 1 : 0;
                EXPECT_TRUE(untouched == 0 || untouched == 9) << untouched;
                return untouched == 9;
            }};
}

std::string property_row(const std::string& start) {
    std::string line = start;
    line.resize(63, ' ');
    for (int i = 1; i <= 36; ++i)
        line += " " + std::to_string(40 - i);
    return line + "\n";
}
std::string property_section(const std::string& name) {
    std::string text = name + "\n[Temp]   ";
    for (int i = 0; i < 36; ++i)
        text += " " + std::to_string(70 + 50 * i);
    text += "\n";
    for (int i = 1; i <= 3; ++i)
        text += property_row(std::to_string(i) + " 0");
    return text;
}

KIND modulus_file() {
    return {"ElastAlp07.txt", "system", property_section("[Emod]"), [] {
                Real E = GIVEN, alpha = GIVEN;
                READ_ELAST_ALPHA(3, -1, 0.0f, 100.0f, alpha, E);
                EXPECT_EQ(alpha, 0.0f);
                EXPECT_EQ(EMOD_STATUS, E <= 0.0001f ? 1 : 0);
                return E == 0.0f;
            }};
}

KIND coefficient_file() {
    return {"ElastAlp07.txt", "system", property_section("[CoE]"), [] {
                Real E = GIVEN, alpha = GIVEN;
                READ_ELAST_ALPHA(-1, 3, 100.0f, 0.0f, alpha, E);
                EXPECT_EQ(E, 0.0f);
                EXPECT_EQ(COE_STATUS, alpha < 0.001f ? 1 : 0);
                return alpha == 0.0f;
            }};
}

KIND table_g_file() {
    std::string text;
    for (int i = 0; i < 440; ++i)
        text += "; a comment\n";
    text += "[800]\n\n";
    for (int i = 1; i <= 12; ++i)
        text += std::to_string(i) + " 0.12345E-03\n";
    text += "[1000]\n\n";
    for (int i = 1; i <= 14; ++i)
        text += std::to_string(i) + " 0.12345E-03\n";
    return {"TableGData.txt", "library", text, [] {
                Real a = GIVEN;
                TABLE_G_FACTOR_A(2000.0f, 13.5f, a);
                EXPECT_TRUE(a == -1.0f || !(a <= 0.0f)) << a;
                return a == -1.0f;
            }};
}

KIND bolt_file() {
    std::string text = "[TEMA IMPERIAL]\n0 0 0 0 0 0 0 0 0\n";
    for (int i = 1; i <= 24; ++i)
        text += std::to_string(i) + ".5 0.126 1.25 0.8125 0.625 0.63 1.01 1.5 1.6\n";
    return {"BOLTDATA.TXT", "system", text + "[END]\n", [] {
                Real diameters[BOLT_ROWS], rows[BOLT_ROWS * BOLT_COLUMNS];
                Int count = -1;
                BOLTHELPER(TEMA_IMPERIAL, diameters, rows, count);
                EXPECT_GE(count, 0);
                EXPECT_LE(count, BOLT_ROWS);
                Real a = 4.5f;
                const BOLT_ROW row = BOLT_TABLE_ROW(a, 1, TEMA_IMPERIAL, 0.0f, 4);
                if (count == 0) {
                    EXPECT_EQ(row.boltDia, 0.0f);
                    EXPECT_EQ(row.totalArea, 0.0f);
                    for (const Real x : rows)
                        EXPECT_EQ(x, 0.0f);
                }
                return count < 25;
            }};
}

// ---- the damage ----------------------------------------------------------------------------------------

class DamagedFiles : public data_test::DataTest {
  protected:
    void use(const KIND& kind, const std::string& content) const {
        remove_file(kind.place, kind.file); // a new file is quicker than one overwritten
        write_file(kind.place, kind.file, content);
        RESET_MATERIALS();
        RESET_BOLTING();
    }

    // Cut at fifty places, the file never holds the entry at its end.
    void cut(const KIND& kind) const {
        use(kind, kind.content);
        EXPECT_FALSE(kind.empty()) << "whole";
        for (std::size_t i = 0; i < 50; ++i) {
            use(kind, kind.content.substr(0, kind.content.size() * i / 50));
            EXPECT_TRUE(kind.empty()) << i;
        }
    }

    // Two hundred files with one to twenty bytes changed, half of them to what matters in a text.
    void scramble(const KIND& kind) const {
        constexpr std::string_view MATTERS = "[];,*/-+.eE019 \n\r\t";
        std::mt19937 random(20);
        for (int i = 0; i < 200; ++i) {
            std::string damaged = kind.content;
            for (int k = i % 20; k >= 0; --k) {
                const char other = random() % 2 == 0 ? MATTERS[random() % MATTERS.size()]
                                                     : static_cast<char>(random());
                damaged[random() % damaged.size()] = other;
            }
            use(kind, damaged);
            kind.empty();
            ASSERT_FALSE(HasFailure()) << i;
        }
    }

    void damage(const KIND& kind) const {
        SCOPED_TRACE(kind.file);
        Int before = 0, after = 0;
        GETNEXTUNIT(before);
        cut(kind);
        scramble(kind);
        GETNEXTUNIT(after);
        EXPECT_EQ(before, after) << "a unit stayed open";
    }
};

TEST_F(DamagedFiles, MaterialsByName) { damage(material_file()); }
TEST_F(DamagedFiles, MaterialsByNumber) { damage(material_list()); }
TEST_F(DamagedFiles, BoltMaterials) { damage(bolt_material_file()); }
TEST_F(DamagedFiles, YieldStresses) { damage(yield_file()); }
TEST_F(DamagedFiles, EnMaterials) { damage(en_file()); }
TEST_F(DamagedFiles, Charts) { damage(chart_file()); }
TEST_F(DamagedFiles, Moduli) { damage(modulus_file()); }
TEST_F(DamagedFiles, Coefficients) { damage(coefficient_file()); }
TEST_F(DamagedFiles, TableG) { damage(table_g_file()); }
TEST_F(DamagedFiles, BoltData) { damage(bolt_file()); }

} // namespace
} // namespace tarvane
