#include "viewer/window/folder_view.h"

#include "tests/viewer/window/window_test.h"

#include <filesystem>

namespace
{

class Folders : public WindowTest
{
  public:
    Folders()
    {
        view.on_status = [this](const QString& text) { status = text; };
        view.on_busy = [](bool) {};
        view.on_open = [this](const auto& paths, const auto&) { opened = paths; };
        for (const char* folder : {"a", "b", "a/sub", "b/sub"})
            std::filesystem::create_directory(scratch / folder);
    }

    void show()
    {
        view.show_folders(read_contributors({scratch / "a", scratch / "b"}, {"a", "b"}, 0));
        view.show();
        view.take_focus();
        ASSERT_TRUE(QTest::qWaitFor([this] { return view.is_done(); }));
    }

    std::string cell(int row, int column)
    {
        return view.model().index(row, column).data().toString().toStdString();
    }

    QString status;
    std::vector<std::string> opened;
    FolderView view{style_with()};
};

TEST_F(Folders, HaveARowForEachPathWithAStateForEachContributor)
{
    scratch.write_file("a/same", "x");
    scratch.write_file("b/same", "x");
    scratch.write_file("a/sub/different", "x");
    scratch.write_file("b/sub/different", "y");
    scratch.write_file("b/more", "y");
    show();

    ASSERT_EQ(view.model().rowCount(), 4);
    EXPECT_EQ(cell(0, 0), "more");
    EXPECT_EQ(cell(0, 1), "\u2212 missing");
    EXPECT_EQ(cell(0, 2), "+ only here");
    EXPECT_EQ(cell(1, 1), "= same");
    EXPECT_EQ(cell(2, 0), "sub/");
    EXPECT_EQ(cell(3, 0), "    different");
    EXPECT_EQ(cell(3, 2), "\u2260 different");
    EXPECT_EQ(status, "Different: 1   Only in some: 1   Same: 1");
}

TEST_F(Folders, AFilterLeavesOutWhatIsTheSame)
{
    scratch.write_file("a/same", "x");
    scratch.write_file("b/same", "x");
    scratch.write_file("b/more", "y");
    show();

    view.model().set_filter({.same = false});

    ASSERT_EQ(view.model().rowCount(), 1);
    EXPECT_EQ(cell(0, 0), "more");
}

TEST_F(Folders, ARowOpensItsFilesAndTheNullDeviceForTheMissingOne)
{
    scratch.write_file("b/more", "y");
    show();

    press(view, "Return");

    EXPECT_EQ(opened, (std::vector<std::string>{"/dev/null", scratch / "b/more"}));
}

TEST_F(Folders, ADirectoryOpensNothing)
{
    show();

    press(view, "Return");

    EXPECT_TRUE(opened.empty());
}

TEST_F(Folders, ThousandsOfFilesAreTold)
{
    constexpr int files = 2000;
    for (int file = 0; file < files; ++file)
        for (const char* folder : {"a/", "b/"})
            scratch.write_file(folder + std::to_string(file), file % 2 == 0 ? "x" : folder);
    show();

    EXPECT_EQ(view.model().rowCount(), files + 1);
    EXPECT_TRUE(status.startsWith("Different: 1,000   Only in some: 0   Same: 1,000"))
        << status.toStdString();
}

} // namespace
