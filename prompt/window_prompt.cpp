#include "prompt/window_prompt.h"

#include "prompt/message_box.h"

#include <QApplication>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

bool is_set(const char* variable)
{
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool has_display()
{
    return is_set("WAYLAND_DISPLAY") || is_set("DISPLAY");
}

void ignore_message(QtMsgType /*type*/, const QMessageLogContext& /*context*/,
                    const QString& /*text*/)
{
}

/** Shows the window and sends the answer's letter. What the toolkit has to complain of when it
   cannot start says nothing to the user, who gets the text on the terminal then. */
[[noreturn]] void show_window(const PromptRequest& request, int answers)
{
    const rlimit no_core{};
    ::setrlimit(RLIMIT_CORE, &no_core);
    qInstallMessageHandler(ignore_message);
    std::array<char, 12> name{"quarnprompt"};
    char* arguments[] = {name.data(), nullptr};
    int count = 1;
    const QApplication application(count, arguments);
    MessageBox box(request);
    box.exec();
    const char letter = static_cast<char>(box.answer());
    [[maybe_unused]] const ssize_t written = ::write(answers, &letter, 1);
    ::_exit(0);
}

} // namespace

std::optional<Answer> ask_in_window(const PromptRequest& request)
{
    std::array<int, 2> pipe{};
    if (!has_display() || ::pipe2(pipe.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    const pid_t child = ::fork();
    if (child == 0)
        show_window(request, pipe[1]);
    ::close(pipe[1]);
    char letter = 0;
    const bool is_answered = child > 0 && ::read(pipe[0], &letter, 1) == 1;
    ::close(pipe[0]);
    if (child > 0)
        ::waitpid(child, nullptr, 0);
    return is_answered ? std::optional(static_cast<Answer>(letter)) : std::nullopt;
}
