#include "drawing/component_drawing.h"

#include "components/flange_input.h"
#include "drawing/flange_drawing.h"
#include "drawing/shell_drawing.h"
#include "drawing/vessel_outline.h"

namespace tarvane::vessel {

std::optional<Figure> component_drawing(const Element& element, const Outcome& outcome,
                                        const Request& request, DrawnFor surroundings) {
    const DimensionStyle style = dimension_style(request.units, request.units.decimal_comma);
    const std::string name = name_of(element);
    std::optional<Draft> draft;
    if (element.kind == &FLANGE_KIND) {
        const auto shape = shape_of(static_cast<const FlangeInput&>(element),
                                    static_cast<const FlangeOutcome&>(outcome));
        if (shape) draft = draw_flange(*shape, name, request.units, style);
    } else if (element.kind == &SHELL_KIND) {
        const auto shape = shape_of(static_cast<const ShellInput&>(element));
        if (shape) draft = draw_shell(*shape, name, request.units, style);
    } else if (element.kind == &EXTERNAL_KIND) {
        const auto shape = shape_of(static_cast<const ExternalInput&>(element));
        if (shape) draft = draw_shell(*shape, name, request.units, style);
    }
    if (!draft) return std::nullopt;
    return framed(std::move(*draft), surroundings).figure;
}

std::optional<Figure> vessel_drawing(const Request& request, const Calculation&,
                                     DrawnFor surroundings) {
    auto draft = draw_vessel(request);
    if (!draft) return std::nullopt;
    return framed(std::move(*draft), surroundings).figure;
}

} // namespace tarvane::vessel
