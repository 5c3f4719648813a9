/*
 * How long programs take to show their files: from before the exec to the first picture on the
 * screen that holds the content, which is nine tenths of the last picture's dark strokes, and to
 * the first that is complete: from there on nothing changes but a cursor. The programs take turns;
 * before each run the screen is empty and the machine at rest. A first round is not counted. Prints
 * one line for each program; the first is the floor.
 *
 *   window_times ROUNDS FRAMEBUFFER-FILE NAME COMMAND... [-- NAME COMMAND...]...
 *
 * A program that has not come to rest after a minute gets no times.
 */
#include "bench/processes.h"
#include "bench/statistics.h"
#include "bench/virtual_screen.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <span>
#include <sstream>
#include <sys/wait.h>
#include <utility>

namespace
{

using std::chrono::milliseconds;

constexpr milliseconds rest(1000);
constexpr milliseconds longest_run(60'000);

struct Case {
    std::string name;
    Words command;
    Samples content{};  // milliseconds
    Samples complete{}; // milliseconds
};

struct Sight {
    Milliseconds when;
    Picture picture;
};

/** What was on the screen, to be looked at when nothing is drawn, or when the album is full. */
struct Shot {
    Clock::time_point when;
    Pixels pixels;
};
using Album = std::array<Shot, 24>;

struct Times {
    double content;
    double complete;
};

/** The processor time of all processes of the session that `leader` leads, in clock ticks. */
long session_time(pid_t leader)
{
    long ticks = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::string text;
        std::getline(std::ifstream(entry.path() / "stat"), text);
        const std::size_t name_end = text.rfind(')');
        if (name_end == std::string::npos)
            continue;
        std::istringstream fields(text.substr(name_end + 1));
        std::string state;
        std::string skipped;
        long parent = 0;
        long group = 0;
        long session = 0;
        long user = 0;
        long system = 0;
        fields >> state >> parent >> group >> session;
        for (int field = 0; field < 7; ++field)
            fields >> skipped;
        fields >> user >> system;
        ticks += session == leader ? user + system : 0;
    }
    return ticks;
}

/** The processor time that the whole machine has used, in clock ticks. */
long machine_time()
{
    std::ifstream file("/proc/stat");
    std::string label;
    long user = 0;
    long nice = 0;
    long system = 0;
    file >> label >> user >> nice >> system;
    return user + nice + system;
}

/** Gives up after ten seconds: the machine then has other work, and the times show it. */
void wait_for_rest(VirtualScreen& screen, const Picture& empty)
{
    constexpr int attempts = 50;
    constexpr long little = 1; // ticks
    Pixels pixels;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const long before = machine_time();
        while (screen.wait_for_drawing(milliseconds(200)))
            continue;
        screen.take(pixels);
        if (machine_time() - before <= little && screen.picture(pixels).resembles(empty))
            return;
    }
}

/** All that is seen until neither the screen changes nor the program works; nothing when that
    takes too long. */
std::vector<Sight> watch(VirtualScreen& screen, Album& album, pid_t program,
                         Clock::time_point begin)
{
    std::vector<Sight> seen;
    std::size_t shots = 0;
    long worked = -1;
    auto changed = begin;
    while (Clock::now() - begin < longest_run) {
        const bool drawn = screen.wait_for_drawing(rest / 10);
        if (drawn) {
            screen.take(album[shots].pixels);
            album[shots].when = Clock::now();
            if (++shots < album.size())
                continue;
        }
        for (const Shot& shot : std::span(album).first(std::exchange(shots, 0))) {
            Picture picture = screen.picture(shot.pixels);
            if (seen.empty() || !picture.resembles(seen.back().picture))
                changed = shot.when;
            seen.push_back({shot.when - begin, std::move(picture)});
        }
        if (const long work = session_time(program); !drawn && work > worked + 1) {
            worked = work;
            changed = Clock::now();
        }
        if (!seen.empty() && Clock::now() - changed > rest)
            return seen;
    }
    return {};
}

std::optional<Times> times_of(const std::vector<Sight>& seen, const Picture& empty)
{
    if (seen.empty() || seen.back().picture.resembles(empty))
        return std::nullopt;
    const Picture& last = seen.back().picture;
    const auto content = std::find_if(seen.begin(), seen.end(), [&](const Sight& sight) {
        return sight.picture.strokes - empty.strokes >= (last.strokes - empty.strokes) / 10 * 9;
    });
    const auto incomplete = std::find_if(seen.rbegin(), seen.rend(), [&](const Sight& sight) {
        return !sight.picture.resembles(last);
    });
    return Times{content->when.count(), incomplete.base()->when.count()};
}

std::optional<Times> measure(VirtualScreen& screen, Album& album, const Picture& empty,
                             const Scratch& scratch, const Words& command)
{
    wait_for_rest(screen, empty);
    const auto begin = Clock::now();
    const pid_t program = start_session(scratch, command);
    const auto seen = watch(screen, album, program, begin);
    ::kill(-program, SIGKILL);
    ::waitpid(program, nullptr, 0);
    return times_of(seen, empty);
}

void print(const Case& measured, const Case& floor)
{
    if (measured.content.empty()) {
        std::printf("%-14s not shown within a minute\n", measured.name.c_str());
        return;
    }
    const double content = median(measured.content);
    std::printf("%-14s %10.1f %10.1f %8.2f %12.1f\n", measured.name.c_str(), content,
                *std::min_element(measured.content.begin(), measured.content.end()),
                floor.content.empty() ? 0 : content / median(floor.content),
                median(measured.complete));
}

void measure_all(int rounds, const std::string& framebuffer, std::vector<Case> cases)
{
    const Scratch scratch;
    VirtualScreen screen(framebuffer);
    while (screen.wait_for_drawing(milliseconds(300)))
        continue;
    auto album = std::make_unique<Album>();
    for (Shot& shot : *album)
        screen.take(shot.pixels); // room for all, before time counts
    const Picture empty = screen.picture(album->front().pixels);
    for (int round = 0; round <= rounds; ++round) {
        for (Case& measured : cases) {
            const auto times = measure(screen, *album, empty, scratch, measured.command);
            if (times && round > 0) {
                measured.content.push_back(times->content);
                measured.complete.push_back(times->complete);
            }
        }
    }
    std::printf("%-14s %10s %10s %8s %12s\n", "median, ms", "content", "least", "x floor",
                "complete");
    for (const Case& measured : cases)
        print(measured, cases.front());
}

std::vector<Case> cases_in(const Words& words)
{
    std::vector<Case> cases;
    for (auto word = words.begin(); word != words.end();) {
        const auto end = std::find(word, words.end(), "--");
        if (end - word < 2)
            return {};
        cases.push_back({*word, Words(word + 1, end)});
        word = end == words.end() ? end : end + 1;
    }
    return cases;
}

} // namespace

int main(int argc, char* argv[])
{
    const long rounds = argc >= 5 ? std::strtol(argv[1], nullptr, 10) : 0;
    const auto cases = argc >= 5 ? cases_in(Words(argv + 3, argv + argc)) : std::vector<Case>();
    if (rounds < 1 || rounds > 1000 || cases.empty()) {
        std::fputs("usage: window_times ROUNDS FRAMEBUFFER-FILE NAME COMMAND... "
                   "[-- NAME COMMAND...]...\n",
                   stderr);
        return 1;
    }
    try {
        catch_interruptions();
        measure_all(static_cast<int>(rounds), argv[2], cases);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "window_times: %s\n", error.what());
        return 1;
    }
}
