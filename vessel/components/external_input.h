// An [[external]] of an input file, in the engine's units.
#pragma once

#include "components/element.h"
#include "fields/external_keys.h"
#include "tarvane/tarvane.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

extern const ElementKind EXTERNAL_KIND;

struct ExternalInput final : SettingsElement<ExternalNumber, ExternalText> {
    bool equivalent_length = false; // of a cone: the length follows from its dimensions

    int shape() const { return whole_setting(ExternalNumber::kind); } // TARVANE_CYLINDER and so on
    int code() const { return whole_setting(ExternalNumber::code); }
    bool older() const { return whole_setting(ExternalNumber::edition) == EXTERNAL_EDITION_OLDER; }
    bool by_stress() const; // instead of the charts
    bool long_shell() const { return shape() == TARVANE_CYLINDER || shape() == TARVANE_CONE; }
    bool flat_cone() const;    // so steep that UG-34 applies
    bool convex_head() const;  // a formed head of which UG-33(a)(1) requires more than the chart
    bool has_pressure() const; // without one only the allowable pressure is calculated
    bool outside() const { return setting(ExternalNumber::Do) > 0.0f; }
    float diameter() const { return setting(outside() ? ExternalNumber::Do : ExternalNumber::D); }
    const std::string& material() const { return text_setting(ExternalText::material); }
    const std::string& chart() const { return text_setting(ExternalText::chart); }

    std::unique_ptr<Element> copy() const override {
        return std::make_unique<ExternalInput>(*this);
    }
    std::string description() const override { return text_setting(ExternalText::description); }
    void complete(Reading& reading) override;
    bool rule(std::string_view id, const Reading& reading) const override;
    std::unique_ptr<Outcome> calculate(const Request& file) const override;
    std::vector<Result> results(const Outcome& outcome) const override;
    Checks find_checks(const Outcome& outcome, const UnitSystem& units) const override;
    std::optional<ChartPoint> chart_point(const Outcome& outcome) const override;

  private:
    bool needs_stress() const; // the allowable one
    bool needs_yield() const;
    bool is_thin_head() const; // one for Appendix 1-4(f)
    void take_material(Reading& reading);
    void find_chart(Reading& reading);
    void note_tables(Reading& reading) const;
};

} // namespace tarvane::vessel
