#include "service/viewer_environment.h"

#include "service/descriptor.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace
{

// A variable that a desktop gives to one window only (XDG_ACTIVATION_TOKEN, DESKTOP_STARTUP_ID) is
// none of these: it cannot be known when a spare viewer starts. The viewer takes it from its
// launcher itself.
constexpr std::array<std::string_view, 16> names = {"DISPLAY",
                                                    "WAYLAND_DISPLAY",
                                                    "XAUTHORITY",
                                                    "XDG_RUNTIME_DIR",
                                                    "XDG_SESSION_TYPE",
                                                    "XDG_CURRENT_DESKTOP",
                                                    "KDE_SESSION_VERSION",
                                                    "XDG_CONFIG_HOME",
                                                    "XDG_CONFIG_DIRS",
                                                    "XDG_DATA_HOME",
                                                    "XDG_DATA_DIRS",
                                                    "XDG_CACHE_HOME",
                                                    "LANG",
                                                    "LANGUAGE",
                                                    "GDK_SCALE",
                                                    "GDK_DPI_SCALE"};
constexpr std::array<std::string_view, 3> prefixes = {"LC_", "QT_", "QML_"};

bool is_viewers(std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end() ||
           std::any_of(prefixes.begin(), prefixes.end(),
                       [name](std::string_view prefix) { return name.starts_with(prefix); });
}

std::string value_of(const ViewerVariables& variables, const char* name)
{
    const auto entry = variables.find(name);
    return entry == variables.end() ? std::string() : entry->second;
}

void take(ViewerVariables& variables, std::string_view entry)
{
    const std::size_t sign = entry.find('=');
    if (sign != std::string_view::npos && is_viewers(entry.substr(0, sign)))
        variables.emplace(entry.substr(0, sign), entry.substr(sign + 1));
}

/** A file of /proc, which gives all that there is room for in each read. */
std::string whole_file(const std::string& path)
{
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::string text;
    std::array<char, 16384> piece; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
    ssize_t length = 0;
    do {
        length = ::read(file.get(), piece.data(), piece.size());
        text.append(piece.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    } while (length == static_cast<ssize_t>(piece.size()));
    return text;
}

} // namespace

ViewerVariables viewer_variables_of(pid_t id)
{
    const std::string environment = whole_file("/proc/" + std::to_string(id) + "/environ");
    ViewerVariables variables;
    std::string_view rest = environment;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\0'), rest.size());
        take(variables, rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return variables;
}

std::string display_of(const ViewerVariables& variables)
{
    const std::string wayland = value_of(variables, "WAYLAND_DISPLAY");
    const std::string x = value_of(variables, "DISPLAY");
    if (wayland.empty() && x.empty())
        return {};
    const std::string socket_folder =
        wayland.empty() ? std::string() : value_of(variables, "XDG_RUNTIME_DIR");
    return socket_folder + '\n' + wayland + '\n' + x + '\n' + value_of(variables, "XAUTHORITY");
}

std::string display_name(const ViewerVariables& variables)
{
    const std::string x = value_of(variables, "DISPLAY");
    const std::string name = x.empty() ? value_of(variables, "WAYLAND_DISPLAY") : x;
    return name.empty() ? "no display" : name;
}

bool is_remote_display(const ViewerVariables& variables)
{
    const std::string x = value_of(variables, "DISPLAY");
    return value_of(variables, "WAYLAND_DISPLAY").empty() && !x.empty() && !x.starts_with(':') &&
           !x.starts_with("unix:") && !x.starts_with('/');
}

std::vector<std::string> environment_with(const ViewerVariables& variables)
{
    std::vector<std::string> entries;
    for (char** entry = ::environ; *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        if (!is_viewers(text.substr(0, text.find('='))))
            entries.emplace_back(text);
    }
    for (const auto& [name, value] : variables)
        entries.push_back(std::string(name) + "=" + value);
    return entries;
}
