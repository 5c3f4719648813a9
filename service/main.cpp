#include "platform/ks.h"
#include "protocol/wire_names.h"
#include "service/complaint.h"
#include "service/control.h"
#include "service/options.h"
#include "service/server.h"
#include "service/service_lock.h"
#include "service/signals.h"
#include "service/user_directory.h"
#include "support/temp_directory.h"

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr int failure = 1;
constexpr int bad_command_line = 2;
constexpr int first_inherited = 3;

void find_directory()
{
    if (!set_temp_directory())
        throw std::runtime_error("cannot make the per-user temporary directory");
}

/** The per-user directory, taken while its path still means what it means to the starter; then the
    starter's umask and working directory are left, which would otherwise stay in use. */
UserDirectory settle()
{
    UserDirectory directory(get_temp_directory());
    ::umask(0077);
    [[maybe_unused]] const int left = ::chdir("/");
    return directory;
}

/** Leaves the terminal and who may read complaints there. False in the process that was started,
    which has done its work then. */
bool detach()
{
    const pid_t service = ::fork();
    if (service < 0)
        throw std::runtime_error("cannot make a process of its own");
    if (service > 0)
        return false;
    ::setsid();
    const Descriptor nowhere(::open("/dev/null", O_RDWR | O_CLOEXEC));
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        ::dup2(nowhere.get(), stream);
    complain_to_system_log();
    return true;
}

int serve(const Options& options)
{
    find_directory();
    // The first act: a launcher that finds the FIFO waits in its open for the rest of this start,
    // one that does not pauses for ten seconds. Nothing is lost where it exists already.
    ::mkfifo((get_temp_directory() + "/" + rendezvous_pipe).c_str(), 0600);

    ::closefrom(first_inherited); // keeps no pipe, lock or file of the starter alive
    const bool is_alone = ::getsid(0) == ::getpid(); // as a launcher starts it
    if (is_alone && !options.foreground)
        complain_to_system_log();
    const UserDirectory directory = settle();
    if (!is_alone && !options.foreground && !detach())
        return 0;
    Descriptor signals = open_signals(); // whoever sees the lock can end the service in order
    auto lock = ServiceLock::take(directory.descriptor());
    if (!lock)
        return 0; // another service lives
    Server(*std::move(lock), std::move(signals), directory, options.install_directory).serve();
    return 0;
}

int run(const std::vector<std::string_view>& words)
{
    const auto options = parse_options(words);
    if (!options) {
        std::fputs(usage_text, stderr);
        return bad_command_line;
    }
    switch (options->action) {
    case Options::Action::show_help:
        std::fputs(usage_text, stdout);
        return 0;
    case Options::Action::show_version:
        std::puts("tolm_service " QUARNFOLD_VERSION);
        return 0;
    case Options::Action::show_status:
        find_directory();
        return show_status(get_temp_directory());
    case Options::Action::stop:
        find_directory();
        return stop_service(get_temp_directory());
    case Options::Action::serve:
        break;
    }
    return serve(*options);
}

} // namespace

int main(int argc, char* argv[])
{
    ks_system_init();
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        complain(error.what());
        return failure;
    }
}
