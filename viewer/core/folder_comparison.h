/*
 * Directories compared: one row for each relative path that any of them has. Listing comes first
 * and settles all that needs no file to be opened; contents are compared after it, row by row, so
 * that the rows can be shown meanwhile. Symbolic links are compared as links and never followed.
 */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

enum class EntryKind : std::uint8_t { missing, file, directory, link, other };

enum class EntryState : std::uint8_t {
    pending,      // contents not compared yet
    same,         // as in the first contributor that has it; for that one: as in some other
    different,    //
    only_here,    // in no other contributor
    missing,      // not in this contributor
    kinds_differ, // a file here, a directory there
    unreadable,   // see FolderEntry::problem
};
inline constexpr std::size_t entry_states = 7;

struct FolderEntry {
    EntryKind kind = EntryKind::missing;
    EntryState state = EntryState::missing;
    std::uint64_t size = 0;
    int problem = 0; // unreadable: the errno
};

struct FolderRow {
    std::string path;                 // relative, without a slash at either end
    std::vector<FolderEntry> entries; // of each contributor

    /** How many folders are above it. */
    std::size_t depth() const;
    std::string_view name() const;

    /** The state that says most about the row: unreadable, kinds_differ, different, pending,
        only_here, missing, same; the first of these that any entry has. */
    EntryState state() const;
};

/** How many rows have each state, by FolderRow::state(); index by EntryState. */
using StateCounts = std::array<std::size_t, entry_states>;

struct FolderComparison {
    std::vector<std::string> roots;
    std::vector<FolderRow> rows; // a folder is right before what it holds; names in byte order

    /** Folders that are the same are left out. */
    StateCounts counts() const;

    /** For each row its own state, for a folder the one that says most of all below it, too. */
    std::vector<EntryState> summaries() const;
};

/** Lists the folders. A folder that cannot be listed is a row that is unreadable; for a root that
   is the row with the empty path. After a stop it is not complete. */
FolderComparison list_folders(const std::vector<std::string>& roots,
                              const std::stop_token& stop = {});

/** A row with the states that it has once its contents are compared; the row itself when nothing of
    it is pending, or after a stop. Needs nothing but its arguments, so any thread may call it. */
FolderRow compared_row(const std::vector<std::string>& roots, const FolderRow& row,
                       const std::stop_token& stop = {});

/** Told the index of a row and its new content. */
using RowCompared = std::function<void(std::size_t, const FolderRow&)>;

/** Compares the contents of all pending rows, and tells each when it is done. Ends early after a
    stop. */
void compare_contents(const FolderComparison& listed, const RowCompared& tell,
                      const std::stop_token& stop = {});
