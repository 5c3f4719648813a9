#include "service/server.h"

#include "protocol/wire_names.h"
#include "service/sweep.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <system_error>
#include <vector>

namespace
{

Descriptor open_rendezvous(const UserDirectory& directory)
{
    if (::mkfifoat(directory.descriptor(), rendezvous_pipe, 0600) != 0 && errno != EEXIST)
        throw std::system_error(errno, std::generic_category(), rendezvous_pipe);
    // Held open for writing too, so that it never comes to its end.
    Descriptor fifo = directory.open_fifo(rendezvous_pipe, O_RDWR);
    ::fchmod(fifo.get(), 0600);
    return fifo;
}

/** How many conversations the descriptors of this process allow; further launchers wait in the
    rendezvous FIFO. */
std::size_t affordable_conversations()
{
    constexpr rlim_t own_descriptors = 16;
    constexpr rlim_t each_conversation =
        5; // two FIFOs, a process, a contributor, a converter's file
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, 65536);
    ::setrlimit(RLIMIT_NOFILE, &limit);
    ::getrlimit(RLIMIT_NOFILE, &limit);
    const rlim_t usable = limit.rlim_cur - std::min(limit.rlim_cur, own_descriptors);
    return static_cast<std::size_t>(std::max<rlim_t>(usable / each_conversation, 1));
}

bool has_event(const pollfd& entry)
{
    return entry.revents != 0;
}

} // namespace

Server::Server(const ServiceLock& /*lock*/, const UserDirectory& user_directory)
    : directory(user_directory),
      log(directory.descriptor()),
      rendezvous(open_rendezvous(directory)),
      reader([this](const std::string& folder) { return directory.is_named_by(folder); }),
      most_conversations(affordable_conversations())
{
    sweep(directory);
}

void Server::serve()
{
    for (;;)
        serve_once();
}

void Server::serve_once()
{
    const bool has_room = conversations.size() < most_conversations;
    std::vector<pollfd> entries{{has_room ? rendezvous.get() : -1, POLLIN, 0}};
    bool is_busy = false;
    for (const Conversation& conversation : conversations) {
        entries.push_back({conversation.request_descriptor(), POLLIN, 0});
        entries.push_back({conversation.launcher_descriptor(), POLLIN, 0});
        is_busy = is_busy || conversation.is_busy();
    }
    if (::poll(entries.data(), entries.size(), is_busy ? 0 : -1) < 0)
        return; // a signal: there is nothing to do for it

    auto entry = entries.begin() + 1;
    for (Conversation& conversation : conversations) {
        conversation.advance(has_event(entry[0]), has_event(entry[1]));
        entry += 2;
    }
    conversations.remove_if([](const Conversation& one) { return one.has_ended(); });
    if (has_event(entries.front()))
        take_announcements();
}

void Server::take_announcements()
{
    std::array<char, 4096> bytes{};
    const ssize_t length = ::read(rendezvous.get(), bytes.data(), bytes.size());
    if (length <= 0)
        return;
    auto [announcements, dropped] = reader.feed({bytes.data(), static_cast<std::size_t>(length)});
    for (const std::string& text : dropped)
        log.line("dropped an announcement: " + text);
    for (Announcement& announcement : announcements)
        begin(std::move(announcement));
}

void Server::begin(Announcement announcement)
{
    const std::string launcher = std::to_string(announcement.launcher);
    try {
        conversations.emplace_back(directory, log, std::move(announcement));
    } catch (const std::system_error& error) {
        log.line("launcher " + launcher + ": not served: " + error.what());
        sweep(directory); // most often the launcher is gone
    }
}
