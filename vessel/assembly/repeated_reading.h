// One tree of values read again and again, with other numbers at some of its places.
#pragma once

#include "assembly/reader.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tarvane::vessel {

// A place in a request: "flange[0].t", "vessel.P". Its numbers are in the unit, or, without one, in that of the
// request.
struct Input {
    std::string path, unit = {};
};

// One request read many times, with other numbers at some of its places. What does not depend on them is read once, each data file too. Every reading gives what read_request gives for a request with
// these numbers; but the first can have faults that a later one would not, and then there are no later ones.
class RepeatedReading {
  public:
    // The request has some value at each of the paths. Both must outlive the object.
    RepeatedReading(const Table& root, std::span<const Input> inputs);
    ~RepeatedReading();

    // Of everything that does not depend on the inputs.
    const ReadResult& result() const;
    // With the components of the latest reading.
    Request& request();
    // Whether a component has a key at the path.
    bool takes(std::size_t input) const;
    // The places of the components that inputs are of; the others stay as they are.
    std::vector<std::size_t> changing() const;

    // A number of a flag is 0 or 1, that of a choice its number.
    const Faults& read(std::span<const double> values);
    // The same, at once, where nothing but the calculation depends on the numbers and the latest reading had no
    // faults; else false, and they are still to be read.
    bool take_numbers(std::span<const double> values);

  private:
    struct Parts;
    std::unique_ptr<Parts> parts;
};

} // namespace tarvane::vessel
