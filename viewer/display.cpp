#include "viewer/display.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>
#include <xcb/xcb.h>

#include "service/descriptor.h"

namespace
{

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

bool can_open_x_display()
{
    xcb_connection_t* connection = ::xcb_connect(nullptr, nullptr);
    const bool opened = ::xcb_connection_has_error(connection) == 0;
    ::xcb_disconnect(connection);
    return opened;
}

bool can_open_wayland_display()
{
    const std::string name = variable("WAYLAND_DISPLAY");
    const std::string path =
        name.starts_with('/') ? name : variable("XDG_RUNTIME_DIR") + "/" + name;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.empty() || path.size() >= sizeof address.sun_path)
        return false;
    path.copy(static_cast<char*>(address.sun_path), path.size());
    const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the socket interface's own way
    const auto* general = reinterpret_cast<const sockaddr*>(&address);
    return ::connect(socket.get(), general, sizeof address) == 0;
}

bool has_wayland_plugin(const std::string& folder)
{
    std::error_code none;
    const std::filesystem::directory_iterator files(folder + "/platforms", none);
    return std::any_of(begin(files), end(files), [](const auto& file) {
        return file.path().filename().string().starts_with("libqwayland");
    });
}

} // namespace

bool has_display()
{
    return !variable("DISPLAY").empty() || !variable("WAYLAND_DISPLAY").empty();
}

std::optional<std::string> platform_of_display(const std::vector<std::string>& plugin_folders)
{
    // The user's own choice of a platform, which tests make, needs no display of these.
    if (!variable("QT_QPA_PLATFORM").empty())
        return "";
    const bool wayland =
        std::ranges::any_of(plugin_folders, has_wayland_plugin) && can_open_wayland_display();
    const bool x = !variable("DISPLAY").empty() && can_open_x_display();
    if (wayland && x)
        return "";
    return wayland ? std::optional("wayland") : x ? std::optional("xcb") : std::nullopt;
}
