#include "viewer/exchange.h"
#include "viewer/launcher_process.h"
#include "viewer/service_line.h"
#include "viewer/unattended.h"

#include <array>
#include <cstdlib>
#include <exception>
#include <functional>
#include <optional>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace
{

bool has_display()
{
    const auto is_set = [](const char* name) {
        const char* value = std::getenv(name);
        return value != nullptr && *value != '\0';
    };
    return is_set("DISPLAY") || is_set("WAYLAND_DISPLAY");
}

/** Waits for the next line; nothing at the end of the input. */
std::optional<std::string> wait_for_line(ServiceOrders& orders)
{
    auto line = orders.next_line();
    while (!line && orders.read())
        line = orders.next_line();
    return line;
}

/** Waits for the whole request, or the order to leave it. */
void receive(Exchange& exchange, ServiceOrders& orders)
{
    std::array<pollfd, 2> entries{
        {{exchange.request_descriptor(), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
    for (;;) {
        ::poll(entries.data(), entries.size(), -1);
        if (entries[0].revents != 0 && exchange.read())
            return;
        if (entries[1].revents == 0)
            continue;
        if (!orders.read())
            entries[1].fd = -1; // the launcher waits for its answer, service or not
        if (orders.next_line() == launcher_is_gone)
            throw std::runtime_error("the launcher ended before its request was complete");
    }
}

void carry_out(const Request& request, const LauncherProcess& launcher)
{
    if (has_display())
        read_contributors(request);
    else
        merge_unattended(request, launcher.file_mode_mask());
}

bool succeeds(const std::function<void()>& work)
{
    try {
        work();
        return true;
    } catch (const std::exception& error) {
        tell_reason(error.what());
        return false;
    }
}

void serve(ServiceOrders& orders, const std::string& request_path, const std::string& response_path)
{
    Exchange exchange(request_path, response_path);
    const LauncherProcess launcher(request_path);
    const bool success = succeeds([&] {
        receive(exchange, orders);
        carry_out(launcher.decode(exchange.document()), launcher);
    });
    tell_answering();
    exchange.answer(success);
    tell_shown();
}

} // namespace

int main()
{
    ServiceOrders orders;
    tell_ready();
    const auto request_path = wait_for_line(orders);
    const auto response_path = wait_for_line(orders);
    if (!response_path)
        return 0; // the service ended and needs no spare
    return succeeds([&] { serve(orders, *request_path, *response_path); }) ? 0 : 1;
}
