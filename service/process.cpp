#include "service/process.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>
#include <unistd.h>

extern "C" {
#include <sys/pidfd.h> // glibc 2.36 declares its functions without C linkage
}

namespace
{

constexpr std::int64_t nanoseconds = 1'000'000'000;

std::int64_t total(const timespec& time)
{
    return std::int64_t{time.tv_sec} * nanoseconds + time.tv_nsec;
}

std::int64_t clock_time(clockid_t clock)
{
    timespec now{};
    ::clock_gettime(clock, &now);
    return total(now);
}

/** When the process started, by the wall clock as it is set now; nothing when it has ended. */
std::optional<std::int64_t> start_of(pid_t id)
{
    const std::string path = "/proc/" + std::to_string(id) + "/stat";
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::string text(1024, '\0');
    const ssize_t length = ::read(file.get(), text.data(), text.size());
    if (length <= 0)
        return std::nullopt;
    text.resize(static_cast<std::size_t>(length));
    // The program's name, in brackets, may hold anything; the start is the 20th field after it.
    constexpr int fields_before = 19;
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    std::string skipped;
    for (int field = 0; field < fields_before; ++field)
        fields >> skipped;
    std::int64_t ticks = 0; // since the boot
    fields >> ticks;
    const std::int64_t boot = clock_time(CLOCK_REALTIME) - clock_time(CLOCK_BOOTTIME);
    return boot + ticks * (nanoseconds / ::sysconf(_SC_CLK_TCK));
}

} // namespace

Descriptor open_process(pid_t id)
{
    Descriptor process(::pidfd_open(id, 0)); // closed on exec, always
    if (!process)
        throw std::system_error(errno, std::generic_category(), "process " + std::to_string(id));
    return process;
}

void send_signal(int process, int signal_number)
{
    ::pidfd_send_signal(process, signal_number, nullptr, 0);
}

bool lives_since(pid_t id, const timespec& file_time)
{
    // Both clocks' grain, and a wall clock that was set a little since.
    constexpr std::int64_t tolerance = nanoseconds;
    const auto start = start_of(id);
    return start && *start <= total(file_time) + tolerance;
}
