#include "batch/progress.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace tarvane::app {

namespace {

constexpr std::size_t BAR = 24;
constexpr std::chrono::milliseconds REDRAWN{200};
constexpr std::chrono::seconds NOW_AND_THEN{10};

std::string number(double value, const char* form) {
    char text[40];
    std::snprintf(text, sizeof text, form, value);
    return text;
}

// "25 s", "12 min", "3.4 h"
std::string duration(double seconds) {
    constexpr double MINUTE = 60.0, HOUR = 3600.0;
    if (seconds < 2.0 * MINUTE) return number(std::ceil(seconds), "%.0f s");
    if (seconds < 2.0 * HOUR) return number(seconds / MINUTE, "%.0f min");
    return number(seconds / HOUR, "%.1f h");
}

} // namespace

std::string progress_text(const Tally& tally, double seconds) {
    std::string text = std::to_string(tally.done) + " of " + std::to_string(tally.all) + " done";
    if (tally.failing > 0) text += ", " + std::to_string(tally.failing) + " do not pass";
    if (tally.not_calculated > 0)
        text += ", " + std::to_string(tally.not_calculated) + " not calculated";
    if (tally.done == tally.before || seconds <= 0.0) return text;
    const double rate = static_cast<double>(tally.done - tally.before) / seconds;
    text += ", " + number(rate, rate < 10.0 ? "%.1f" : "%.0f") + "/s";
    if (tally.done < tally.all)
        text += ", " + duration(static_cast<double>(tally.all - tally.done) / rate) + " left";
    return text;
}

std::string progress_bar(const Tally& tally, std::size_t width) {
    const std::size_t full = tally.all == 0 ? width : tally.done * width / tally.all;
    return '[' + std::string(full, '#') + std::string(width - full, '-') + ']';
}

Progress::Progress(std::ostream& to, Form as)
    : out(to), form(as), start(Clock::now()), shown(start) {}

void Progress::write(const Tally& tally) {
    shown = Clock::now();
    const double seconds = std::chrono::duration<double>(shown - start).count();
    std::string line = progress_text(tally, seconds);
    if (form == Form::lines) {
        out << line + '\n' << std::flush;
        return;
    }
    line.insert(0, progress_bar(tally, BAR) + ' ');
    const std::size_t columns = line.size();
    line.resize(std::max(columns, width), ' ');
    width = columns;
    out << '\r' + line << std::flush;
}

void Progress::show(const Tally& tally) {
    if (form == Form::none) return;
    const auto since = Clock::now() - shown;
    if (form == Form::bar ? since >= REDRAWN : since >= NOW_AND_THEN) write(tally);
}

void Progress::end(const Tally& tally) {
    if (form == Form::none) return;
    write(tally);
    if (form == Form::bar) out << '\n' << std::flush;
}

} // namespace tarvane::app
