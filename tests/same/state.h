// What a host can see of a library between two calls.
#pragma once

#include "library.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace same {

// What is compared of a call, each part by a digest of its own.
enum Part { GIVEN, RESULTS, SETTINGS, LINES, TABLES, FILES, MESSAGES, PARTS };
inline constexpr std::string_view PART_NAMES[PARTS] = {
    "arguments given", "results", "settings", "line store", "tables", "files", "messages"};

enum class Form { reals, wholes, text, record };
// A line an element that is not zero, or a line of each row of a text or record.
void write_content(std::FILE* out, const std::string& name, Form form, const char* bytes,
                   std::size_t size, std::size_t row);

// Lengths of the blocks of results, which grow with the library; 0 without the block.
using ResultBytes = std::array<std::size_t, 4>;
ResultBytes result_bytes(const calls::Library& library);
// What both libraries have.
ResultBytes shorter(const ResultBytes& one, const ResultBytes& other);

class State {
  public:
    State(const calls::Library& the_library, const ResultBytes& results);

    // The blocks that RESET_ENGINE leaves to the host, as they were at load.
    void restore_host_blocks() const;
    void digest(std::uint64_t* parts) const;
    void write(std::FILE* out) const;

  private:
    struct Region {
        std::string name;
        Part part;
        Form form;
        char* bytes;
        std::size_t size, row;
        bool numbers, of_host;
        std::string at_load;
    };

    void add(std::string name, Part part, Form form, void* bytes, std::size_t size, std::size_t row,
             bool numbers = false, bool of_host = false);
    std::int32_t lines_in_use() const;
    std::int32_t failure_rows() const;

    const calls::Library& library;
    std::vector<Region> regions;
};

} // namespace same
