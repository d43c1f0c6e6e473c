// The numbered formats of the input echo. A format is data: quoted text, and the descriptors F, I, X
// and A of the value and its unit.
#include "flange/input_report.h"

namespace tarvane {

namespace {

constexpr Int ANY = 0; // every code that has no form of its own

struct LABEL {
    Int number;
    Int code;
    std::string_view format;
};

// clang-format off
constexpr LABEL LABELS[] = {
    {1000, ANY, "('Flange Input Data Values                         Description: ',A15)"},
    {1010, ANY, "('Description of Flange Geometry (Type)     ', A25 )"},
    {1030, ANY, "('Design Pressure                            P ', F15.2, 2X, A10 )"},
    {1040, ANY, "('Design Temperature                           ', I15,   2X, A  )"},
    {1110, ANY, "('Internal Corrosion Allowance              ci ', F15.4, 2X, A3 )"},
    {1112, ANY, "('External Corrosion Allowance              ce ', F15.4, 2X, A3 )"},
    {1115, ANY, "('Use Corrosion Allowance in Thickness Calcs.  ', 12X, A3  )"},
    {1050, ANY, "('Flange Inside Diameter                     B ', F15.3, 2X, A3 )"},
    {1565, ANY, "('Attached Shell Inside Diameter             B ', F15.4, 2X, A3 )"},
    {1566, ANY, "('Integral Ring Inside Diameter                ', F15.4, 2X, A3 )"},
    {1060, ANY, "('Flange Outside Diameter                    A ', F15.3, 2X, A3 )"},
    {1070, ANY, "('Flange Thickness                           t ', F15.4, 2X, A3 )"},
    {1070, EN_13445, "('Flange Thickness                           e ', F15.4, 2X, A3 )"},
    {1080, ANY, "('Thickness of Hub at Small End             go ', F15.4, 2X, A3 )"},
    {1090, ANY, "('Thickness of Hub at Large End             g1 ', F15.4, 2X, A3 )"},
    {1100, ANY, "('Length of Hub                              h ', F15.4, 2X, A3 )"},
    {1120, ANY, "('Flange Material                              ', A )"},
    {1130, ANY, "('Flange Allowable Stress At Temperature   Sfo ', F15.2, 2X, A10 )"},
    {1130, EN_13445, "('Flange Allowable Stress At Temperature     f ', F15.2, 2X, A10 )"},
    {1140, ANY, "('Flange Allowable Stress At Ambient       Sfa ', F15.2, 2X, A10 )"},
    {1140, EN_13445, "('Flange Allowable Stress At Ambient        fa ', F15.2, 2X, A10 )"},
    {1150, ANY, "('Bolt Material                                ', A )"},
    {1160, ANY, "('Bolt Allowable Stress At Temperature      Sb ', F15.2, 2X, A10 )"},
    {1160, EN_13445, "('Bolt Allowable Stress At Temperature      fb ', F15.2, 2X, A10 )"},
    {1170, ANY, "('Bolt Allowable Stress At Ambient          Sa ', F15.2, 2X, A10 )"},
    {1170, EN_13445, "('Bolt Allowable Stress At Ambient        fb,a ', F15.2, 2X, A10 )"},
    {1180, ANY, "('Length of Weld Leg at Back of Ring        tw ', F15.4, 2X, A3 )"},
    {1190, ANY, "('Number of Splits in Ring Flange            n ', 5X, I10 )"},
    {1240, ANY, "('Lap Joint Contact ID                    LjID ', F15.4, 2X, A3 )"},
    {1250, ANY, "('Lap Joint Contact OD                    LjOD ', F15.4, 2X, A3 )"},
    {1210, ANY, "('Diameter of the Load Reaction, Long  Span  D ', F15.3, 2X, A3 )"},
    {1220, ANY, "('Diameter of the Load Reaction, Short Span  d ', F15.3, 2X, A3 )"},
    {1225, ANY, "('Perimeter along the Center of the Bolts    L ', F15.3, 2X, A3 )"},
    {1200, ANY, "('Youngs Modulus for Blind Flange Matl.     Sy ', F15.2, 2X, A10)"},
    {1200, EN_13445, "('Elastic Modulus for Blind Flange Matl.    fy ', F15.2, 2X, A10)"},
    {1230, ANY, "('Allowed Channel Cover Deflection     dfAllow ', F15.4, 2X, A3 )"},
    {1260, ANY, "('Diameter of Bolt Circle                    C ', F15.3, 2X, A3 )"},
    {1270, ANY, "('Nominal Bolt Diameter                      a ', F15.4, 2X, A3 )"},
    {1270, EN_13445, "('Nominal Bolt Diameter                     db ', F15.4, 2X, A3 )"},
    {1270, PD_5500, "('Nominal Bolt Diameter                     db ', F15.4, 2X, A3 )"},
    {1567, ANY, "('Diameter of Bolt Hole                     dh ', F15.4, 2X, A3 )"},
    {1280, ANY, "('Type of Threads                           ',    A20 )"},
    {1480, ANY, "('Root Area of a Single Bolt                   ', F15.4, 2X, A6 )"},
    {1290, ANY, "('Number of Bolts                              ', 5X, I10 )"},
    {1300, ANY, "('Flange Face Outside Diameter             Fod ', F15.3, 2X, A3 )"},
    {1310, ANY, "('Flange Face Inside Diameter              Fid ', F15.3, 2X, A3 )"},
    {1320, ANY, "('Flange Facing Sketch                      ',    A20 )"},
    {1330, ANY, "('Gasket Outside Diameter                   Go ', F15.3, 2X, A3 )"},
    {1340, ANY, "('Gasket Inside Diameter                    Gi ', F15.3, 2X, A3 )"},
    {1350, ANY, "('Gasket Factor                              m ', F15.4 )"},
    {1360, ANY, "('Gasket Design Seating Stress               y ', F15.2, 2X, A9 )"},
    {1370, ANY, "('Column for Gasket Seating                  ',   A20 )"},
    {1380, ANY, "('Gasket Thickness                          tg ', F15.4, 2X, A3 )"},
    {1390, ANY, "('Flange Face Nubbin Width                   w ', F15.4, 2X, A3 )"},
    {1400, ANY, "('Length of Partition Gasket                lp ', F15.4, 2X, A3 )"},
    {1405, ANY, "('Width  of Partition Gasket                tp ', F15.4, 2X, A3 )"},
    {1490, ANY, "('Partition Gasket Factor                mPart ', F15.4 )"},
    {1500, ANY, "('Partition Gasket Design Seating Stress yPart ', F15.2, 2X, A9 )"},
    {1410, ANY, "('Mating Flange Operating Bolt Load            ', F15.2, 2X, A3 )"},
    {1420, ANY, "('Mating Flange Seating Bolt Load              ', F15.2, 2X, A3 )"},
    {1430, ANY, "('Mating Flange Design Bolt Load               ', F15.2, 2X, A3 )"},
    {1450, ANY, "('Axial Force on Flange                        ', F15.2, 2X, A3 )"},
    {1470, ANY, "('Bending Moment on Flange                     ', F15.2, 2X, A6 )"},
    {1510, ANY, "('Evaluate Patterned Holes in Blind Cover      ', 12X,       A )"},
    {1520, ANY, "('Hole Diameter D1                             ', F15.3, 2X, A )"},
    {1530, ANY, "('Hole Diameter D2                             ', F15.3, 2X, A )"},
    {1540, ANY, "('Edge Distance to D1                          ', F15.3, 2X, A )"},
    {1550, ANY, "('Edge Distance to D2                          ', F15.3, 2X, A )"},
    {1560, ANY, "('Pitch Distance                               ', F15.3, 2X, A )"},
};
// clang-format on

constexpr Int FIRST_NUMBER = 1000, LAST_NUMBER = 1567;

} // namespace

std::string_view FLANGE_LABEL(Int code, Int number) {
    std::string_view format;
    if (number < FIRST_NUMBER || number > LAST_NUMBER) return format;
    for (const LABEL& label : LABELS)
        if (label.number == number && (label.code == ANY || label.code == code))
            format = label.format; // a code's own form comes after the common one
    return trimmed(format);
}

} // namespace tarvane
