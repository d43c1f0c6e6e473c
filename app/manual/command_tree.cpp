#include "manual/command_tree.h"

#include <CLI/CLI.hpp>

namespace tarvane::app {

namespace {

// "TEXT:{us,si}", "UINT:INT in [1 - 1024]", "TEXT:DIR": the kind of value, then what each check says.
void take_type(const std::string& type, OptionText& option) {
    const std::size_t colon = type.find(':');
    option.value = type.substr(0, colon);
    if (colon == std::string::npos) return;
    const std::string check = type.substr(colon + 1);
    if (check.front() == '{')
        option.choices = CLI::detail::split(check.substr(1, check.find('}') - 1), ',');
    else if (const std::size_t range = check.find('['); range != std::string::npos)
        option.help += " (" + check.substr(range + 1, check.find(']') - range - 1) + ")";
    else if (check == "NUMBER")
        option.value = check;
}

OptionText option_text(const CLI::Option& option) {
    OptionText text;
    text.help = option.get_description();
    text.positional = option.get_positional();
    text.required = option.get_required();
    text.several = option.get_items_expected_max() > 1;
    if (text.positional) text.names.push_back(option.get_name(true));
    for (const std::string& name : option.get_lnames())
        text.names.push_back("--" + name);
    for (const std::string& name : option.get_snames())
        text.names.push_back("-" + name);
    if (option.get_items_expected_max() > 0) take_type(option.get_type_name(), text);
    return text;
}

} // namespace

CommandText command_tree(const CLI::App& app) {
    CommandText tree;
    tree.name = app.get_name();
    tree.help = app.get_description();
    for (const CLI::Option* option : app.get_options()) {
        if (!option->get_group().empty()) tree.options.push_back(option_text(*option));
    }
    const auto shown = [](const CLI::App* command) { return !command->get_group().empty(); };
    for (const CLI::App* command : app.get_subcommands(shown))
        tree.commands.push_back(command_tree(*command));
    return tree;
}

} // namespace tarvane::app
