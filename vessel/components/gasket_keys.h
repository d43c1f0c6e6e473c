// What the gasket table gives to a flange.
#pragma once

#include "components/element.h"

namespace tarvane::vessel {

// m and y of the gasket of the name, for those of the keys that are not given; nothing for an empty name.
void take_gasket(Element& flange, Reading& reading);

} // namespace tarvane::vessel
