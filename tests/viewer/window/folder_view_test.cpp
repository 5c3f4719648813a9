#include "viewer/window/folder_view.h"

#include "tests/viewer/window/window_test.h"

#include <QMainWindow>
#include <QToolBar>
#include <filesystem>

namespace
{

using Paths = std::vector<std::string>;

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
        window.setCentralWidget(&view);
    }
    ~Folders() override { window.takeCentralWidget(); }
    Folders(const Folders&) = delete;
    Folders& operator=(const Folders&) = delete;
    Folders(Folders&&) = delete;
    Folders& operator=(Folders&&) = delete;

    void show()
    {
        view.show_folders(read_contributors({scratch / "a", scratch / "b"}, {"a", "b"}, 0));
        auto* tools = new QToolBar(&window);
        view.add_menus(*window.menuBar(), *tools);
        window.show();
        window.activateWindow();
        view.take_focus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        ASSERT_TRUE(QTest::qWaitFor([this] { return view.is_done(); }));
    }

    std::string cell(const std::string& path, int column)
    {
        const QModelIndex index = view.model().index_of(path);
        return index.siblingAtColumn(column).data().toString().toStdString();
    }

    /** The paths that are seen, from the top. */
    std::vector<std::string> seen()
    {
        std::vector<std::string> paths;
        for (QModelIndex index = view.model().index(0, 0); index.isValid();
             index = view.rows().indexBelow(index))
            paths.push_back(view.model().row_at(index).path);
        return paths;
    }

    /** Two folders with a file in each. */
    void show_two_folders()
    {
        std::filesystem::create_directory(scratch / "a/more");
        scratch.write_file("a/more/only", "x");
        scratch.write_file("a/sub/file", "x");
        scratch.write_file("b/sub/file", "x");
        show();
    }

    QString status;
    std::vector<std::string> opened;
    FolderView view{style_with()};
    QMainWindow window;
};

TEST_F(Folders, HaveARowForEachPathWithAStateForEachContributor)
{
    scratch.write_file("a/same", "x");
    scratch.write_file("b/same", "x");
    scratch.write_file("a/sub/different", "x");
    scratch.write_file("b/sub/different", "y");
    scratch.write_file("b/more", "y");
    show();

    EXPECT_EQ(seen(), (Paths{"more", "same", "sub", "sub/different"}));
    EXPECT_EQ(cell("more", 0), "more");
    EXPECT_EQ(cell("more", 1), "\u2212 missing");
    EXPECT_EQ(cell("more", 2), "+ only here");
    EXPECT_EQ(cell("same", 1), "= same");
    EXPECT_EQ(cell("sub", 0), "sub/");
    EXPECT_EQ(cell("sub/different", 0), "different");
    EXPECT_EQ(cell("sub/different", 2), "\u2260 different");
    EXPECT_EQ(status, "Different: 1   Only in some: 1   Same: 1");
}

TEST_F(Folders, AFilterLeavesOutWhatIsTheSame)
{
    scratch.write_file("a/same", "x");
    scratch.write_file("b/same", "x");
    scratch.write_file("b/more", "y");
    show();

    view.model().set_filter({.same = false});

    EXPECT_EQ(seen(), Paths{"more"});
}

TEST_F(Folders, AFolderStaysAsLongAsSomethingInItIsShown)
{
    show_two_folders();

    view.model().set_filter({.different = false, .missing = false});
    view.rows().expandAll();

    EXPECT_EQ(seen(), (Paths{"sub", "sub/file"}));
}

TEST_F(Folders, AKeyChangesTheFilter)
{
    show_two_folders();

    press(window, "Ctrl+3");

    EXPECT_EQ(seen(), (Paths{"more", "more/only"}));
}

TEST_F(Folders, AFolderThatIsCollapsedStaysSo)
{
    show_two_folders();
    view.rows().setCurrentIndex(view.model().index_of("sub"));

    press(view, "Left");
    press(window, "Ctrl+2");

    EXPECT_EQ(seen(), Paths{"sub"});
}

TEST_F(Folders, TheNextDifferenceIsFoundInACollapsedFolder)
{
    scratch.write_file("a/sub/file", "x");
    scratch.write_file("b/sub/file", "y");
    show();
    view.rows().collapseAll();

    view.go_to_difference(true);

    EXPECT_EQ(seen(), (Paths{"sub", "sub/file"}));
    EXPECT_EQ(view.model().row_at(view.rows().currentIndex()).path, "sub/file");
}

TEST_F(Folders, ARowOpensItsFilesAndTheNullDeviceForTheMissingOne)
{
    scratch.write_file("b/more", "y");
    show();

    press(view, "Return");

    EXPECT_EQ(opened, (std::vector<std::string>{"/dev/null", scratch / "b/more"}));
}

TEST_F(Folders, AFolderIsOpenedInItsPlace)
{
    show_two_folders();

    press(view, "Return");
    EXPECT_EQ(seen(), (Paths{"more", "sub", "sub/file"}));
    press(view, "Return");

    EXPECT_EQ(seen(), (Paths{"more", "more/only", "sub", "sub/file"}));
    EXPECT_TRUE(opened.empty());
}

TEST_F(Folders, ThousandsOfFilesAreTold)
{
    constexpr int files = 2000;
    for (int file = 0; file < files; ++file)
        for (const char* folder : {"a/", "b/"})
            scratch.write_file(folder + std::to_string(file), file % 2 == 0 ? "x" : folder);
    show();

    EXPECT_EQ(seen().size(), files + 1U);
    EXPECT_TRUE(status.startsWith("Different: 1,000   Only in some: 0   Same: 1,000"))
        << status.toStdString();
}

} // namespace
