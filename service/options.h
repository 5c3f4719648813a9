/*
 * The service's command line.
 */
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct Options {
    enum class Action { serve, show_help, show_version, show_status, stop };

    Action action = Action::serve;
    bool foreground = false;
    std::string install_directory{};
};

/** Nothing when the words make no command line of the service. */
std::optional<Options> parse_options(const std::vector<std::string_view>& words);

/** What "--help" shows. */
extern const char* const usage_text;
