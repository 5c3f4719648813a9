#include "launcher/service_start.h"

#include "launcher/service_discovery.h"
#include "platform/ks.h"
#include "support/joined.h"
#include "support/trace_log.h"

#include <array>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace
{

void trace(const char* record)
{
    if (logging_enabled)
        write_log(record);
}

/** The lowest free descriptor is taken each time, so the three become standard input, output and
    error. */
void redirect_standard_streams()
{
    ::close(STDOUT_FILENO);
    ::close(STDIN_FILENO);
    ::close(STDERR_FILENO);
    static_cast<void>(::open("/dev/null", O_RDONLY));
    static_cast<void>(::open("/dev/null", O_WRONLY));
    static_cast<void>(::open("/dev/null", O_WRONLY));
}

/** Returns only on failure. */
void become_service(char* const arguments[])
{
    redirect_standard_streams();
    if (::setsid() == -1)
        trace("SetSid() Failed\n");
    ::execv(arguments[0], arguments);
    trace("Execv Failed\n");
}

} // namespace

bool start_tolm_service()
{
    std::array<char, 4096> directory{};
    std::string program = product_path;
    std::string install_directory = joined({ks_product_dir(directory.data(), 0), "/Kelvanport"});
    char* const arguments[] = {program.data(), install_directory.data(), nullptr};

    const pid_t child = ::fork();
    if (child == 0) {
        become_service(arguments);
        return false;
    }
    if (child < 0)
        trace("Unable to start tolm_service\n");
    return child > 0;
}
