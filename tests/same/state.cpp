#include "state.h"

#include "call.h"
#include "digest.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace same {

namespace fs = std::filesystem;

namespace {

std::string shown(const char* bytes, std::size_t size) {
    std::string text;
    for (std::size_t i = 0; i < size; ++i) {
        const auto c = static_cast<unsigned char>(bytes[i]);
        char code[8];
        std::snprintf(code, sizeof code, c >= ' ' && c <= '~' && c != '\\' ? "%c" : "\\x%02x", c);
        text += code;
    }
    return text;
}

std::string content_of(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::vector<fs::path> files_of_working_folder() {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator("."))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

void write_content(std::FILE* out, const std::string& name, Form form, const char* bytes,
                   std::size_t size, std::size_t row) {
    for (std::size_t at = 0; at < size; at += row) {
        const std::size_t count = std::min(row, size - at);
        const char* const from = bytes + at;
        const std::string label =
            size > row ? name + '(' + std::to_string(at / row + 1) + ')' : name;
        if (form == Form::text) {
            std::size_t end = count;
            while (end > 0 && from[end - 1] == ' ')
                --end;
            if (end > 0 || size <= row)
                std::fprintf(out, "  %s \"%s\"\n", label.c_str(), shown(from, end).c_str());
            continue;
        }
        if (form == Form::record) {
            for (std::size_t k = 0; k < count; k += 16) {
                const std::size_t few = std::min<std::size_t>(16, count - k);
                if (std::all_of(from + k, from + k + few, [](char c) { return c == ' '; }))
                    continue;
                std::fprintf(out, "  %s, byte %zu:", label.c_str(), k + 1);
                for (std::size_t i = 0; i < few; ++i)
                    std::fprintf(out, i % 4 == 0 ? "  %02x" : "%02x",
                                 static_cast<unsigned>(static_cast<unsigned char>(from[k + i])));
                std::fprintf(out, "  \"%s\"\n", shown(from + k, few).c_str());
            }
            continue;
        }
        std::uint32_t bits = 0;
        std::memcpy(&bits, from, std::min(count, sizeof bits));
        if (bits == 0 && size > row) continue;
        float real = 0.0f;
        std::int32_t whole = 0;
        if (form == Form::reals) bits = without_payload(bits);
        std::memcpy(&real, &bits, sizeof real);
        std::memcpy(&whole, &bits, sizeof whole);
        if (form == Form::reals)
            std::fprintf(out, "  %s %.9g  %08x\n", label.c_str(), static_cast<double>(real), bits);
        else
            std::fprintf(out, "  %s %d\n", label.c_str(), static_cast<int>(whole));
    }
}

namespace {

template <typename Visit>
void each_block_of_results(const calls::Library& library, Visit visit) {
    std::size_t number = 0;
    const auto block = [&](const char* name, auto routine) {
        visit(number++, name, routine == nullptr ? nullptr : routine());
    };
    block("shell results", library.GETSHELLRESULTS);
    block("flange results", library.GETFLANGERESULTS);
    block("external results", library.GETEXTERNALRESULTS);
    block("mdmt results", library.GETMDMTRESULTS);
}

} // namespace

ResultBytes result_bytes(const calls::Library& library) {
    ResultBytes bytes{};
    each_block_of_results(library, [&](std::size_t number, const char*, const auto* block) {
        if (block != nullptr) bytes.at(number) = static_cast<std::size_t>(block->bytes);
    });
    return bytes;
}

ResultBytes shorter(const ResultBytes& one, const ResultBytes& other) {
    ResultBytes bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = std::min(one[i], other[i]);
    return bytes;
}

State::State(const calls::Library& the_library, const ResultBytes& results) : library(the_library) {
#define TARVANE_ROUTINE(name, words, decorated)
#define TARVANE_VARIABLE(name)                                                                     \
    add(#name, SETTINGS, Form::wholes, library.name, sizeof(std::int32_t), sizeof(std::int32_t));
#include TARVANE_EXPORT_LIST
#undef TARVANE_ROUTINE
#undef TARVANE_VARIABLE
    if (library.GETSETUP != nullptr)
        add("setup", SETTINGS, Form::reals, library.GETSETUP(),
            TARVANE_SETUP_ELEMENTS * sizeof(TARVANE_SETUP_ELEMENT), sizeof(float), true);
    if (library.GETLINESCOMFLG != nullptr)
        add("line", LINES, Form::text, library.GETLINESCOMFLG(),
            std::size_t{TARVANE_STORE_RECORDS} * TARVANE_STORE_WIDTH, TARVANE_STORE_WIDTH);
    const auto rows = [&](std::string name, auto routine, std::size_t count, bool numbers,
                          bool of_host) {
        if (routine == nullptr) return;
        auto* const block = routine();
        add(std::move(name), TABLES, Form::record, block, count * sizeof *block, sizeof *block,
            numbers, of_host);
    };
    rows("element table", library.GETELEMENTTABLES, TARVANE_ELEMENT_ROWS, false, true);
    rows("host input", library.GETHOSTINPUT, 1, false, true);
    rows("failure table", library.GETFAILURETABLE, TARVANE_ELEMENT_ROWS, true, false);
    rows("material classes", library.GETMATERIALCLASSNAMES, TARVANE_MATERIAL_CLASS_ROWS, false,
         false);
    rows("foundation", library.GETFOUNDATION, 1, false, false);
    // Version and size at its head grow with the library.
    constexpr std::size_t HEAD = 2 * sizeof(std::int32_t);
    each_block_of_results(library, [&](std::size_t number, const char* name, auto* block) {
        if (block != nullptr && results.at(number) > HEAD)
            add(name, TABLES, Form::reals, reinterpret_cast<char*>(block) + HEAD,
                results.at(number) - HEAD, sizeof(float), true);
    });
}

void State::add(std::string name, Part part, Form form, void* bytes, std::size_t size,
                std::size_t row, bool numbers, bool of_host) {
    if (bytes == nullptr) return;
    char* const from = static_cast<char*>(bytes);
    regions.push_back(
        {std::move(name), part, form, from, size, row, numbers, of_host, std::string(from, size)});
}

void State::restore_host_blocks() const {
    for (const Region& region : regions)
        if (region.of_host) std::memcpy(region.bytes, region.at_load.data(), region.size);
}

std::int32_t State::lines_in_use() const {
    std::int32_t count = -1;
    if (library.LINE_COUNT != nullptr) library.LINE_COUNT(&count);
    return count;
}

std::int32_t State::failure_rows() const {
    std::int32_t count = -1;
    if (library.FAILURE_ROW_COUNT != nullptr) library.FAILURE_ROW_COUNT(&count);
    return count;
}

void State::digest(std::uint64_t* parts) const {
    Digest digests[PARTS];
    for (const Region& region : regions)
        if (region.numbers)
            digests[region.part].add_reals(region.bytes, region.size);
        else
            digests[region.part].add(region.bytes, region.size);
    digests[LINES].add(static_cast<std::uint64_t>(lines_in_use()));
    digests[TABLES].add(static_cast<std::uint64_t>(failure_rows()));
    for (const fs::path& file : files_of_working_folder()) {
        const std::string name = file.string(), content = content_of(file);
        digests[FILES].add(name.data(), name.size());
        digests[FILES].add(content.data(), content.size());
    }
    digests[MESSAGES].add(calls::heard().data(), calls::heard().size());
    for (const Part part : {SETTINGS, LINES, TABLES, FILES, MESSAGES})
        parts[part] = digests[part].value();
}

void State::write(std::FILE* out) const {
    std::fprintf(out, "settings, line store and tables (what is as at load is left out)\n");
    std::fprintf(out, "  lines in use %d, failure rows %d\n", static_cast<int>(lines_in_use()),
                 static_cast<int>(failure_rows()));
    for (const Region& region : regions)
        for (std::size_t at = 0; at < region.size; at += region.row) {
            const std::size_t count = std::min(region.row, region.size - at);
            if (std::memcmp(region.bytes + at, region.at_load.data() + at, count) == 0) continue;
            write_content(out, region.name + ' ' + std::to_string(at / region.row + 1), region.form,
                          region.bytes + at, count, count);
        }
    for (const fs::path& file : files_of_working_folder()) {
        std::fprintf(out, "file %s\n", file.filename().c_str());
        const std::string content = content_of(file);
        for (std::size_t at = 0; at < content.size();) {
            const std::size_t end = std::min(content.find('\n', at), content.size() - 1) + 1;
            std::fprintf(out, "  %s\n", shown(content.data() + at, end - at).c_str());
            at = end;
        }
    }
    std::fprintf(out, "messages\n%s", calls::heard().c_str());
}

} // namespace same
