#include "manual/man_page.h"

#include "catalogue/data_search.h"
#include "document/vocabulary.h"
#include "values/text.h"

#include <algorithm>
#include <ostream>

namespace tarvane::app {

namespace {

// A text as the formatter takes it: a hyphen is one, and no line is a request.
std::string roff(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else if ((c == '.' || c == '\'') && out.empty())
            out.append("\\&").push_back(c);
        else
            out.push_back(c);
    }
    return out;
}

std::string bold(std::string_view text) { return "\\fB" + roff(text) + "\\fR"; }
std::string italic(std::string_view text) { return "\\fI" + roff(text) + "\\fR"; }

std::string upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    return text;
}

// "FILE", "us|si".
std::string value_of(const OptionText& option) {
    std::string text;
    for (const std::string& choice : option.choices)
        text += (text.empty() ? "" : "|") + choice;
    return text.empty() ? option.value : text;
}

// "FILE", "[NAME]", "PATH ..."
std::string argument(const OptionText& option) {
    const std::string name = italic(upper(option.names.front())) + (option.several ? " ..." : "");
    return option.required ? name : "[" + name + "]";
}

std::string option_names(const OptionText& option) {
    std::string text;
    for (const std::string& name : option.names)
        text += (text.empty() ? "" : ", ") + bold(name);
    if (!option.value.empty()) text += ' ' + italic(value_of(option));
    return text;
}

void write_options(const CommandText& command, std::ostream& out) {
    for (const OptionText& option : command.options) {
        if (option.positional) {
            out << ".TP\n" << italic(upper(option.names.front()));
            if (!option.choices.empty()) out << " (" << roff(value_of(option)) << ')';
        } else {
            out << ".TP\n" << option_names(option);
        }
        out << '\n' << roff(option.help);
        if (option.required && !option.positional) out << " (required)";
        out << ".\n";
    }
}

void write_command(const CommandText& command, const std::string& before, std::ostream& out) {
    const std::string name = before + ' ' + command.name;
    if (command.commands.empty()) {
        out << ".SS " << bold(name);
        for (const OptionText& option : command.options) {
            if (!option.positional && option.required) out << ' ' << option_names(option);
        }
        out << " [OPTIONS]";
        for (const OptionText& option : command.options) {
            if (option.positional) out << ' ' << argument(option);
        }
        out << '\n' << roff(command.help) << ".\n";
        write_options(command, out);
    }
    for (const CommandText& inner : command.commands)
        write_command(inner, name, out);
}

constexpr struct {
    const char *status, *meaning;
} STATUSES[] = {
    {"0", "It is done; of a calculation every check that decides passes."},
    {"1", "A check fails, a batch has items that are not calculated, or two "
          "calculations differ."},
    {"2", "The command line or a file has faults, or a file cannot be read or written."},
    {"3", "The engine stopped the calculation."},
    {"141", "The reader of the output has gone."}};

} // namespace

void write_man_page(const CommandText& program, const std::string& version, const std::string& date,
                    std::ostream& out) {
    out << ".TH " << upper(program.name) << " 1 " << date << " \"" << roff(program.name) << ' '
        << version << "\" \"User Commands\"\n"
        << ".SH NAME\n"
        << program.name << " \\- " << roff(vessel::folded(program.help.substr(0, 1)))
        << roff(program.help.substr(1)) << '\n'
        << ".SH SYNOPSIS\n"
        << bold(program.name) << ' ' << italic("COMMAND") << " [OPTIONS] [ARGUMENTS]\n"
        << ".SH DESCRIPTION\n"
        << "The input of a calculation is a file in TOML. " << bold(program.name + " new")
        << " writes one to start from, " << bold("check") << " finds its faults, and "
        << bold("run")
        << " calculates it: the report of each component, its checks and results, and the "
           "verdict.\n"
        << ".PP\nThe tables of a file are\n";
    const std::vector<std::string> tables = vessel::key_tables();
    for (std::size_t i = 0; i < tables.size(); ++i)
        out << ".BR " << roff(tables[i])
            << (i + 1 == tables.size()   ? " .\n"
                : i + 2 == tables.size() ? "\nand\n"
                                         : " ,\n");
    out << bold("tarvane keys") << " lists the keys of each, with unit, meaning and default; "
        << bold("explain") << " says all that is known about one, or about a result or a check.\n"
        << ".SH OPTIONS\n";
    write_options(program, out);
    out << ".SH COMMANDS\nEach has \\fB\\-\\-help\\fR.\n";
    for (CommandText command : program.commands) {
        const auto is_help = [](const OptionText& option) {
            return std::find(option.names.begin(), option.names.end(), "--help") !=
                   option.names.end();
        };
        std::erase_if(command.options, is_help);
        for (CommandText& inner : command.commands)
            std::erase_if(inner.options, is_help);
        write_command(command, program.name, out);
    }
    out << ".SH EXIT STATUS\n";
    for (const auto& [status, meaning] : STATUSES)
        out << ".TP\n" << bold(status) << '\n' << roff(meaning) << '\n';
    out << ".SH ENVIRONMENT\n.TP\n"
        << bold(vessel::DATA_VARIABLE)
        << "\nFolder of the data files, in place of the installed one, where " << bold("--data")
        << " names none.\n";
}

} // namespace tarvane::app
