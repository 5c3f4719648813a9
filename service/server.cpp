#include "service/server.h"

#include "protocol/wire_names.h"
#include "service/own_fifo.h"
#include "service/signals.h"
#include "service/sweep.h"
#include "service/time_stamp.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <map>
#include <sys/resource.h>
#include <sys/stat.h>
#include <system_error>

namespace
{

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// For a launcher between its look at the lock and its announcement: microseconds, mostly.
constexpr milliseconds last_announcements{100};
// Whoever removes the whole directory removes the FIFO first: remade at once, it would be in the
// way.
constexpr milliseconds doubt{100};

// A whole pipe: a read then takes whole writes, never the half of an announcement.
constexpr std::size_t largest_read = 65536;

Descriptor open_rendezvous(const UserDirectory& directory)
{
    if (::mkfifoat(directory.descriptor(), rendezvous_pipe, 0600) != 0 && errno != EEXIST)
        throw std::system_error(errno, std::generic_category(), rendezvous_pipe);
    // Held open for writing too, so that it never comes to its end.
    Descriptor fifo = open_own_fifo(directory.descriptor(), rendezvous_pipe, O_RDWR);
    ::fchmod(fifo.get(), 0600);
    return fifo;
}

/** How many calls the descriptors of this process allow; further launchers wait in the rendezvous
    FIFO. */
std::size_t affordable_calls()
{
    constexpr rlim_t own_descriptors = 32;
    constexpr rlim_t each_call = 9; // launcher, viewer, four pipe ends while it starts, two FIFOs
    constexpr rlim_t enough = 65536;
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = std::min(limit.rlim_max, enough);
    ::setrlimit(RLIMIT_NOFILE, &limit);
    ::getrlimit(RLIMIT_NOFILE, &limit);
    const rlim_t usable = limit.rlim_cur - std::min(limit.rlim_cur, own_descriptors);
    return static_cast<std::size_t>(std::max<rlim_t>(usable / each_call, 1));
}

bool is_over(const std::optional<steady_clock::time_point>& moment)
{
    return moment && steady_clock::now() >= *moment;
}

bool is_open_at(int descriptor, int directory, const char* name)
{
    struct stat open_file {};
    struct stat entry {};
    return ::fstat(descriptor, &open_file) == 0 && ::fstatat(directory, name, &entry, 0) == 0 &&
           open_file.st_dev == entry.st_dev && open_file.st_ino == entry.st_ino;
}

} // namespace

Server::Server(ServiceLock service_lock, Descriptor heeded_signals,
               const UserDirectory& user_directory, std::string install_directory)
    : directory(user_directory),
      lock(std::move(service_lock)),
      log(directory.descriptor()),
      rendezvous(events, open_rendezvous(directory)),
      reader([this](const std::string& folder) { return directory.is_named_by(folder); }),
      viewers(events, log, std::move(install_directory)),
      surroundings{directory, events, log, viewers},
      most_calls(affordable_calls()),
      signals(events, std::move(heeded_signals)),
      start_time(time_stamp())
{
    sweep(directory);
    watch.emplace(events, directory.descriptor(), rendezvous.get());
    status_socket.emplace(events, directory.descriptor());
}

void Server::serve()
{
    warm_own_display();
    while (!has_ended())
        serve_once();
}

/** The first window is then at once there too, where the service started with the session. Started
   by a launcher, it has that launcher's display, and the viewer is wanted in a moment. */
void Server::warm_own_display()
{
    const ViewerVariables own = viewer_variables_of(::getpid());
    if (!display_of(own).empty())
        viewers.warm(own);
}

bool Server::has_ended() const
{
    return is_stopping() && !rendezvous && calls.empty() && viewers.is_settled();
}

void Server::serve_once()
{
    events.wait(time_to_wait());
    viewers.look();
    for (Call& call : calls)
        call.look();
    calls.remove_if([](const Call& call) { return call.has_ended(); });
    if (status_socket)
        status_socket->answer(events, [this] { return status(); });
    if (events.ready(rendezvous.get()))
        take_announcements();
    take_signals();
    if (watch && watch->has_news(events))
        directory_doubted_until = steady_clock::now() + doubt;
    if (is_over(directory_doubted_until))
        look_at_directory();
    if (is_over(rendezvous_open_until))
        close_rendezvous();
    keep_within_descriptors();
}

std::optional<milliseconds> Server::time_to_wait() const
{
    if (!directory_doubted_until && !rendezvous_open_until)
        return std::nullopt;
    const Time next = std::min(directory_doubted_until.value_or(Time::max()),
                               rendezvous_open_until.value_or(Time::max()));
    const auto left = std::chrono::ceil<milliseconds>(next - steady_clock::now());
    return std::max(left, milliseconds(0));
}

void Server::take_announcements()
{
    std::array<char, largest_read> bytes; // far more than most reads fill: not cleared
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
        calls.emplace_back(surroundings, std::move(announcement));
        ++served;
    } catch (const std::runtime_error& error) {
        log.line("launcher " + launcher + ": not served: " + error.what());
        sweep(directory); // most often the launcher is gone
    }
}

void Server::keep_within_descriptors()
{
    const bool is_full = calls.size() >= most_calls;
    if (is_stopping() || is_full == is_paused)
        return;
    events.pause(rendezvous.get(), is_full);
    is_paused = is_full;
}

void Server::take_signals()
{
    if (!events.ready(signals.get()))
        return;
    while (const auto number = next_signal(signals.get()))
        if (*number == SIGHUP)
            log.reopen();
        else
            stop();
}

void Server::stop()
{
    if (is_stopping())
        return;
    status_socket.reset();
    watch.reset();
    directory_doubted_until.reset();
    lock.reset();
    events.pause(rendezvous.get(), true);
    viewers.close();
    rendezvous_open_until = steady_clock::now() + last_announcements;
}

void Server::close_rendezvous()
{
    if (!ServiceLock::holder(directory.descriptor()))
        take_announcements();
    rendezvous = {};
    rendezvous_open_until.reset();
}

void Server::look_at_directory()
{
    directory_doubted_until.reset();
    if (!directory.is_in_place())
        return stop();
    if (is_open_at(rendezvous.get(), directory.descriptor(), rendezvous_pipe))
        return;
    try {
        rendezvous = WatchedDescriptor(events, open_rendezvous(directory));
        is_paused = false;
        watch.emplace(events, directory.descriptor(), rendezvous.get());
        log.line("the rendezvous FIFO had been removed; it is made anew");
    } catch (const std::system_error& error) {
        log.line(error.what());
        stop();
    }
}

std::string Server::status() const
{
    std::map<std::string, std::pair<int, bool>> displays; // windows, whether a viewer waits
    for (const Call& call : calls)
        if (const auto display = call.display_of_window())
            ++displays[*display].first;
    for (const std::string& display : viewers.displays_with_spare())
        displays[display].second = true;

    std::string text = "tolm_service " QUARNFOLD_VERSION ", process " + std::to_string(::getpid()) +
                       ", since " + start_time + "\nrequests served: " + std::to_string(served) +
                       "\n";
    for (const auto& [display, state] : displays)
        text += "display " + display + ": windows open: " + std::to_string(state.first) +
                (state.second ? ", a viewer waits\n" : "\n");
    return text;
}
