#include "service/viewer_process.h"

#include "platform/ks.h"
#include "service/process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace
{

// Far more than a viewer has to say in one line; the rest of a longer one is passed over.
constexpr std::size_t longest_line = 8192;

void expect(int error, const char* what)
{
    if (error != 0)
        throw std::system_error(error, std::generic_category(), what);
}

struct Pipe {
    Descriptor reading;
    Descriptor writing;
};

Pipe make_pipe()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        expect(errno, "a viewer's pipe");
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

void make_non_blocking(int descriptor)
{
    ::fcntl(descriptor, F_SETFL, O_NONBLOCK); // a new pipe's end has no other flag to keep
}

const std::string& viewer_program()
{
    static const std::string path = [] {
        std::array<char, 4096> directory{};
        return std::string(ks_product_dir(directory.data(), 0)) + "/bin/quarnview";
    }();
    return path;
}

/** What a viewer does not take from the service: its signals, its process group, its streams. */
class SpawnSettings
{
  public:
    SpawnSettings(int input, int output)
    {
        expect(::posix_spawn_file_actions_init(&actions), "a viewer's streams");
        ::posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
        expect(::posix_spawnattr_init(&attributes), "a viewer's attributes");
        ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK |
                                                    POSIX_SPAWN_SETSIGDEF);
        sigset_t signals{};
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes, &signals);
        ::sigaddset(&signals, SIGPIPE);
        ::posix_spawnattr_setsigdefault(&attributes, &signals);
    }
    ~SpawnSettings()
    {
        ::posix_spawn_file_actions_destroy(&actions);
        ::posix_spawnattr_destroy(&attributes);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    SpawnSettings(SpawnSettings&&) = delete;
    SpawnSettings& operator=(SpawnSettings&&) = delete;

    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
};

std::vector<char*> pointers_to(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

pid_t start(int input, int output, std::vector<std::string> arguments,
            std::vector<std::string> environment)
{
    const SpawnSettings settings(input, output);
    pid_t id = 0;
    expect(::posix_spawn(&id, arguments.front().c_str(), &settings.actions, &settings.attributes,
                         pointers_to(arguments).data(), pointers_to(environment).data()),
           arguments.front().c_str());
    return id;
}

std::string told(const siginfo_t& end)
{
    if (end.si_code == CLD_EXITED)
        return "ended with status " + std::to_string(end.si_status);
    return "was ended by signal " + std::to_string(end.si_status);
}

} // namespace

ViewerProcess::ViewerProcess(Events& events, ViewerVariables viewer_variables,
                             const std::string& install_directory)
    : own_variables(std::move(viewer_variables))
{
    Pipe to_viewer = make_pipe();
    Pipe from_viewer = make_pipe();
    id = start(to_viewer.reading.get(), from_viewer.writing.get(),
               {viewer_program(), install_directory}, environment_with(own_variables));
    input = std::move(to_viewer.writing);
    make_non_blocking(input.get());
    make_non_blocking(from_viewer.reading.get());
    output = WatchedDescriptor(events, std::move(from_viewer.reading));
    process = WatchedDescriptor(events, open_process(id));
}

void ViewerProcess::serve(const std::string& request_path, const std::string& response_path) const
{
    const std::string lines = request_path + "\n" + response_path + "\n";
    // A viewer that cannot take them has ended, which is seen in its own time.
    [[maybe_unused]] const auto written = ::write(input.get(), lines.data(), lines.size());
}

void ViewerProcess::tell_launcher_is_gone() const
{
    constexpr std::string_view line = "gone\n";
    [[maybe_unused]] const auto written = ::write(input.get(), line.data(), line.size());
}

void ViewerProcess::kill() const
{
    send_signal(process.get(), SIGKILL);
}

void ViewerProcess::look(const Events& events)
{
    const bool may_have_ended = events.ready(process.get());
    if (may_have_ended || events.ready(output.get()))
        listen();
    siginfo_t end{};
    if (!may_have_ended || told_end ||
        ::waitid(P_PID, static_cast<id_t>(id), &end, WEXITED | WNOHANG) != 0 || end.si_pid == 0)
        return;
    in_order = end.si_code == CLD_EXITED && end.si_status == 0;
    told_end = told(end);
    process = {};
}

void ViewerProcess::listen()
{
    std::array<char, 4096> bytes{};
    ssize_t length = 0;
    while ((length = ::read(output.get(), bytes.data(), bytes.size())) > 0)
        take({bytes.data(), static_cast<std::size_t>(length)});
    if (length == 0) // its end, which would be told again and again
        output = {};
}

void ViewerProcess::take(std::string_view bytes)
{
    for (std::size_t end = bytes.find('\n'); end != std::string_view::npos;
         end = bytes.find('\n')) {
        unfinished += bytes.substr(0, end);
        take_line(std::exchange(unfinished, {}));
        bytes.remove_prefix(end + 1);
    }
    if (unfinished.size() < longest_line)
        unfinished += bytes;
}

void ViewerProcess::take_line(const std::string& line)
{
    constexpr std::string_view reason_prefix = "reason ";
    if (line == "ready")
        ready = true;
    else if (line == "answering")
        answering = true;
    else if (line == "shown")
        shown = true;
    else if (line.starts_with(reason_prefix))
        given_reason = line.substr(reason_prefix.size());
}
