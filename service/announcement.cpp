#include "service/announcement.h"

#include "protocol/wire_names.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <utility>

namespace
{

// The longest path that the system takes; a longer line is rubbish.
constexpr std::size_t longest_line = PATH_MAX;

std::string_view name_of(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

std::string folder_of(std::string_view path)
{
    const std::size_t slash = path.rfind('/');
    return std::string(path.substr(0, slash == std::string_view::npos ? 0 : slash));
}

} // namespace

std::optional<pid_t> launcher_of(std::string_view name, std::string_view prefix)
{
    if (!name.starts_with(prefix))
        return std::nullopt;
    const std::string_view digits = name.substr(prefix.size());
    pid_t id = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), id);
    const bool whole = error == std::errc() && end == digits.end();
    if (!whole || id <= 0 || digits.starts_with('0'))
        return std::nullopt;
    return id;
}

AnnouncementReader::AnnouncementReader(std::function<bool(const std::string&)> is_own_directory)
    : is_user_directory(std::move(is_own_directory))
{
}

AnnouncementReader::Result AnnouncementReader::feed(std::string_view bytes)
{
    Result result;
    for (;;) {
        const std::size_t end = bytes.find('\n');
        // Of an endless line one byte too many is kept, so that its end is not taken for a line.
        if (unfinished.size() <= longest_line)
            unfinished += bytes.substr(0, std::min(end, longest_line + 1 - unfinished.size()));
        if (end == std::string_view::npos)
            return result;
        take_line(std::exchange(unfinished, {}), result);
        bytes.remove_prefix(end + 1);
    }
}

void AnnouncementReader::take_line(std::string line, Result& result)
{
    if (!waiting) {
        waiting = std::move(line);
        return;
    }
    if (auto complete = announcement(*waiting, line)) {
        result.announcements.push_back(std::move(*complete));
        waiting.reset();
        return;
    }
    result.dropped.push_back(*std::exchange(waiting, std::move(line)));
}

std::optional<Announcement> AnnouncementReader::announcement(const std::string& first,
                                                             const std::string& second)
{
    if (first.size() > longest_line || second.size() > longest_line)
        return std::nullopt;
    const auto launcher = launcher_of(name_of(first), request_pipe);
    if (!launcher || launcher != launcher_of(name_of(second), response_pipe))
        return std::nullopt;
    const std::string folder = folder_of(first);
    if (folder != folder_of(second) || !is_user_directory(folder))
        return std::nullopt;
    return Announcement{*launcher, std::string(name_of(first)), std::string(name_of(second))};
}
