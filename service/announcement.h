/*
 * Announcements: a launcher tells the service through the rendezvous FIFO where its own two FIFOs
 * are, as two lines. Nothing that is read here is trusted.
 */
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

/** One launcher that waits to be served, by its process id and the names of its FIFOs in the
   per-user directory. */
struct Announcement {
    pid_t launcher = 0;
    std::string request;
    std::string response;
};

/** The launcher's process id when `name` is `prefix` directly followed by one, in decimal. */
std::optional<pid_t> launcher_of(std::string_view name, std::string_view prefix);

/** Cuts the bytes of the rendezvous FIFO into announcements. Lines that form none are passed over
   one by one, so that rubbish costs no later launcher its turn. */
class AnnouncementReader
{
  public:
    struct Result {
        std::vector<Announcement> announcements;
        std::vector<std::string> dropped; // whole lines, without their line feed
    };

    /** `is_own_directory` tells whether a folder, as a launcher names it, is the per-user one. */
    explicit AnnouncementReader(std::function<bool(const std::string&)> is_own_directory);

    /** Takes the next bytes; what is left without a line feed waits for the next call. */
    Result feed(std::string_view bytes);

  private:
    std::optional<Announcement> announcement(const std::string& first, const std::string& second);
    void take_line(std::string line, Result& result);

    std::function<bool(const std::string&)> is_user_directory;
    std::string unfinished;             // the beginning of a line
    std::optional<std::string> waiting; // a first line whose second has not come
};
