// A binary file of records of one length after a first one that holds their count.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

namespace tarvane::data {

static_assert(std::endian::native == std::endian::little, "the files are little-endian");

class RecordFile {
  public:
    explicit RecordFile(std::size_t record_bytes) : length(record_bytes), content(length, '\0') {}

    // The first bytes of a record as it is in memory.
    template <typename Record>
    void add(const Record& record) {
        static_assert(std::is_trivially_copyable_v<Record>);
        content.append(reinterpret_cast<const char*>(&record), length);
        const std::int32_t count = static_cast<std::int32_t>(content.size() / length - 1);
        std::memcpy(content.data(), &count, sizeof count);
    }
    // The second count, of 0, follows the first.
    const std::string& bytes() const { return content; }

  private:
    std::size_t length;
    std::string content;
};

} // namespace tarvane::data
