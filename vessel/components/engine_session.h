// What the calls of every kind of element share: services, report file, units.
#pragma once

#include "components/element.h"
#include "components/request.h"

#include <cstdint>
#include <string>

namespace tarvane::vessel {

inline constexpr std::int32_t OFF = 0, ON = 1;

// Message boxes and the end of the run go to an outcome while the object lives; after it to that of the object
// around it, if any.
class Services {
  public:
    explicit Services(Outcome& outcome);
    ~Services();
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

  private:
    Outcome* before;
};

// A unit of the engine whose report lines go to the object. Throws std::runtime_error when there is no
// unit left, and when a line was lost.
class ReportUnit {
  public:
    // Without a report nothing is opened and nothing written.
    explicit ReportUnit(bool wanted = true);
    ~ReportUnit();
    ReportUnit(const ReportUnit&) = delete;
    ReportUnit& operator=(const ReportUnit&) = delete;

    // Report lines go to the unit from now on.
    void switch_on() const;
    // The records that were written. Report lines go nowhere from now on.
    std::string switch_off_and_read() const;

  private:
    mutable std::string records; // the engine appends to them while the unit is open
    std::int32_t number = 0;     // 0: none
};

// Decimal commas of the report, when the file asks for them. After RESET_ENGINE.
void set_decimal_comma(const Request& file);

// Unit factors and labels of the report, dimensions of the code's metric edition. After
// RESET_ENGINE.
void set_units(const Request& file);

void put_blank_padded(char* field, std::size_t width, const std::string& text);

} // namespace tarvane::vessel
