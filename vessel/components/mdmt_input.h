// An [[mdmt]] of an input file, in the engine's units.
#pragma once

#include "components/element.h"
#include "fields/mdmt_keys.h"
#include "tarvane/tarvane.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

extern const ElementKind MDMT_KIND;

struct MdmtInput final : SettingsElement<MdmtNumber, MdmtText> {
    bool asked = false;            // the file gives the temperature that must be reached
    bool test_of_record = false;   // the material's specification has an impact test temperature
    bool user_temperature = false; // the file gives one

    int code() const { return whole_setting(MdmtNumber::code); }
    int edition() const { return whole_setting(MdmtNumber::edition); }
    int curve() const { return whole_setting(MdmtNumber::curve); } // TARVANE_CURVE_A and so on
    bool has(MdmtNumber flag) const { return setting(flag) != 0.0f; }
    bool division_2() const { // VIII-2, 3.11
        return code() == TARVANE_ASME_VIII_2 && edition() != MDMT_EDITION_OLDER;
    }
    bool am_218() const { return code() == TARVANE_ASME_VIII_2 && !division_2(); }
    bool impact_tested() const { return curve() == TARVANE_CURVE_IMPACT_TESTED; }
    bool exempt() const { return curve() == TARVANE_CURVE_EXEMPT; }
    float ucs_66c = -20.0f; // the temperature of UCS-66(c): the metric edition has another one
    // By the curve that it has it is of carbon or low alloy steel.
    bool standard_flange() const { // UCS-66(c)
        return has(MdmtNumber::ucs66c) && code() == TARVANE_ASME_VIII_1 &&
               edition() == MDMT_EDITION_CURRENT && curve() >= TARVANE_CURVE_A &&
               curve() <= TARVANE_CURVE_D;
    }
    const std::string& material() const { return text_setting(MdmtText::material); }

    std::unique_ptr<Element> copy() const override { return std::make_unique<MdmtInput>(*this); }
    std::string description() const override { return text_setting(MdmtText::description); }
    void complete(Reading& reading) override;
    bool rule(std::string_view id, const Reading& reading) const override;
    std::unique_ptr<Outcome> calculate(const Request& file) const override;
    std::vector<Result> results(const Outcome& outcome) const override;
    Checks find_checks(const Outcome& outcome, const UnitSystem& units) const override;

  private:
    void take_material(Reading& reading);
};

} // namespace tarvane::vessel
