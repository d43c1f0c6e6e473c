#include "batch/items.h"

#include "values/bounded_file.h"
#include "values/text.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tarvane::app {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view INPUT_EXTENSION = ".toml";

std::string utf8(const std::u8string& text) {
    return {reinterpret_cast<const char*>(text.data()), text.size()};
}

bool ends_in_toml(std::string_view file) {
    if (file.size() < INPUT_EXTENSION.size()) return false;
    const std::string_view end = file.substr(file.size() - INPUT_EXTENSION.size());
    return std::equal(end.begin(), end.end(), INPUT_EXTENSION.begin(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b;
    });
}

[[noreturn]] void fail(const std::string& path, const std::string& why) {
    throw std::runtime_error("cannot read " + vessel::printable(path) + ": " + why);
}

// Paths of one file differ no longer; a linked file keeps the name that it has.
fs::path plain(const fs::path& file) {
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    return fs::canonical(folder) / file.filename();
}

class Search {
  public:
    explicit Search(fs::path not_in) : out(std::move(not_in)) {}

    std::vector<fs::path> files;

    void look_into(const fs::path& folder) {
        std::error_code none;
        if (fs::equivalent(folder, out, none)) return;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            const std::string name = utf8(entry.path().filename().u8string());
            if (name.front() == '.') continue;
            if (entry.is_directory(none) && !entry.is_symlink(none))
                look_into(entry.path());
            else if (ends_in_toml(name) && !entry.is_directory(none))
                files.push_back(entry.path());
        }
    }

  private:
    fs::path out;
};

fs::path common_folder(const fs::path& a, const fs::path& b) {
    fs::path common;
    auto i = a.begin(), j = b.begin();
    for (; i != a.end() && j != b.end() && *i == *j; ++i, ++j)
        common /= *i;
    return common;
}

} // namespace

std::string item_name(const std::string& file) {
    std::string_view name = file;
    if (ends_in_toml(name)) name.remove_suffix(INPUT_EXTENSION.size());
    return vessel::printable(name);
}

Items find_items(std::span<const std::string> paths, const fs::path& out,
                 const std::optional<fs::path>& base) {
    Search search(out);
    std::optional<fs::path> common;
    const auto include = [&](const fs::path& folder) {
        common = common ? common_folder(*common, folder) : folder;
    };
    for (const std::string& path : paths) {
        std::error_code failure;
        const fs::path given = vessel::path_of(path);
        const fs::file_status status = fs::status(given, failure);
        if (status.type() == fs::file_type::not_found)
            fail(path, "there is no such file or folder");
        if (!fs::exists(status)) fail(path, failure.message());
        if (fs::is_directory(status)) {
            const fs::path folder = fs::canonical(given);
            include(folder);
            search.look_into(folder);
        } else {
            search.files.push_back(plain(given));
            include(search.files.back().parent_path());
        }
    }
    if (search.files.empty())
        throw std::runtime_error("there is no input file (*.toml) in what is named");

    Items found{.base = base ? *base : *common, .items = {}};
    for (const fs::path& path : search.files) {
        const fs::path file = path.lexically_relative(found.base);
        if (file.empty() || *file.begin() == "..")
            fail(utf8(path.u8string()), "the files of this batch are in " +
                                            vessel::printable(utf8(found.base.u8string())) +
                                            "; another --out takes others");
        std::string text = utf8(file.generic_u8string());
        found.items.push_back({item_name(text), vessel::printable(text), path});
    }
    const auto key = [](const Item& item) { return std::tie(item.name, item.path); };
    std::sort(found.items.begin(), found.items.end(),
              [&](const Item& a, const Item& b) { return key(a) < key(b); });
    const auto last = std::unique(found.items.begin(), found.items.end(),
                                  [](const Item& a, const Item& b) { return a.path == b.path; });
    found.items.erase(last, found.items.end());
    const auto twice =
        std::adjacent_find(found.items.begin(), found.items.end(),
                           [](const Item& a, const Item& b) { return a.name == b.name; });
    if (twice != found.items.end())
        throw std::runtime_error(twice->file + " and " + std::next(twice)->file +
                                 " would write the same results");
    return found;
}

} // namespace tarvane::app
