#include "service/signals.h"

#include <cerrno>
#include <csignal>
#include <sys/signalfd.h>
#include <system_error>
#include <unistd.h>

Descriptor open_signals()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGCHLD, SIG_DFL); // ignored by the starter, it would hide how viewers end
    sigset_t heeded{};
    ::sigemptyset(&heeded);
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        ::sigaddset(&heeded, number);
    ::sigprocmask(SIG_BLOCK, &heeded, nullptr);
    Descriptor signals(::signalfd(-1, &heeded, SFD_NONBLOCK | SFD_CLOEXEC));
    if (!signals)
        throw std::system_error(errno, std::generic_category(), "signalfd");
    return signals;
}

std::optional<int> next_signal(int signals)
{
    signalfd_siginfo signal{};
    if (::read(signals, &signal, sizeof signal) != sizeof signal)
        return std::nullopt;
    return static_cast<int>(signal.ssi_signo);
}
