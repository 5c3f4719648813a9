/*
 * Stands in for the resident service while the launcher is timed: holds the lock on the pid file,
 * owns the rendezvous FIFO, and answers every request with success as soon as it has arrived. Uses
 * the per-user temporary directory below TMPDIR. Says "ready" on standard output once a launcher
 * would find it, and runs until it is killed or its standard input ends, so that it never outlives
 * the one who started it. It checks nothing: only launchers of the same measurement announce here.
 */
#include "protocol/wire_names.h"
#include "support/temp_directory.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr std::string_view answer = "<methodResponse><params><param><value><boolean>1</boolean>"
                                    "</value></param></params></methodResponse>\n";

bool send(int descriptor, std::string_view text)
{
    return ::write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

/** Writes the pid file and locks it for the life of the process; its descriptor stays open. */
bool lock_pid_file(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return descriptor >= 0 && ::fcntl(descriptor, F_SETLK, &lock) == 0 &&
           send(descriptor, std::to_string(::getpid()) + "\n");
}

/** The read end, or -1. It is open for writing too, so that it does not end between launchers. */
int open_rendezvous(const std::string& path)
{
    if (::mkfifo(path.c_str(), 0600) != 0 && errno != EEXIST)
        return -1;
    return ::open(path.c_str(), O_RDWR | O_CLOEXEC);
}

/** Reads to the end of a request: its line feed. */
bool receive_request(int descriptor)
{
    std::array<char, 4096> piece{};
    ssize_t length = 0;
    do {
        length = ::read(descriptor, piece.data(), piece.size());
        if (length <= 0)
            return false;
    } while (piece[static_cast<std::size_t>(length) - 1] != '\n');
    return true;
}

/** Opens the two FIFOs in the launcher's order, which each wait for their peer. */
void answer_request(const std::string& request_path, const std::string& response_path)
{
    const int request = ::open(request_path.c_str(), O_RDONLY | O_CLOEXEC);
    const int response = ::open(response_path.c_str(), O_WRONLY | O_CLOEXEC);
    if (receive_request(request) && !send(response, answer))
        std::perror("answering_service: write");
    ::close(response);
    ::close(request);
}

/** Takes each complete announcement, two lines, off the front of `received`. */
void answer_announcements(std::string& received)
{
    for (;;) {
        const std::size_t first = received.find('\n');
        if (first == std::string::npos)
            return;
        const std::size_t second = received.find('\n', first + 1);
        if (second == std::string::npos)
            return;
        answer_request(received.substr(0, first), received.substr(first + 1, second - first - 1));
        received.erase(0, second + 1);
    }
}

void serve(int rendezvous)
{
    std::string received;
    std::array<char, 4096> piece{};
    std::array<pollfd, 2> inputs{{{rendezvous, POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
    while (::poll(inputs.data(), inputs.size(), -1) > 0 && inputs[1].revents == 0) {
        const ssize_t length = ::read(rendezvous, piece.data(), piece.size());
        if (length <= 0)
            return;
        received.append(piece.data(), static_cast<std::size_t>(length));
        answer_announcements(received);
    }
}

} // namespace

int main()
{
    if (!set_temp_directory())
        return 1;
    const std::string directory = get_temp_directory() + "/";
    const int rendezvous = open_rendezvous(directory + rendezvous_pipe);
    if (rendezvous < 0 || !lock_pid_file(directory + service_pid_file)) {
        std::perror("answering_service");
        return 1;
    }
    if (!send(STDOUT_FILENO, "ready\n"))
        return 1;
    serve(rendezvous);
    return 0;
}
