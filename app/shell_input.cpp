#include "shell_input.h"

#include "input_file.h"
#include "shell_results.h"
#include "shell_session.h"
#include "tarvane/tarvane.h"

namespace tarvane::app {

using N = ShellNumber;

namespace {

constexpr std::size_t MOST_SHELLS = 500;
constexpr float KNUCKLE_ABOVE = 0.001f; // radius and thickness from which a cone has a knuckle

} // namespace

const ElementKind SHELL_KIND{
    .table = "shell",
    .plural = "shells",
    .keys = shell_keys(),
    .most = MOST_SHELLS,
    .single = false,
    .make =
        [] {
            auto shell = std::make_unique<ShellInput>();
            shell->kind = &SHELL_KIND;
            return std::unique_ptr<Element>(std::move(shell));
        },
    .tables = shell_tables,
};

// ---- reading ---------------------------------------------------------------------------------------

bool ShellInput::knuckle() const {
    return shape() == TARVANE_CONE && setting(N::r) > KNUCKLE_ABOVE &&
           setting(N::tk) > KNUCKLE_ABOVE;
}

void ShellInput::put_number(const Key& key, float value) {
    settings[static_cast<std::size_t>(key.index)] = value;
}

void ShellInput::put_text(const Key& key, const std::string& western) {
    texts[static_cast<std::size_t>(key.index)] = western;
}

namespace {

// The checks of one element; a key that is missing or at fault otherwise is passed over.
class Checks {
  public:
    Checks(const ShellInput& element, Reading& into) : shell(element), reading(into) {}

    void all() {
        above_zero({"P", "S", "Sa", "t", "D", "Do", "E"});
        at_least_zero({"c", "Ut", "D2", "straight", "d1", "d2", "edge1", "edge2", "pitch"});
        if (value("E") > 1.0f) fault("E", "a joint efficiency up to 1 is expected");
        if (reading.given("D") && reading.given("Do"))
            fault("Do", "either D or Do is expected, not both");
        wall();
        code();
        switch (shell.shape()) {
        case TARVANE_ELLIPTICAL_HEAD:
            return ellipse();
        case TARVANE_TORISPHERICAL_HEAD:
            return torisphere();
        case TARVANE_CONE:
            return cone();
        case TARVANE_FLAT_HEAD:
            return flat();
        default:
            return;
        }
    }

  private:
    const ShellInput& shell;
    Reading& reading;

    float value(std::string_view key) const {
        return shell.settings[static_cast<std::size_t>(shell_keys().find(key)->index)];
    }
    void fault(std::string_view key, std::string message) {
        reading.fault(key, std::move(message));
    }
    void above_zero(std::initializer_list<std::string_view> keys) {
        for (const std::string_view key : keys) {
            if (reading.sound(key) && !(value(key) > 0.0f)) fault(key, "it must be above 0");
        }
    }
    void at_least_zero(std::initializer_list<std::string_view> keys) {
        for (const std::string_view key : keys) {
            if (reading.sound(key) && !(value(key) >= 0.0f)) fault(key, "it must not be below 0");
        }
    }

    // A wall must be left when the allowances are taken off, and room inside it.
    void wall() {
        const float t = value("t");
        if (!reading.sound("t") || !(t > 0.0f)) return;
        if (!((t - value("c")) - value("Ut") > 0.0f))
            fault("t", "nothing is left of it behind the corrosion allowance and the tolerance");
        const bool round = shell.shape() != TARVANE_FLAT_HEAD;
        if (round && reading.sound("Do") && value("Do") > 0.0f && !(value("Do") > 2.0f * t))
            fault("Do", "it must be above twice the thickness t");
    }

    void code() {
        const bool formed =
            shell.shape() == TARVANE_ELLIPTICAL_HEAD || shell.shape() == TARVANE_TORISPHERICAL_HEAD;
        const bool older = shell.whole_setting(N::edition) == SHELL_EDITION_OLDER;
        if (shell.older_division_2() && !formed) {
            fault("code", "VIII-2 is for elliptical and torispherical heads only, by its older "
                          "edition; VIII-1 is expected");
        } else if (shell.older_division_2() && !older) {
            fault("edition", "shells by VIII-2 are calculated by its older edition only; \"older\" "
                             "is expected");
        } else if (older && !shell.older_division_2()) {
            fault("edition", "\"older\" is an edition of code VIII-2 only");
        }
    }

    void ellipse() {
        above_zero({"h"});
        if (reading.given("k") && reading.given("h"))
            fault("h", "either k or h is expected, not both");
        if (!(value("k") >= 1.0f))
            fault(reading.given("h") ? "h" : "k", "an aspect ratio D/2h of at least 1 is expected");
    }

    void torisphere() {
        above_zero({"L", "r"});
        if (reading.sound("L") && reading.sound("r") && value("r") > value("L"))
            fault("r", "the knuckle radius must not be above the crown radius L");
        if (reading.sound("r") && reading.sound("D") && value("r") > value("D") / 2.0f)
            fault("r", "the knuckle radius must not be above D/2");
    }

    void cone() {
        if (reading.sound("alpha") && !(value("alpha") > 0.0f && value("alpha") < 90.0f))
            fault("alpha", "an angle above 0 and below 90 degrees is expected");
        at_least_zero({"r", "tk"});
        if (reading.given("tk") && reading.sound("tk") &&
            !((value("tk") - value("c")) - value("Ut") > 0.0f)) {
            fault("tk", "nothing is left of it behind the corrosion allowance and the tolerance");
        }
    }

    void flat() { above_zero({"C"}); }
};

} // namespace

void ShellInput::complete(Reading& reading) {
    if (!reading.given("Sy_cold")) put_setting(N::Sy_cold, setting(N::Sy));
    const float h = setting(N::h);
    if (h > 0.0f && !reading.given("k")) {
        const float inside = outside() ? diameter() - 2.0f * setting(N::t) : diameter();
        if (inside > 0.0f) put_setting(N::k, inside / (2.0f * h));
    }
    Checks(*this, reading).all();
}

std::vector<std::string_view> ShellInput::required(const Reading& reading) const {
    std::vector<std::string_view> keys{"kind", "P", "T", "S", "Sa", "t"};
    if (!reading.given("Do")) keys.push_back("D");
    if (!reading.sound("kind")) return keys; // what the kind needs is not known
    const auto also = [&](std::initializer_list<std::string_view> more) {
        keys.insert(keys.end(), more);
    };
    switch (shape()) {
    case TARVANE_TORISPHERICAL_HEAD:
        also({"L", "r"});
        break;
    case TARVANE_CONE:
        also({"alpha"});
        if (reading.given("r") || reading.given("tk")) also({"r", "tk"});
        break;
    case TARVANE_FLAT_HEAD:
        also({"C"});
        if (has(N::openings)) also({"d1", "edge1"});
        if (setting(N::d2) > 0.0f) also({"pitch", "edge2"});
        break;
    default:
        break;
    }
    return keys;
}

// ---- running ---------------------------------------------------------------------------------------

std::unique_ptr<Outcome> ShellInput::calculate(const InputFile& file) const {
    return std::make_unique<ShellOutcome>(run_shell(*this, file));
}

Verdict ShellInput::judge(const Outcome& outcome, const UnitSystem& units) const {
    return judge_shell(*this, static_cast<const ShellOutcome&>(outcome), units);
}

} // namespace tarvane::app
