#include "components/not_covered.h"

#include "components/external_input.h"
#include "components/shell_input.h"
#include "tarvane/tarvane.h"

#include <algorithm>

namespace tarvane::vessel {

namespace {

bool is_cone(const Element& element) {
    if (element.kind == &SHELL_KIND)
        return static_cast<const ShellInput&>(element).shape() == TARVANE_CONE;
    return element.kind == &EXTERNAL_KIND &&
           static_cast<const ExternalInput&>(element).shape() == TARVANE_CONE;
}

} // namespace

std::vector<std::string_view> not_covered(const Request& request) {
    std::vector<std::string_view> words{"openings and reinforcement, UG-36 to UG-45",
                                        "supports and lugs, UG-54", "wind and earthquake, UG-22",
                                        "fatigue, UG-22"};
    const bool cone =
        std::any_of(request.elements.begin(), request.elements.end(),
                    [](const std::unique_ptr<Element>& element) { return is_cone(*element); });
    if (cone) words.emplace_back("junctions of a cone, Appendix 1-5 and 1-8");
    return words;
}

} // namespace tarvane::vessel
