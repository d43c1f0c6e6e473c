// The sizes of a thread series, as the bolt data file lists them.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace tarvane::vessel {

class BoltSizes {
  public:
    // Empty for a series without sizes of its own ("special"), and for one that the data do not have.
    explicit BoltSizes(int series);

    bool empty() const { return sizes.empty(); }
    // Whether a diameter (in.) is one of the sizes, within the engine's tolerance.
    bool lists(float diameter) const;
    // The size (in.) that the engine uses for it: the size itself, the next smaller one, or the smallest.
    float taken(float diameter) const;
    // The sizes (in.) next to it on both sides; one where the series ends.
    std::vector<float> neighbours(float diameter) const;

  private:
    std::vector<float> sizes; // in the unit of the section, ascending
    float scale = 1.0f;       // of an inch in that unit
};

// A thread series as its section of the bolt data file has it: rows of diameter, root area, spacing, and the distances
// from hub, from ring and to edge, in millimetres or inches.
struct ThreadSeries {
    static constexpr std::size_t NUMBERS = 6;

    std::string name;
    bool metric = false;
    std::vector<std::array<float, NUMBERS>> sizes;
};
// All of the file; none without it.
std::vector<ThreadSeries> thread_series();

} // namespace tarvane::vessel
