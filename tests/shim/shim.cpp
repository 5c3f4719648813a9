/*
 * Preloaded into one program: records the system's calls that it makes, divides the time of sleep
 * and alarm, and fails chosen calls. Only calls of the program itself come here, not those that the
 * C library makes inside.
 *
 * SHIM_PROGRAM: file name of the program; in every other one the shim only passes calls on. What
 * the program itself runs, gets no shim.
 *
 * SHIM_LOG: a file, to which one line is appended for each call, before it is made, with "parent "
 * or, in a forked child, "child " before it. "shim loaded" is the first.
 *
 * SHIM_TIME_DIVISOR: N, by which all sleeps and alarms are shortened, or rules "call[@text]:nth:N".
 *
 * SHIM_FAIL: rules "call[@text]:nth:errno". That use of the call fails; a sleep ends at once.
 *
 * SHIM_GATE: rules "call[@text]:nth:path". That use waits until a byte can be read from the path.
 *
 * SHIM_CLOCK: a file, the size of which in bytes is the number of seconds by which the program's
 * steady clock runs ahead.
 *
 * Rules are separated by commas. Where a text is given, only uses whose recorded line contains it
 * count; the nth "*" is every use.
 *
 * Variants of a call (open64, __read_chk...) count and are recorded as the plain call. What a
 * program does to its coverage counts (.gcda files) is its measurement's, not its own: it goes
 * through.
 */
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <dlfcn.h>
#include <fcntl.h>
#include <pwd.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/types.h>
#include <unistd.h>

// Under names of our own, so that the headers' declarations, which differ from library to library,
// do not conflict.
#define INTERPOSE(result, name, symbol, ...)                                                       \
    extern "C" result shim_##name(__VA_ARGS__) __asm__(symbol);                                    \
    extern "C" result shim_##name(__VA_ARGS__)

namespace
{

constexpr std::size_t line_size = 8192;
constexpr std::size_t most_rules = 8;

struct Rule {
    const char* call = nullptr;
    std::size_t call_length = 0;
    const char* text = nullptr; // not ended by a NUL
    std::size_t text_length = 0;
    int nth = 0; // 0: every use
    const char* value = nullptr;
    std::size_t value_length = 0;
    int uses = 0;
};

struct Rules {
    Rule all[most_rules];
    std::size_t count = 0;
};

bool active = false;
pid_t program_id = 0;
const char* log_path = nullptr;
const char* clock_path = nullptr;
long time_divisor = 1;
Rules divisors;
Rules failures;
Rules gates;

template<typename Function>
Function* real(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

// --- rules ---

Rule parsed(const char* text, std::size_t length)
{
    Rule rule;
    const auto* const end = text + length;
    const auto* const nth = static_cast<const char*>(::memchr(text, ':', length));
    const auto* const value =
        nth == nullptr ? nullptr
                       : static_cast<const char*>(
                             ::memchr(nth + 1, ':', static_cast<std::size_t>(end - nth - 1)));
    if (value == nullptr)
        return rule;
    rule.call = text;
    rule.call_length = static_cast<std::size_t>(nth - text);
    const auto* const at = static_cast<const char*>(::memchr(text, '@', rule.call_length));
    if (at != nullptr) {
        rule.text = at + 1;
        rule.text_length = static_cast<std::size_t>(nth - at - 1);
        rule.call_length = static_cast<std::size_t>(at - text);
    }
    rule.nth = nth[1] == '*' ? 0 : static_cast<int>(::strtol(nth + 1, nullptr, 10));
    rule.value = value + 1;
    rule.value_length = static_cast<std::size_t>(end - value - 1);
    return rule;
}

void parse(const char* text, Rules& rules)
{
    while (text != nullptr && *text != '\0' && rules.count < most_rules) {
        const std::size_t length = ::strcspn(text, ",");
        rules.all[rules.count++] = parsed(text, length);
        text += length + (text[length] == ',' ? 1 : 0);
    }
}

/** The rule for this use of the call, which is counted; null when there is none. */
const Rule* match(Rules& rules, const char* call, const char* line)
{
    const Rule* found = nullptr;
    for (std::size_t i = 0; i < rules.count; ++i) {
        Rule& rule = rules.all[i];
        if (rule.call_length != ::strlen(call) || ::strncmp(rule.call, call, rule.call_length) != 0)
            continue;
        if (rule.text != nullptr &&
            ::memmem(line, ::strlen(line), rule.text, rule.text_length) == nullptr)
            continue;
        ++rule.uses;
        if (rule.nth == 0 || rule.nth == rule.uses)
            found = &rule;
    }
    return found;
}

// --- the record ---

void append(const char* text)
{
    if (log_path == nullptr)
        return;
    const long log =
        ::syscall(SYS_openat, AT_FDCWD, log_path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (log < 0)
        return;
    ::syscall(SYS_write, log, text, ::strlen(text));
    ::syscall(SYS_close, log);
}

void wait_at_gate(const Rule& rule)
{
    char path[line_size];
    ::snprintf(path, sizeof path, "%.*s", static_cast<int>(rule.value_length), rule.value);
    const long gate = ::syscall(SYS_openat, AT_FDCWD, path, O_RDONLY | O_CLOEXEC, 0);
    char byte = 0;
    ::syscall(SYS_read, gate, &byte, 1);
    ::syscall(SYS_close, gate);
}

/** Records a use of `call`, waits where a gate stands, and returns whether it shall go on; else
    errno is set. */
// NOLINTNEXTLINE(cert-dcl50-cpp): as printf, so that the compiler checks the format
__attribute__((format(printf, 2, 3))) bool goes_on(const char* call, const char* format, ...)
{
    if (!active)
        return true;
    const int saved_errno = errno;
    char line[line_size];
    int length = ::snprintf(line, sizeof line, "%s %s(",
                            ::getpid() == program_id ? "parent" : "child", call);
    std::va_list arguments;
    va_start(arguments, format);
    length += ::vsnprintf(line + length, sizeof line - static_cast<std::size_t>(length) - 3, format,
                          arguments);
    va_end(arguments);
    if (length > static_cast<int>(sizeof line) - 4)
        length = static_cast<int>(sizeof line) - 4;
    ::memcpy(line + length, ")\n", sizeof ")\n");
    if (::strstr(line, ".gcda") != nullptr) {
        errno = saved_errno;
        return true;
    }
    append(line);
    if (const Rule* gate = match(gates, call, line))
        wait_at_gate(*gate);
    const Rule* failure = match(failures, call, line);
    errno =
        failure != nullptr ? static_cast<int>(::strtol(failure->value, nullptr, 10)) : saved_errno;
    return failure == nullptr;
}

/** The file behind a descriptor, to tell one from another in the record. */
class FileName
{
  public:
    explicit FileName(int descriptor)
    {
        char link[64];
        ::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
        const int saved_errno = errno;
        const ssize_t length = active ? ::readlink(link, path_, sizeof path_ - 1) : 0;
        errno = saved_errno;
        path_[length > 0 ? length : 0] = '\0';
    }

    const char* text() const { return path_; }

  private:
    char path_[4096] = {};
};

void parse_divisors(const char* text)
{
    if (::strchr(text, ':') == nullptr)
        time_divisor = ::strtol(text, nullptr, 10);
    else
        parse(text, divisors);
}

/** By how much this use of `call`, recorded by now, is shortened. */
long divisor_of(const char* call, unsigned seconds)
{
    char line[64];
    ::snprintf(line, sizeof line, "%s(%u)", call, seconds);
    const Rule* rule = match(divisors, call, line);
    return rule != nullptr ? ::strtol(rule->value, nullptr, 10) : time_divisor;
}

__attribute__((constructor)) void start()
{
    char path[4096];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path - 1);
    const char* const program = ::getenv("SHIM_PROGRAM");
    if (length <= 0 || program == nullptr)
        return;
    path[length] = '\0';
    const char* const slash = ::strrchr(path, '/');
    if (slash == nullptr || ::strcmp(slash + 1, program) != 0)
        return;
    active = true;
    ::unsetenv("LD_PRELOAD"); // programs that this one runs may be of another machine type
    program_id = ::getpid();
    log_path = ::getenv("SHIM_LOG");
    clock_path = ::getenv("SHIM_CLOCK");
    if (const char* const divisor = ::getenv("SHIM_TIME_DIVISOR"))
        parse_divisors(divisor);
    parse(::getenv("SHIM_FAIL"), failures);
    parse(::getenv("SHIM_GATE"), gates);
    append("shim loaded\n");
}

// --- files ---

int open_file(const char* symbol, const char* path, int flags, mode_t mode)
{
    const bool creates = (flags & O_CREAT) != 0;
    const int access = flags & O_ACCMODE;
    const char* const kind = access == O_RDONLY ? "r" : access == O_WRONLY ? "w" : "rw";
    const bool allowed = creates ? goes_on("open", "%s, %s, %04o", path, kind, mode)
                                 : goes_on("open", "%s, %s", path, kind);
    return allowed ? real<int(const char*, int, ...)>(symbol)(path, flags, mode) : -1;
}

mode_t mode_of(int flags, std::va_list arguments)
{
    return (flags & (O_CREAT | __O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

std::FILE* open_stream(const char* symbol, const char* path, const char* mode)
{
    if (!goes_on("fopen", "%s, %s", path, mode))
        return nullptr;
    return real<std::FILE*(const char*, const char*)>(symbol)(path, mode);
}

const char* command_name(int command)
{
    switch (command) {
    case F_GETFD:
        return "F_GETFD";
    case F_SETLK:
#if F_SETLK != F_SETLK64
    case F_SETLK64:
#endif
        return "F_SETLK";
    default:
        return "?";
    }
}

bool lock_goes_on(int descriptor, int command, const void* lock)
{
#if F_SETLK != F_SETLK64
    if (command == F_SETLK64) {
        const auto* wide = static_cast<const struct flock64*>(lock);
        return goes_on("fcntl", "%s, F_SETLK, %d, %d, %lld, %lld, %d", FileName(descriptor).text(),
                       wide->l_type, wide->l_whence, static_cast<long long>(wide->l_start),
                       static_cast<long long>(wide->l_len), wide->l_pid == ::getpid());
    }
#endif
    const auto* plain = static_cast<const struct flock*>(lock);
    return goes_on("fcntl", "%s, %s, %d, %d, %lld, %lld, %d", FileName(descriptor).text(),
                   command_name(command), plain->l_type, plain->l_whence,
                   static_cast<long long>(plain->l_start), static_cast<long long>(plain->l_len),
                   plain->l_pid == ::getpid());
}

int control(const char* symbol, int descriptor, int command, void* argument)
{
    const bool locks = ::strcmp(command_name(command), "F_SETLK") == 0;
    const bool allowed =
        locks ? lock_goes_on(descriptor, command, argument)
              : goes_on("fcntl", "%s, %s", FileName(descriptor).text(), command_name(command));
    return allowed ? real<int(int, int, ...)>(symbol)(descriptor, command, argument) : -1;
}

bool read_goes_on(int descriptor, std::size_t size)
{
    return goes_on("read", "%s, %zu", FileName(descriptor).text(), size);
}

} // namespace

INTERPOSE(int, open, "open", const char* path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_file("open", path, flags, mode);
}

INTERPOSE(int, open64, "open64", const char* path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_file("open64", path, flags, mode);
}

INTERPOSE(int, open_2, "__open_2", const char* path, int flags)
{
    return open_file("open", path, flags, 0);
}

INTERPOSE(int, open64_2, "__open64_2", const char* path, int flags)
{
    return open_file("open64", path, flags, 0);
}

INTERPOSE(int, fcntl, "fcntl", int descriptor, int command, ...)
{
    std::va_list arguments;
    va_start(arguments, command);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    return control("fcntl", descriptor, command, argument);
}

INTERPOSE(int, fcntl64, "fcntl64", int descriptor, int command, ...)
{
    std::va_list arguments;
    va_start(arguments, command);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    return control("fcntl64", descriptor, command, argument);
}

INTERPOSE(std::FILE*, fopen, "fopen", const char* path, const char* mode)
{
    return open_stream("fopen", path, mode);
}

INTERPOSE(std::FILE*, fopen64, "fopen64", const char* path, const char* mode)
{
    return open_stream("fopen64", path, mode);
}

INTERPOSE(ssize_t, read, "read", int descriptor, void* buffer, std::size_t size)
{
    return read_goes_on(descriptor, size)
               ? real<ssize_t(int, void*, std::size_t)>("read")(descriptor, buffer, size)
               : -1;
}

INTERPOSE(ssize_t, read_chk, "__read_chk", int descriptor, void* buffer, std::size_t size,
          std::size_t room)
{
    return read_goes_on(descriptor, size) ? real<ssize_t(int, void*, std::size_t, std::size_t)>(
                                                "__read_chk")(descriptor, buffer, size, room)
                                          : -1;
}

INTERPOSE(ssize_t, write, "write", int descriptor, const void* bytes, std::size_t size)
{
    return goes_on("write", "%s, %zu", FileName(descriptor).text(), size)
               ? real<ssize_t(int, const void*, std::size_t)>("write")(descriptor, bytes, size)
               : -1;
}

INTERPOSE(int, close, "close", int descriptor)
{
    return goes_on("close", "%d %s", descriptor, FileName(descriptor).text())
               ? real<int(int)>("close")(descriptor)
               : -1;
}

INTERPOSE(int, unlink, "unlink", const char* path)
{
    return goes_on("unlink", "%s", path) ? real<int(const char*)>("unlink")(path) : -1;
}

INTERPOSE(int, mkfifo, "mkfifo", const char* path, mode_t mode)
{
    return goes_on("mkfifo", "%s, %04o", path, mode)
               ? real<int(const char*, mode_t)>("mkfifo")(path, mode)
               : -1;
}

INTERPOSE(int, mkdir, "mkdir", const char* path, mode_t mode)
{
    return goes_on("mkdir", "%s, %04o", path, mode)
               ? real<int(const char*, mode_t)>("mkdir")(path, mode)
               : -1;
}

INTERPOSE(char*, getcwd, "getcwd", char* buffer, std::size_t size)
{
    return goes_on("getcwd", "%zu", size) ? real<char*(char*, std::size_t)>("getcwd")(buffer, size)
                                          : nullptr;
}

INTERPOSE(char*, getcwd_chk, "__getcwd_chk", char* buffer, std::size_t size, std::size_t room)
{
    return goes_on("getcwd", "%zu", size)
               ? real<char*(char*, std::size_t, std::size_t)>("__getcwd_chk")(buffer, size, room)
               : nullptr;
}

// --- time and signals ---

INTERPOSE(unsigned, sleep, "sleep", unsigned seconds)
{
    if (!goes_on("sleep", "%u", seconds))
        return seconds; // as when a signal ends it at once
    const long divisor = divisor_of("sleep", seconds);
    if (divisor == 1)
        return real<unsigned(unsigned)>("sleep")(seconds);
    const long long part = seconds * 1000000000LL / divisor;
    timespec rest{static_cast<time_t>(part / 1000000000), static_cast<long>(part % 1000000000)};
    while (::nanosleep(&rest, &rest) != 0)
        continue;
    return 0;
}

INTERPOSE(unsigned, alarm, "alarm", unsigned seconds)
{
    goes_on("alarm", "%u", seconds);
    const long divisor = divisor_of("alarm", seconds);
    if (divisor == 1)
        return real<unsigned(unsigned)>("alarm")(seconds);
    const long long part = seconds * 1000000LL / divisor;
    itimerval timer{};
    timer.it_value.tv_sec = static_cast<time_t>(part / 1000000);
    timer.it_value.tv_usec = static_cast<suseconds_t>(part % 1000000);
    ::setitimer(ITIMER_REAL, &timer, nullptr);
    return 0;
}

using Handler = void(int);

INTERPOSE(Handler*, signal, "signal", int number, Handler* handler)
{
    const char* const kind = handler == SIG_IGN   ? "ignore"
                             : handler == SIG_DFL ? "default"
                                                  : "handler";
    goes_on("signal", "%d, %s", number, kind);
    return real<Handler*(int, Handler*)>("signal")(number, handler);
}

INTERPOSE(time_t, time, "time", time_t* now)
{
    goes_on("time", "%s", now == nullptr ? "null" : "variable");
    return real<time_t(time_t*)>("time")(now);
}

INTERPOSE(int, clock_gettime, "clock_gettime", clockid_t clock, timespec* now)
{
    const int result = real<int(clockid_t, timespec*)>("clock_gettime")(clock, now);
    struct stat ahead {};
    if (active && clock == CLOCK_MONOTONIC && clock_path != nullptr &&
        ::stat(clock_path, &ahead) == 0)
        now->tv_sec += ahead.st_size;
    return result;
}

INTERPOSE(void, srand, "srand", unsigned seed)
{
    goes_on("srand", "%s", seed == 0 ? "zero" : "seed");
    real<void(unsigned)>("srand")(seed);
}

// --- processes and users ---

INTERPOSE(pid_t, fork, "fork", void)
{
    return goes_on("fork", "%s", "") ? real<pid_t()>("fork")() : -1;
}

INTERPOSE(pid_t, setsid, "setsid", void)
{
    return goes_on("setsid", "%s", "") ? real<pid_t()>("setsid")() : -1;
}

INTERPOSE(int, execv, "execv", const char* path, char* const* arguments)
{
    return goes_on("execv", "%s", path)
               ? real<int(const char*, char* const*)>("execv")(path, arguments)
               : -1;
}

INTERPOSE(int, posix_spawn, "posix_spawn", pid_t* id, const char* path,
          const posix_spawn_file_actions_t* actions, const posix_spawnattr_t* attributes,
          char* const* arguments, char* const* environment)
{
    return goes_on("posix_spawn", "%s", path)
               ? real<int(pid_t*, const char*, const posix_spawn_file_actions_t*,
                          const posix_spawnattr_t*, char* const*, char* const*)>("posix_spawn")(
                     id, path, actions, attributes, arguments, environment)
               : errno;
}

// The service's complaints are all of this form: one text.
INTERPOSE(void, syslog, "syslog", int priority, const char* format, const char* text)
{
    goes_on("syslog", "%d, %s, %s", priority, format, text);
}

INTERPOSE(void, syslog_chk, "__syslog_chk", int priority, int flag, const char* format,
          const char* text)
{
    static_cast<void>(flag);
    goes_on("syslog", "%d, %s, %s", priority, format, text);
}

INTERPOSE(int, system, "system", const char* command)
{
    return goes_on("system", "%s", command) ? real<int(const char*)>("system")(command) : -1;
}

INTERPOSE(passwd*, getpwuid, "getpwuid", uid_t user)
{
    return goes_on("getpwuid", "%u", user) ? real<passwd*(uid_t)>("getpwuid")(user) : nullptr;
}
