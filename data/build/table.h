// Tables of data/sources: comma-separated text that a person can read and review.
//
//   # a comment: a line whose first character that is not blank is "#"
//   name,reference,tensile,note          the first other line names the columns
//   SA-516 70,1,70.0,"quoted, with a ""comma"""
//
// A field is between quotation marks when it holds a comma or one of them (then doubled). Blanks
// around a field without quotation marks don't count. Every line has a field for each column.
// Whatever is wrong is reported as "FILE:LINE: column: what and the value".
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <iosfwd>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::data {

// What is wrong with a source, or with what was made from it.
struct DataError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// How well the figures of a row are known, the surest first.
enum class Status { checked, published, approximate };
std::string_view status_word(Status status);

// Optional columns of every table: the sources that confirm a checked row, and the edition of the standard.
inline constexpr std::string_view CHECKS_COLUMN = "checks", EDITION_COLUMN = "edition";

class Table;

// A table that comes with the program, as text.
struct ShippedTable {
    std::string_view file, text;
};

// Where tables come from: a folder, and tables in place of what it does not have. A row of the folder replaces all
// shipped ones with the same key.
struct Sources {
    std::filesystem::path folder;
    std::span<const ShippedTable> shipped = {};
    // Percent by which a chart may miss its points unless its row has another bound.
    float tolerance = 1.0f;
    // Of the folder's rows that name none of their own.
    std::string edition = {};
};

// One file of a table: its name and the names of its columns.
struct TablePart {
    std::string name;
    std::vector<std::string> columns;
    bool shipped = false;

    bool has(std::string_view column) const;
};

// One line of a table. Valid only as long as its table.
class Row {
  public:
    // The field as it is; `text` refuses an empty one.
    const std::string& field(std::string_view column) const;
    const std::string& text(std::string_view column) const;
    // The same, at most `width` characters, all of them printable ASCII.
    const std::string& text(std::string_view column, std::size_t width) const;
    const std::string& field(std::string_view column, std::size_t width) const;
    // Also without the field: an optional column that the table does not have.
    bool blank(std::string_view column) const;

    // A number; the second form takes an empty field as `otherwise`.
    float real(std::string_view column) const;
    float real(std::string_view column, float otherwise) const;
    float positive(std::string_view column) const; // above 0
    std::int32_t whole(std::string_view column) const;
    std::int32_t whole(std::string_view column, std::int32_t otherwise) const;

    // Each row names its `source` and a status; a checked one names what confirms it in `checks`.
    Status status() const;
    bool approximate() const { return status() == Status::approximate; }
    // The word of a status in a column of its own, without `checks`.
    Status status_of(std::string_view column) const;

    // Refuses the row: "FILE:LINE: column: what".
    [[noreturn]] void fail(std::string_view column, const std::string& what) const;
    // Refuses the row for a key that another row has already.
    [[noreturn]] void fail_again(std::string_view column, const Row& other) const;
    // Refuses a number or a text that was not read back as it was written.
    void expect(std::string_view column, float written, float read) const;
    void expect(std::string_view column, std::int32_t written, std::int32_t read) const;
    void expect(std::string_view column, std::string_view written, std::string_view read) const;

    int line() const { return number; }

    // It comes with the program, for a folder with tables of its own.
    bool shipped() const { return part->shipped; }

  private:
    friend class Table;
    const TablePart* part = nullptr;
    int number = 0;
    std::size_t place(std::string_view column) const;
    std::vector<std::string> fields;
};

// What tells materials apart by their names: "SA516-70" is "SA-516 70".
std::string name_key(std::string_view name);

class Table {
  public:
    // Whether columns with a number for a name may stand beside those that are named.
    enum class Numbers { listed, any };

    // Reads the file. It must have all of `columns` and may have those of `optional`, `checks` and
    // `edition`, in any order, and no others.
    Table(const std::filesystem::path& path, std::span<const std::string_view> columns,
          std::span<const std::string_view> optional = {}, Numbers numbers = Numbers::listed);
    // The file of this name of the sources; rows of one `key` are either of the folder or shipped.
    Table(const Sources& sources, std::string_view file, std::string_view key,
          std::span<const std::string_view> columns,
          std::span<const std::string_view> optional = {});
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    const std::string& file() const { return name; } // without its folder
    const std::vector<Row>& rows() const { return lines; }
    // The columns with a number for a name, in ascending order.
    std::vector<std::string> number_columns() const;

  private:
    struct Columns {
        std::span<const std::string_view> expected, optional;
        Numbers numbers = Numbers::listed;
    };
    void read(const std::filesystem::path& path, const Columns& columns);
    void take(std::istream& text, TablePart& part, const Columns& columns);
    static void take_header(const std::vector<std::string>& fields, TablePart& part,
                            const Columns& columns, int line);

    std::string name;
    std::deque<TablePart> parts;
    std::vector<Row> lines;
};

} // namespace tarvane::data
