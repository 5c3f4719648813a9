#include "tests/harness/program.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/capability.h>
#include <ostream>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace
{

constexpr std::chrono::seconds patience(60);
constexpr int cannot_execute = 126;

[[noreturn]] void throw_errno(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

std::array<int, 2> make_pipe()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw_errno("pipe2");
    return ends;
}

std::vector<char*> pointers(std::vector<std::string>& texts)
{
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (std::string& text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

[[noreturn]] void fail_in_child(const char* what)
{
    const char* reason = ::strerror(errno);
    for (const char* text : {what, ": ", reason, "\n"})
        static_cast<void>(!::write(STDERR_FILENO, text, std::strlen(text)));
    ::_exit(cannot_execute);
}

/** Takes from root what overrides file permissions: out of the bounding set, so that the next exec
    does not give it back, and out of what is inherited beside that set. */
void become_ordinary()
{
    if (::geteuid() != 0)
        return;
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> sets{};
    if (::syscall(SYS_capget, &header, sets.data()) != 0)
        fail_in_child("capget");
    for (const unsigned capability : {unsigned{CAP_DAC_OVERRIDE}, unsigned{CAP_DAC_READ_SEARCH}}) {
        sets[0].inheritable &= ~(1U << capability);
        if (::prctl(PR_CAPBSET_READ, capability) == 1 && ::prctl(PR_CAPBSET_DROP, capability) != 0)
            fail_in_child("PR_CAPBSET_DROP");
    }
    if (::syscall(SYS_capset, &header, sets.data()) != 0)
        fail_in_child("capset");
}

void set_signals(const std::set<int>& ignored)
{
    for (int number = 1; number < NSIG; ++number)
        static_cast<void>(std::signal(number, ignored.contains(number) ? SIG_IGN : SIG_DFL));
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const Outcome& outcome)
{
    stream << "status " << outcome.exit_status << ", signal " << outcome.signal;
    if (outcome.timed_out)
        stream << " (timed out)";
    return stream << ", out \"" << outcome.out << "\", err \"" << outcome.err << "\"";
}

Invocation invocation(const Scratch& scratch, std::string path, std::vector<std::string> arguments)
{
    Invocation result{std::move(path), std::move(arguments)};
    result.directory = scratch.path();
    result.environment = {
        {"TMPDIR", scratch / "tmp"}, {"LC_ALL", "C"}, {"PATH", "/usr/local/bin:/usr/bin:/bin"}};
    for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS", "GCOV_PREFIX",
                             "GCOV_PREFIX_STRIP", "GCOV_ERROR_FILE"})
        if (const char* value = std::getenv(name))
            result.environment[name] = value;
    return result;
}

Program::Program(Invocation invocation) : invocation_(std::move(invocation)) {}

Program::~Program()
{
    if (pid_ > 0) {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
    close_streams();
}

void Program::start()
{
    std::vector<std::string> arguments{invocation_.path};
    arguments.insert(arguments.end(), invocation_.arguments.begin(), invocation_.arguments.end());
    std::vector<std::string> variables;
    for (const auto& [name, value] : invocation_.environment)
        variables.emplace_back(name).append("=").append(value);
    const auto argument_pointers = pointers(arguments);
    const auto variable_pointers = pointers(variables);

    const auto out = make_pipe();
    const auto err = make_pipe();
    const int in = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    const std::array<int, 3> streams{in, out[1], err[1]};
    pid_ = ::fork();
    if (pid_ == 0)
        become_program(streams.data(), argument_pointers.data(), variable_pointers.data());
    for (const int descriptor : streams)
        ::close(descriptor);
    out_ = out[0];
    err_ = err[0];
    if (pid_ < 0)
        throw_errno("fork");
    end_ = static_cast<int>(::syscall(SYS_pidfd_open, pid_, 0));
    if (end_ < 0)
        throw_errno("pidfd_open");
}

void Program::become_program(const int* streams, char* const* arguments,
                             char* const* variables) const
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (int number = 0; number < 3; ++number)
        if (::dup2(streams[number], number) < 0)
            ::_exit(cannot_execute);
    become_ordinary();
    set_signals(invocation_.ignored_signals);
    const rlimit no_core{0, 0};
    ::setrlimit(RLIMIT_CORE, &no_core);
    ::umask(invocation_.file_mode_mask);
    if (::chdir(invocation_.directory.c_str()) != 0)
        fail_in_child(invocation_.directory.c_str());
    ::syscall(SYS_close_range, 3U, ~0U, 0U);
    for (const int descriptor : invocation_.closed_descriptors)
        ::close(descriptor);
    ::execve(invocation_.path.c_str(), arguments, variables);
    fail_in_child(invocation_.path.c_str());
}

bool Program::is_running() const
{
    pollfd waited{end_, POLLIN, 0};
    return pid_ > 0 && ::poll(&waited, 1, 0) == 0;
}

void Program::send_signal(int number) const
{
    if (pid_ > 0)
        ::kill(pid_, number);
}

Outcome Program::wait()
{
    Outcome outcome;
    collect_until_end(outcome);
    if (outcome.timed_out)
        ::kill(pid_, SIGKILL);
    int status = 0;
    if (::waitpid(pid_, &status, 0) != pid_)
        throw_errno("waitpid");
    pid_ = -1;
    if (WIFSIGNALED(status))
        outcome.signal = WTERMSIG(status);
    else
        outcome.exit_status = WEXITSTATUS(status);
    close_streams();
    return outcome;
}

/** Takes what is there now; false at the end of the stream. */
bool Program::collect(int descriptor, std::string& text) const
{
    for (;;) {
        pollfd ready{descriptor, POLLIN, 0};
        if (::poll(&ready, 1, 0) <= 0)
            return true;
        std::array<char, 4096> piece{};
        const ssize_t length = ::read(descriptor, piece.data(), piece.size());
        if (length <= 0)
            return false;
        text.append(piece.data(), static_cast<std::size_t>(length));
    }
}

void Program::collect_until_end(Outcome& outcome)
{
    using clock = std::chrono::steady_clock;
    using std::chrono::milliseconds;
    std::array<pollfd, 3> waited{{{end_, POLLIN, 0}, {out_, POLLIN, 0}, {err_, POLLIN, 0}}};
    const auto limit = clock::now() + patience;
    while (waited[0].revents == 0) {
        const auto left = std::chrono::duration_cast<milliseconds>(limit - clock::now()).count();
        if (left <= 0 || ::poll(waited.data(), waited.size(), static_cast<int>(left)) == 0) {
            outcome.timed_out = true;
            break;
        }
        // A stream at its end would make every poll return at once.
        if (waited[1].revents != 0 && !collect(out_, outcome.out))
            waited[1].fd = -1;
        if (waited[2].revents != 0 && !collect(err_, outcome.err))
            waited[2].fd = -1;
    }
    collect(out_, outcome.out);
    collect(err_, outcome.err);
}

void Program::close_streams()
{
    for (int* descriptor : {&end_, &out_, &err_}) {
        if (*descriptor >= 0)
            ::close(*descriptor);
        *descriptor = -1;
    }
}
