#include "protocol/pipe_exchange.h"

#include "platform/pfm.h"
#include "protocol/reply.h"
#include "protocol/wire_names.h"
#include "support/joined.h"
#include "support/temp_directory.h"
#include "support/trace_log.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr unsigned open_timeout = 90; // seconds
constexpr std::size_t reply_size = 1024;

void prepare_process()
{
    std::signal(SIGALRM, pipe_alarm_signal_handler);
    // A write that meets a closed pipe is a failed write like any other, never death by signal.
    std::signal(SIGPIPE, SIG_IGN);
    // No random number is drawn anywhere; the seeding is kept for a family library that may draw.
    // NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp): the seed need not be unpredictable
    std::srand(static_cast<unsigned>(std::time(nullptr)));
}

/** The descriptor, or -1 after the last attempt: a sleep follows every failed one, the last too. */
int open_rendezvous(const std::string& path)
{
    const int attempt_budget = 120 / get_default_timeout();
    for (int attempt = 0; attempt <= attempt_budget; ++attempt) {
        ::alarm(open_timeout);
        const int descriptor = ::open(path.c_str(), O_WRONLY);
        ::alarm(0);
        if (descriptor >= 0)
            return descriptor;
        ::sleep(static_cast<unsigned>(get_default_timeout()));
    }
    return -1;
}

/** One write, so that announcements of several launchers never mix. */
bool write_whole(int descriptor, std::string_view text)
{
    return ::write(descriptor, text.data(), text.size()) >= 0;
}

/** Sends the request and judges what one read of the reply delivers: a longer reply, or one that
    comes in pieces, is judged by its beginning. */
bool exchange(const std::string& request, int request_descriptor, int response_descriptor)
{
    if (!write_whole(request_descriptor, joined({request, "\n"})))
        return false;
    std::array<char, reply_size + 1> reply{};
    const ssize_t length = ::read(response_descriptor, reply.data(), reply_size - 1);
    if (length < 0)
        return false;
    reply[static_cast<std::size_t>(length) + 1] = '\0';
    return find_return_code(reply.data());
}

} // namespace

bool send_data_unix(const std::string& request)
{
    prepare_process();
    const std::string directory = joined({get_temp_directory(), "/"});
    const int rendezvous = open_rendezvous(joined({directory, rendezvous_pipe}));

    // Not checked yet whether the rendezvous was opened: the announcement's write tells.
    const std::string id = std::to_string(static_cast<unsigned>(::getpid()));
    const std::string request_path = joined({directory, request_pipe, id});
    const std::string response_path = joined({directory, response_pipe, id});
    if (::mkfifo(request_path.c_str(), 0666) != 0)
        return false;
    if (::mkfifo(response_path.c_str(), 0666) != 0)
        return false;

    if (!write_whole(rendezvous, joined({request_path, "\n", response_path, "\n"}))) {
        ::close(rendezvous);
        write_whole(STDOUT_FILENO, "Launcher Wrapper dead");
        return false;
    }

    // One alarm spans both opens, in this order: the service opens the request FIFO first.
    ::alarm(open_timeout);
    const int request_descriptor = ::open(request_path.c_str(), O_WRONLY);
    const int response_descriptor = ::open(response_path.c_str(), O_RDONLY);
    ::alarm(0);
    ::close(rendezvous);
    // A descriptor that did open and both FIFOs are left as they are, deliberately: the service
    // sees this process end.
    if (request_descriptor < 0 || response_descriptor < 0)
        return false;

    const bool result = exchange(request, request_descriptor, response_descriptor);
    ::close(request_descriptor);
    ::close(response_descriptor);
    ::unlink(request_path.c_str());
    ::unlink(response_path.c_str());
    return result;
}

int get_default_timeout()
{
    return 10;
}

void pipe_alarm_signal_handler(int signal_number)
{
    if (signal_number != SIGALRM)
        return;
    // The environment is asked, not logging_enabled: the time-out is recorded even where creating
    // the trace file failed at the start.
    if (check_log_env())
        write_log("Timeout communicating with tolm_service");
    pfm_exit(-1);
}
