#include "viewer/core/folder_comparison.h"

#include "support/joined.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <map>
#include <sys/stat.h>

namespace
{

using Entries = std::vector<FolderEntry>;

EntryKind kind_of(mode_t mode)
{
    if (S_ISREG(mode))
        return EntryKind::file;
    if (S_ISDIR(mode))
        return EntryKind::directory;
    return S_ISLNK(mode) ? EntryKind::link : EntryKind::other;
}

FolderEntry unreadable(EntryKind kind, int problem)
{
    return {.kind = kind, .state = EntryState::unreadable, .problem = problem};
}

FolderEntry entry_at(const std::string& path)
{
    struct stat entry {};
    if (::lstat(path.c_str(), &entry) != 0)
        return unreadable(EntryKind::other, errno);
    return {.kind = kind_of(entry.st_mode),
            .state = EntryState::pending,
            .size = static_cast<std::uint64_t>(entry.st_size)};
}

bool is_readable(const FolderEntry& entry)
{
    return entry.kind != EntryKind::missing && entry.state != EntryState::unreadable;
}

EntryState settled_state(const FolderRow& row, EntryKind kind)
{
    const auto is_present = [](const FolderEntry& entry) {
        return entry.kind != EntryKind::missing;
    };
    const auto is_other_kind = [&](const FolderEntry& entry) {
        return is_readable(entry) && entry.kind != kind;
    };
    if (std::ranges::count_if(row.entries, is_present) == 1)
        return EntryState::only_here;
    if (std::ranges::any_of(row.entries, is_other_kind))
        return EntryState::kinds_differ;
    return kind == EntryKind::directory ? EntryState::same : EntryState::pending;
}

/** Sets the states that follow from what is where. */
void settle(FolderRow& row)
{
    const auto first = std::ranges::find_if(row.entries, is_readable);
    if (first == row.entries.end())
        return;
    const EntryState state = settled_state(row, first->kind);
    for (FolderEntry& entry : row.entries)
        if (is_readable(entry))
            entry.state = state;
}

/** Goes down all folders at once. */
class Listing
{
  public:
    Listing(FolderComparison& to_fill, std::stop_token token)
        : result(to_fill), stop(std::move(token))
    {
    }

    /** Lists what is in the folder of `row` in those contributors where it is one. */
    void list_below(std::size_t row)
    {
        std::map<std::string, Entries> names;
        for (std::size_t index = 0; index < result.roots.size(); ++index)
            if (result.rows[row].entries[index].kind == EntryKind::directory)
                list_one(row, index, names);
        const std::string folder = result.rows[row].path;
        for (auto& [name, entries] : names) {
            if (stop.stop_requested())
                return;
            const std::size_t below = result.rows.size();
            result.rows.push_back(
                {folder.empty() ? name : joined({folder, "/", name}), std::move(entries)});
            list_below(below);
            settle(result.rows[below]);
        }
    }

  private:
    void list_one(std::size_t row, std::size_t index, std::map<std::string, Entries>& names)
    {
        const std::string folder = result.roots[index] + '/' + result.rows[row].path;
        std::error_code problem;
        std::filesystem::directory_iterator next(folder, problem);
        for (; !problem && next != std::filesystem::directory_iterator(); next.increment(problem)) {
            Entries& entries = names[next->path().filename()];
            entries.resize(result.roots.size());
            entries[index] = entry_at(next->path());
        }
        if (problem)
            result.rows[row].entries[index] = unreadable(EntryKind::directory, problem.value());
    }

    FolderComparison& result;
    std::stop_token stop;
};

} // namespace

FolderComparison list_folders(const std::vector<std::string>& roots, const std::stop_token& stop)
{
    FolderComparison result{.roots = roots, .rows = {}};
    result.rows.push_back({"", Entries(roots.size(), {.kind = EntryKind::directory})});
    Listing(result, stop).list_below(0);
    const Entries& of_roots = result.rows.front().entries;
    if (std::ranges::all_of(of_roots, is_readable))
        result.rows.erase(result.rows.begin());
    else
        settle(result.rows.front());
    return result;
}
