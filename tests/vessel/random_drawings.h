// What the tests of drawings share: chance for geometries, and the words of a drawing.
#pragma once

#include "drawing/frame.h"

#include <cmath>
#include <optional>
#include <random>
#include <sstream>
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

// A text with a blank before each letter that a list of shifts moves.
inline std::string spaced(const std::string& text, const std::string& shifts) {
    std::istringstream list(shifts);
    std::string all;
    for (std::size_t i = 0; i < text.size();) {
        double shift = 0;
        if (list >> shift && shift != 0) all += ' ';
        do
            all += text[i++];
        while (i < text.size() && (text[i] & 0xC0) == 0x80);
    }
    return all;
}

// Its texts in their order, lines of a paragraph put together.
inline std::string words(const Figure& figure) {
    std::string all;
    for (std::size_t at = 0; (at = figure.svg.find("<text ", at)) != std::string::npos;) {
        const std::size_t begin = figure.svg.find('>', at) + 1;
        const std::string look = figure.svg.substr(at, begin - at);
        const std::size_t shifts = look.find(" dx=\"");
        at = begin;
        const std::string text = figure.svg.substr(at, figure.svg.find('<', at) - at);
        all += (shifts == std::string::npos ? text : spaced(text, look.substr(shifts + 5))) + ' ';
    }
    return all;
}

inline std::string first_of(const std::vector<std::string>& faults) {
    return faults.empty() ? "" : faults.front();
}

} // namespace tarvane::vessel
