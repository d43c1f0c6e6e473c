// Where components are in a vessel: elevations of their lowest and highest points inside.
#pragma once

#include "components/request.h"
#include "components/shell_input.h"

#include <optional>

namespace tarvane::vessel {

float inside_diameter(const ShellInput& shell);
// Of a cylinder from end to end; 0: not known.
float length_of(const ShellInput& cylinder);

// Of the lowest point of a component that is complete; nothing where neither it nor a link gives one.
std::optional<float> elevation_of(const Element& element);

// Whether a cylinder lies: with a head at its left or right end; without a head of its own, as the others do.
bool lies(const ShellInput& cylinder, const Request& request);

// Of the highest point; nothing where dimensions for it are missing, too.
std::optional<float> top_of(const Element& element, const Request& request);

// Of the lowest point of a head at one end of a shell.
std::optional<float> elevation_at_end(const ShellInput& head, const ShellInput& shell);

} // namespace tarvane::vessel
