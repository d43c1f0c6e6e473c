// How far a batch is, on standard error.
#pragma once

#include <chrono>
#include <cstddef>
#include <ostream>
#include <string>

namespace tarvane::app {

struct Tally {
    std::size_t all = 0;
    std::size_t done = 0;           // with those of earlier runs
    std::size_t before = 0;         // those of earlier runs
    std::size_t failing = 0;        // that do not pass
    std::size_t not_calculated = 0; // for faults of the input and the like
};

// "120 of 1000 done, 3 do not pass, 1 not calculated, 35/s, 25 s left"; the rate is that of this run.
std::string progress_text(const Tally& tally, double seconds);
// "[######------]"
std::string progress_bar(const Tally& tally, std::size_t width);

// A line that is written over and over on a terminal; elsewhere one now and then.
class Progress {
  public:
    enum class Form { none, lines, bar };

    Progress(std::ostream& to, Form as);

    void show(const Tally& tally);
    // The last time.
    void end(const Tally& tally);

  private:
    using Clock = std::chrono::steady_clock;
    std::ostream& out;
    Form form;
    Clock::time_point start, shown;
    std::size_t width = 0; // of the line that is there

    void write(const Tally& tally);
};

} // namespace tarvane::app
