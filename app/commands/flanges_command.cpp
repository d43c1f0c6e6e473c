#include "commands/flanges_command.h"

#include "catalogue/data_folder.h"
#include "catalogue/data_sources.h"
#include "document/results.h"
#include "values/text.h"

#include <algorithm>
#include <ostream>
#include <span>

namespace tarvane::app {

using namespace vessel;

namespace {

using Column = FlangeColumn;

constexpr std::string_view NOT_KNOWN = "-";

std::string length_text(std::optional<float> inches, const UnitSystem& units) {
    if (!inches || !(*inches > 0.0f)) return std::string(NOT_KNOWN);
    return value_text(inches, Quantity::diameter, units);
}

bool any_approximate(std::span<const std::string> items) {
    return std::any_of(items.begin(), items.end(), [](const std::string& item) {
        return is_approximate(STANDARD_FLANGE_FILE, item);
    });
}

void print_approximate(std::string_view sign, std::ostream& out) {
    out << '\n'
        << sign << "Approximate figures: replace " << STANDARD_FLANGE_FILE
        << " by one made from a licensed copy of the standard.\n";
}

// "ASME B16.5", "ASME B16.5, B16.47"
std::string standards_of(const FlangeClass& flanges) {
    if (flanges.rows.empty()) return std::string(flanges.standard({}));
    const std::string first(flanges.standard(flanges.rows.front().size()));
    const std::string_view last = flanges.standard(flanges.rows.back().size());
    return last == first ? first : first + ", " + std::string(last.substr(last.find(' ') + 1));
}

constexpr std::size_t STANDARDS = 22; // width of their column

void print_classes(const std::vector<FlangeClass>& classes, std::ostream& out) {
    out << "Classes of " << STANDARD_FLANGE_FILE << "\n\n"
        << padded("Class", 8) << padded("Standard", STANDARDS) << "Sizes\n"
        << std::string(STANDARDS + 32, '-') << '\n';
    for (const FlangeClass& c : classes) {
        out << padded(c.name, 8) << padded(standards_of(c), STANDARDS);
        if (!c.rows.empty())
            out << c.size_text(c.rows.front().size()) << " to " << c.size_text(c.rows.back().size())
                << " (" << c.rows.size() << ')';
        out << '\n';
    }
}

void print_sizes(const FlangeClass& flanges, const UnitSystem& units, std::ostream& out) {
    struct Place {
        std::string_view title;
        Column column;
    };
    constexpr Place PLACES[] = {{"Outside", Column::outside},
                                {"Thickness", Column::thickness},
                                {"Hub", Column::hub},
                                {"Neck", Column::neck},
                                {"Bolt circle", Column::bolt_circle},
                                {"Raised face", Column::raised_face}};
    constexpr std::size_t SIZE = 12, WIDTH = 12;
    const std::string unit = to_utf8(units.label(Quantity::diameter));
    std::string titles = padded("Size", SIZE), labels = padded("", SIZE);
    for (const Place& place : PLACES) {
        titles += right_aligned(place.title, WIDTH);
        labels += right_aligned(unit, WIDTH);
    }
    constexpr std::size_t STATUS = 13, EDITION = 16; // widths of their columns
    out << "Class " << flanges.name << ", " << standards_of(flanges) << "\n\n"
        << titles << right_aligned("Bolts", WIDTH) << "  " << padded("Figures", STATUS)
        << "Edition\n"
        << labels << right_aligned(unit, WIDTH) << '\n'
        << std::string(characters(titles) + WIDTH + 2 + STATUS + EDITION, '-') << '\n';
    const auto sources = data_sources();
    bool marked = false;
    for (const FlangeRow& row : flanges.rows) {
        const FlangeLookup found =
            look_up_flange(flanges, row.size(), FlangeForm::blind, std::nullopt);
        const bool approximate =
            any_approximate(std::span(found.items).first(found.items.empty() ? 0 : 1));
        marked = marked || approximate;
        out << padded(flanges.size_text(row.size()) + (approximate ? " ~" : ""), SIZE);
        for (const Place& place : PLACES)
            out << right_aligned(length_text(flanges.inches(row[place.column]), units), WIDTH);
        const std::string bolts = number_text(row[Column::bolts], 0) + " x " +
                                  length_text(flanges.inches(row[Column::bolt]), units);
        out << right_aligned(bolts, WIDTH);
        const ItemSource* from =
            found.items.empty() ? nullptr : sources->of(STANDARD_FLANGE_FILE, found.items.front());
        if (from != nullptr)
            out << "  " << padded(from->status, STATUS)
                << (from->edition.empty() ? NOT_KNOWN : from->edition);
        out << '\n';
    }
    if (marked) print_approximate("~ ", out);
}

void print_flange(const FlangeClass& flanges, const NominalSize& size, FlangeForm form,
                  const FlangeLookup& found, const UnitSystem& units, std::ostream& out) {
    const FlangeDimensions& f = found.flange;
    constexpr std::string_view FORMS[] = {"welding neck", "slip on", "blind"};
    out << flanges.standard(size) << " class " << flanges.name << ' ' << flanges.size_text(size)
        << ", " << FORMS[static_cast<std::size_t>(form)] << " flange\n\n";
    const auto line = [&](std::string_view meaning, std::string_view key, const std::string& value,
                          std::string_view unit) {
        out << padded(meaning, 34) << padded(key, 8) << right_aligned(value, 12);
        if (value != NOT_KNOWN && !unit.empty()) out << ' ' << unit;
        out << '\n';
    };
    const std::string unit = to_utf8(units.label(Quantity::diameter));
    const auto length = [&](std::string_view meaning, std::string_view key,
                            std::optional<float> inches) {
        line(meaning, key, length_text(inches, units), unit);
    };
    if (form != FlangeForm::blind) length("Inside diameter", "B", f.B);
    length("Outside diameter", "A", f.A);
    length("Thickness", "t", f.t);
    if (form != FlangeForm::blind) {
        length("Hub, small end", "g0", f.g0);
        length("Hub, large end", "g1", f.g1);
        length("Hub length", "h", f.h);
    }
    length("Bolt circle", "C", f.C);
    line("Number of bolts", "n", number_text(f.n, 0), "");
    length("Nominal bolt diameter", "a", f.a);
    length("Bolt hole diameter", "", f.hole);
    length("Raised face diameter", "Fod", f.Fod);
    if (form == FlangeForm::weld_neck) length("Wall of the pipe", "", f.wall);
    const auto sources = data_sources();
    for (const std::string& item : found.items)
        if (const ItemSource* from = sources->of(STANDARD_FLANGE_FILE, item))
            out << '\n'
                << (item.ends_with("raised face") ? "Raised face"
                    : item.ends_with("slip on")   ? "Slip on flange"
                                                  : "Figures")
                << ": " << from->text();
    if (sources->of(STANDARD_FLANGE_FILE, found.items.front()) != nullptr) out << '\n';
    out << edition_line();
    if (any_approximate(found.items)) print_approximate("", out);
}

} // namespace

Status list_flanges(const FlangesOptions& options, std::ostream& out, std::ostream& err) {
    set_data_folder(options.data, "--data");
    const auto refuse = [&](const std::string& message) {
        err << "tarvane: " << message << '\n';
        return Status::bad_input;
    };
    const std::vector<FlangeClass> classes = flange_classes();
    if (classes.empty()) return refuse(unknown_class("", classes));
    if (options.name.empty()) {
        print_classes(classes, out);
        out << edition_line();
        return Status::fine;
    }
    const FlangeClass* flanges = find_class(classes, options.name);
    if (flanges == nullptr) return refuse(unknown_class(options.name, classes));
    if (options.size.empty()) {
        if (options.blind || options.slip_on || options.wall)
            return refuse("--blind, --slip-on and --wall belong to one size of a class");
        print_sizes(*flanges, options.units, out);
        out << edition_line();
        return Status::fine;
    }
    if (options.blind && options.slip_on) return refuse("a flange is either blind or slip on");
    const FlangeForm form = options.blind     ? FlangeForm::blind
                            : options.slip_on ? FlangeForm::slip_on
                                              : FlangeForm::weld_neck;
    std::optional<float> wall = options.wall;
    if (wall && form != FlangeForm::weld_neck)
        return refuse("only a weld neck takes its bore from the wall of the pipe");
    if (wall) wall = options.units.to_engine(*wall, Quantity::thickness);
    const std::optional<NominalSize> size = nominal_size(options.size);
    if (!size) return refuse("a nominal size is expected, not " + echoed(options.size));
    const FlangeLookup found = look_up_flange(*flanges, *size, form, wall);
    if (!found.fault.empty()) return refuse(found.fault);
    print_flange(*flanges, *size, form, found, options.units, out);
    return Status::fine;
}

} // namespace tarvane::app
