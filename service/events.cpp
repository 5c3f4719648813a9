#include "service/events.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/epoll.h>
#include <system_error>
#include <utility>

namespace
{

void control(int epoll, int operation, int descriptor, std::uint32_t what)
{
    epoll_event event{};
    event.events = what;
    event.data.fd = descriptor;
    if (::epoll_ctl(epoll, operation, descriptor, &event) != 0)
        throw std::system_error(errno, std::generic_category(), "epoll");
}

} // namespace

Events::Events() : epoll(::epoll_create1(EPOLL_CLOEXEC))
{
    if (!epoll)
        throw std::system_error(errno, std::generic_category(), "epoll");
}

void Events::watch(int descriptor)
{
    control(epoll.get(), EPOLL_CTL_ADD, descriptor, EPOLLIN);
}

void Events::forget(int descriptor)
{
    ::epoll_ctl(epoll.get(), EPOLL_CTL_DEL, descriptor, nullptr);
    std::erase(ready_descriptors, descriptor);
}

void Events::pause(int descriptor, bool paused)
{
    control(epoll.get(), EPOLL_CTL_MOD, descriptor, paused ? 0U : EPOLLIN);
}

void Events::wait(std::optional<std::chrono::milliseconds> longest)
{
    std::array<epoll_event, 64> events{};
    const int count = ::epoll_wait(epoll.get(), events.data(), static_cast<int>(events.size()),
                                   longest ? static_cast<int>(longest->count()) : -1);
    ready_descriptors.clear();
    for (int i = 0; i < count; ++i)
        ready_descriptors.push_back(events[static_cast<std::size_t>(i)].data.fd);
    std::sort(ready_descriptors.begin(), ready_descriptors.end());
}

bool Events::ready(int descriptor) const
{
    return std::binary_search(ready_descriptors.begin(), ready_descriptors.end(), descriptor);
}

WatchedDescriptor::WatchedDescriptor(Events& loop_events, Descriptor owned)
    : events(&loop_events), descriptor(std::move(owned))
{
    events->watch(descriptor.get());
}

WatchedDescriptor::WatchedDescriptor(WatchedDescriptor&& other) noexcept
    : events(other.events), descriptor(std::move(other.descriptor))
{
}

WatchedDescriptor& WatchedDescriptor::operator=(WatchedDescriptor&& other) noexcept
{
    std::swap(events, other.events);
    descriptor = std::move(other.descriptor); // swaps
    return *this;
}

WatchedDescriptor::~WatchedDescriptor()
{
    if (descriptor)
        events->forget(descriptor.get());
}
