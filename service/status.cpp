#include "service/status.h"

#include <array>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr const char* socket_name = "tolm_service.socket";
constexpr int most_waiting = 16;

Descriptor make_socket()
{
    return Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

/** Goes through the open directory: a socket's address has no room for a long path. */
sockaddr_un address_in(int directory)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = "/proc/self/fd/" + std::to_string(directory) + "/" + socket_name;
    path.copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
    return address;
}

const sockaddr* general(const sockaddr_un& address)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the socket interface's own way
    return reinterpret_cast<const sockaddr*>(&address);
}

bool becomes_readable(int descriptor)
{
    constexpr int patience = 1000; // milliseconds
    pollfd entry{descriptor, POLLIN, 0};
    return ::poll(&entry, 1, patience) > 0;
}

} // namespace

StatusSocket::StatusSocket(Events& events, int directory) : folder(directory)
{
    Descriptor listening = make_socket();
    ::unlinkat(folder, socket_name, 0);
    const sockaddr_un address = address_in(folder);
    if (::bind(listening.get(), general(address), sizeof address) == 0 &&
        ::listen(listening.get(), most_waiting) == 0)
        socket = WatchedDescriptor(events, std::move(listening));
}

StatusSocket::~StatusSocket()
{
    ::unlinkat(folder, socket_name, 0);
}

void StatusSocket::answer(const Events& events, const std::function<std::string()>& status) const
{
    if (!events.ready(socket.get()))
        return;
    const Descriptor asker(::accept4(socket.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    const std::string text = status();
    [[maybe_unused]] const auto sent = ::send(asker.get(), text.data(), text.size(), MSG_NOSIGNAL);
}

std::optional<std::string> ask_status(int directory)
{
    const Descriptor socket = make_socket();
    const sockaddr_un address = address_in(directory);
    if (::connect(socket.get(), general(address), sizeof address) != 0)
        return std::nullopt;
    std::string text;
    std::array<char, 4096> bytes{};
    while (becomes_readable(socket.get())) {
        const ssize_t length = ::read(socket.get(), bytes.data(), bytes.size());
        if (length <= 0)
            break;
        text.append(bytes.data(), static_cast<std::size_t>(length));
    }
    return text.empty() ? std::nullopt : std::optional(text);
}
