#include "tests/harness/child_process.h"
#include "tests/harness/scratch.h"
#include "viewer/core/folder_comparison.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace
{

class Folders : public testing::Test
{
  protected:
    Folders()
    {
        for (const std::string& root : roots)
            fs::create_directory(root);
    }

    void write(std::size_t root, const std::string& path, std::string_view content)
    {
        fs::create_directories(fs::path(roots[root] + '/' + path).parent_path());
        write_file(roots[root] + '/' + path, content);
    }

    FolderComparison compared()
    {
        FolderComparison folders = list_folders(roots);
        compare_contents(
            folders, [&](std::size_t index, const FolderRow& row) { folders.rows[index] = row; });
        return folders;
    }

    FolderRow only_row()
    {
        const FolderComparison folders = compared();
        EXPECT_EQ(folders.rows.size(), 1U);
        return folders.rows.at(0);
    }

    Scratch scratch;
    std::vector<std::string> roots = {scratch / "one", scratch / "other"};
};

using States = std::vector<EntryState>;

States states_of(const FolderRow& row)
{
    States states;
    for (const FolderEntry& entry : row.entries)
        states.push_back(entry.state);
    return states;
}

TEST_F(Folders, WithNothingHaveNoRows)
{
    EXPECT_TRUE(compared().rows.empty());
}

TEST_F(Folders, GiveARowForEachPathInOrder)
{
    write(0, "b", "");
    write(1, "a/z", "");
    write(0, "a/b/c", "");

    std::vector<std::string> paths;
    for (const FolderRow& row : compared().rows)
        paths.push_back(row.path);

    EXPECT_EQ(paths, (std::vector<std::string>{"a", "a/b", "a/b/c", "a/z", "b"}));
}

TEST_F(Folders, ARowKnowsItsDepthAndName)
{
    write(0, "a/b", "");
    const FolderRow row = compared().rows.at(1);

    EXPECT_EQ(row.depth(), 1U);
    EXPECT_EQ(row.name(), "b");
}

TEST_F(Folders, FilesWithTheSameContentAreTheSame)
{
    write(0, "a", "content");
    write(1, "a", "content");

    EXPECT_EQ(states_of(only_row()), (States{EntryState::same, EntryState::same}));
}

TEST_F(Folders, FilesOfOneSizeMayDiffer)
{
    write(0, "a", std::string(100'000, 'x') + "y");
    write(1, "a", std::string(100'000, 'x') + "z");

    EXPECT_EQ(states_of(only_row()), (States{EntryState::different, EntryState::different}));
}

TEST_F(Folders, FilesOfDifferentSizesDiffer)
{
    write(0, "a", "x");
    write(1, "a", "xx");

    EXPECT_EQ(only_row().state(), EntryState::different);
}

TEST_F(Folders, ContentsArePendingUntilTheyAreCompared)
{
    write(0, "a", "x");
    write(1, "a", "y");

    EXPECT_EQ(list_folders(roots).rows.at(0).state(), EntryState::pending);
}

TEST_F(Folders, AFileOfOneAloneIsOnlyThere)
{
    write(1, "a", "x");

    EXPECT_EQ(states_of(only_row()), (States{EntryState::missing, EntryState::only_here}));
    EXPECT_EQ(only_row().state(), EntryState::only_here);
}

TEST_F(Folders, AFileAndAFolderOfOneNameDifferInKind)
{
    write(0, "a", "x");
    fs::create_directory(roots[1] + "/a");

    EXPECT_EQ(states_of(only_row()), (States{EntryState::kinds_differ, EntryState::kinds_differ}));
}

TEST_F(Folders, OfThreeTheFirstIsTheMeasure)
{
    roots.push_back(scratch / "third");
    write(0, "a", "x");
    write(1, "a", "y");
    write(2, "a", "x");

    EXPECT_EQ(states_of(only_row()),
              (States{EntryState::same, EntryState::different, EntryState::same}));
}

TEST_F(Folders, AFileMissingInOneOfThreeIsMissingThere)
{
    roots.push_back(scratch / "third");
    fs::create_directory(roots[2]);
    write(0, "a", "x");
    write(2, "a", "x");

    EXPECT_EQ(states_of(only_row()),
              (States{EntryState::same, EntryState::missing, EntryState::same}));
    EXPECT_EQ(only_row().state(), EntryState::missing);
}

TEST_F(Folders, LinksAreComparedAndNotFollowed)
{
    fs::create_directory_symlink(".", roots[0] + "/same");
    fs::create_directory_symlink(".", roots[1] + "/same");
    fs::create_directory_symlink(".", roots[0] + "/turn");
    fs::create_directory_symlink("..", roots[1] + "/turn");

    const FolderComparison folders = compared();

    ASSERT_EQ(folders.rows.size(), 2U);
    EXPECT_EQ(folders.rows[0].state(), EntryState::same);
    EXPECT_EQ(folders.rows[1].state(), EntryState::different);
}

TEST_F(Folders, AFifoIsComparedAndNotOpened)
{
    ASSERT_EQ(::mkfifo((roots[0] + "/a").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo((roots[1] + "/a").c_str(), 0600), 0);

    EXPECT_EQ(only_row().state(), EntryState::same);
}

TEST_F(Folders, AFileThatGrowsMeanwhileIsDifferent)
{
    write(0, "a", "x");
    write(1, "a", "x");
    const FolderComparison listed = list_folders(roots);
    write(1, "a", "xx");

    EXPECT_EQ(compared_row(roots, listed.rows.at(0)).state(), EntryState::different);
}

TEST_F(Folders, AFileThatGoesAwayMeanwhileIsUnreadable)
{
    write(0, "a", "x");
    write(1, "a", "x");
    const FolderComparison listed = list_folders(roots);
    fs::remove(roots[0] + "/a");

    const FolderRow row = compared_row(roots, listed.rows.at(0));

    EXPECT_EQ(row.entries[0].state, EntryState::unreadable);
    EXPECT_EQ(row.entries[0].problem, ENOENT);
    EXPECT_EQ(row.state(), EntryState::unreadable);
}

TEST_F(Folders, TheFirstThatIsReadableIsTheMeasure)
{
    roots.push_back(scratch / "third");
    write(0, "a", "x");
    write(1, "a", "y");
    write(2, "a", "y");
    const FolderComparison listed = list_folders(roots);
    fs::remove(roots[0] + "/a");

    EXPECT_EQ(states_of(compared_row(roots, listed.rows.at(0))),
              (States{EntryState::unreadable, EntryState::same, EntryState::same}));
}

TEST_F(Folders, AnotherFileThatGoesAwayMeanwhileIsUnreadable)
{
    write(0, "a", "x");
    write(1, "a", "x");
    const FolderComparison listed = list_folders(roots);
    fs::remove(roots[1] + "/a");

    EXPECT_EQ(compared_row(roots, listed.rows.at(0)).entries[1].state, EntryState::unreadable);
}

TEST_F(Folders, RootsThatAllCannotBeListedAreOneRow)
{
    const FolderComparison folders = list_folders({scratch / "nowhere", scratch / "no"});

    ASSERT_EQ(folders.rows.size(), 1U);
    EXPECT_EQ(folders.rows[0].state(), EntryState::unreadable);
}

TEST_F(Folders, AStopEndsTheListingEarly)
{
    write(0, "a", "x");
    std::stop_source stop;
    stop.request_stop();

    EXPECT_TRUE(list_folders(roots, stop.get_token()).rows.empty());
}

TEST_F(Folders, ARootThatCannotBeListedIsARowOfItsOwn)
{
    roots[1] = scratch / "nowhere";
    write(0, "a", "x");

    const FolderComparison folders = compared();

    ASSERT_EQ(folders.rows.size(), 2U);
    EXPECT_EQ(folders.rows[0].path, "");
    EXPECT_EQ(folders.rows[0].entries[1].state, EntryState::unreadable);
    EXPECT_EQ(folders.rows[0].entries[1].problem, ENOENT);
}

TEST_F(Folders, CountsLeaveOutFoldersThatAreTheSame)
{
    write(0, "d/a", "x");
    write(1, "d/a", "x");
    write(0, "d/b", "x");
    write(1, "d/b", "y");
    write(0, "e/c", "x");

    const StateCounts counts = compared().counts();

    EXPECT_EQ(counts[static_cast<std::size_t>(EntryState::same)], 1U);
    EXPECT_EQ(counts[static_cast<std::size_t>(EntryState::different)], 1U);
    EXPECT_EQ(counts[static_cast<std::size_t>(EntryState::only_here)], 2U);
}

TEST_F(Folders, ASummaryTellsOfAllBelow)
{
    write(0, "a/b/c", "x");
    write(1, "a/b/c", "y");
    write(0, "a/d", "x");
    write(1, "a/d", "x");
    write(0, "e/f", "x");
    write(1, "e/f", "x");
    write(0, "g/h", "x");

    EXPECT_EQ(compared().summaries(), // a, a/b, a/b/c, a/d, e, e/f, g, g/h
              (States{EntryState::different, EntryState::different, EntryState::different,
                      EntryState::same, EntryState::same, EntryState::same, EntryState::only_here,
                      EntryState::only_here}));
}

TEST_F(Folders, AStopEndsTheComparisonEarly)
{
    for (int count = 0; count < 10; ++count) {
        write(0, std::to_string(count), "x");
        write(1, std::to_string(count), "x");
    }
    std::stop_source stop;
    int told = 0;

    compare_contents(
        list_folders(roots),
        [&](std::size_t, const FolderRow&) {
            ++told;
            stop.request_stop();
        },
        stop.get_token());

    EXPECT_EQ(told, 1);
}

} // namespace
