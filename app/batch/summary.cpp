#include "batch/summary.h"

#include "components/calculation.h"
#include "document/csv.h"
#include "document/results.h"
#include "values/sha256.h"
#include "values/text.h"

#include <algorithm>
#include <array>
#include <limits>

namespace tarvane::app {

namespace {

constexpr int SUMMARY_FORM = 1; // of the summary
constexpr int RATIO_DECIMALS = 4;

constexpr std::size_t COLUMNS = 10;
using Fields = std::array<std::string, COLUMNS>;

std::string ratio_text(const Row& row) {
    return row.ratio ? number_text(*row.ratio, RATIO_DECIMALS) : "-";
}

// By falling ratio; without one a row that does not pass comes first.
float rank(const Row& row) {
    constexpr float FIRST = std::numeric_limits<float>::infinity();
    if (row.ratio) return *row.ratio;
    return row.verdict == PASS ? -FIRST : FIRST;
}

std::size_t widest(const std::vector<const Row*>& rows, std::string Row::*text,
                   std::string_view heading) {
    std::size_t width = characters(heading);
    for (const Row* row : rows)
        width = std::max(width, characters(row->*text));
    return width;
}

std::string others(std::size_t count, std::size_t shown) {
    return count > shown ? "and " + std::to_string(count - shown) + " more, in summary.csv\n" : "";
}

std::string calculated_rows(std::vector<const Row*> rows, std::size_t most) {
    std::stable_sort(rows.begin(), rows.end(),
                     [](const Row* a, const Row* b) { return rank(*a) > rank(*b); });
    const std::size_t all = rows.size();
    rows.resize(std::min(all, most));
    const std::size_t items = widest(rows, &Row::item, "Item"),
                      verdicts = widest(rows, &Row::verdict, "Verdict"),
                      checks = widest(rows, &Row::check, "Check"),
                      components = widest(rows, &Row::component, "Component");
    constexpr std::size_t RATIO = 10, GAPS = 5;
    const auto line = [&](std::string_view item, std::string_view verdict, std::string_view ratio,
                          std::string_view check, std::string_view component) {
        std::string text = padded(item, items) + "  " + padded(verdict, verdicts) + ' ' +
                           right_aligned(ratio, RATIO) + "  " + padded(check, checks) + "  " +
                           std::string(component);
        text.erase(text.find_last_not_of(' ') + 1);
        return text + '\n';
    };
    std::string table = line("Item", "Verdict", "Ratio", "Check", "Component");
    table += std::string(items + verdicts + RATIO + checks + components + GAPS + 2, '-') + '\n';
    for (const Row* row : rows)
        table += line(row->item, row->verdict, ratio_text(*row), row->check, row->component);
    return table + others(all, rows.size());
}

} // namespace

std::string Conditions::key(const std::string& input_sha256) const {
    JsonWriter json;
    json.begin_list().text(program).whole(result_form).flag(strict).flag(html);
    return sha256(json.text(data_sha256).text(input_sha256).end_list().str());
}

Status worst_of(const std::vector<Row>& rows) {
    Status worst = Status::fine;
    for (const Row& row : rows)
        worst = std::max(worst, row.exit);
    return worst;
}

Tally tally_of(const std::vector<Row>& rows) {
    Tally tally{.all = rows.size(), .done = rows.size(), .before = rows.size()};
    for (const Row& row : rows) {
        tally.not_calculated += row.calculated() ? 0 : 1;
        tally.failing += row.calculated() && row.verdict != PASS ? 1 : 0;
    }
    return tally;
}

std::string summary_csv(const std::vector<Row>& rows) {
    std::string csv = csv_row(Fields{"item", "file", "status", "exit", "verdict", "ratio",
                                     "component", "check", "says", "reason"});
    for (const Row& row : rows)
        csv += csv_row(Fields{row.item, row.file, row.status,
                              std::to_string(static_cast<int>(row.exit)), row.verdict,
                              row.ratio ? JsonWriter().single(*row.ratio).str() : "", row.component,
                              row.check, row.says, row.reason});
    return csv;
}

std::string summary_json(const std::vector<Row>& rows, const Conditions& conditions,
                         std::size_t missing) {
    const auto count = [&](const auto& which) {
        return static_cast<std::int64_t>(std::count_if(rows.begin(), rows.end(), which));
    };
    const auto with_verdict = [&](std::string_view verdict) {
        return count([&](const Row& row) { return row.calculated() && row.verdict == verdict; });
    };
    JsonWriter json;
    json.begin_object().key("batch").whole(SUMMARY_FORM).key("program").text(conditions.program);
    json.key("strict").flag(conditions.strict).key("html").flag(conditions.html);
    json.key("data").begin_object().key("version");
    if (conditions.data_version.empty())
        json.null();
    else
        json.text(conditions.data_version);
    json.key("sha256").text(conditions.data_sha256).end_object();
    json.key("items").whole(static_cast<std::int64_t>(rows.size()));
    json.key("pass").whole(with_verdict(PASS)).key("fail").whole(with_verdict(FAIL));
    json.key("not_made").whole(with_verdict(NOT_MADE));
    json.key("not_calculated").whole(count([](const Row& row) { return !row.calculated(); }));
    json.key("missing").whole(static_cast<std::int64_t>(missing));
    json.key("exit").whole(static_cast<int>(worst_of(rows)));
    json.key("rows").begin_list();
    for (const Row& row : rows) {
        JsonWriter each;
        each.begin_object();
        write_row(row, each);
        json.raw('\n' + each.end_object().take());
    }
    return json.end_list().end_object().take() + '\n';
}

std::string summary_table(const std::vector<Row>& rows, std::size_t most) {
    if (most == 0) most = rows.size();
    std::vector<const Row*> calculated, others_of_all;
    for (const Row& row : rows)
        (row.calculated() ? calculated : others_of_all).push_back(&row);
    std::string table;
    if (!calculated.empty()) table += calculated_rows(calculated, most) + '\n';
    if (!others_of_all.empty()) {
        table += "Not calculated:\n";
        for (std::size_t i = 0; i < std::min(most, others_of_all.size()); ++i)
            table += "  " + others_of_all[i]->item + ": " + others_of_all[i]->reason + '\n';
        table += others(others_of_all.size(), most) + '\n';
    }
    const Tally tally = tally_of(rows);
    return table + std::to_string(tally.all) + (tally.all == 1 ? " item: " : " items: ") +
           std::to_string(calculated.size() - tally.failing) + " pass, " +
           std::to_string(tally.failing) + " do not, " + std::to_string(tally.not_calculated) +
           " not calculated\n";
}

} // namespace tarvane::app
