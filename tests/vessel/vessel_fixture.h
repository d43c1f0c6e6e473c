// Requests, and a handle whose answers are returned as trees.
#pragma once

#include "tarvane/vessel.h"
#include "test_paths.h"
#include "values/json.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace tarvane::vessel {

// A complete flange; `more` are further members.
inline std::string flange_json(const std::string& more = "") {
    return R"({"description": "N1", "type": "weld neck", "P": 150, "T": 300, "B": 12.0, "A": 19.0, "t": 1.19,
        "g0": 0.375, "g1": 1.19, "h": 3.25, "Sfo": 20000, "Sfa": 20000, "bolting": "TEMA", "C": 17.0, "n": 12,
        "a": 0.875, "Sb": 25000, "Sa": 25000, "Fod": 15.0, "Fid": 12.0, "Go": 14.75, "Gi": 14.0, "m": 3,
        "y": 10000, "facing": "1a")" +
           more + '}';
}

inline std::string request_of(const std::string& flange, const std::string& head = "") {
    return R"({"tarvane": 1, )" + head + R"("flange": [)" + flange + "]}";
}

// The value at "flange[0].inputs.P.value"; null without one. Of a tree that stays, itself; else a copy.
inline const Value& at(const Value& tree, std::string_view path) {
    static const Value null;
    const Value* here = &tree;
    while (!path.empty() && here != nullptr) {
        const std::size_t end = path.find_first_of(".[", path.front() == '[' ? 1 : 0);
        std::string_view step = path.substr(0, end);
        path.remove_prefix(std::min(path.size(), step.size()));
        if (!path.empty() && path.front() == '.') path.remove_prefix(1);
        if (step.front() == '[') {
            const auto place = static_cast<std::size_t>(std::stoi(std::string(step.substr(1))));
            const List* list = here->list();
            here = list != nullptr && place < list->size() ? &(*list)[place] : nullptr;
        } else {
            const Table* table = here->table();
            here = table != nullptr ? table->find(step) : nullptr;
        }
    }
    return here != nullptr ? *here : null;
}
inline Value at(Value&& tree, std::string_view path) {
    const Value& here = tree;
    return at(here, path);
}

inline std::string text_at(const Value& tree, std::string_view path) {
    const Value& value = at(tree, path);
    return value.text() != nullptr ? *value.text() : "no text: " + value.shown();
}

inline Value parsed(const char* json) {
    Faults faults;
    const auto tree = read_json(json != nullptr ? json : "", faults);
    EXPECT_TRUE(tree.has_value()) << faults.front().message << ": " << json;
    return tree.value_or(Value());
}

// A folder of its own with the data files.
class Folder {
  public:
    explicit Folder(const std::string& name)
        : path(std::filesystem::temp_directory_path() /
               (name + '_' + std::to_string(reinterpret_cast<std::uintptr_t>(this)))) {
        std::filesystem::create_directories(path);
        for (const auto& entry : std::filesystem::directory_iterator(TARVANE_DATA_DIR)) {
            const std::string extension = entry.path().extension().string();
            if (extension == ".txt" || extension == ".TXT" || extension == ".BIN")
                std::filesystem::copy(entry.path(), path / entry.path().filename());
        }
    }
    ~Folder() { std::filesystem::remove_all(path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::filesystem::path path;
};

struct Answer {
    std::int32_t status = -1;
    std::string text; // of the result
    Value result, error;

    std::size_t faults() const { return error.list() != nullptr ? error.list()->size() : 0; }
};

class Handle {
  public:
    explicit Handle(const std::string& folder = TARVANE_DATA_DIR)
        : opened(tarvane_open(TARVANE_VESSEL_ABI, folder.c_str(), &vessel)) {}
    ~Handle() { tarvane_close(vessel); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    TARVANE_VESSEL* get() const { return vessel; }

    Answer calculate(const std::string& request, std::int32_t want = TARVANE_WANT_RESULTS) const {
        Answer answer;
        const char* text = nullptr;
        answer.status = tarvane_calculate(vessel, request.c_str(), want, &text);
        EXPECT_EQ(text != nullptr, answer.status == TARVANE_OK);
        answer.error = parsed(tarvane_last_error(vessel));
        if (text != nullptr) {
            answer.text = text;
            answer.result = parsed(text);
        }
        return answer;
    }

  private:
    TARVANE_VESSEL* vessel = nullptr;

  public:
    std::int32_t opened;
};

} // namespace tarvane::vessel
