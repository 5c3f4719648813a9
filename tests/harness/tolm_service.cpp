/*
 * The service's double: does what SCRIPT says, works in the per-user directory SCRIPT_DIRECTORY and
 * records in the folder SCRIPT_RECORDS how it was started and what it received. After each verb it
 * prints the verb's name on standard output and to the FIFO "news" among the records. Nobody needs
 * to end it: it dies after two minutes.
 *
 * SCRIPT is words, done in this order:
 *   no-lock, no-pid, no-fifo   first of all: leave out the lock, the pid file, the rendezvous FIFO
 *   (here "ready" is told)
 *   open-rendezvous   open it for reading: ends when a launcher has opened it
 *   listen            read one announcement, opening the rendezvous when it is not open
 *   open-request, open-response   open the announced launcher's FIFO
 *   read              read the request to its line feed
 *   answer=TEXT       write TEXT, in which %XX is a byte, by one write
 *   drain             read the request FIFO to its end, and what is left in the rendezvous
 *   close             close the launcher's FIFOs
 *   close-rendezvous, unlock   as they say
 *   gate              wait for a line from the FIFO "gate" among the records
 *   again             start over after "ready"
 *   wait              wait to be killed
 *   die               die by SIGKILL
 * It ends with status 0 after the last word, and with 1 when something fails.
 */
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace
{

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

struct State {
    std::string records = variable("SCRIPT_RECORDS");
    std::string directory = variable("SCRIPT_DIRECTORY");
    int pid_file = -1;
    int rendezvous = -1;
    int request = -1;
    int response = -1;
    std::string request_path{};
    std::string response_path{};
};

[[noreturn]] void fail(std::string_view what)
{
    std::cerr << what << ": " << std::strerror(errno) << std::endl;
    std::exit(EXIT_FAILURE);
}

void append(const std::string& path, std::string_view bytes)
{
    std::ofstream(path, std::ios::binary | std::ios::app) << bytes;
}

void tell(const State& state, std::string_view news)
{
    const std::string line = std::string(news) + "\n";
    std::cout << line << std::flush;
    const int fifo = ::open((state.records + "/news").c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (fifo < 0)
        return;
    static_cast<void>(!::write(fifo, line.data(), line.size()));
    ::close(fifo);
}

int opened(const std::string& path, int how)
{
    const int descriptor = ::open(path.c_str(), how | O_CLOEXEC);
    if (descriptor < 0)
        fail(path);
    return descriptor;
}

void close_if_open(int& descriptor)
{
    if (descriptor >= 0)
        ::close(descriptor);
    descriptor = -1;
}

// --- how it was started ---

std::string open_descriptors()
{
    constexpr int enough = 256;
    std::ostringstream list;
    for (int number = 0; number < enough; ++number) {
        const int flags = ::fcntl(number, F_GETFL);
        if (flags == -1)
            continue;
        const std::string link = "/proc/self/fd/" + std::to_string(number);
        constexpr const char* modes[] = {"r", "w", "rw"};
        list << number << " " << std::filesystem::read_symlink(link).string() << " "
             << modes[flags & O_ACCMODE] << "\n";
    }
    return list.str();
}

std::string ignored_signals()
{
    std::string list;
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action {};
        if (::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
            list += std::to_string(number) + "\n";
    }
    return list;
}

std::string file_mode_mask()
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "%04o", static_cast<unsigned>(mask));
    return text.data();
}

void copy_record(const State& state, const char* source, const char* name)
{
    std::ifstream from(source, std::ios::binary);
    std::ofstream(state.records + "/" + name, std::ios::binary) << from.rdbuf();
}

void record_start(const State& state)
{
    // First, while no descriptor of our own is open.
    const std::string descriptors = open_descriptors();
    const std::string records = state.records + "/";
    std::ofstream(records + "descriptors") << descriptors;
    std::ofstream(records + "ignored") << ignored_signals();
    std::ofstream(records + "umask") << file_mode_mask();
    std::ofstream(records + "session") << (::getsid(0) == ::getpid() ? "own" : "another's");
    std::ofstream(records + "directory") << std::filesystem::current_path().string();
    copy_record(state, "/proc/self/cmdline", "arguments");
    copy_record(state, "/proc/self/environ", "environment");
    append(records + "starts", std::to_string(::getpid()) + "\n");
}

// --- what it makes ---

void make_directory(const State& state)
{
    if (::mkdir(state.directory.c_str(), 0777) != 0 && errno != EEXIST)
        fail(state.directory);
}

void lock_pid_file(State& state, bool lock)
{
    make_directory(state);
    const std::string path = state.directory + "/tolm_service.pid";
    state.pid_file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (state.pid_file < 0)
        fail(path);
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    if (lock && ::fcntl(state.pid_file, F_SETLK, &whole) != 0)
        fail("lock");
    const std::string id = std::to_string(::getpid()) + "\n";
    if (::ftruncate(state.pid_file, 0) != 0 ||
        ::write(state.pid_file, id.data(), id.size()) != static_cast<ssize_t>(id.size()))
        fail(path);
}

void make_rendezvous(const State& state)
{
    make_directory(state);
    const std::string path = state.directory + "/launcher_wrapper_pipe";
    if (::mkfifo(path.c_str(), 0600) != 0 && errno != EEXIST)
        fail(path);
}

// --- what it does ---

void open_rendezvous(State& state)
{
    if (state.rendezvous < 0)
        state.rendezvous = opened(state.directory + "/launcher_wrapper_pipe", O_RDONLY);
}

/** Reads until `text` has `lines` line feeds, or to the end of the stream. */
std::string read_lines(int descriptor, int lines)
{
    std::string text;
    std::array<char, 65536> piece{};
    for (int seen = 0; seen < lines;) {
        const ssize_t length = ::read(descriptor, piece.data(), piece.size());
        if (length < 0)
            fail("read");
        if (length == 0)
            break;
        const std::string_view bytes(piece.data(), static_cast<std::size_t>(length));
        for (const char byte : bytes)
            seen += byte == '\n' ? 1 : 0;
        text += bytes;
    }
    return text;
}

std::string read_to_end(int descriptor)
{
    return std::string(read_lines(descriptor, std::numeric_limits<int>::max()));
}

/** Byte for byte up to the line feed, since other launchers' announcements may follow. */
std::string read_line(int descriptor)
{
    std::string text;
    for (char byte = 0; byte != '\n' && ::read(descriptor, &byte, 1) == 1;)
        text += byte;
    return text;
}

void listen(State& state)
{
    open_rendezvous(state);
    const std::string request = read_line(state.rendezvous);
    const std::string response = read_line(state.rendezvous);
    append(state.records + "/announcement", request + response);
    if (request.empty() || response.empty())
        fail("announcement");
    state.request_path = request.substr(0, request.size() - 1);
    state.response_path = response.substr(0, response.size() - 1);
}

void drain(const State& state)
{
    append(state.records + "/request", read_to_end(state.request));
    ::fcntl(state.rendezvous, F_SETFL, O_NONBLOCK);
    std::array<char, 4096> rest{};
    const ssize_t length = ::read(state.rendezvous, rest.data(), rest.size());
    if (length > 0)
        append(state.records + "/announcement", {rest.data(), static_cast<std::size_t>(length)});
    ::fcntl(state.rendezvous, F_SETFL, 0);
}

std::string unescaped(std::string_view text)
{
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '%';
        bytes += escape
                     ? static_cast<char>(std::stoi(std::string(text.substr(i + 1, 2)), nullptr, 16))
                     : text[i];
        i += escape ? 2 : 0;
    }
    return bytes;
}

/** A launcher that has read enough may be gone. */
void answer(const State& state, std::string_view text)
{
    const std::string bytes = unescaped(text);
    static_cast<void>(!::write(state.response, bytes.data(), bytes.size()));
}

void wait_at_gate(const State& state)
{
    int gate = opened(state.records + "/gate", O_RDONLY);
    read_line(gate);
    close_if_open(gate);
}

[[noreturn]] void wait_for_ever()
{
    for (;;)
        ::pause();
}

void close_launcher(State& state)
{
    close_if_open(state.request);
    close_if_open(state.response);
}

void perform(State& state, std::string_view verb)
{
    constexpr std::string_view answer_verb = "answer=";
    if (verb == "open-rendezvous")
        open_rendezvous(state);
    else if (verb == "listen")
        listen(state);
    else if (verb == "open-request")
        state.request = opened(state.request_path, O_RDONLY);
    else if (verb == "open-response")
        state.response = opened(state.response_path, O_WRONLY);
    else if (verb == "read")
        append(state.records + "/request", read_lines(state.request, 1));
    else if (verb.starts_with(answer_verb))
        answer(state, verb.substr(answer_verb.size()));
    else if (verb == "drain")
        drain(state);
    else if (verb == "close")
        close_launcher(state);
    else if (verb == "close-rendezvous")
        close_if_open(state.rendezvous);
    else if (verb == "unlock")
        close_if_open(state.pid_file);
    else if (verb == "gate")
        wait_at_gate(state);
    else if (verb == "wait")
        wait_for_ever();
    else if (verb == "die")
        ::kill(::getpid(), SIGKILL);
    else
        fail("no such verb: " + std::string(verb));
}

/** Takes `word` off the front of the script. */
bool take(std::vector<std::string>& words, std::string_view word)
{
    if (words.empty() || words.front() != word)
        return false;
    words.erase(words.begin());
    return true;
}

} // namespace

int main()
{
    constexpr unsigned longest_life = 120; // seconds
    State state;
    record_start(state);
    ::alarm(longest_life);
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));

    std::istringstream script(variable("SCRIPT"));
    std::vector<std::string> words{std::istream_iterator<std::string>(script), {}};
    const bool lock = !take(words, "no-lock");
    if (!take(words, "no-pid"))
        lock_pid_file(state, lock);
    if (!take(words, "no-fifo"))
        make_rendezvous(state);
    tell(state, "ready");
    for (std::size_t next = 0; next < words.size(); ++next) {
        if (words[next] == "again") {
            next = static_cast<std::size_t>(-1);
            continue;
        }
        perform(state, words[next]);
        tell(state, std::string_view(words[next]).substr(0, words[next].find('=')));
    }
    return EXIT_SUCCESS;
}
