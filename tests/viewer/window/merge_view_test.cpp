#include "viewer/window/merge_view.h"

#include "tests/viewer/window/window_test.h"

#include <QAbstractButton>
#include <QMainWindow>
#include <QMessageBox>
#include <QToolBar>
#include <algorithm>

namespace
{

constexpr std::string_view base = "1\n2\n3\n4\n5\n6\n7\n8\n9\n";
constexpr std::string_view left = "1\nleft\n3\n4\n5\n6\n7\nL\n9\n";
constexpr std::string_view right = "1\n2\n3\n4\nright\n6\n7\nR\n9\n";
constexpr const char* ancestor_switch = "The First Is the Common &Ancestor";

class Merge : public WindowTest
{
  public:
    Merge()
    {
        view.on_status = [this](const QString& text) { status = text; };
        view.on_place = [](const QString&) {};
        view.on_busy = [this](bool is) { busy = is; };
        view.on_options = [this](const ViewOptions& options) {
            view.set_style(style_with(options));
        };
        view.on_close_wanted = [this] { close_wanted = true; };
        window.setCentralWidget(&view);
        window.resize(1000, 700);
    }
    ~Merge() override { window.takeCentralWidget(); }
    Merge(const Merge&) = delete;
    Merge& operator=(const Merge&) = delete;
    Merge(Merge&&) = delete;
    Merge& operator=(Merge&&) = delete;

    void show(std::initializer_list<std::string_view> contents)
    {
        Contributors all = contributors(contents);
        view.prepare_merge(all, output, 0022);
        view.show_read(std::move(all));
        auto* tools = new QToolBar(&window);
        view.add_menus(*window.menuBar(), *tools);
        window.show();
        window.activateWindow();
        view.take_focus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        ASSERT_TRUE(QTest::qWaitFor([this] { return !busy; }));
    }

    void focus_result() { view.result_pane().editor().setFocus(); }

    QAction& entry(const QString& text)
    {
        const auto entries = window.findChildren<QAction*>();
        return **std::ranges::find(entries, text, &QAction::text);
    }

    /** Answers the question that is open. */
    void reply(QMessageBox::StandardButton button)
    {
        auto* box = window.findChild<QMessageBox*>();
        ASSERT_NE(box, nullptr);
        QTest::mouseClick(box->button(button), Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ASSERT_TRUE(QTest::qWaitFor([this] { return !busy; }));
    }

    std::string result()
    {
        std::string lines;
        for (std::size_t row = 0; row < view.merged()->row_count(); ++row)
            lines += std::string(view.merged()->row(row).content) + "|";
        return lines;
    }

    std::string output = scratch / "output";
    QString status;
    bool busy = false;
    bool close_wanted = false;
    MergeView view{style_with()};
    QMainWindow window;
};

TEST_F(Merge, ShowsWhatIsUnresolvedFirst)
{
    show({base, left, right});

    EXPECT_EQ(status, "0 of 1 conflicts resolved");
    EXPECT_EQ(result(), "1|left|3|4|right|6|7||9||");
    EXPECT_FALSE(view.can_save());
}

TEST_F(Merge, AKeyTakesAContributorAndSaveWritesTheOutput)
{
    show({base, left, right});

    press(window, "Ctrl+3");
    EXPECT_EQ(status, "All conflicts resolved (1): ready to save");
    press(window, "Ctrl+S");

    EXPECT_EQ(file_contents(output), "1\nleft\n3\n4\nright\n6\n7\nR\n9\n");
    EXPECT_TRUE(close_wanted);
    EXPECT_TRUE(view.succeeds());
    EXPECT_FALSE(view.has_unsaved_work());
}

TEST_F(Merge, SaveDoesNothingWhileAConflictIsUnresolved)
{
    show({base, left, right});

    press(window, "Ctrl+S");

    EXPECT_FALSE(close_wanted);
    EXPECT_TRUE(scratch.listing() == (std::vector<std::string>{"1", "2", "3", "tmp"}));
}

TEST_F(Merge, SeveralContributorsCanBeTakenInAnOrder)
{
    show({base, left, right});

    press(window, "Ctrl+3");
    press(window, "Ctrl+Alt+2");

    EXPECT_EQ(result(), "1|left|3|4|right|6|7|R|L|9||");
}

TEST_F(Merge, AChoiceCanBePutBackAndUndone)
{
    show({base, left, right});

    press(window, "Ctrl+2");
    press(window, "Ctrl+Alt+Z");
    EXPECT_EQ(status, "0 of 1 conflicts resolved");
    press(window, "Ctrl+Z");
    EXPECT_EQ(result(), "1|left|3|4|right|6|7|L|9||");
    press(window, "Ctrl+Shift+Z");

    EXPECT_EQ(status, "0 of 1 conflicts resolved");
}

TEST_F(Merge, TypingIntoAConflictResolvesItAndIsOneStep)
{
    show({base, left, right});
    focus_result();

    type(window, "both");
    EXPECT_EQ(result(), "1|left|3|4|right|6|7|both|9||");
    EXPECT_TRUE(view.can_save());
    press(window, "Ctrl+Z");

    EXPECT_EQ(status, "0 of 1 conflicts resolved");
}

TEST_F(Merge, TheResultIsEditedByKeys)
{
    show({"a\n", "a\n", "a\n"});
    focus_result();

    press(window, "End");
    press(window, "Return");
    type(window, "xyz");
    press(window, "Left");
    press(window, "Backspace");
    press(window, "Delete");
    EXPECT_EQ(result(), "a|x||");
    press(window, "Ctrl+A");
    press(window, "Ctrl+X");
    EXPECT_EQ(view.merged()->bytes(), "");
    press(window, "Ctrl+V");

    EXPECT_EQ(view.merged()->bytes().substr(0, 3), "a\nx");
}

TEST_F(Merge, LettersInTheResultAreNoShortcuts)
{
    show({"a\n", "a\n", "a\n"});
    focus_result();

    type(window, "np");

    EXPECT_EQ(result(), "npa||");
}

TEST_F(Merge, GoesFromConflictToConflict)
{
    show({"a\n1\n2\n3\n4\nb\n", "x\n1\n2\n3\n4\nx\n", "y\n1\n2\n3\n4\ny\n"});

    press(window, "Ctrl+2");
    EXPECT_EQ(status, "1 of 2 conflicts resolved");
    press(window, "Ctrl+F8");
    press(window, "Ctrl+3");

    EXPECT_EQ(view.merged()->bytes(), "x\n1\n2\n3\n4\ny\n");
}

TEST_F(Merge, BehindTheLastConflictComesTheFirst)
{
    show({"a\n1\n2\n3\n4\nb\n", "x\n1\n2\n3\n4\nx\n", "y\n1\n2\n3\n4\ny\n"});

    press(window, "Ctrl+F8");
    press(window, "Ctrl+F8");
    press(window, "Ctrl+2");

    EXPECT_EQ(view.merged()->row(0).content, "x");
}

TEST_F(Merge, WithoutConflictsItIsReadyToSaveAndNothingWouldBeLost)
{
    show({base, left, base});

    EXPECT_EQ(status, "No conflicts: ready to save");
    EXPECT_TRUE(view.can_save());
    EXPECT_FALSE(view.has_unsaved_work());
    EXPECT_FALSE(view.succeeds());
}

TEST_F(Merge, WhatIsNotReadYetIsNotMerged)
{
    view.prepare_merge(contributors({base, left, right}), output, 0022);
    auto* tools = new QToolBar(&window);
    view.add_menus(*window.menuBar(), *tools);

    for (QAction* entry : window.findChildren<QAction*>())
        if (entry->text() == "The First Is the Common &Ancestor")
            entry->trigger();

    EXPECT_FALSE(busy);
    EXPECT_EQ(view.merged(), nullptr);
    EXPECT_FALSE(view.can_save());
}

TEST_F(Merge, TwoContributorsHaveNoAncestor)
{
    show({"a\n", "b\n"});

    EXPECT_EQ(status, "0 of 1 conflicts resolved");
}

TEST_F(Merge, AnOutputThatCannotBeWrittenIsToldAndNothingIsLost)
{
    output = scratch / "no/such/folder";
    show({base, left, right});
    press(window, "Ctrl+2");

    press(window, "Ctrl+S");

    EXPECT_TRUE(view.notice().text().startsWith("The output cannot be written: "));
    EXPECT_FALSE(close_wanted);
    EXPECT_TRUE(view.has_unsaved_work());
    EXPECT_TRUE(view.can_save());
}

TEST_F(Merge, TheOutputMayBeAContributor)
{
    output = scratch / "2";
    show({base, left, right});

    press(window, "Ctrl+3");
    press(window, "Ctrl+S");

    EXPECT_EQ(file_contents(output), "1\nleft\n3\n4\nright\n6\n7\nR\n9\n");
}

TEST_F(Merge, AContributorThatIsNoTextCannotBeMerged)
{
    show({base, "\xff", right});

    EXPECT_EQ(status, "Not merged");
    EXPECT_FALSE(view.can_save());
    press(window, "Ctrl+2");
    press(window, "F8");
    EXPECT_FALSE(view.succeeds());
}

TEST_F(Merge, WithoutAnAncestorEveryDifferenceIsAConflict)
{
    show({base, left, right});

    entry(ancestor_switch).trigger();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !busy; }));

    EXPECT_EQ(status, "0 of 3 conflicts resolved");
}

TEST_F(Merge, TheAncestorIsKeptWhereWorkWouldBeLost)
{
    show({base, left, right});
    press(window, "Ctrl+2");

    entry(ancestor_switch).trigger();
    reply(QMessageBox::Cancel);

    EXPECT_EQ(status, "All conflicts resolved (1): ready to save");
    EXPECT_TRUE(entry(ancestor_switch).isChecked());
}

TEST_F(Merge, TheAncestorIsGivenUpWithConsent)
{
    show({base, left, right});
    press(window, "Ctrl+2");

    entry(ancestor_switch).trigger();
    reply(QMessageBox::Discard);

    EXPECT_EQ(status, "0 of 3 conflicts resolved");
    EXPECT_FALSE(entry(ancestor_switch).isChecked());
}

TEST_F(Merge, ReloadingAsksWhereWorkWouldBeLost)
{
    show({base, left, right});
    press(window, "Ctrl+2");

    press(window, "F5");
    reply(QMessageBox::Cancel);

    EXPECT_EQ(status, "All conflicts resolved (1): ready to save");
}

} // namespace
