#include "serve/workbench.h"

#include "input/toml_limits.h"
#include "serve/form_values.h"
#include "serve/refused.h"
#include "serve/toml_edit.h"
#include "terminal/output_file.h"
#include "values/bounded_file.h"
#include "values/sha256.h"
#include "values/text.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <sys/stat.h>

namespace tarvane::app {

using namespace vessel;

namespace fs = std::filesystem;

namespace {

constexpr std::string_view ENDING = ".toml";
constexpr std::size_t LONGEST_NAME = 100, MOST_DOCUMENTS = 64, MOST_FILES = 5000;
constexpr std::size_t MOST_STEPS = 200, MOST_STEP_BYTES = 32 * 1024 * 1024;
constexpr unsigned BAD_REQUEST = 400, NOT_FOUND = 404, CONFLICT = 409, UNUSABLE = 422;

bool is_letter_or_digit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// One that a list can show.
bool can_be_listed(const std::string& name) {
    return name.size() > ENDING.size() && name.ends_with(ENDING) && name.front() != '.' &&
           printable(name) == name;
}

std::string iso_time(std::time_t time) {
    std::tm parts{};
    gmtime_r(&time, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
    return text;
}

} // namespace

bool is_plain_name(std::string_view name) {
    return name.size() > ENDING.size() && name.size() <= LONGEST_NAME && name.ends_with(ENDING) &&
           is_letter_or_digit(name.front()) && std::all_of(name.begin(), name.end(), [](char c) {
               return is_letter_or_digit(c) || c == ' ' || c == '-' || c == '_' || c == '.';
           });
}

std::string edited(std::string text, const std::vector<FieldEdit>& edits) {
    for (const FieldEdit& edit : edits) {
        const auto refuse = [&edit](const std::string& why) {
            return RequestRefused(BAD_REQUEST, why, "path", edit.path);
        };
        const std::optional<TomlPath> field = path_named(edit.path);
        if (!field) throw refuse(echoed(edit.path) + " is no path of a field");
        try {
            const TomlPath path = written_path(read_tree(text).root, *field);
            if (edit.value) {
                text = with_value(text, path, *edit.value);
            } else {
                const std::string written =
                    edit.typed ? typed_value(*edit.typed, key_at(*field)) : std::string();
                text = written.empty() ? without(text, path) : with_written(text, path, written);
            }
        } catch (const EditRefused& problem) {
            throw refuse(problem.what());
        }
        if (text.size() > LARGEST_INPUT) throw refuse("the file would be too large");
    }
    return text;
}

// ---- one document --------------------------------------------------------------------------------------

void OpenDocument::keep(std::deque<std::string>& texts, std::string text) {
    texts.push_back(std::move(text));
    std::size_t bytes = 0;
    for (const std::string& each : texts)
        bytes += each.size();
    while (texts.size() > 1 && (texts.size() > MOST_STEPS || bytes > MOST_STEP_BYTES)) {
        bytes -= texts.front().size();
        texts.pop_front();
    }
}

void OpenDocument::put(std::string text) {
    if (text == now) return;
    keep(before, std::move(now));
    after.clear();
    now = std::move(text);
    ++versions;
}

void OpenDocument::undo() {
    if (before.empty()) return;
    keep(after, std::move(now));
    now = std::move(before.back());
    before.pop_back();
    ++versions;
}

void OpenDocument::redo() {
    if (after.empty()) return;
    keep(before, std::move(now));
    now = std::move(after.back());
    after.pop_back();
    ++versions;
}

void OpenDocument::bind(std::string name) {
    file = std::move(name);
    on_file = now;
}

std::string_view on_disk_name(OnDisk is) {
    switch (is) {
    case OnDisk::same:
        return "same";
    case OnDisk::changed:
        return "changed";
    case OnDisk::missing:
        return "missing";
    case OnDisk::unsaved:
        break;
    }
    return "new";
}

// ---- files -----------------------------------------------------------------------------------------------

bool Workbench::Seen::same_stamp(const Seen& other) const {
    return size == other.size && inode == other.inode && seconds == other.seconds &&
           nanoseconds == other.nanoseconds;
}

std::string Workbench::folder_name() const {
    const std::string name = folder.filename().string();
    return printable(name.empty() ? folder.string() : name);
}

std::string Workbench::path_of_file(const std::string& name) const {
    return (folder / name).string();
}

// Nothing where there is no regular file; a link is none, it may lead out of the folder.
std::optional<Workbench::Seen> Workbench::look(const std::string& name) const {
    struct stat status {};
    if (lstat(path_of_file(name).c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return Seen{static_cast<std::uint64_t>(status.st_size),
                static_cast<std::uint64_t>(status.st_ino),
                static_cast<std::int64_t>(status.st_mtim.tv_sec),
                static_cast<std::int64_t>(status.st_mtim.tv_nsec),
                {}};
}

std::string Workbench::read(const std::string& name) const {
    if (!look(name)) throw RequestRefused(NOT_FOUND, "there is no file " + printable(name));
    std::string text;
    try {
        text = read_regular(path_of_file(name), LARGEST_INPUT);
    } catch (const std::runtime_error& problem) {
        throw RequestRefused(UNUSABLE, printable(problem.what()));
    }
    if (text.size() > LARGEST_INPUT)
        throw RequestRefused(UNUSABLE, printable(name) + " is too large for an input file");
    return text;
}

std::vector<ListedFile> Workbench::files() {
    std::vector<ListedFile> found;
    std::error_code failure;
    for (fs::directory_iterator at(folder, failure), end; !failure && at != end;
         at.increment(failure)) {
        const std::string name = at->path().filename().string();
        const std::optional<Seen> is = can_be_listed(name) ? look(name) : std::nullopt;
        if (is) found.push_back({{}, name, is->size, iso_time(is->seconds)});
    }
    if (failure) throw RequestRefused(UNUSABLE, "the folder cannot be read: " + failure.message());
    std::sort(found.begin(), found.end(),
              [](const ListedFile& a, const ListedFile& b) { return a.name < b.name; });
    if (found.size() > MOST_FILES) found.resize(MOST_FILES);
    for (ListedFile& file : found) {
        const auto known = std::find_if(handles.begin(), handles.end(), [&file](const auto& each) {
            return each.second == file.name;
        });
        file.handle = known != handles.end() ? known->first : "f" + std::to_string(++last_file);
        handles[file.handle] = file.name;
    }
    return found;
}

// ---- documents ---------------------------------------------------------------------------------------------

OpenDocument& Workbench::add(std::string text) {
    // Nobody closes a tab of a browser by a request: the one that was left the longest goes.
    if (documents.size() >= MOST_DOCUMENTS) {
        const auto left = std::find_if(used.begin(), used.end(), [this](const std::string& handle) {
            return documents.at(handle)->disposable();
        });
        if (left == used.end())
            throw RequestRefused(CONFLICT, "too many documents with changes are open; save some");
        drop(std::string(*left));
    }
    const std::string handle = "d" + std::to_string(++last_document);
    used.push_back(handle);
    auto& made = documents[handle];
    made = std::make_unique<OpenDocument>(handle, std::move(text));
    return *made;
}

void Workbench::remember(const OpenDocument& document) {
    Seen is = look(*document.name()).value_or(Seen{});
    is.sha256 = sha256(document.text());
    seen[document.handle] = std::move(is);
}

OpenDocument& Workbench::open(std::string_view file_handle) {
    const auto at = handles.find(file_handle);
    if (at == handles.end())
        throw RequestRefused(NOT_FOUND, "there is no such file in the folder any more");
    return open_named(at->second);
}

OpenDocument& Workbench::open_named(const std::string& name) {
    for (const auto& [handle, document] : documents) {
        if (document->name() == name) return *document;
    }
    OpenDocument& made = add(read(name));
    made.bind(name);
    remember(made);
    return made;
}

OpenDocument& Workbench::create(std::string text) { return add(std::move(text)); }

OpenDocument& Workbench::document(std::string_view handle) {
    const auto at = documents.find(handle);
    if (at == documents.end()) throw RequestRefused(NOT_FOUND, "the document is not open any more");
    const auto place = std::find(used.begin(), used.end(), handle);
    std::rotate(place, place + 1, used.end());
    return *at->second;
}

void Workbench::drop(const std::string& handle) {
    std::erase(used, handle);
    seen.erase(handle);
    documents.erase(handle);
}

void Workbench::close(std::string_view handle, bool force) {
    const OpenDocument& closed = document(handle);
    if (!force && !closed.disposable())
        throw RequestRefused(CONFLICT, "there are changes that were not saved", "conflict",
                             "unsaved");
    drop(std::string(closed.handle));
}

void Workbench::save(OpenDocument& document, const std::string& name, bool force) {
    const bool own = name.empty() || document.name() == name;
    if (own && !document.name())
        throw RequestRefused(BAD_REQUEST, "a name for the file is expected");
    const std::string target = own ? *document.name() : name;
    if (!own && !is_plain_name(target))
        throw RequestRefused(BAD_REQUEST, echoed(target) +
                                              " is no name of a file here; letters, digits, "
                                              "blanks, -, _ and . are, and .toml at the end");
    std::error_code none;
    const fs::file_status there = fs::symlink_status(path_of_file(target), none);
    if (fs::exists(there) && !fs::is_regular_file(there))
        throw RequestRefused(UNUSABLE, printable(target) + " is no plain file");
    if (!own) {
        for (const auto& [handle, other] : documents) {
            if (other->name() == target)
                throw RequestRefused(CONFLICT, printable(target) + " is open already");
        }
        if (fs::exists(there) && !force)
            throw RequestRefused(CONFLICT, printable(target) + " is there already", "conflict",
                                 "exists");
    } else if (!force && on_disk(document) == OnDisk::changed) {
        throw RequestRefused(CONFLICT, printable(target) + " was changed by another program",
                             "conflict", "changed");
    }
    try {
        write_whole(path_of_file(target), document.text());
    } catch (const std::runtime_error& problem) {
        throw RequestRefused(UNUSABLE, printable(problem.what()));
    }
    document.bind(target);
    remember(document);
}

void Workbench::reload(OpenDocument& document) {
    if (!document.name()) throw RequestRefused(BAD_REQUEST, "the document has no file yet");
    const std::string name = *document.name();
    document.put(read(name));
    document.bind(name);
    remember(document);
}

OnDisk Workbench::on_disk(const OpenDocument& document) {
    if (!document.name()) return OnDisk::unsaved;
    const std::optional<Seen> is = look(*document.name());
    if (!is) return OnDisk::missing;
    Seen& was = seen[document.handle];
    if (is->same_stamp(was)) return OnDisk::same;
    if (is->size > LARGEST_INPUT || sha256(read(*document.name())) != was.sha256)
        return OnDisk::changed;
    const std::string hash = was.sha256;
    was = *is;
    was.sha256 = hash;
    return OnDisk::same;
}

std::string Workbench::text_on_disk(const OpenDocument& document) const {
    if (!document.name()) throw RequestRefused(BAD_REQUEST, "the document has no file yet");
    return read(*document.name());
}

std::vector<std::string> Workbench::unsaved() const {
    std::vector<std::string> names;
    for (const auto& [handle, document] : documents) {
        if (document->disposable()) continue;
        names.push_back(document->name().value_or("a new file"));
    }
    return names;
}

} // namespace tarvane::app
