// A [[shell]] of an input file, in the engine's units.
#pragma once

#include "components/element.h"
#include "components/external_input.h"
#include "fields/shell_keys.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

extern const ElementKind SHELL_KIND;

struct ShellInput final : SettingsElement<ShellNumber, ShellText> {
    std::optional<ExternalInput> external; // the same element under external pressure

    int shape() const { return whole_setting(ShellNumber::kind); } // TARVANE_CYLINDER and so on
    bool has(ShellNumber flag) const { return setting(flag) != 0.0f; }
    bool outside() const { return setting(ShellNumber::Do) > 0.0f; }
    float diameter() const { return setting(outside() ? ShellNumber::Do : ShellNumber::D); }
    bool older_division_2() const { return whole_setting(ShellNumber::code) == 2; }
    bool formed() const;        // an elliptical or torispherical head
    bool thin() const;          // a formed head for Appendix 1-4(f)
    bool needs_modulus() const; // of the modulus table
    const std::string& material() const { return text_setting(ShellText::material); }

    std::unique_ptr<Element> copy() const override { return std::make_unique<ShellInput>(*this); }
    std::string description() const override { return text_setting(ShellText::description); }
    void complete(Reading& reading) override;
    bool rule(std::string_view id, const Reading& reading) const override;
    std::unique_ptr<Outcome> calculate(const Request& file) const override;
    std::vector<Result> results(const Outcome& outcome) const override;
    Checks find_checks(const Outcome& outcome, const UnitSystem& units) const override;

    RatingBasis rating_basis(const Outcome& outcome) const override;
    void put_pressure(float P) override { put_setting(ShellNumber::P, P); }
    std::optional<ChartPoint> chart_point(const Outcome& outcome) const override;

  private:
    void take_material(Reading& reading);
    void make_external(Reading& reading);
};

} // namespace tarvane::vessel
