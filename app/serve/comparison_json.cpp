#include "commands/calculated_text.h"
#include "document/comparison.h"
#include "document/comparison_writers.h"
#include "serve/document_json.h"
#include "surface/engine_turn.h"
#include "values/json.h"
#include "values/text.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <vector>

namespace tarvane::app {

using namespace vessel;

namespace {

constexpr std::size_t AROUND = 2; // lines around those that differ

std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

struct SignedLine {
    char sign; // '-' of the first text alone, '+' of the second alone, ' ' of both
    std::string_view text;
};

// By the longest common part; of texts that differ in very many lines, all of the first and then all of the second.
void add_middle(std::span<const std::string_view> a, std::span<const std::string_view> b,
                std::vector<SignedLine>& out) {
    constexpr std::size_t MOST_CELLS = 4'000'000;
    std::size_t i = 0, j = 0;
    if (a.size() * b.size() <= MOST_CELLS) {
        const std::size_t width = b.size() + 1;
        std::vector<std::uint32_t> common((a.size() + 1) * width);
        for (std::size_t r = a.size(); r-- > 0;) {
            for (std::size_t c = b.size(); c-- > 0;)
                common[r * width + c] =
                    a[r] == b[c] ? common[(r + 1) * width + c + 1] + 1
                                 : std::max(common[(r + 1) * width + c], common[r * width + c + 1]);
        }
        while (i < a.size() && j < b.size()) {
            if (a[i] == b[j]) {
                out.push_back({' ', a[i]});
                ++i;
                ++j;
            } else if (common[(i + 1) * width + j] >= common[i * width + j + 1]) {
                out.push_back({'-', a[i++]});
            } else {
                out.push_back({'+', b[j++]});
            }
        }
    }
    for (; i < a.size(); ++i)
        out.push_back({'-', a[i]});
    for (; j < b.size(); ++j)
        out.push_back({'+', b[j]});
}

std::vector<SignedLine> difference(const std::string& before, const std::string& after) {
    const std::vector<std::string_view> a = lines_of(before), b = lines_of(after);
    std::size_t front = 0, back = 0;
    const std::size_t shorter = std::min(a.size(), b.size());
    while (front < shorter && a[front] == b[front])
        ++front;
    while (back < shorter - front && a[a.size() - 1 - back] == b[b.size() - 1 - back])
        ++back;
    std::vector<SignedLine> all;
    for (std::size_t i = 0; i < front; ++i)
        all.push_back({' ', a[i]});
    add_middle(std::span(a).subspan(front, a.size() - front - back),
               std::span(b).subspan(front, b.size() - front - back), all);
    for (std::size_t i = a.size() - back; i < a.size(); ++i)
        all.push_back({' ', a[i]});
    std::vector<bool> shown(all.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].sign == ' ') continue;
        const std::size_t last = std::min(i + AROUND, all.size() - 1);
        for (std::size_t k = i < AROUND ? 0 : i - AROUND; k <= last; ++k)
            shown[k] = true;
    }
    std::vector<SignedLine> near;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (shown[i]) near.push_back(all[i]);
    }
    return near;
}

class ComparisonWriter {
  public:
    std::string write(const std::string& before, const std::string& after) {
        json.begin_object();
        try {
            const EngineTurn turn;
            write_results(compare(read_stored("file", calculated_json("the file", before)),
                                  read_stored("page", calculated_json("the page", after)), 0.0));
        } catch (const std::exception& problem) {
            json.key("same").flag(before == after);
            json.key("says").text(printable(problem.what()));
            for (const std::string_view none : {"inputs", "results", "verdicts", "unmatched"})
                json.key(none).begin_list().end_list();
        }
        json.key("lines").begin_list();
        for (const SignedLine& line : difference(before, after)) {
            json.begin_object().key("sign").text(std::string_view(&line.sign, 1));
            json.key("text").text(printable(line.text)).end_object();
        }
        json.end_list().end_object();
        return json.take();
    }

  private:
    JsonWriter json;

    void write_change(const Change& change) {
        json.begin_object().key("component").text(change.component);
        json.key("path").text(change.path).key("label").text(change.label);
        json.key("symbol").text(change.symbol).key("unit").text(change.unit);
        json.key("before").text(change.before.shown).key("after").text(change.after.shown);
        json.key("given").flag(change.given()).key("percent");
        if (change.percent)
            json.number(*change.percent);
        else
            json.null();
        json.end_object();
    }

    void write_results(const Comparison& comparison) {
        json.key("same").flag(comparison.same());
        json.key("says").text(words_of(comparison));
        json.key("inputs").begin_list();
        for (const Change& change : comparison.inputs)
            write_change(change);
        json.end_list().key("results").begin_list();
        for (const Change& change : comparison.results)
            write_change(change);
        json.end_list().key("verdicts").begin_list();
        for (const VerdictChange& change : comparison.verdicts) {
            json.begin_object().key("component").text(change.component);
            json.key("path").text(change.path).key("label").text(change.label);
            json.key("before").text(change.before).key("after").text(change.after);
            json.key("turn").text(turn_name(change.turn)).end_object();
        }
        json.end_list().key("unmatched").begin_list();
        for (const Unmatched& alone : comparison.unmatched) {
            json.begin_object().key("side").text(alone.of_first ? "before" : "after");
            json.key("component").text(alone.component).key("verdict").text(alone.verdict);
            json.end_object();
        }
        json.end_list();
    }
};

} // namespace

std::string comparison_json(const std::string& before, const std::string& after) {
    return ComparisonWriter().write(before, after);
}

} // namespace tarvane::app
