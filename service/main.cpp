#include "platform/ks.h"
#include "protocol/wire_names.h"
#include "service/server.h"
#include "service/service_lock.h"
#include "service/user_directory.h"
#include "support/temp_directory.h"

#include <csignal>
#include <cstdio>
#include <exception>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr int first_inherited = 3;

/** The per-user directory, taken while its path still means what it means to the starter; then the
    starter's umask and working directory are left, which would otherwise stay in use. */
UserDirectory settle()
{
    UserDirectory directory(get_temp_directory());
    ::umask(0077);
    [[maybe_unused]] const int left = ::chdir("/");
    return directory;
}

/** Returns only when another service lives. */
int run()
{
    ks_system_init();
    if (!set_temp_directory()) {
        std::fputs("tolm_service: cannot make the per-user temporary directory\n", stderr);
        return 1;
    }
    // The first act: a launcher that finds the FIFO waits in its open for the rest of this start,
    // one that does not pauses for ten seconds. Nothing is lost where it exists already.
    ::mkfifo((get_temp_directory() + "/" + rendezvous_pipe).c_str(), 0600);

    ::closefrom(first_inherited); // keeps no pipe, lock or file of the starter alive
    std::signal(SIGPIPE, SIG_IGN);
    const UserDirectory directory = settle();
    const auto lock = ServiceLock::take(directory.descriptor());
    if (!lock)
        return 0;
    Server(*lock, directory).serve();
}

} // namespace

int main()
{
    try {
        return run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tolm_service: %s\n", error.what());
        return 1;
    }
}
