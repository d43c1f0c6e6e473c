#include "assembly/place.h"

#include "tarvane/tarvane.h"

#include <cmath>

namespace tarvane::vessel {

using S = ShellNumber;

float inside_diameter(const ShellInput& shell) {
    return shell.outside() ? shell.diameter() - 2.0f * shell.setting(S::t) : shell.diameter();
}

float length_of(const ShellInput& cylinder) {
    const float tangent = cylinder.setting(S::tangent_length);
    return tangent > 0.0f ? tangent : cylinder.setting(S::length);
}

namespace {

// From the end of the shell to the lowest or highest point inside a head; nothing where dimensions are missing.
std::optional<float> depth_of(const ShellInput& head) {
    const float D = inside_diameter(head), straight = head.setting(S::straight);
    switch (head.shape()) {
    case TARVANE_ELLIPTICAL_HEAD: {
        const float h = head.setting(S::h), k = head.setting(S::k);
        if (h > 0.0f) return h + straight;
        return k > 0.0f ? std::optional(D / (2.0f * k) + straight) : std::nullopt;
    }
    case TARVANE_TORISPHERICAL_HEAD: {
        const float L = head.setting(S::L), r = head.setting(S::r);
        const float crown = L - r, side = D / 2.0f - r;
        return crown >= side ? std::optional(L - std::sqrt(crown * crown - side * side) + straight)
                             : std::nullopt;
    }
    case TARVANE_SPHERE:
        return D / 2.0f + straight;
    case TARVANE_CONE:
        return head.setting(S::cone_length) > 0.0f ? std::optional(head.setting(S::cone_length))
                                                   : std::nullopt;
    default:
        return 0.0f;
    }
}

} // namespace

std::optional<float> elevation_at_end(const ShellInput& head, const ShellInput& shell) {
    const std::optional<float> foot = elevation_of(shell);
    if (!foot) return std::nullopt;
    switch (head.whole_setting(S::end)) {
    case END_TOP:
        return length_of(shell) > 0.0f ? std::optional(*foot + length_of(shell)) : std::nullopt;
    case END_BOTTOM: {
        const std::optional<float> depth = depth_of(head);
        return depth ? std::optional(*foot - *depth) : std::nullopt;
    }
    default: // of a vessel that lies
        return foot;
    }
}

std::optional<float> elevation_of(const Element& element) {
    const auto origin = element.origins.find("elevation");
    if (origin == element.origins.end()) return std::nullopt;
    if (origin->second.given.null() && origin->second.from == "default") return std::nullopt;
    return element.number_of(*element.kind->keys.find("elevation"));
}

bool lies(const ShellInput& cylinder, const Request& request) {
    bool any = false;
    for (const auto& element : request.elements) {
        if (element->kind != &SHELL_KIND) continue;
        const auto& head = static_cast<const ShellInput&>(*element);
        const int end = head.whole_setting(S::end);
        const bool lying = end == END_LEFT || end == END_RIGHT;
        any = any || lying;
        const std::string& on = head.text_setting(ShellText::on);
        if (!on.empty() && on == cylinder.description()) return lying;
    }
    return any;
}

std::optional<float> top_of(const Element& element, const Request& request) {
    const std::optional<float> foot = elevation_of(element);
    if (!foot || element.kind != &SHELL_KIND) return foot;
    const auto& shell = static_cast<const ShellInput&>(element);
    if (shell.shape() == TARVANE_CYLINDER) {
        if (lies(shell, request)) return *foot + inside_diameter(shell);
        const float length = length_of(shell);
        return length > 0.0f ? std::optional(*foot + length) : std::nullopt;
    }
    if (shell.whole_setting(S::end) == END_LEFT || shell.whole_setting(S::end) == END_RIGHT)
        return *foot + inside_diameter(shell);
    const std::optional<float> depth = depth_of(shell);
    return depth ? std::optional(*foot + *depth) : std::nullopt;
}

} // namespace tarvane::vessel
