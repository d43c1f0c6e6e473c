// A material file of the test's own: records of 414 bytes, the first of them with the two counts.
#pragma once

#include "frame/types.h"

#include <array>
#include <cstring>
#include <string>
#include <string_view>

namespace tarvane::material_test {

// One record, filled field by field by its offset.
class Record {
  public:
    Record(std::string_view name, Int reference) {
        bytes.fill(' ');
        for (std::size_t at : {32u, 140u, 152u, 156u, 160u, 164u, 168u, 180u, 184u, 356u, 360u,
                               372u, 376u, 380u, 384u, 388u, 392u, 396u, 400u})
            put(at, Int{0});
        for (std::size_t i = 0; i < 32; ++i)
            put(188 + 4 * i, 20.0f - 0.25f * static_cast<Real>(i));
        put(364, -1.0f);
        put(368, -1.0f);
        text(0, name);
        text(16, name);
        put(32, reference);
    }
    template <typename Number>
    Record& put(std::size_t offset, Number value) {
        static_assert(sizeof value == 4);
        std::memcpy(bytes.data() + offset, &value, 4);
        return *this;
    }
    Record& text(std::size_t offset, std::string_view value) {
        std::memcpy(bytes.data() + offset, value.data(), value.size());
        return *this;
    }
    std::string_view view() const { return {bytes.data(), bytes.size()}; }

  private:
    std::array<char, 414> bytes{};
};

inline std::string material_file(Int first, Int second, std::initializer_list<Record> records) {
    Record head("", 0);
    head.put(0, first).put(4, second);
    std::string file(head.view());
    for (const Record& record : records)
        file += record.view();
    return file;
}

} // namespace tarvane::material_test
