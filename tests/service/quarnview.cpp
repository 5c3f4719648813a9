/*
 * The viewer's double: does what its display is named for. Before it ends, or at once when it is to
 * die, it leaves what its launcher must end with in the file "expected.<launcher>" beside the
 * per-user directory: "0" only where it has answered with success. The request is added to the file
 * "requests" there.
 *
 *   :N               answers at once: failure when a contributor is named "bad", else success
 *   :window          shows a window; SIGUSR1 closes it (success), and so does the launcher's end
 *   :cannot-start    ends before it is ready
 *   :starts-late     like :N, once it has read from the FIFO "gate" beside that directory
 *   :starts-at-third the first two end before they are ready; the others are like :N
 *   :dies-POINT      is killed at that point: given-paths, half-open, open, read, answering,
 *                    answered
 *   :random          one of all the latter, :N, and a failure with a reason
 */
#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <poll.h>
#include <random>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace
{

constexpr const char* yes = "<methodResponse><boolean>1</boolean></methodResponse>";
constexpr const char* no = "<methodResponse><boolean>0</boolean></methodResponse>";

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::string random_part()
{
    const std::vector<std::string> parts = {
        ":0",         ":dies-given-paths", ":dies-half-open", ":dies-open",
        ":dies-read", ":dies-answering",   ":dies-answered"};
    std::random_device source;
    return parts[source() % parts.size()];
}

class Double
{
  public:
    explicit Double(std::string display) : part(std::move(display)) {}

    [[noreturn]] void play()
    {
        start();
        std::string request_path;
        std::string response_path;
        if (!std::getline(std::cin, request_path) || !std::getline(std::cin, response_path))
            ::_exit(0);
        launcher = request_path.substr(request_path.find_last_not_of("0123456789") + 1);
        die_at("given-paths");
        request = ::open(request_path.c_str(), O_RDONLY | O_NONBLOCK);
        die_at("half-open");
        response = ::open(response_path.c_str(), O_RDWR);
        die_at("open");
        const std::string document = read_request();
        std::ofstream(variable("TMPDIR") + "/../requests", std::ios::app) << document;
        die_at("read");
        if (part == ":window")
            show_window();
        answer(document.find("/bad<") == std::string::npos);
    }

  private:
    void start()
    {
        const std::string count = variable("TMPDIR") + "/../starts";
        std::ofstream(count, std::ios::app) << '.';
        struct stat entry {};
        ::stat(count.c_str(), &entry);
        if (part == ":cannot-start" || (part == ":starts-at-third" && entry.st_size < 3))
            ::_exit(1);
        if (part == ":starts-late")
            std::ifstream(variable("TMPDIR") + "/../gate").get();
        tell("ready");
    }

    static void tell(const std::string& line) { std::cout << line << std::endl; }

    void expect(const char* status) const
    {
        std::ofstream(variable("TMPDIR") + "/../expected." + launcher) << status;
    }

    void die_at(const std::string& point, const char* status = "255") const
    {
        if (part != ":dies-" + point)
            return;
        expect(status);
        ::raise(SIGKILL);
    }

    /** Ends when the launcher is gone. */
    std::string read_request() const
    {
        std::string document;
        std::array<char, 4096> bytes{};
        std::array<pollfd, 2> entries{{{request, POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
        while (!document.ends_with('\n')) {
            ::poll(entries.data(), entries.size(), -1);
            if (entries[1].revents != 0)
                ::_exit(0);
            const ssize_t length = ::read(request, bytes.data(), bytes.size());
            if (length > 0)
                document.append(bytes.data(), static_cast<std::size_t>(length));
            else if (length == 0)
                entries[0].fd = -1;
        }
        return document;
    }

    static void show_window()
    {
        sigset_t closing{};
        ::sigemptyset(&closing);
        ::sigaddset(&closing, SIGUSR1);
        ::sigprocmask(SIG_BLOCK, &closing, nullptr);
        std::signal(SIGUSR1, [](int) {});
        sigset_t none{};
        ::sigemptyset(&none);
        tell("shown");
        pollfd orders{STDIN_FILENO, POLLIN, 0};
        std::array<char, 16> line{};
        while (::ppoll(&orders, 1, nullptr, &none) > 0)
            if (::read(STDIN_FILENO, line.data(), line.size()) > 0)
                ::_exit(0); // the launcher is gone
            else
                orders.fd = -1; // the service is gone, the launcher waits
    }

    [[noreturn]] void answer(bool success) const
    {
        if (!success)
            tell("reason a contributor is bad");
        tell("answering");
        die_at("answering");
        expect(success ? "0" : "255");
        const std::string reply = success ? yes : no;
        if (::write(response, reply.data(), reply.size()) < 0)
            ::_exit(1);
        die_at("answered", success ? "0" : "255");
        ::_exit(0);
    }

    std::string part;
    std::string launcher{};
    int request = -1;
    int response = -1;
};

} // namespace

int main()
{
    const std::string display = variable("DISPLAY");
    Double(display == ":random" ? random_part() : display).play();
}
