#include "manual/completion.h"

#include "document/vocabulary.h"

#include <algorithm>
#include <ostream>

namespace tarvane::app {

namespace {

const OptionText* find_option(const CommandText& command, const std::string& name) {
    const auto found =
        std::find_if(command.options.begin(), command.options.end(), [&](const OptionText& option) {
            return !option.positional &&
                   std::find(option.names.begin(), option.names.end(), name) != option.names.end();
        });
    return found == command.options.end() ? nullptr : &*found;
}

const CommandText* find_command(const CommandText& command, const std::string& name) {
    const auto found = std::find_if(command.commands.begin(), command.commands.end(),
                                    [&](const CommandText& each) { return each.name == name; });
    return found == command.commands.end() ? nullptr : &*found;
}

// The argument at a place among those that are no options; the last one may be there several times.
const OptionText* find_argument(const CommandText& command, std::size_t place) {
    const OptionText* last = nullptr;
    for (const OptionText& option : command.options) {
        if (!option.positional) continue;
        last = &option;
        if (place-- == 0) return last;
    }
    return last != nullptr && last->several ? last : nullptr;
}

void offer(const std::vector<std::string>& candidates, const std::string& begun,
           std::ostream& out) {
    for (const std::string& candidate : candidates) {
        if (candidate.starts_with(begun)) out << candidate << '\n';
    }
}

void offer_values(const CommandText& command, const OptionText& option, const std::string& begun,
                  std::ostream& out) {
    if (option.value == "FILE" || option.value == "FOLDER") out << '\t' << option.value << '\n';
    if (command.name == "explain" && option.positional)
        offer(vessel::explained_names(begun), begun, out);
    offer(option.choices, begun, out);
}

} // namespace

void complete(const CommandText& program, const std::vector<std::string>& words,
              std::ostream& out) {
    // Of "--units=si" the shell makes three words.
    std::string begun = words.empty() ? std::string() : words.back();
    if (begun == "=") begun.clear();
    const CommandText* command = &program;
    const OptionText* awaited = nullptr; // the option whose value comes next
    std::size_t arguments = 0;
    bool options_end = false; // after "--"
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        const std::string& word = words[i];
        if (awaited != nullptr) {
            if (word != "=") awaited = nullptr;
        } else if (!options_end && word == "--") {
            options_end = true;
        } else if (!options_end && word.size() > 1 && word.front() == '-') {
            awaited = find_option(*command, word);
            if (awaited != nullptr && awaited->value.empty()) awaited = nullptr;
        } else if (const CommandText* inner = find_command(*command, word)) {
            command = inner;
        } else {
            ++arguments;
        }
    }
    if (awaited != nullptr) {
        offer_values(*command, *awaited, begun, out);
        return;
    }
    if (!options_end && begun.starts_with('-')) {
        for (const OptionText& option : command->options) {
            if (!option.positional) offer(option.names, begun, out);
        }
        return;
    }
    for (const CommandText& inner : command->commands)
        offer({inner.name}, begun, out);
    if (const OptionText* argument = find_argument(*command, arguments))
        offer_values(*command, *argument, begun, out);
}

} // namespace tarvane::app
