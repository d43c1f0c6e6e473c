// Rated pressures of components that have not changed since they were searched for.
#pragma once

#include "components/known_ratings.h"

#include <map>
#include <optional>
#include <string>

namespace tarvane::app {

class RatingMemory {
  public:
    // For the components of a text. What a component is made of: its own table, those of the components that it is
    // linked with, directly or not, all that is no component, and the data files. The memory must live as long.
    vessel::Rating rating_for(const std::string& toml);

  private:
    std::map<std::string, std::optional<vessel::RatedPressure>> known; // by the SHA-256 of all that
};

} // namespace tarvane::app
