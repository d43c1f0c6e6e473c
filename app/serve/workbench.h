// The files of one folder and those of them that are open, each by a handle: no path comes from a request.
#pragma once

#include "values/value.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::app {

// A change of a field: what was typed into its form, a value, or neither: it goes.
struct FieldEdit {
    std::string path;
    std::optional<std::string> typed;
    std::optional<vessel::Value> value;
};

// The text with the changes, made in their order. Throws RequestRefused with the path of the first that can't be made.
std::string edited(std::string text, const std::vector<FieldEdit>& edits);

class OpenDocument {
  public:
    // A new text; a file is put in its place by `bind`.
    OpenDocument(std::string own_handle, std::string first_text)
        : handle(std::move(own_handle)), now(std::move(first_text)) {}

    const std::string handle;

    const std::string& text() const { return now; }
    std::uint64_t version() const { return versions; }
    const std::optional<std::string>& name() const { return file; }
    bool saved() const { return on_file && *on_file == now; }
    // Nothing is lost with it: it is saved, or as it was made.
    bool disposable() const { return saved() || (!file && before.empty()); }
    bool can_undo() const { return !before.empty(); }
    bool can_redo() const { return !after.empty(); }

    // A step that can be undone; the same text is none.
    void put(std::string text);
    void undo();
    void redo();
    // The text is that of the file now.
    void bind(std::string name);

  private:
    std::string now;
    std::optional<std::string> file;    // its name
    std::optional<std::string> on_file; // the text as it was read or written last
    std::deque<std::string> before, after;
    std::uint64_t versions = 1;

    void keep(std::deque<std::string>& texts, std::string text);
};

enum class OnDisk { unsaved, same, changed, missing };
std::string_view on_disk_name(OnDisk is); // "new", "same", "changed", "missing"

struct ListedFile {
    std::string handle, name;
    std::uint64_t size;
    std::string modified; // ISO 8601
};

class Workbench {
  public:
    explicit Workbench(std::filesystem::path of_folder) : folder(std::move(of_folder)) {}

    // Its own name, without a path.
    std::string folder_name() const;
    // Regular files "*.toml" in the order of their names. A name keeps its handle.
    std::vector<ListedFile> files();

    // Throw RequestRefused.
    OpenDocument& open(std::string_view file_handle);
    OpenDocument& open_named(const std::string& name);
    OpenDocument& create(std::string text);
    OpenDocument& document(std::string_view handle);
    void close(std::string_view handle, bool force);
    // Under a name of its own from then on; empty: that of its file.
    void save(OpenDocument& document, const std::string& name, bool force);
    void reload(OpenDocument& document);
    OnDisk on_disk(const OpenDocument& document);
    // The text of its file as it is now.
    std::string text_on_disk(const OpenDocument& document) const;

    // Names of those whose changes are in no file.
    std::vector<std::string> unsaved() const;

  private:
    // How a file was when its content was last looked at.
    struct Seen {
        std::uint64_t size = 0, inode = 0;
        std::int64_t seconds = 0, nanoseconds = 0;
        std::string sha256;

        bool same_stamp(const Seen& other) const;
    };

    std::filesystem::path folder;
    std::map<std::string, std::string, std::less<>> handles; // of files, their names
    std::map<std::string, std::unique_ptr<OpenDocument>, std::less<>> documents;
    std::map<std::string, Seen>
        seen; // by the handle of the document: its file, as it was read or written
    std::vector<std::string>
        used; // handles of the documents, the one that was asked for last at the end
    std::size_t last_file = 0, last_document = 0;

    std::string path_of_file(const std::string& name) const;
    std::optional<Seen> look(const std::string& name) const;
    std::string read(const std::string& name) const;
    void remember(const OpenDocument& document);
    OpenDocument& add(std::string text);
    void drop(const std::string& handle);
};

// Names that a request may give to a file: letters, digits, blanks, "-", "_" and "."; never a path.
bool is_plain_name(std::string_view name);

} // namespace tarvane::app
