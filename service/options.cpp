#include "service/options.h"

#include <map>

const char* const usage_text =
    "Usage: tolm_service [--foreground] [DIRECTORY]\n"
    "       tolm_service --status | --stop | --help | --version\n"
    "\n"
    "Serves the windows of uquarndiffmrg, which starts it where it does not run. One\n"
    "service runs for each user and temporary directory.\n"
    "\n"
    "  DIRECTORY     the install sub-directory of the viewers\n"
    "  --foreground  stay with the terminal, and complain there\n"
    "  --status      tell whether a service runs, since when, on which displays, and\n"
    "                how many requests it has served; the status is 0 if it does, else 1\n"
    "  --stop        end the running service; windows that are open stay\n"
    "  --help        show this text\n"
    "  --version     show the version\n";

namespace
{

const std::map<std::string_view, Options::Action> actions = {
    {"--help", Options::Action::show_help},
    {"--version", Options::Action::show_version},
    {"--status", Options::Action::show_status},
    {"--stop", Options::Action::stop},
};

} // namespace

std::optional<Options> parse_options(const std::vector<std::string_view>& words)
{
    Options options;
    bool has_directory = false;
    for (const std::string_view word : words) {
        const auto action = actions.find(word);
        if (action != actions.end() && options.action == Options::Action::serve)
            options.action = action->second;
        else if (word == "--foreground")
            options.foreground = true;
        else if (!word.starts_with('-') && !has_directory) {
            options.install_directory = word;
            has_directory = true;
        } else
            return std::nullopt;
    }
    return options;
}
