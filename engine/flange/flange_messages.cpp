// The numbered messages of the input tests: their texts, which of them end the analysis, and how
// they are shown.
#include "flange/validation.h"
#include "host/services.h"
#include "report/lines.h"
#include "report/renderer.h"

namespace tarvane {

namespace {

constexpr Int ANY = 0; // every code that has no wording of its own
constexpr bool FATAL = true, NOT_FATAL = false;
constexpr Int POINTED = 0, FOUR = 4, TEXT_ONLY = -1; // decimals of the value

struct MESSAGE {
    Int number;
    Int code;
    bool fatal;
    Int decimals;
    std::string_view before, after; // the value goes between
};

// clang-format off
constexpr MESSAGE MESSAGES[] = {
    {1, ANY, FATAL, POINTED, "ERROR - Flange Type,", ", not recognized - must be 1 to 8."},
    {2, ANY, FATAL, POINTED, "ERROR - Analysis Type,", ", not recognized - must be 0, 1 or 2."},
    {3, ANY, FATAL, FOUR, "ERROR - Outside Diameter,", ", must be > Inside Diameter."},
    {4, ANY, FATAL, FOUR, "ERROR - Inside Diameter,", ", must be > 0."},
    {5, ANY, NOT_FATAL, FOUR, "ERROR - Outside Diameter,", ", must be > 0."},
    {6, ANY, FATAL, FOUR, "ERROR - Corroded Hub Thickness, Small End, ", ", must be > 0."},
    {7, ANY, FATAL, FOUR, "ERROR - Corroded Hub Thickness, Large End, ", ", must be > 0."},
    {8, ANY, FATAL, FOUR, "ERROR - Hub Length,", ", must not be < 0."},
    {9, ANY, FATAL, POINTED, "ERROR - Flange Stress,", ", must be > 0, (Operating)."},
    {10, ANY, FATAL, POINTED, "ERROR - Flange Stress,", ", must be > 0, (Seating)."},
    {11, ANY, NOT_FATAL, POINTED, "ERROR - Bolt Stress,", ", must be > 0 (Operating)."},
    {12, ANY, FATAL, POINTED, "ERROR - Bolt Stress,", ", must be > 0, (Seating)."},
    {13, ANY, FATAL, POINTED, "ERROR - Number of Splits,", ", must be 0.0, 1.0, or 2.0."},
    {14, ANY, FATAL, POINTED, "ERROR - Young's Modulus,", ", must be > 0.0000 for channel covers."},
    {15, ANY, FATAL, TEXT_ONLY, "ERROR - Head reaction diameter is out of range ( Large End ).", ""},
    {16, ANY, FATAL, TEXT_ONLY, "ERROR - Head reaction diameter is out of range ( Small End ).", ""},
    {17, ANY, FATAL, FOUR, "ERROR - Bolt Circle ", " must be > flange ID."},
    {18, ANY, FATAL, TEXT_ONLY, "Error - A zero length hub dimension was specified.", ""},
    {19, ANY, FATAL, POINTED, "ERROR - Number of Bolts, ", " must be > 2."},
    {20, ANY, FATAL, FOUR, "ERROR - Bolt Diameter, ", " too large for flange dimensions."},
    {21, ANY, NOT_FATAL, FOUR, "Warning - Flange Face ID, ", " should be > Flange ID."},
    {22, ANY, FATAL, FOUR, "ERROR - Flange Face OD, ", " must be < Flange OD."},
    {23, ANY, FATAL, FOUR, "ERROR - Flange Face OD, ", " must be > Flange Face ID."},
    {24, ANY, NOT_FATAL, FOUR, "Warning - Gasket ID, ", " should be > Flange ID."},
    {25, ANY, FATAL, FOUR, "ERROR - Gasket OD, ", " must be < Flange OD."},
    {26, ANY, FATAL, FOUR, "ERROR - Gasket OD, ", " must be > Gasket ID."},
    {27, ANY, FATAL, POINTED, "ERROR - Facing Sketch, ", " must be between 1 and 9."},
    {28, ANY, FATAL, FOUR, "ERROR - Gasket Factor, ", " must not be < 0."},
    {29, ANY, FATAL, POINTED, "ERROR - Gasket Stress, ", " must not be < 0.000."},
    {30, ANY, FATAL, POINTED, "ERROR - Gasket Face Column,", " must be 1 or 2."},
    {31, ANY, FATAL, POINTED, "ERROR - Mating flange load,", " must not be < 0 (Operating)."},
    {32, ANY, FATAL, POINTED, "ERROR - Mating flange load,", " must not be < 0 (Seating)."},
    {33, ANY, FATAL, POINTED, "ERROR - Mating flange load,", " must not be < 0 (Design)."},
    {34, ANY, FATAL, POINTED, "ERROR - Corroded Gasket Width,", " must be > 0."},
    {35, ANY, FATAL, TEXT_ONLY, "ERROR - Perimeter of Bolt circle must be defined.", ""},
    {36, ANY, FATAL, TEXT_ONLY, "ERROR - Large End Reaction diameter must be > small end diameter.", ""},
    {39, ANY, FATAL, TEXT_ONLY, "Error - There seem to be too many bolts for this BCD.", ""},
    {40, ANY, FATAL, POINTED, "Number of fatal errors: ", " Analysis of this Flange will be ended."},
    {41, ANY, NOT_FATAL, TEXT_ONLY, "Note: The bolt circle diameter is greater than the Flange OD.", ""},
    {42, ASME_VIII_1, NOT_FATAL, FOUR, "Note: Flange Hub Taper ", " is > 1:3. Check Fig. 2-4(6) of VIII-1 Appendix 2."},
    {42, ANY, NOT_FATAL, FOUR, "Note: Flange Hub Taper ", " is > 1:3. Check Fig. 4.16.2 of VIII-2 Part 4."},
    {43, ANY, NOT_FATAL, TEXT_ONLY, "Warning: Corrosion has not been considered for this flange analysis!", ""},
    {44, ASME_VIII_1, NOT_FATAL, TEXT_ONLY, "Note: Flange Hub Length is < 1.5 * go. Check Fig. 2-4(6) of VIII-1 Appendix 2.", ""},
    {44, ANY, NOT_FATAL, TEXT_ONLY, "Note: Flange Hub Length is < 1.5 * go. Check Fig. 4.16.2 of VIII-2 Part 4", ""},
    {45, ANY, NOT_FATAL, TEXT_ONLY, "g0 should be equal to the attached shell thickness", ""},
};
constexpr MESSAGE UNIDENTIFIED =
    {0, ANY, FATAL, POINTED, "UNIDENTIFIED ERROR, ", " is the value that triggered the error."};
// clang-format on

// Messages with a form of their own.
constexpr Int HUB_TAPER = 42, HUB_LENGTH = 44, SMALL_END = 45;
// From here on the messages are remarks, which no box shows.
constexpr Int FIRST_REMARK = 41, LAST_REMARK = 45;

const MESSAGE& message_of(Int number, Int code) {
    for (const MESSAGE& message : MESSAGES)
        if (message.number == number && (message.code == ANY || message.code == code))
            return message;
    return UNIDENTIFIED;
}

Text<120> composed(const MESSAGE& message, Real value) {
    Text<120> line(message.before);
    if (message.decimals == TEXT_ONLY) return line;
    Int column = static_cast<Int>(message.before.size()) + 1;
    const NumberText number = message.decimals == POINTED ? pointed_number(value, 0)
                                                          : bare_number(value, message.decimals);
    line.put(column, number.view());
    column += number.length;
    line.put(column, message.after);
    return line;
}

void write_message(Int number, Int code, const Text<120>& line) {
    if (number == SMALL_END) {
        TEXT_LINE("Warning: Flange small end hub thickness > attached shell thickness.",
                  WARNING_STYLE);
        TEXT_LINE("Review the Code definition of g0 and change the small end hub", WARNING_STYLE);
        TEXT_LINE("thickness in the flange input to be the attached shell thickness.",
                  WARNING_STYLE);
        return;
    }
    if ((number == HUB_TAPER || number == HUB_LENGTH) && up_to_asme_viii(code)) {
        TEXT_LINE(line.view(), NOTE_STYLE);
        TEXT_LINE("This warning should not be considered for Standard Flanges as permitted by ");
        TEXT_LINE(code == ASME_VIII_1 ? "ASME VIII-1 in Table U-3 or for non-Code vessels."
                                      : "ASME VIII-2 in Table 1-1 or for non-Code vessels.");
        return;
    }
    TEXT_LINE(line.view(), MESSAGE_STYLE);
}

} // namespace

void FLANGE_MESSAGE(Int number, Real value, Int& fatal, Int elementNumber, Int code) {
    const MESSAGE& message = message_of(number, code);
    // A taper reads 1:x.
    const Text<120> line = composed(message, number == HUB_TAPER ? 1.0f / value : value);
    fatal = message.fatal ? 1 : 0;
    const bool remark = number >= FIRST_REMARK && number <= LAST_REMARK;
    if (elementNumber > 0 && !remark)
        MESSAGE_BOX(line.columns(1, line.trimmed_length() + 3), "Flange Error Message");
    write_message(number, code, line);
}

} // namespace tarvane
