// The exported routines of shells: every argument reaches its place.
#include "../material_file.h"
#include "openings/flat_head_openings.h"
#include "shell/elements.h"
#include "shell/failure_corrosion.h"
#include "shell/forming.h"
#include "thin_head.h"

#include "tarvane/tarvane.h"

namespace tarvane {
namespace {

using namespace shell_test;

class ShellExports : public ShellTest {};

void call_shlint(Shell& e) {
    ::SHLINT(&e.P, &e.Sa, &e.S, &e.E, &e.Element, &e.D, &e.t, &e.c, &e.k, &e.L, &e.r, &e.alpha,
             nullptr, nullptr, &e.C, &e.D2, &e.Treq, &e.MAWP, &e.MAPnc, &e.Stress, &e.Material,
             &e.Temp, &e.Service, &e.TreqRaw, &e.Outside, &e.T14f, &e.Sy, &e.MAWP14f, &e.MAPnc14f,
             &e.Status14f, &e.SyCold, &e.u, &e.Skip14f, &e.d1, &e.d2, &e.edge1, &e.edge2, &e.pitch,
             &e.openingMaterial, &e.CorrodedK, e.MaterialName.data(),
             static_cast<std::int32_t>(e.MaterialName.size()));
}

TEST_F(ShellExports, Shlint) {
    write_file("system", "VIII-1_Matls_By_Table.txt", "SA-516 70\n");
    for (Int code = CYLINDER; code <= FLAT_HEAD_ELEMENT + 1; ++code) {
        for (const Int Outside : {0, 1}) {
            Shell e = element(code);
            e.P = 21.0f, e.Sa = 19000.0f, e.S = 17000.0f, e.E = 0.9f, e.D = 120.0f, e.t = 0.22f;
            e.c = 0.01f, e.u = 0.005f, e.L = 110.0f, e.r = 8.0f, e.alpha = 25.0f, e.C = 0.31f;
            e.D2 = 150.0f, e.Material = 20, e.Temp = 400.0f, e.Service = 1, e.Outside = Outside;
            e.Sy = 30000.0f, e.SyCold = 36000.0f, e.CorrodedK = 1,
            e.k = code == ELLIPTICAL ? 1.9f : 0.2f;
            e.d1 = 30.0f, e.d2 = 20.0f, e.edge1 = 31.0f, e.edge2 = 32.0f, e.pitch = 40.0f;
            e.openingMaterial = 2.0f;
            Shell direct = e;
            direct.calculate();
            call_shlint(e);
            const auto results = [](const Shell& s) {
                return std::vector<Real>{
                    s.Treq,    s.MAWP,     s.MAPnc,           s.Stress, s.TreqRaw, s.T14f,
                    s.MAWP14f, s.MAPnc14f, Real(s.Status14f), s.SyCold, s.L};
            };
            EXPECT_EQ(results(e), results(direct)) << code;
        }
    }
}

TEST_F(ShellExports, FailureCorrosion) {
    SET_METRIC_CONSTANTS();
    const Real P = 60, D = 48, E = 0.85f, S = 20000, t = 3, k = 1.8f, L = 47, r = 4, Alpha = 28,
               C = 0.3f;
    const Real D2 = 90, tk = 3.5f, d1 = 4, d2 = 3, edge1 = 9, edge2 = 8, pitch = 6, material = 2;
    const Int Outside = 1, Service = 2, CorrodedK = 1;
    for (Int Element = 0; Element <= 6; ++Element) {
        Real direct[2], exported[2];
        FAILURE_CA_ARGUMENTS a{P,     D,     E,       S,         t,        k,       L,         r,
                               Alpha, C,     Element, direct[0], Outside,  tk,      direct[1], d1,
                               d2,    edge1, edge2,   pitch,     material, Service, CorrodedK};
        COMPUTE_FAILURE_CA_DIV1(a);
        ::COMPUTE_FAILURE_CA_DIV1(&P, &D, &E, &S, &t, &k, &L, &r, &Alpha, &C, &D2, &Element,
                                  &exported[0], &Outside, &tk, &exported[1], &d1, &d2, &edge1,
                                  &edge2, &pitch, &material, &Service, &CorrodedK);
        EXPECT_EQ(exported[0], direct[0]) << Element;
        EXPECT_EQ(exported[1], direct[1]) << Element;
    }
}

TEST_F(ShellExports, Appendix14fHead) {
    IOUT = -1;
    for (const Int Element : {2, 3, 4})
        for (const Int Mode : {0, 1, 2, 3, 5}) {
            Head h;
            h.Element = Element, h.Outside = 1, h.t = 0.23f, h.L = 118.0f, h.k = 1.9f,
            h.Temp = 710.0f;
            h.c = 0.01f, h.u = 0.005f, h.Class = 1, h.Mode = Mode, h.TminLabel = 1, h.Hydro = 2.0f;
            h.Tstart = 0.1f;
            Head exported = h;
            h.run();
            const auto lines = reported();
            Head& x = exported;
            ::APP_1_4F_HEAD(&x.Element, &x.Outside, &x.P, &x.t, nullptr, &x.L, &x.D, &x.r, &x.k,
                            &x.Temp, &x.Et, &x.Sy, &x.TempLimit, &x.Tsolved, &x.Class, &x.c, &x.u,
                            &x.Pfirst, &x.Mode, &x.TminLabel, &x.Hydro, nullptr, &x.Ratio,
                            &x.Tstart);
            EXPECT_EQ(reported(), lines);
            EXPECT_EQ(x.Tsolved, h.Tsolved);
            EXPECT_EQ(x.Class, h.Class);
            EXPECT_EQ(x.Pfirst, h.Pfirst);
            EXPECT_EQ(x.Ratio, h.Ratio);
        }
}

TEST_F(ShellExports, FormingStrainAndHeadArea) {
    using material_test::Record;
    write_file(
        "library", "MATFILE2.BIN",
        material_test::material_file(
            1, 0, {Record("SA-516 70", 3).put(152, Int{1}).text(172, std::string_view("CS-2"))}));
    const Real D = 48, t = 1, r = 8, Dsmall = 20, Alpha = 30, k = 1.8f, L = 43, Lc = 1,
               Straight = 0.2f;
    const Int Outside = 1, Code = 2, Reference = 3, index = 7;
    for (const Int Element : {1, 2, 3, 4, 5}) {
        Real a[5] = {-1, -1, -1, -1, -1}, b[5] = {-1, -1, -1, -1, -1};
        Int classes[2] = {};
        FORMING_ARGUMENTS f{Element, Outside, D,    t,         a[0],       "SA-516 70", r,
                            Dsmall,  Alpha,   Code, Reference, classes[0], a[1],        a[2],
                            a[3],    a[4],    k,    L,         Straight};
        FORMING_STRAIN(f);
        ::FORMING_STRAIN(&Element, &Outside, &D, &t, &b[0], "SA-516 70", 9, &r, &Dsmall, &Alpha,
                         &Code, &Reference, &classes[1], &index, &b[1], &b[2], &b[3], &b[4], &k, &L,
                         &Lc, &Straight);
        EXPECT_GT(a[0], 0.0f);
        for (int i = 0; i < 5; ++i)
            EXPECT_EQ(b[i], a[i]) << Element;
        EXPECT_EQ(classes[1], 1);

        Real area[2] = {-1, -1}, Dmax[2];
        const Real ts = 1.25f;
        HEAD_AREA_ARGUMENTS h{D, t, ts, L, r, Straight, k, Element, area[0], Dmax[0]};
        HEAD_SURFACE_AREA(h);
        ::HEAD_SURFACE_AREA(&D, &t, &ts, &L, nullptr, &r, &Straight, &k, &Element, &area[1],
                            &Dmax[1]);
        EXPECT_EQ(area[1], area[0]);
        EXPECT_EQ(Dmax[1], 50.5f);
    }
}

TEST_F(ShellExports, Openings) {
    const Real head = 24, d1 = 4, d2 = 3, edge1 = 5, edge2 = 6, pitch = 6, C = 0.3f;
    const Int attachment = 2;
    for (const Int kind : {5, 6, 7}) {
        OPENINGS_CALL direct{kind, head, d1, d2, edge1, edge2, pitch, attachment, C};
        PATTERNED_OPENINGS(direct);
        Real factor = -1, C_out = -1;
        Int flag = -1;
        ::PATTERNED_OPENINGS(&kind, &head, &d1, &d2, &edge1, &edge2, &pitch, &attachment, &C,
                             &factor, &C_out, &flag);
        EXPECT_EQ(factor, direct.coverFactor) << kind;
        EXPECT_EQ(C_out, direct.Cout) << kind;
        EXPECT_EQ(flag, direct.coverFlag) << kind;
    }
}

TEST_F(ShellExports, FactorsOfTheOlderDivisionTwo) {
    const Real D = 60, r = 5, t = 0.75f, L = 54, c = 0.0625f, u = 0.03f;
    for (const Int element : {2, 3}) {
        EXPECT_EQ(::DIV2_M_FACTOR(&D, &r, &t, &L, &c, &element, &u),
                  DIV2_M_FACTOR(D, r, t, L, c, element, u));
        EXPECT_EQ(::DIV2_K_FACTOR(&D, &r, &t, &L, &c, &element, &u),
                  DIV2_K_FACTOR(D, r, t, L, c, element, u));
    }
}

TEST_F(ShellExports, MaterialList) {
    write_file("system", "VIII-1_Matls_By_Table.txt", "SA-516 70\n");
    EXPECT_EQ(::LIS_UCS23_MATERIAL("SA-516 70xx", 9), 1);
    EXPECT_EQ(::LIS_UCS23_MATERIAL("SA-516 70xx", 10), 0);
    EXPECT_EQ(::LIS_UCS23_MATERIAL("SA-516 70", -1), 0);
}

TEST_F(ShellExports, ResetForgetsTheColumnOfK) {
    G_USE_A5 = 1;
    Shell tight = element(TORISPHERICAL), wide = tight;
    tight.t = wide.t = 0.9f, tight.P = wide.P = 300.0f;
    wide.r = 12.0f; // r/D 0.25: above the table
    wide.S = tight.S = 60000.0f;
    const Real fresh = wide.calculate().MAWP;
    tight.calculate();
    EXPECT_NE(wide.calculate().MAWP, fresh);
    RESET_SHELLS();
    EXPECT_EQ(wide.calculate().MAWP, fresh);
}

} // namespace
} // namespace tarvane
