// What the tests of drawings share: chance for geometries, and the words of a drawing.
#pragma once

#include "drawing/frame.h"

#include <cmath>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace tarvane::vessel {

inline constexpr int GEOMETRIES = 500;

class Chance {
  public:
    explicit Chance(unsigned seed) : engine(seed) {}
    double between(double low, double high) {
        const double part = static_cast<double>(engine()) / static_cast<double>(engine.max());
        return low + (high - low) * part;
    }
    // As many below as above the geometric mean.
    double spread(double low, double high) {
        return std::exp(between(std::log(low), std::log(high)));
    }
    bool one_in(int n) { return engine() % static_cast<unsigned>(n) == 0; }

  private:
    std::mt19937 engine;
};

// As a file of its own.
inline std::optional<Drawn> alone(std::optional<Draft> draft) {
    if (!draft) return std::nullopt;
    return framed(std::move(*draft), DrawnFor::file);
}

// Its texts in their order, lines of a paragraph put together.
inline std::string words(const Figure& figure) {
    std::string all;
    for (std::size_t at = 0; (at = figure.svg.find("<text ", at)) != std::string::npos;) {
        at = figure.svg.find('>', at) + 1;
        all += figure.svg.substr(at, figure.svg.find('<', at) - at) + ' ';
    }
    return all;
}

inline std::string first_of(const std::vector<std::string>& faults) {
    return faults.empty() ? "" : faults.front();
}

} // namespace tarvane::vessel
