// FLANGE_STATE: the module state of one flange evaluation. Members bear the report's symbols; the
// stages of the procedure read and write it in turn. Lengths in inches, stresses and pressures in
// psi, loads in pounds, moments in inch-pounds, temperatures in degrees Fahrenheit.
#pragma once

#include "frame/switches.h"
#include "frame/text.h"
#include "frame/types.h"

namespace tarvane {

// Flange types, record element 2.
inline constexpr Int INTEGRAL_WELD_NECK = 1;
inline constexpr Int INTEGRAL_SLIP_ON = 2;
inline constexpr Int INTEGRAL_RING = 3;
inline constexpr Int LOOSE_SLIP_ON = 4;
inline constexpr Int LOOSE_RING = 5;
inline constexpr Int LAP_JOINT = 6;
inline constexpr Int BLIND = 7;
inline constexpr Int REVERSE_WELD_NECK = 8;
inline constexpr Int LOOSE_REVERSE = 9; // rewritten as type 8 before every pass

// Analysis kinds, record element 3.
inline constexpr Int ANALYSE = 1;   // the given flange
inline constexpr Int THICKNESS = 2; // find the required thickness first
inline constexpr Int DESIGN = 3;    // select the geometry, then as 2

// Places of STRESS, ALLOWED and RATIO; row 0 is the operating case, row 1 gasket seating.
enum StressPlace { HUB, RADIAL, TANGENTIAL, AVERAGE, BOLTING, REVERSE, FULL_FACE, PLACES };
enum StressRow { OPERATING, SEATING };

// Error codes of the kernel and the driver.
inline constexpr Int DESIGN_GAVE_UP = 1; // no geometry after 20 rounds
inline constexpr Int BOLT_AREA_SHORT = 2;

using StressTable = Real[2][PLACES];

// The flange as the record and the call give it. A pass changes it as its stages need: the record is
// read again before the next one.
struct FLANGE_GIVEN {
    // ---- record (element number after each) -----------------------------------------------------
    Int element1 = 0;        // 1   element number; negative: stand-alone form
    Int type = 0;            // 2   flange type
    Int kind = 0;            // 3   analysis kind
    Real P = 0;              // 4   design pressure, negative: external
    Real Tdesign = 0;        // 5   design temperature
    Real Sfo = 0, Sfa = 0;   // 6,7 flange allowable stress at temperature, ambient
    Real t = 0;              // 8   flange thickness
    Real ci = 0;             // 9   internal corrosion allowance
    Real B = 0, A = 0;       // 10,11 inside and outside diameter
    Real Fod = 0, Fid = 0;   // 12,13 face diameters
    Real Go = 0, Gi = 0;     // 14,15 gasket diameters
    Real go = 0, g1 = 0;     // 16,17 hub thickness at small and large end
    Real h = 0;              // 18  hub length
    Real Sb = 0, Sa = 0;     // 19,20 bolt allowable stress at temperature, ambient
    Real C = 0;              // 21  bolt circle
    Real aNominal = 0;       // 22  nominal bolt diameter
    Real dh = 0;             // 22  working bolt diameter, later the bolt hole of a full face flange
    Int series = 0;          // 23  thread series
    Int nBolts = 0;          // 24
    Real m = 0, y = 0;       // 25,26 gasket factor and seating stress
    Int sketch = 0;          // 27  facing sketch
    Real column = 0;         // 28  gasket column, compared with 1.0
    Real tg = 0, w = 0;      // 29,30 gasket thickness, nubbin width
    Real lp = 0;             // 31  length of partition gasket
    Int materialClass = 0;   // 34  reference of the modulus table
    Real D = 0, dS = 0;      // 35,36 load reaction diameters, long and short span
    Real dfAllow = 0;        // 37  allowed channel cover deflection
    Real L = 0;              // 38  perimeter along the bolts
    Real LjID = 0, LjOD = 0; // 39,40 lap joint contact diameters
    Int nSplits = 0;         // 41  splits of a ring flange
    Real tw = 0;             // 42  weld leg at back of ring
    Real Wmo = 0, Wms = 0, Wmd = 0; // 44..46 mating flange loads: operating, seating, design
    Real Faxial = 0;                // 48  axial force, lb
    Real Mbend = 0;                 // 50  bending moment, ft-lb
    Real rootGiven = 0;             // 51  root area of one bolt, series above 2
    Real tp = 0;                    // 52  width of partition gasket
    Real density = 0;               // 53  lb/in3
    Real Dshell = 0;                // 54  inside diameter of the attached shell
    Real mPart = 0, yPart = 0;      // 55,56
    Int sketchPart = 0;             // 57
    Real columnPart = 0;            // 58
    Real Sn = 0, Sna = 0; // 60,61 allowable of attached shell or nozzle, temperature and ambient
    Real ce = 0;          // 63  external corrosion allowance
    Real D1 = 0, D2 = 0, edge1 = 0, edge2 = 0, pitch = 0; // 64..68 holes in a blind cover
    Int patternedHoles = 0;                               // 69
    Int attachment = 0;                                   // 70  kind of the attachment to the shell
    Real tShell = 0;        // 71  nominal thickness of the attached shell
    Int useShellStress = 0; // 72
    Int seatRule = 0;       // 73  1: W = Sa * Ab
    Real caShell = 0;       // 74
    Int boltReference = 0;  // 75, as given

    Text<15> flangeMaterial;  // text slot 0
    Text<15> boltMaterial;    // 15
    Text<15> description;     // 30
    Text<15> externalLoads;   // 45  "Y"
    Text<15> matingLoads;     // 60  "Y"
    Text<15> channelCover;    // 75  "Y"
    Text<15> useCorrosion;    // 90  "Y" or "y"
    Text<15> partitionGasket; // 105 "Y"
    Text<15> chartName;       // 120

    // ---- derived as the record is read ----------------------------------------------------------
    Real ct = 0;     // corrosion taken off the flange thickness: ci + 2 ce, or 0
    Real Ecover = 0; // Young's modulus of a TEMA channel cover

    // ---- arguments of the call ------------------------------------------------------------------
    Int code = 0;         // 1 VIII-1, 2 VIII-2, 3 PD 5500, 4 EN 13445
    Int reportKernel = 0; // IWRITE while the kind is 1
    Int quietOverstress = 0;
    Int rigidity = 0; // 1: the rigidity index counts
    Int corrodedRigidity = 0;
    Int standardFlange = 0;
    Int element = 0, boltRow = 0; // rows of the host's tables
    Real jointE = 0;
    bool looseReverse = false; // the record's type is 9
    Real coverFactor = 1.0f;   // h of UG-39(e)(2)
    Int coverFlag = 0;

    // Conditions that several stages use.
    bool en_or_pd() const { return pd_or_en(code); }
    bool asme() const { return asme_viii(code); }
    bool nonCircular() const { return type == BLIND && dS >= 0.001f && D > 0.001f; }
    // The allowances apply to the flange's thickness, too.
    bool thicknessCorrodes() const { return useCorrosion(1) == 'Y' || useCorrosion(1) == 'y'; }
    // External loads are in force: "Y" and 14 blanks.
    bool external_loads() const { return externalLoads == "Y"; }
    bool loose() const { return type >= LOOSE_SLIP_ON && type != REVERSE_WELD_NECK; }
};

struct GASKET_STATE {
    bool fullFace = false;
    Real GoC = 0, GiC = 0; // contact diameters
    Real b = 0, G = 0;
    Real b2 = 0, bPrime = 0; // 2b" and b' of full face gaskets
    Real bPart = 0;
};

struct FACTOR_STATE {
    Real Bcor = 0; // B + 2 ci
    Real hRatio = 0, gRatio = 0, ho = 0;
    Real F = 0, V = 0, f = 0; // of a loose flange: FL, VL
    Real T = 0, U = 0, K = 0, Y = 0, Z = 0;
    Real Yr = 0, Alphar = 0;
    Real e = 0, d = 0;
    Real alpha = 0, beta = 0, gamma = 0, delta = 0, lambda = 0;
    Real lambdaReq = 0; // at the required thickness
};

struct LOAD_STATE {
    Real Peq = 0, dPeq = 0; // dPeq = Peq - P
    Real H = 0, Hd = 0, Hp = 0, Ht = 0, HpPrime = 0, HGY = 0, HS = 0;
    Real Wm1 = 0, Wm2 = 0, W = 0, HG = 0, Am1 = 0, Am2 = 0, Am = 0;
    Real Wext = 0; // external load term of the current Division 2 rules
    Real extLoad = 0, pressureArea = 0, hpPerP = 0, hpPrimePerP = 0; // record 137 to 140
};

struct MOMENT_STATE {
    Real Md = 0, Mg = 0, Mt = 0, Matm = 0, Mr = 0, Mop = 0, Moe = 0;
    Real MopFirst = 0, MatmFirst = 0, CFFirst = 1.0f; // of the first evaluation
    Real I = 0, Ip = 0;                               // inertias, Table 4.16.7
};

struct STRESS_STATE {
    Real kf = 1.0f; // factor k of PD 5500 and EN 13445
    StressTable STRESS = {}, ALLOWED = {}, RATIO = {};
    Real Zcover = 0;
    Real Cf = 0;                                       // attachment factor of a flat head
    Real tMin = 0;                                     // full face under PD 5500 and EN 13445
    Real WMaxOp = 0, SPerW = 0, SPerP = 0, SPerDP = 0; // rating terms of a flat head
};

struct RATING_STATE {
    Real J[2] = {0, 0};      // J[0] seating, J[1] operating
    Real jOp = 0, jSeat = 0; // at the given thickness
    Real rigidityOut = 0;
    Real MAWPop = 0, MAWPseat = 0;
    Real MAWPopFixed = -1.0f, MAWPseatFixed = -1.0f; // of the mating load iterations
    Int MAWPopBy = 0, MAWPseatBy = 0, MAWPopFixedBy = 0, MAWPseatFixedBy = 0; // what limits them
    Real Pbolt = 0; // pressure at which the bolts are used up
    Real tChannelMin = 0, dfAllowUsed = 0, dfActual = 0;
    Real weightForging = 0, weightFinished = 0;
    Real tRequired = 0; // found by the current evaluation
    Real tOut = 0;      // blind flange formula, no allowance
};

// One flange through the stages. A routine that needs one part alone takes that part.
struct FLANGE_STATE : FLANGE_GIVEN,
                      GASKET_STATE,
                      FACTOR_STATE,
                      LOAD_STATE,
                      MOMENT_STATE,
                      STRESS_STATE,
                      RATING_STATE {
    // ---- bolting --------------------------------------------------------------------------------
    Real Ab = 0, Bmin = 0, Rmin = 0, Emin = 0;
    Real CF = 1.0f; // bolt spacing correction factor
    Int noCorrection = 0;

    // ---- arms -----------------------------------------------------------------------------------
    Real hg = 0, hgPrime = 0, hgDouble = 0, ht = 0, hd = 0, hs = 0;

    // ---- moduli, psi ----------------------------------------------------------------------------
    Real Ecold = 0, Ehot = 0; // at 70 F and at the design temperature
    bool moduliHeld = false;  // those of the previous run, which had the same material

    Int error = 0;
    bool stopped = false; // a fatal stop whose host service returned

    // Full face gasket of a reverse flange under PD 5500 and EN 13445: the balancing arm.
    bool reverseFullFace() const { return from_pd_5500(code) && type > BLIND && fullFace; }
};

extern FLANGE_STATE FLANGE;

} // namespace tarvane
