#include "service/directory_watch.h"

#include <array>
#include <string>
#include <sys/inotify.h>
#include <unistd.h>
#include <utility>

namespace
{

std::string link_to(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}

} // namespace

DirectoryWatch::DirectoryWatch(Events& events, int directory, int rendezvous)
{
    Descriptor watches(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!watches)
        return;
    // An open file that is unlinked lives on; what is told is that it has lost its name.
    ::inotify_add_watch(watches.get(), link_to(rendezvous).c_str(), IN_ATTRIB | IN_MOVE_SELF);
    ::inotify_add_watch(watches.get(), link_to(directory).c_str(), IN_MOVE_SELF);
    inotify = WatchedDescriptor(events, std::move(watches));
}

bool DirectoryWatch::has_news(const Events& events)
{
    if (!inotify || !events.ready(inotify.get()))
        return false;
    std::array<char, 4096> news{};
    while (::read(inotify.get(), news.data(), news.size()) > 0) {
    }
    return true;
}
