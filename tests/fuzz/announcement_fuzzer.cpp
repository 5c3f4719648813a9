/*
 * The rendezvous FIFO's bytes, however they are cut into reads. The first two bytes of an input are
 * the lengths of the reads, which take turns; the rest is what is read. There a 0xff stands for a
 * thousand bytes of one line, so that small inputs reach the lengths that are refused.
 */
#include "protocol/wire_names.h"
#include "service/announcement.h"
#include "tests/fuzz/fuzzer.h"

#include <algorithm>
#include <array>
#include <climits>
#include <iterator>
#include <string>

namespace
{

using Result = AnnouncementReader::Result;

const std::string folder = "/tmp/u";

AnnouncementReader reader()
{
    return AnnouncementReader([](const std::string& named) { return named == folder; });
}

std::string expanded(std::string_view text)
{
    std::string bytes;
    for (const char c : text)
        c == '\xff' ? bytes.append(1000, 'x') : bytes.append(1, c);
    return bytes;
}

void append(Result& all, Result more)
{
    std::move(more.announcements.begin(), more.announcements.end(),
              std::back_inserter(all.announcements));
    std::move(more.dropped.begin(), more.dropped.end(), std::back_inserter(all.dropped));
}

Result read_in_pieces(std::string_view bytes, const std::array<std::size_t, 2>& lengths)
{
    AnnouncementReader one = reader();
    Result all;
    for (std::size_t turn = 0; !bytes.empty(); ++turn) {
        const std::string_view piece = bytes.substr(0, lengths[turn % 2]);
        append(all, one.feed(piece));
        bytes.remove_prefix(piece.size());
    }
    return all;
}

bool is_equal(const Announcement& one, const Announcement& other)
{
    return one.launcher == other.launcher && one.request == other.request &&
           one.response == other.response;
}

void require_equal(const Result& one, const Result& other)
{
    require(std::equal(one.announcements.begin(), one.announcements.end(),
                       other.announcements.begin(), other.announcements.end(), is_equal),
            "the same announcements, however the bytes are cut");
    require(one.dropped == other.dropped, "the same lines dropped, however the bytes are cut");
}

void require_names_that_fit(const Announcement& announcement)
{
    const std::string id = std::to_string(announcement.launcher);
    require(announcement.launcher > 0, "a launcher's process id");
    require(announcement.request == request_pipe + id, "the request FIFO's name");
    require(announcement.response == response_pipe + id, "the response FIFO's name");
}

/** Every line is one of an announcement's two, or dropped, or the one that waits for its second;
    and of a line without end little more than a path is kept. */
void require_every_line_once(const Result& result, std::string_view bytes)
{
    const auto lines = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n'));
    const std::size_t taken = 2 * result.announcements.size() + result.dropped.size();
    require(taken == lines || taken + 1 == lines, "each line taken once");
    for (const std::string& line : result.dropped)
        require(line.size() <= PATH_MAX + 1, "a bounded line");
}

/** Whatever came before, the next launcher is heard. */
void require_next_is_heard(AnnouncementReader& after)
{
    const Result result = after.feed("\n" + folder + "/" + request_pipe + "1\n" + folder + "/" +
                                     response_pipe + "1\n");
    require(!result.announcements.empty() && result.announcements.back().launcher == 1,
            "the next launcher is heard");
    for (const std::string& line : result.dropped)
        require(line.size() <= PATH_MAX + 1, "a bounded line");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    const std::array<std::size_t, 2> lengths{data[0] + std::size_t{1}, data[1] + std::size_t{1}};
    const std::string bytes = expanded(text_of(data, size).substr(2));

    AnnouncementReader whole = reader();
    const Result result = whole.feed(bytes);
    require_equal(result, read_in_pieces(bytes, lengths));
    for (const Announcement& announcement : result.announcements)
        require_names_that_fit(announcement);
    require_every_line_once(result, bytes);
    require_next_is_heard(whole);
    return 0;
}
