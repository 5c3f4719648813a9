#include "viewer/core/folder_comparison.h"

#include "service/descriptor.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <span>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/** The states, from the one that says most about a row. */
constexpr std::array<EntryState, entry_states> by_weight = {
    EntryState::unreadable, EntryState::kinds_differ, EntryState::different, EntryState::pending,
    EntryState::only_here,  EntryState::missing,      EntryState::same};

EntryState weightier(EntryState one, EntryState other)
{
    return *std::ranges::find_if(by_weight,
                                 [&](EntryState state) { return state == one || state == other; });
}

/** Whether both are the same, or the errno of what cannot be read. */
struct Outcome {
    bool same = false;
    int first_problem = 0;
    int other_problem = 0;
};

constexpr std::size_t buffer_size = 65536;

/** Reads until the buffer is full or the file ends. The count, or -1 and errno. */
ssize_t fill(int file, std::vector<char>& buffer)
{
    std::size_t length = 0;
    while (length < buffer.size()) {
        const ssize_t count = ::read(file, buffer.data() + length, buffer.size() - length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return -1;
        if (count == 0)
            break;
        length += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(length);
}

Descriptor open_file(const std::string& path)
{
    return Descriptor(
        ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

Outcome compare_files(const std::string& first, const std::string& other,
                      const std::stop_token& stop)
{
    const Descriptor file_of_first = open_file(first);
    if (!file_of_first)
        return {.first_problem = errno};
    const Descriptor file_of_other = open_file(other);
    if (!file_of_other)
        return {.other_problem = errno};
    std::vector<char> of_first(buffer_size);
    std::vector<char> of_other(buffer_size);
    while (!stop.stop_requested()) {
        const ssize_t count = fill(file_of_first.get(), of_first);
        if (count < 0)
            return {.first_problem = errno};
        const ssize_t other_count = fill(file_of_other.get(), of_other);
        if (other_count < 0)
            return {.other_problem = errno};
        if (count != other_count ||
            !std::equal(of_first.begin(), of_first.begin() + count, of_other.begin()))
            return {.same = false};
        if (count == 0)
            return {.same = true};
    }
    return {};
}

Outcome compare_links(const std::string& first, const std::string& other)
{
    std::error_code first_problem;
    std::error_code other_problem;
    const bool same = std::filesystem::read_symlink(first, first_problem) ==
                      std::filesystem::read_symlink(other, other_problem);
    return {same, first_problem.value(), other_problem.value()};
}

/** Devices, FIFOs and sockets: whether both are the same kind, and the same device. */
Outcome compare_others(const std::string& first, const std::string& other)
{
    struct stat of_first {};
    struct stat of_other {};
    if (::lstat(first.c_str(), &of_first) != 0)
        return {.first_problem = errno};
    if (::lstat(other.c_str(), &of_other) != 0)
        return {.other_problem = errno};
    return {.same = (of_first.st_mode & S_IFMT) == (of_other.st_mode & S_IFMT) &&
                    of_first.st_rdev == of_other.st_rdev};
}

Outcome compare_entries(EntryKind kind, const std::string& first, const std::string& other,
                        const std::stop_token& stop)
{
    if (kind == EntryKind::file)
        return compare_files(first, other, stop);
    return kind == EntryKind::link ? compare_links(first, other) : compare_others(first, other);
}

void set_unreadable(FolderEntry& entry, int problem)
{
    entry.state = EntryState::unreadable;
    entry.problem = problem;
}

std::vector<std::size_t> pending_entries(const FolderRow& row)
{
    std::vector<std::size_t> pending;
    for (std::size_t index = 0; index < row.entries.size(); ++index)
        if (row.entries[index].state == EntryState::pending)
            pending.push_back(index);
    return pending;
}

/** Settles entries of the same kind. False when the first of them cannot be read. */
bool compare_with_first(const std::vector<std::string>& roots, FolderRow& row,
                        std::span<const std::size_t> pending, const std::stop_token& stop)
{
    const auto path = [&](std::size_t index) { return roots[index] + '/' + row.path; };
    FolderEntry& first = row.entries[pending.front()];
    bool has_equal = false;
    for (const std::size_t index : pending.subspan(1)) {
        FolderEntry& other = row.entries[index];
        Outcome outcome;
        if (first.kind != EntryKind::file || first.size == other.size)
            outcome = compare_entries(first.kind, path(pending.front()), path(index), stop);
        if (outcome.first_problem != 0) {
            set_unreadable(first, outcome.first_problem);
            return false;
        }
        other.state = outcome.same ? EntryState::same : EntryState::different;
        if (outcome.other_problem != 0)
            set_unreadable(other, outcome.other_problem);
        has_equal = has_equal || outcome.same;
    }
    first.state = has_equal ? EntryState::same : EntryState::different;
    return true;
}

} // namespace

std::size_t FolderRow::depth() const
{
    return static_cast<std::size_t>(std::ranges::count(path, '/'));
}

std::string_view FolderRow::name() const
{
    return std::string_view(path).substr(path.rfind('/') + 1);
}

EntryState FolderRow::state() const
{
    EntryState all = EntryState::same;
    for (const FolderEntry& entry : entries)
        all = weightier(all, entry.state);
    return all;
}

StateCounts FolderComparison::counts() const
{
    StateCounts counts{};
    for (const FolderRow& row : rows) {
        const EntryState state = row.state();
        const bool is_folder = row.entries.front().kind == EntryKind::directory;
        if (!is_folder || state != EntryState::same)
            ++counts.at(static_cast<std::size_t>(state));
    }
    return counts;
}

std::vector<EntryState> FolderComparison::summaries() const
{
    std::vector<EntryState> states(rows.size());
    std::vector<EntryState> below; // for each depth, of the rows behind that may be below one
    for (std::size_t index = rows.size(); index-- > 0;) {
        const std::size_t depth = rows[index].path.empty() ? 0 : rows[index].depth() + 1;
        below.resize(std::max(below.size(), depth + 2), EntryState::same);
        states[index] = weightier(rows[index].state(), below[depth + 1]);
        below[depth + 1] = EntryState::same;
        below[depth] = weightier(below[depth], states[index]);
    }
    return states;
}

FolderRow compared_row(const std::vector<std::string>& roots, const FolderRow& row,
                       const std::stop_token& stop)
{
    FolderRow compared = row;
    std::vector<std::size_t> pending = pending_entries(compared);
    while (!pending.empty() && !compare_with_first(roots, compared, pending, stop))
        pending = pending_entries(compared); // without the first one, which cannot be read
    return stop.stop_requested() ? row : compared;
}

void compare_contents(const FolderComparison& listed, const RowCompared& tell,
                      const std::stop_token& stop)
{
    for (std::size_t index = 0; index < listed.rows.size(); ++index) {
        if (pending_entries(listed.rows[index]).empty())
            continue;
        const FolderRow compared = compared_row(listed.roots, listed.rows[index], stop);
        if (stop.stop_requested())
            return;
        tell(index, compared);
    }
}
