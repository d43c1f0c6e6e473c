#include "materials/modulus.h"

#include "../data_folder.h"

namespace tarvane {
namespace {

using data_test::Line;

const std::string RULE(68, '-');

// A line of numbers for the file: the values given, and zeros up to 36.
std::string numbers(const std::vector<const char*>& values, std::size_t count = 36) {
    std::string line;
    for (std::size_t i = 0; i < count; ++i)
        line += std::string(" ") + (i < values.size() ? values[i] : "0");
    return line;
}
std::string axis(const std::vector<const char*>& values, std::size_t count = 36) {
    return "[Temp]   " + numbers(values, count) + "\n";
}
std::string row(const std::string& reference, const std::string& identifier,
                const std::string& description, const std::string& values) {
    std::string line = reference;
    line.resize(19, ' ');
    line += identifier;
    line.resize(27, ' ');
    line += description;
    line.resize(63, ' ');
    return line + values + "\n";
}

std::string small_file() {
    return "; moduli and coefficients\n"
           "\n"
           "[Emod]\n" +
           axis({"-100", "70", "200", "300", "400"}) +
           row("1 0", "TM-1", "Carbon steel", numbers({"30.3", "29.4", "28.8", "28.3", "27.9"})) +
           row("2 0.5", "TM-1", "Short row", numbers({"30.0", "29.0", "28.0", "27.0"})) +
           "; row(3) is a comment\n" +
           row("4 0", "TM-1", "Gap at 200", numbers({"30.0", "29.0", "0", "27.0", "26.0"})) +
           row("5 0", "TM-1", "Too few numbers", numbers({"30.0", "29.0"}, 20)) +
           axis({"70", "200"}) +
           row("231 0", "TM-4", "Above the highest reference", numbers({"31.0", "30.0"})) +
           row("230 0", "TM-4", "Highest reference", numbers({"32.0", "31.0"})) +
           row("7 0", "TM-4", "Second axis", numbers({"26.0", "25.0"})) + "[CoE]\n" +
           axis({"70", "100", "150", "200"}) +
           row("1 0", "TE-1", "Group 1", numbers({"6.4", "6.5", "6.6", "6.7"})) +
           row("2 0", "TE-1", "Group 2", numbers({"7.0", "7.1"})) +
           row("7 0", "TE-1", "Group 7", numbers({"9.0", "9.1", "9.2", "9.3"})) +
           row("8 0", "TE-1", "No modulus", numbers({"9.5", "9.6", "9.7", "9.8"}));
}

// Charts CS-2 up to 900 degrees and HA-1 up to 100, for the moduli alone.
constexpr const char* MODULUS_CHARTS = "[CS-2]\n"
                                       "300 0 29.0 1E-4 1450 0.1 15000 0 0 0\n"
                                       "900 0 20.0 1E-4 1000 0.1 9000 0 0 0\n"
                                       "\n"
                                       "[HA-1]\n"
                                       "100 0 28.0 1E-4 1400 0.1 15000 0 0 0\n"
                                       "\n"
                                       "[END]\n";

class ElasticModulus : public data_test::DataTest {
  protected:
    ElasticModulus() { use(small_file()); }
    void use(const std::string& text) { write_file("system", "ElastAlp07.txt", text); }

    // Modulus and coefficient of one lookup.
    static Real modulus(Int reference, Real T) {
        Real E = -1.0f, alpha = -1.0f;
        READ_ELAST_ALPHA(reference, -1, 0.0f, T, alpha, E);
        EXPECT_EQ(alpha, 0.0f);
        return E;
    }
    static Real coefficient(Int reference, Real T) {
        Real E = -1.0f, alpha = -1.0f;
        READ_ELAST_ALPHA(-1, reference, T, 0.0f, alpha, E);
        EXPECT_EQ(E, 0.0f);
        return alpha;
    }

    static std::vector<Line> invalid_reference() {
        return {
            {""},
            {"Warning: Invalid reference # encountered while looking up the Young's Modulus!",
             ERROR_STYLE},
            {"         Please enter the Elastic Modulus reference # in the Material", ERROR_STYLE},
            {"         Properties Dialog. Carbon Steel values will be used.", ERROR_STYLE}};
    }
    static std::vector<Line> modulus_error() {
        return {{""},
                {RULE},
                {"Warning: An Error occurred determining the Elastic Modulus. Either", ERROR_STYLE},
                {"         the Maximum temperature was exceeded or the reference index was 0.",
                 ERROR_STYLE},
                {"         Check the Emod ID in the Material Properties Dialog.", ERROR_STYLE},
                {RULE},
                {""}};
    }
    static std::vector<Line> coefficient_error() {
        return {{""},
                {RULE},
                {"Warning: An Error occurred determining the Coefficent of Thermal Exp. Either"},
                {" the Maximum temperature was exceeded or the reference index was 0."},
                {" Check the Coeff. ID in the Material Properties Dialog."},
                {RULE},
                {""}};
    }
    static std::vector<Line> chart_used() {
        return {{""},
                {RULE},
                {"Note : The External Pressure Charts were used to determine this", NOTE_STYLE},
                {"       material's Modulus of Elasticity.", NOTE_STYLE},
                {RULE},
                {""}};
    }
    static std::vector<Line> chart_exceeded() {
        return {{""},
                {RULE},
                {"Note : The External Pressure Charts were used to determine this", ERROR_STYLE},
                {"     materials Modulus of Elasticity and the maximum temperature.", ERROR_STYLE},
                {"     of the chart was exceeded.", ERROR_STYLE},
                {RULE},
                {""}};
    }
};

std::vector<Line> operator+(std::vector<Line> a, const std::vector<Line>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// ---- the modulus ---------------------------------------------------------------------------------

TEST_F(ElasticModulus, OnAndBetweenTheTemperaturesOfTheAxis) {
    EXPECT_EQ(modulus(1, 70.0f), 29.4f);
    EXPECT_EQ(modulus(1, 200.0f), 28.8f);
    EXPECT_FLOAT_EQ(modulus(1, 250.0f), 28.55f);
    EXPECT_FLOAT_EQ(modulus(1, 400.0f), 27.9f);
    EXPECT_EQ(EMOD_STATUS, 0);
    EXPECT_EQ(COE_STATUS, 0);
}

TEST_F(ElasticModulus, WhatTheLookupRead) {
    const PROPERTY_LOOKUP& p = PROPERTIES;
    modulus(2, 250.0f);
    EXPECT_EQ(p.emod_identifier.view(), "TM-1   ");
    EXPECT_EQ(p.emod_description.trimmed(), "Short row");
    EXPECT_EQ(p.EMOD_EXTRA, 0.5f);
    EXPECT_EQ(p.axis[0], -100.0f);
    EXPECT_EQ(p.axis[4], 400.0f);
    EXPECT_EQ(p.emod_values[3], 27.0f);
    EXPECT_EQ(p.emod_temperature, 250.0f);
    EXPECT_FLOAT_EQ(p.modulus_psi, 27.5e6f);
}

TEST_F(ElasticModulus, TheTemperatureIsHeldToTheEndsOfTheAxis) {
    EXPECT_EQ(modulus(1, -400.0f), 30.3f);
    EXPECT_EQ(PROPERTIES.emod_temperature, -100.0f);
    EXPECT_FLOAT_EQ(modulus(1, 5000.0f), 27.9f);
    EXPECT_EQ(PROPERTIES.emod_temperature, 400.0f);
    EXPECT_EQ(EMOD_STATUS, 0);
}

TEST_F(ElasticModulus, ARowShorterThanTheAxisHasNoValueAboveItsEnd) {
    EXPECT_FLOAT_EQ(modulus(2, 300.0f), 27.0f);
    EXPECT_EQ(EMOD_STATUS, 0);
    for (const Real T : {300.5f, 399.0f, 400.0f, 2000.0f}) {
        EXPECT_EQ(modulus(2, T), 0.0f) << T;
        EXPECT_EQ(EMOD_STATUS, 1) << T;
    }
}

TEST_F(ElasticModulus, AGapEndsTheWalk) {
    EXPECT_EQ(modulus(4, 150.0f), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
    EXPECT_FLOAT_EQ(modulus(4, 70.0f), 29.0f);
    EXPECT_EQ(EMOD_STATUS, 0);
    // Between the gap and the next value the interpolation starts at the gap's zero.
    EXPECT_FLOAT_EQ(modulus(4, 250.0f), 13.5f);
}

TEST_F(ElasticModulus, ATemperatureWithinATenThousandthOfTheAxisIsOnIt) {
    // Without a temperature above 1.0 the axis has no upper limit.
    use("[Emod]\n" + axis({"0.5", "0.51", "0.52"}) + row("1 0", "T", "", numbers({"1", "2", "3"})));
    EXPECT_EQ(modulus(1, 0.5f), 1.0f);
    EXPECT_EQ(modulus(1, 0.52005f), 3.0f);
    EXPECT_EQ(modulus(1, 0.5202f), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
    // Just above a temperature the interval decides, even where it has no upper value.
    use("[Emod]\n" + axis({"0.5", "0.51", "0.52"}) + row("1 0", "T", "", numbers({"1", "2"})));
    EXPECT_FLOAT_EQ(modulus(1, 0.51f), 2.0f);
    EXPECT_EQ(modulus(1, 0.51005f), 0.0f);
}

TEST_F(ElasticModulus, TheTenThousandthItselfIsOffTheAxis) {
    use("[Emod]\n" + axis({"0.0001"}) + row("1 0", "T", "", numbers({"7"})));
    EXPECT_EQ(modulus(1, 0.0002f), 0.0f);
    EXPECT_EQ(modulus(1, std::nextafter(0.0002f, 0.0f)), 7.0f);
}

TEST_F(ElasticModulus, OnlyATemperatureAboveOneEndsTheAxis) {
    use("[Emod]\n" + axis({"0.5", "1"}) + row("1 0", "T", "", numbers({"7", "6"})));
    EXPECT_EQ(modulus(1, 5.0f), 0.0f);
    EXPECT_EQ(modulus(1, 1.0f), 6.0f);
    use("[Emod]\n" + axis({"0.5", "1.0001"}) + row("1 0", "T", "", numbers({"7", "6"})));
    EXPECT_FLOAT_EQ(modulus(1, 5.0f), 6.0f);
}

TEST_F(ElasticModulus, AThousandthIsNoUpperValueAndATenThousandthNoModulus) {
    use("[Emod]\n" + axis({"70", "200"}) + row("1 0", "T", "", numbers({"5", "0.001"})) +
        row("2 0", "T", "", numbers({"5", "0.0011"})) + row("3 0", "T", "", numbers({"0.0001"})) +
        row("4 0", "T", "", numbers({"0.00011"})));
    EXPECT_EQ(modulus(1, 199.0f), 0.0f);
    EXPECT_GT(modulus(2, 199.0f), 0.03f);
    modulus(3, 70.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
    modulus(4, 70.0f);
    EXPECT_EQ(EMOD_STATUS, 0);
}

TEST_F(ElasticModulus, AReferenceThatIsNotPositiveIsNotLookedFor) {
    const std::string rows = axis({"70", "200"}) + row("0 0", "T", "", numbers({"5", "4"})) +
                             row("-2 0", "T", "", numbers({"5", "4"}));
    use("[Emod]\n" + rows + "[CoE]\n" + rows);
    for (const Int reference : {0, -2}) {
        EXPECT_EQ(modulus(reference, 100.0f), 0.0f) << reference;
        EXPECT_EQ(EMOD_STATUS, 1) << reference;
        EXPECT_EQ(coefficient(reference, 100.0f), 0.0f) << reference;
        EXPECT_EQ(COE_STATUS, 1) << reference;
    }
}

TEST_F(ElasticModulus, ALookupThatFindsNothingLeavesEmptyArrays) {
    modulus(1, 70.0f);
    modulus(0, 70.0f);
    for (Int i = 0; i < PROPERTY_POINTS; ++i) {
        EXPECT_EQ(PROPERTIES.axis[i], 0.0f) << i;
        EXPECT_EQ(PROPERTIES.emod_values[i], 0.0f) << i;
    }
    coefficient(1, 70.0f);
    coefficient(0, 70.0f);
    for (const Real value : PROPERTIES.coe_values)
        EXPECT_EQ(value, 0.0f);
}

TEST_F(ElasticModulus, TheColumnsOfAxisAndRow) {
    std::string values = "30 28", temperatures = "70 200";
    for (int i = 2; i < 36; ++i) {
        values += " 0";
        temperatures += " 0";
    }
    // The axis from column 10 on, identifier in 20 to 26, description in 28 to 63, values from 64.
    use("[Emod]\n[Temp]123" + temperatures + "\n" +
        "1 0                TABLE-1xDescription of thirty-six characters" + values + "\n");
    EXPECT_EQ(modulus(1, 70.0f), 30.0f);
    EXPECT_EQ(PROPERTIES.axis[0], 70.0f);
    EXPECT_EQ(PROPERTIES.emod_values[1], 28.0f);
    EXPECT_EQ(PROPERTIES.emod_identifier.view(), "TABLE-1");
    EXPECT_EQ(PROPERTIES.emod_description.view(), "Description of thirty-six characters");
}

TEST_F(ElasticModulus, ALaterAxisCountsForTheRowsBelowIt) {
    EXPECT_EQ(modulus(7, 70.0f), 26.0f);
    EXPECT_FLOAT_EQ(modulus(7, 135.0f), 25.5f);
    EXPECT_EQ(modulus(7, -50.0f), 26.0f);
    EXPECT_FLOAT_EQ(modulus(7, 300.0f), 25.0f);
}

TEST_F(ElasticModulus, AReferenceThatIsNotThere) {
    for (const Int reference : {3, 6, 100, 8}) { // 8 is a coefficient's
        EXPECT_EQ(modulus(reference, 100.0f), 0.0f) << reference;
        EXPECT_EQ(EMOD_STATUS, 1) << reference;
    }
    for (const Int reference : {0, -2}) {
        EXPECT_EQ(modulus(reference, 100.0f), 0.0f) << reference;
        EXPECT_EQ(EMOD_STATUS, 1) << reference;
    }
    EXPECT_EQ(modulus(-1, 100.0f), 0.0f); // skipped
    EXPECT_EQ(EMOD_STATUS, 0);
}

TEST_F(ElasticModulus, ARowOrAxisOfTooFewNumbersCannotBeRead) {
    EXPECT_EQ(modulus(5, 70.0f), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
    use("[Emod]\n" + axis({"70", "200"}, 35) + row("1 0", "T", "", numbers({"1", "2"})));
    EXPECT_EQ(modulus(1, 70.0f), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
    use("[Emod]\n" + axis({"70", "200"}) + row("one 0", "T", "", numbers({"1", "2"})) +
        row("2 0", "T", "", numbers({"1", "2"})));
    EXPECT_EQ(modulus(2, 70.0f), 0.0f); // the search ends at the row before
    EXPECT_EQ(EMOD_STATUS, 1);
}

TEST_F(ElasticModulus, TheReferenceStandsInTheFirstNineteenColumns) {
    use("[Emod]\n" + axis({"70", "200"}) +
        row("12", "34", "", numbers({"1", "2"}))); // only one number in front of column 20
    EXPECT_EQ(modulus(12, 70.0f), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
}

TEST_F(ElasticModulus, ANumberThatIsCutAtColumn425IsLost) {
    std::string long_row = row("1 0", "T", "", "");
    long_row.pop_back();
    long_row += numbers({"1", "2"}, 35);
    long_row.resize(425, ' ');
    use("[Emod]\n" + axis({"70", "200"}) + long_row + "9\n");
    EXPECT_EQ(modulus(1, 70.0f), 0.0f);
    long_row.back() = '9';
    use("[Emod]\n" + axis({"70", "200"}) + long_row + "9\n");
    EXPECT_EQ(modulus(1, 70.0f), 1.0f);
    EXPECT_EQ(PROPERTIES.emod_values[35], 9.0f);
}

TEST_F(ElasticModulus, LineEndsOfBothKinds) {
    std::string text = small_file();
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2)
        text.insert(at, "\r");
    use(text);
    EXPECT_EQ(modulus(1, 70.0f), 29.4f);
    EXPECT_EQ(coefficient(1, 70.0f), 6.4f);
}

TEST_F(ElasticModulus, AFileBesideTheLibraryOverridesTheSystemFolder) {
    write_file("library", "ElastAlp07.txt",
               "[Emod]\n" + axis({"70", "200"}) + row("1 0", "T", "", numbers({"11", "12"})));
    EXPECT_EQ(modulus(1, 70.0f), 11.0f);
    remove_file("library", "ElastAlp07.txt"); // nothing is kept
    EXPECT_EQ(modulus(1, 70.0f), 29.4f);
}

TEST_F(ElasticModulus, NotANumber) {
    EXPECT_EQ(modulus(1, std::nanf("")), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
    EXPECT_EQ(coefficient(1, std::nanf("")), 0.0f);
    EXPECT_EQ(COE_STATUS, 1);
}

// ---- the coefficient -----------------------------------------------------------------------------

TEST_F(ElasticModulus, CoefficientOnAndBetweenTheTemperatures) {
    EXPECT_EQ(coefficient(1, 70.0f), 6.4f);
    EXPECT_FLOAT_EQ(coefficient(1, 125.0f), 6.55f);
    EXPECT_FLOAT_EQ(coefficient(1, 200.0f), 6.7f);
    EXPECT_EQ(COE_STATUS, 0);
    EXPECT_EQ(EMOD_STATUS, 0);
    EXPECT_EQ(PROPERTIES.coe_identifier.view(), "TE-1   ");
    EXPECT_EQ(PROPERTIES.coe_description.trimmed(), "Group 1");
    EXPECT_FLOAT_EQ(PROPERTIES.expansion, 6.7e-6f);
}

TEST_F(ElasticModulus, CoefficientBelowAndAboveTheAxis) {
    EXPECT_EQ(coefficient(1, -400.0f), 6.4f);
    EXPECT_EQ(PROPERTIES.coe_temperature, 70.0f);
    EXPECT_EQ(COE_STATUS, 0);
    // A short axis does not limit the temperature to its end.
    EXPECT_EQ(coefficient(1, 201.0f), 0.0f);
    EXPECT_EQ(PROPERTIES.coe_temperature, 201.0f);
    EXPECT_EQ(COE_STATUS, 1);
}

TEST_F(ElasticModulus, OnALowerEndOnlyTheCoefficientLooksAtTheUpperOne) {
    use("[Emod]\n" + axis({"70", "200"}) + row("1 0", "T", "", numbers({"29"})) + "[CoE]\n" +
        axis({"70", "200"}) + row("1 0", "T", "", numbers({"6"})));
    EXPECT_EQ(modulus(1, 70.0f), 29.0f);
    EXPECT_EQ(EMOD_STATUS, 0);
    EXPECT_EQ(coefficient(1, 70.0f), 0.0f);
    EXPECT_EQ(COE_STATUS, 1);
}

TEST_F(ElasticModulus, CoefficientAboveAFullAxisIsHeld) {
    std::string temperatures, values;
    for (int i = 0; i < 36; ++i) {
        temperatures += " " + std::to_string(100 + 10 * i);
        values += " " + std::to_string(1 + i);
    }
    use("[CoE]\n[Temp]   " + temperatures + "\n" + row("1 0", "T", "", values));
    EXPECT_FLOAT_EQ(coefficient(1, 9000.0f), 36.0f);
    EXPECT_EQ(PROPERTIES.coe_temperature, 450.0f);
    EXPECT_EQ(COE_STATUS, 0);
}

TEST_F(ElasticModulus, CoefficientOfAShortRow) {
    EXPECT_FLOAT_EQ(coefficient(2, 100.0f), 7.1f);
    EXPECT_EQ(COE_STATUS, 0);
    EXPECT_EQ(coefficient(2, 120.0f), 0.0f);
    EXPECT_EQ(COE_STATUS, 1);
}

TEST_F(ElasticModulus, AThousandthIsACoefficientAndNothingLess) {
    use("[CoE]\n" + axis({"70", "200"}) + row("1 0", "T", "", numbers({"0.001", "1"})) +
        row("2 0", "T", "", numbers({"0.0009", "1"})));
    EXPECT_EQ(coefficient(1, 70.0f), 0.001f);
    EXPECT_EQ(COE_STATUS, 0);
    EXPECT_EQ(coefficient(2, 70.0f), 0.0009f);
    EXPECT_EQ(COE_STATUS, 1);
}

TEST_F(ElasticModulus, CoefficientOfABadReference) {
    for (const Int reference : {0, -5, 5, 231}) {
        EXPECT_EQ(coefficient(reference, 100.0f), 0.0f) << reference;
        EXPECT_EQ(COE_STATUS, 1) << reference;
        EXPECT_EQ(EMOD_STATUS, 0) << reference;
    }
}

TEST_F(ElasticModulus, BothHalvesInOneCall) {
    Real E = 0.0f, alpha = 0.0f;
    READ_ELAST_ALPHA(7, 7, 100.0f, 70.0f, alpha, E);
    EXPECT_EQ(E, 26.0f);
    EXPECT_FLOAT_EQ(alpha, 9.1f);
    // A reference that the modulus section does not have leaves the file at its end.
    READ_ELAST_ALPHA(99, 1, 70.0f, 70.0f, alpha, E);
    EXPECT_EQ(E, 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
    EXPECT_EQ(alpha, 6.4f);
    EXPECT_EQ(COE_STATUS, 0);
}

TEST_F(ElasticModulus, AHalfThatDidNotRunKeepsItsLastValue) {
    modulus(1, 70.0f);
    coefficient(1, 70.0f);
    EXPECT_FLOAT_EQ(PROPERTIES.modulus_psi, 29.4e6f);
    remove_file("system", "ElastAlp07.txt");
    modulus(1, 70.0f);
    EXPECT_FLOAT_EQ(PROPERTIES.modulus_psi, 29.4e6f);
    EXPECT_FLOAT_EQ(PROPERTIES.expansion, 6.4e-6f);
}

// ---- ASMEMOD and the warnings --------------------------------------------------------------------

TEST_F(ElasticModulus, AGoodReferenceReportsNothing) {
    for (const Int code : {1, 2, 0, -1, 5})
        EXPECT_EQ(ASMEMOD(70.0f, 1, code), 29.4f) << code;
    EXPECT_TRUE(reported().empty());
}

TEST_F(ElasticModulus, TheTableWillDoForAnyCodeButTheEuropeanOnes) {
    EXPECT_FLOAT_EQ(ASMEMOD(212.0f, 1, PD_5500), 205000.0f * 145.03264f / 1.0E+6f);
    EXPECT_FLOAT_EQ(ASMEMOD(212.0f, 1, EN_13445), 205000.0f * 145.03264f / 1.0E+6f);
    SET_CHART("HA-3");
    EXPECT_FLOAT_EQ(ASMEMOD(212.0f, 1, EN_13445), 194000.0f * 145.03264f / 1.0E+6f);
}

TEST_F(ElasticModulus, AnUnknownReferenceFallsBackToCarbonSteel) {
    EXPECT_EQ(ASMEMOD(70.0f, 99, 1), 29.4f);
    EXPECT_EQ(reported(), modulus_error() + invalid_reference());
}

TEST_F(ElasticModulus, AReferenceAbove230GivesCarbonSteelThoughTheRowIsThere) {
    EXPECT_EQ(ASMEMOD(70.0f, 230, 1), 32.0f);
    EXPECT_TRUE(reported().empty());
    EXPECT_EQ(ASMEMOD(70.0f, 231, 1), 29.4f);
    EXPECT_EQ(reported(), invalid_reference());
    EXPECT_EQ(ASMEMOD(70.0f, 232, 1), 29.4f);
    EXPECT_EQ(reported(), modulus_error() + invalid_reference());
}

TEST_F(ElasticModulus, AMissingFileGivesBothWarningsAndNoModulus) {
    remove_file("system", "ElastAlp07.txt");
    write_file("system", "ExtChartData.txt", MODULUS_CHARTS);
    SET_CHART("CS-2"); // the chart is not used
    EXPECT_EQ(ASMEMOD(70.0f, 1, 1), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
    EXPECT_EQ(COE_STATUS, 1);
    EXPECT_EQ(reported(), modulus_error() + coefficient_error() + invalid_reference());
}

TEST_F(ElasticModulus, ReferenceZeroTakesTheChart) {
    write_file("system", "ExtChartData.txt", MODULUS_CHARTS);
    SET_CHART("CS-2");
    EXPECT_EQ(ASMEMOD(200.0f, 0, 1), 29.0f);
    EXPECT_EQ(EMOD_STATUS, 2);
    EXPECT_EQ(PROPERTIES.emod_identifier.trimmed(), "CS-2");
    EXPECT_EQ(PROPERTIES.emod_description.trimmed(), "External Pressure used (Sec. II d).");
    EXPECT_FLOAT_EQ(PROPERTIES.modulus_psi, 29.0e6f);
    EXPECT_EQ(reported(), chart_used());
    EXPECT_FLOAT_EQ(ASMEMOD(600.0f, 0, 1), 24.5f);
    EXPECT_EQ(EMOD_STATUS, 2);
}

TEST_F(ElasticModulus, AChartWhoseLimitIsPassed) {
    write_file("system", "ExtChartData.txt", MODULUS_CHARTS);
    SET_CHART("HA-1");
    EXPECT_EQ(ASMEMOD(500.0f, 0, 1), 28.0f); // last row
    EXPECT_EQ(EMOD_STATUS, 3);
    EXPECT_EQ(reported(), chart_exceeded());
    EXPECT_EQ(ASMEMOD(100.7f, 0, 1), 28.0f); // the same whole number of degrees
    EXPECT_EQ(EMOD_STATUS, 2);
}

TEST_F(ElasticModulus, TheChartTakesTheCallersTemperatureNotTheHeldOne) {
    write_file("system", "ExtChartData.txt", MODULUS_CHARTS);
    SET_CHART("CS-2");
    // Row 2 ends at 300, its axis at 400.
    EXPECT_FLOAT_EQ(ASMEMOD(600.0f, 2, 1), 24.5f);
    EXPECT_EQ(EMOD_STATUS, 2);
}

TEST_F(ElasticModulus, WithoutTheChartFileTheModulusIsMissing) {
    SET_CHART("CS-2");
    EXPECT_EQ(ASMEMOD(200.0f, 0, 1), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 3); // no temperature was returned
    EXPECT_EQ(reported(), chart_exceeded());
}

TEST_F(ElasticModulus, TheEuropeanSetupTakesTheBuiltInTableBehindTheReference) {
    SETUP[0].whole = PD_5500;
    SET_CHART("CS-2");
    EXPECT_FLOAT_EQ(ASMEMOD(212.0f, 0, 1), 205000.0f * 145.03264f / 1.0E+6f);
    EXPECT_EQ(EMOD_STATUS, 3); // the temperature used stays 0
    EXPECT_FLOAT_EQ(ASMEMOD(0.5f, 0, 1), 210000.0f * 145.03264f / 1.0E+6f);
    EXPECT_EQ(EMOD_STATUS, 2);
}

TEST_F(ElasticModulus, WarningsByStatus) {
    PROPERTY_WARNINGS(0, 0);
    EXPECT_TRUE(reported().empty());
    PROPERTY_WARNINGS(1, 0);
    EXPECT_EQ(reported(), modulus_error());
    PROPERTY_WARNINGS(2, 0);
    EXPECT_EQ(reported(), chart_used());
    PROPERTY_WARNINGS(3, 1);
    EXPECT_EQ(reported(), chart_exceeded() + coefficient_error());
    PROPERTY_WARNINGS(0, 1);
    EXPECT_EQ(reported(), coefficient_error());
}

TEST_F(ElasticModulus, ASilentPassWritesNothing) {
    IWRITE = 0;
    EXPECT_EQ(ASMEMOD(70.0f, 99, 1), 29.4f);
    IWRITE = 1;
    EXPECT_TRUE(reported().empty());
}

TEST_F(ElasticModulus, NoUnitStaysOpen) {
    Int before = 0, after = 0;
    GETNEXTUNIT(before);
    modulus(1, 70.0f);
    coefficient(1, 70.0f);
    modulus(99, 70.0f);
    GETNEXTUNIT(after);
    EXPECT_EQ(before, after);
}

} // namespace
} // namespace tarvane
