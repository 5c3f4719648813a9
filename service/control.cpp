#include "service/control.h"

#include "service/process.h"
#include "service/service_lock.h"
#include "service/status.h"
#include "service/user_directory.h"

#include <csignal>
#include <cstdio>
#include <poll.h>

namespace
{

constexpr int failure = 1;

int tell_that_none_runs()
{
    std::puts("no tolm_service is running");
    return failure;
}

/** Whether the lock is free within ten seconds. It is looked at, not waited for: a lock taken even
    for a moment would make launchers believe in a service. */
bool becomes_free(const UserDirectory& directory)
{
    constexpr int most_looks = 2000;
    constexpr int between_looks = 5; // milliseconds
    for (int look = 0; look < most_looks; ++look) {
        if (!ServiceLock::holder(directory.descriptor()))
            return true;
        ::poll(nullptr, 0, between_looks);
    }
    return false;
}

} // namespace

int show_status(const std::string& directory_path)
{
    const UserDirectory directory(directory_path);
    const auto holder = ServiceLock::holder(directory.descriptor());
    if (!holder)
        return tell_that_none_runs();
    const auto status = ask_status(directory.descriptor());
    std::printf(
        "%s",
        status ? status->c_str()
               : ("process " + std::to_string(*holder) + " runs, but does not answer\n").c_str());
    return 0;
}

int stop_service(const std::string& directory_path)
{
    const UserDirectory directory(directory_path);
    const auto holder = ServiceLock::holder(directory.descriptor());
    if (!holder)
        return tell_that_none_runs();
    send_signal(open_process(*holder).get(), SIGTERM);
    if (becomes_free(directory))
        return 0;
    std::fputs("tolm_service: the service does not end\n", stderr);
    return failure;
}
