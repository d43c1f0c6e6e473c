#include "flange/bolt_loads.h"

#include "flange/geometry.h"
#include "report/lines.h"

namespace tarvane {

namespace {

constexpr Int CONTINUED = 4; // fitting mode of a line that goes on with a formula

void load_line(Real load, std::string_view remark = {}) { VALUE_LINE(load, Kind::force, remark); }

// Full face gasket by the Taylor Forge bulletin (codes 1 and 2), or by the rules of PD 5500 and
// EN 13445.
bool taylor_forge(const FLANGE_STATE& s) { return s.fullFace && s.asme(); }
bool code_full_face(const FLANGE_STATE& s) { return s.fullFace && s.en_or_pd(); }

// A partition gasket is there when its width and its length were given.
bool has_partition(const FLANGE_STATE& s) { return s.bPart >= 0.0001f && s.lp >= 0.0001f; }
bool has_no_partition(const FLANGE_STATE& s) { return s.bPart <= 0.0001f && s.lp <= 0.0001f; }

// Without a partition gasket the symbol line ends before its term.
std::string_view without_partition(std::string_view symbol, const FLANGE_STATE& s) {
    return has_no_partition(s) ? symbol.substr(0, symbol.find('+')) : symbol;
}

// Hydrostatic end load H. The area under pressure is kept: a cover is rated by it.
void end_load(FLANGE_STATE& s) {
    constexpr std::string_view heading = "Hydrostatic End Load due to Pressure [H]:";
    const Real Peq = as_pressure(s.Peq);

    if (s.nonCircular()) {
        s.pressureArea = QUARTER_PI * s.D * s.dS;
        TEXT_LINE("Note: Non Circular flanges are assumed to be elliptical in shape and");
        TEXT_LINE("the computation of bolt loads is based on this assumption. If");
        TEXT_LINE("this is not the case, the loads can be overridden in the input.");
        HEADING(heading);
        TEXT_LINE(" = 0.785 * Dl * Ds * Peq ");
        NUMBER_LINE(" = @3 * @4 * @4 * @3  #",
                    {QUARTER_PI, as_diameter(s.D), as_diameter(s.dS), Peq});
    } else if (code_full_face(s)) {
        s.pressureArea = QUARTER_PI * square(s.C - s.dh);
        if (!s.reverseFullFace()) {
            HEADING(heading);
            TEXT_LINE(" = 0.785 * (C - dh)\xB2 * Peq");
            NUMBER_LINE(" = @3 * (@4 - @4)\xB2 * @3  #",
                        {QUARTER_PI, as_diameter(s.C), as_diameter(s.dh), Peq});
        }
    } else {
        s.pressureArea = QUARTER_PI * square(s.G);
        HEADING(heading);
        TEXT_LINE(" = 0.785 * G\xB2 * Peq");
        NUMBER_LINE(" = @3 * @4\xB2 * @3  #", {QUARTER_PI, as_diameter(s.G), Peq});
    }
    s.H = s.pressureArea * s.Peq;
    s.extLoad = s.pressureArea * std::abs(s.Peq - s.P);
    if (!s.reverseFullFace()) load_line(s.H);
}

// Contact load Hp that keeps the gasket tight, and the same per unit of pressure.
void contact_load(FLANGE_STATE& s) {
    constexpr std::string_view heading = "Contact Load on Gasket Surfaces [Hp]:";
    const Real Peq = as_pressure(s.Peq);
    const Real b = code_full_face(s) ? s.b2 / 2.0f : s.b;

    if (s.nonCircular()) {
        s.Hp = 2.0f * s.L * s.m * s.Peq * b + 2.0f * s.lp * s.bPart * s.mPart * s.Peq;
        s.hpPerP = 2.0f * s.L * s.m * b + 2.0f * s.lp * s.bPart * s.mPart;
        HEADING(heading);
        TEXT_LINE(without_partition(
            code_full_face(s) ? " = 2 * Perim * m * P * b\" + 2 * GLPG * BEpart * Mpart * P"
                              : " = 2 * Perim * m * P * b + 2 * GLPG * BEpart * Mpart * P",
            s));
        NUMBER_LINE(" = 2 * @4 * @4 * @3 * @4  #", {as_diameter(s.L), s.m, Peq, as_diameter(b)});
    } else {
        s.Hp = 2.0f * b * PI * s.G * s.m * s.Peq + 2.0f * s.lp * s.bPart * s.mPart * s.Peq;
        s.hpPerP = 2.0f * b * PI * s.G * s.m + 2.0f * s.lp * s.bPart * s.mPart;
        if (s.reverseFullFace()) return;
        HEADING(heading);
        TEXT_LINE(without_partition(code_full_face(s)
                                        ? " = 2 * b\" * Pi * G * m * P + 2 * lp * bPart * mPart * P"
                                        : " = 2 * b * Pi * G * m * P + 2 * lp * bPart * mPart * P",
                                    s));
        NUMBER_LINE(" = 2 * @4 * @4 * @4 * @4 * @2  #",
                    {as_diameter(b), PI, as_diameter(s.G), s.m, Peq});
    }
    if (has_partition(s))
        NUMBER_LINE("   + 2.0 * @4 * @4 * @4 * @4 #",
                    {as_diameter(s.lp), as_diameter(s.bPart), s.mPart, Peq}, CONTINUED);
    load_line(s.Hp);
}

// Compression inside the bolt circle, H'p in operation and H'GY at seating; 0.0 for other gaskets.
void full_face_compression(FLANGE_STATE& s) {
    s.HpPrime = s.HGY = 0.0f;
    if (!taylor_forge(s)) return;

    s.HpPrime = s.Hp * s.hg / s.hgPrime;
    s.hpPrimePerP = s.hpPerP * s.hg / s.hgPrime;
    HEADING("Full Face Inside Compression [H'p]:");
    TEXT_LINE(" = Hp * hg / h'g");
    NUMBER_LINE(" = @3 * @4 / @4 #", {as_force(s.Hp), as_diameter(s.hg), as_diameter(s.hgPrime)});
    load_line(s.HpPrime);

    s.HGY = s.b * PI * s.G * s.y * s.hg / s.hgPrime;
    HEADING("Full Face Inside Compression, Gasket Seating [H'GY]:");
    TEXT_LINE(" = b * PI * G * y * hg / h'g");
    NUMBER_LINE(" = @4 * @4 * @4 * @2 * @4 / @4 #",
                {as_diameter(s.b), PI, as_diameter(s.G), as_stress(s.y), as_diameter(s.hg),
                 as_diameter(s.hgPrime)});
    load_line(s.HGY);
}

// End load Hd on the bore. That of a blind flange enters its moments only and has no lines; it goes
// by the design pressure.
void bore_end_load(FLANGE_STATE& s) {
    if (s.type == BLIND) {
        s.Hd = s.nonCircular() ? 0.3f * s.P * s.dS * s.D : 0.3f * s.P * square(s.G);
        return;
    }
    const Real Dhyd = s.type > BLIND ? reverse_shell_diameter(s) : corroded_bore(s);
    HEADING("Hydrostatic End Load at Flange ID [Hd]:");
    if (s.reverseFullFace()) {
        s.Hd = QUARTER_PI * s.P * square(Dhyd);
        TEXT_LINE(" = 0.785 * P * D^(2)");
        NUMBER_LINE(" = 0.785 * @3 * @3^(2) #", {as_pressure(s.P), as_diameter(Dhyd)});
    } else {
        s.Hd = PI * square(Dhyd) * s.P / 4.0f;
        TEXT_LINE(" = Pi * Bcor\xB2 * P  / 4");
        NUMBER_LINE(" = @4 * @4\xB2 *@4 / 4 #", {PI, as_diameter(Dhyd), as_pressure(s.P)});
    }
    load_line(s.Hd);
}

// Pressure force Ht on the flange face, and the balancing force HS of a reverse full face flange.
void face_load(FLANGE_STATE& s) {
    if (s.type == BLIND) {
        s.Ht = 0.0f;
        return;
    }
    HEADING("Pressure Force on Flange Face [Ht]:");
    if (s.reverseFullFace()) {
        s.HS = s.Hd - QUARTER_PI * s.P * square(s.GiC);
        s.Ht = (s.H - s.Hd + s.HS) / 2.0f;
        TEXT_LINE(s.code == PD_5500 ? " = ( H - Hd + H'T)/2" : " = ( H - Hd + HS)/2");
        NUMBER_LINE(" = ( @3 - @3 + @3)/2", {as_force(s.H), as_force(s.Hd), as_force(s.HS)});
    } else {
        s.Ht = s.H - s.Hd;
        TEXT_LINE(" = H - Hd");
        NUMBER_LINE(" = @3 - @3", {as_force(s.H), as_force(s.Hd)});
    }
    load_line(s.Ht);
}

// Balancing reaction Hr outside the bolt circle, EN 13445-3 11.6. The sum of the moments is taken in
// whole inch-pounds.
void balancing_reaction(FLANGE_STATE& s) {
    if (!code_full_face(s)) return;
    s.HpPrime = static_cast<Real>(truncated(s.Hd * s.hd + s.Hp * s.hg + s.Ht * s.ht)) / s.hgDouble;
    if (s.reverseFullFace()) return;

    HEADING("Balancing Reaction [Hr]:");
    TEXT_LINE(" = ( Hd * hd + Hg * hg + Ht * ht ) / hr");
    NUMBER_LINE(" = ( @3 * @4 + @3 * @4 + @3 * @4 )",
                {as_force(s.Hd), as_diameter(s.hd), as_force(s.Hp), as_diameter(s.hg),
                 as_force(s.Ht), as_diameter(s.ht)});
    NUMBER_LINE("   / @4", {as_diameter(s.hgDouble)}, CONTINUED);
    load_line(s.HpPrime);
}

// A load of the mating flange takes the place of a smaller one, with a value line of its own.
void mating_load(Real& load, Real mating, std::string_view remark) {
    if (!(mating > load)) return;
    load = mating;
    load_line(load, remark);
}

constexpr std::string_view MATING_GOVERNS = ", Mating Flange Load Governs";

// Bolt load Wm1 for the operating condition, 2-5(c)(1).
void operating_bolt_load(FLANGE_STATE& s) {
    HEADING(NEW_DIV_2_RULES ? "Design Bolt Load for the Operating Condition  [Wo]:"
                            : "Operating Bolt Load [Wm1]:");
    if (s.reverseFullFace()) {
        const Real Hg = 2.0f * PI * s.P * s.C * s.m * s.b;
        s.Wm1 = Hg + s.H;
        TEXT_LINE(" = Hg + H");
        NUMBER_LINE(" = @3 + @3", {as_force(Hg), as_force(s.H)});
    } else {
        s.Wm1 = max(s.H + s.Hp + s.HpPrime, 0.0f);
        TEXT_LINE(s.asme() ? " = max( H + Hp + H'p, 0 )" : " = max( H + Hg + Hr, 0 )");
        NUMBER_LINE(" = max( @3 + @3 + @3, 0 )",
                    {as_force(s.H), as_force(s.Hp), as_force(s.HpPrime)});
    }
    load_line(s.Wm1);
    if (s.Wmo > 0.0001f) mating_load(s.Wm1, s.Wmo, MATING_GOVERNS);
}

// Bolt load Wm2 for gasket seating, 2-5(c)(2).
void seating_bolt_load(FLANGE_STATE& s) {
    HEADING(NEW_DIV_2_RULES ? "Design Bolt Load for the Gasket Seating Condition [Wg]:"
                            : "Gasket Seating Bolt Load [Wm2]:");
    const Real b = as_diameter(s.b), y = as_stress(s.y);

    if (s.nonCircular()) {
        s.Wm2 = s.y * s.b * s.L + s.yPart * s.bPart * s.lp + s.HGY;
        TEXT_LINE(taylor_forge(s) ? " = y * b * Perim  + yPart * bPart * lp+ H'GY"
                                  : " = y * b * Perim  + yPart * bPart * lp");
        NUMBER_LINE(" = @2 * @4 * @4 #", {y, b, as_diameter(s.L)});
    } else if (s.asme()) {
        s.Wm2 = s.y * s.b * PI * s.G + s.yPart * s.bPart * s.lp + s.HGY;
        TEXT_LINE(taylor_forge(s) ? " = y * b * Pi * G  + yPart * bPart * lp+ H'GY"
                                  : " = y * b * Pi * G  + yPart * bPart * lp");
        NUMBER_LINE(" = @2 * @4 * @4 * @4 #", {y, b, PI, as_diameter(s.G)});
    } else if (s.reverseFullFace()) {
        s.Wm2 = PI * s.C * s.bPrime * s.y;
        TEXT_LINE(" = pi * C * b' * y");
        NUMBER_LINE(" = @4 * @4 * @4 * @2 #", {PI, as_diameter(s.C), as_diameter(s.bPrime), y});
    } else if (s.fullFace) {
        s.Wm2 = PI * s.C * s.b * s.y + s.yPart * s.bPart * s.lp;
        TEXT_LINE(" = Pi * C * b' * y + yPart * bPart * lp");
        NUMBER_LINE(" = @4 * @4 * @4 * @2 #", {PI, as_diameter(s.C), b, y});
    } else {
        s.Wm2 = PI * s.G * s.b * s.y + s.yPart * s.bPart * s.lp;
        TEXT_LINE(" = Pi * G * b' * y + yPart * bPart * lp");
        NUMBER_LINE(" = @4 * @4 * @4 * @2 #", {PI, as_diameter(s.G), b, y});
    }
    if (has_partition(s) && !s.reverseFullFace())
        NUMBER_LINE("   + @2 * @4 * @4 #",
                    {as_stress(s.yPart), as_diameter(s.bPart), as_diameter(s.lp)}, CONTINUED);
    if (taylor_forge(s)) NUMBER_LINE("   + @3 #", {as_force(s.HGY)}, CONTINUED);
    load_line(s.Wm2);
    mating_load(s.Wm2, s.Wms, MATING_GOVERNS);
}

// Required bolt area Am, 2-5(d); the bolts of 4.16.6 carry the external loads too.
void required_bolt_area(FLANGE_STATE& s) {
    if (s.code == ASME_VIII_2 && present_division_2())
        s.Am1 = (s.Wm1 + max(s.Faxial, 0.0f) + 4.0f * s.Mbend * 12.0f / s.G) / s.Sb;
    else
        s.Am1 = s.Wm1 / s.Sb;
    s.Am2 = s.Wm2 / s.Sa;
    s.Am = max(std::abs(s.Am1), std::abs(s.Am2));

    HEADING("Required Bolt Area [Am]:");
    const Real Sb = as_stress(s.Sb), Wm1 = as_force(s.Wm1), Wm2 = as_force(s.Wm2);
    if (NEW_DIV_2_RULES) {
        const Real in_report_units = UNITS.moment == 1.0f ? 12.0f : 1.0f;
        const Real Me = s.Mbend * in_report_units * UNITS.moment;
        TEXT_LINE(" = Max of (Wo + Fa + 4Me/G)/Sb, Wg/Sa");
        // A template holds six values: its last placeholder is printed as it is.
        NUMBER_LINE(" = Max of (@0 + @0 + 4*@0/@2)/ @0 , @0/@0 #",
                    {Wm1, as_force(max(s.Faxial, 0.0f)), Me, as_diameter(s.G), Sb, Wm2});
    } else {
        TEXT_LINE(" = Maximum of Wm1/Sb, Wm2/Sa");
        NUMBER_LINE(" = Maximum of @0 / @0 , @0 / @0 #", {Wm1, Sb, Wm2, as_stress(s.Sa)});
    }
    VALUE_LINE(s.Am, Kind::area);
}

// Design bolt load W for gasket seating, 2-5(e): the full load of the bolts, or the mean of the
// required and the available one.
void seating_design_load(FLANGE_STATE& s) {
    const bool full_load = s.seatRule == 1;
    const bool seating_only = s.Wm1 < 0.0f; // the operating condition asks for no bolts
    const bool en = s.code == EN_13445;
    const Real Sa = as_stress(s.Sa);

    HEADING("Flange Design Bolt Load, Gasket Seating [W]:");
    if (full_load) {
        s.W = s.Sa * s.Ab;
        TEXT_LINE(en ? " = fb,a * Ab" : " = Sa * Ab");
        NUMBER_LINE(" = @2 * @3", {Sa, as_area(s.Ab)});
    } else if (seating_only) {
        const Real required = s.Wm2 / s.Sa;
        s.W = s.Sa * (required + s.Ab) / 2.0f;
        TEXT_LINE(en ? " = fb,a * ( Am2 + Ab ) / 2" : " = Sa * ( Am2 + Ab ) / 2");
        NUMBER_LINE(" = @2 * ( @3 + @3 ) / 2", {Sa, as_area(required), as_area(s.Ab)});
    } else {
        s.W = s.Sa * (s.Am + s.Ab) / 2.0f;
        TEXT_LINE(en ? " = fb,a * ( Am + Ab ) / 2" : " = Sa * ( Am + Ab ) / 2");
        NUMBER_LINE(" = @2 * ( @3 + @3 ) / 2", {Sa, as_area(s.Am), as_area(s.Ab)});
    }
    load_line(s.W);
    mating_load(s.W, s.Wmd, {});
}

// Gasket load HG for the operating condition. It has no lines under external pressure.
void operating_gasket_load(FLANGE_STATE& s) {
    const bool external = s.H < 0.0f;
    const auto lines = [&](std::string_view symbol, std::string_view numbers, Real load) {
        if (external) return;
        HEADING("Gasket Load for the Operating Condition [HG]:");
        TEXT_LINE(symbol);
        if (!numbers.empty()) NUMBER_LINE(numbers, {as_force(load), as_force(s.H)});
        load_line(s.HG);
    };
    if (taylor_forge(s)) {
        s.HG = s.W - s.H;
        lines(" = W - H", " = @3 - @3", s.W);
    } else if (code_full_face(s)) {
        s.HG = s.Hp;
        lines(" = Hp", " = @3", s.Hp);
    } else if (s.type == BLIND) {
        s.HG = s.Wm1;
        lines(NEW_DIV_2_RULES ? " = Wo" : " = Wm1", {}, s.Wm1);
    } else {
        s.HG = s.Wm1 - s.H;
        lines(NEW_DIV_2_RULES ? " = Wo - H" : " = Wm1 - H", " = @3 - @3", s.Wm1);
    }
}

} // namespace

void BOLT_LOADS(FLANGE_STATE& s) {
    s.extLoad = s.pressureArea = s.hpPerP = s.hpPrimePerP = 0.0f;
    HEADING("Basic Flange and Bolt Loads: ");
    end_load(s);
    contact_load(s);
    full_face_compression(s);
    bore_end_load(s);
    face_load(s);
    balancing_reaction(s);
    operating_bolt_load(s);
    seating_bolt_load(s);
    required_bolt_area(s);
}

void FLANGE_DESIGN_BOLT_LOAD(FLANGE_STATE& s) {
    if (s.reverseFullFace()) return;
    seating_design_load(s);
    operating_gasket_load(s);
}

} // namespace tarvane
