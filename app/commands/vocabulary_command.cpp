#include "commands/vocabulary_command.h"

#include "catalogue/data_folder.h"
#include "document/new_files.h"
#include "document/vocabulary.h"
#include "input/input_file.h"
#include "input/toml_limits.h"
#include "surface/schema.h"
#include "terminal/output_file.h"
#include "values/bounded_file.h"
#include "values/text.h"

#include <filesystem>
#include <ostream>
#include <stdexcept>

namespace tarvane::app {

namespace {

template <class Work>
Status attempt(std::ostream& err, const Work& work) {
    try {
        return work();
    } catch (const std::exception& problem) {
        err << "tarvane: " << problem.what() << '\n';
        return Status::bad_input;
    }
}

} // namespace

Status list_keys(const std::string& table, std::ostream& out) {
    out << key_list(table);
    return Status::fine;
}

Status write_schema(const std::string& name, std::ostream& out) {
    out << (name == "result" ? result_schema()
            : name == "keys" ? vocabulary()
                             : input_schema())
        << '\n';
    return Status::fine;
}

Status explain_name(const std::string& name, std::ostream& out, std::ostream& err) {
    const Explanation found = explain(name);
    if (found.known)
        out << found.text;
    else
        err << "tarvane: " << printable(found.text) << '\n';
    return found.known ? Status::fine : Status::bad_input;
}

Status write_new_file(const NewFileOptions& options, std::ostream& out, std::ostream& err) {
    return attempt(err, [&] {
        const std::string text = new_file(options.name, options.si);
        if (options.output.empty()) {
            out << text;
            return Status::fine;
        }
        if (std::filesystem::exists(std::filesystem::symlink_status(path_of(options.output))))
            throw std::runtime_error(printable(options.output) +
                                     " is there already, and stays as it is");
        write_whole(options.output, text);
        return Status::fine;
    });
}

Status check_file(const CheckOptions& options, std::ostream& out, std::ostream& err) {
    return attempt(err, [&] {
        set_data_folder(options.data, "--data");
        const ReadResult input =
            read_input(read_bounded(options.input, LARGEST_INPUT), element_kinds(), options.strict);
        err << fault_report(options.input, input.faults);
        if (!input.faults.empty()) return Status::bad_input;
        out << printable(options.input) << ": no faults\n";
        return Status::fine;
    });
}

} // namespace tarvane::app
