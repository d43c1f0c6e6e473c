// Checks of number keys, for kinds whose values are all in settings.
#pragma once

#include "components/element.h"

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace tarvane::vessel {

// A key that is missing, or at fault otherwise, is skipped.
class KeyChecks {
  public:
    KeyChecks(const KeyTable& table, std::span<const float> values, Reading& into)
        : keys(table), settings(values), reading(into) {}

    float value(std::string_view key) const {
        return settings[static_cast<std::size_t>(keys.find(key)->index)];
    }
    bool given(std::string_view key) const { return reading.given(key); }
    bool sound(std::string_view key) const { return reading.sound(key); }
    void fault(std::string_view key, std::string message) const {
        reading.fault(key, std::move(message));
    }
    void above_zero(std::initializer_list<std::string_view> names) const {
        for (const std::string_view key : names) {
            const bool of_file = sound(key) && !reading.supplied(key);
            if (of_file && !(value(key) > 0.0f)) fault(key, "it must be above 0");
        }
    }
    void at_least_zero(std::initializer_list<std::string_view> names) const {
        for (const std::string_view key : names) {
            if (sound(key) && !(value(key) >= 0.0f)) fault(key, "it must not be below 0");
        }
    }
    // Only one of two keys can be given; the fault is the second one's.
    void either(std::string_view first, std::string_view second) const {
        if (given(first) && given(second)) {
            fault(second, "either " + std::string(first) + " or " + std::string(second) +
                              " is expected, not both");
        }
    }

  private:
    const KeyTable& keys;
    std::span<const float> settings;
    Reading& reading;
};

} // namespace tarvane::vessel
