#include "viewer/window/viewer_window.h"

#include "tests/viewer/window/window_test.h"
#include "viewer/window/compare_view.h"
#include "viewer/window/folder_view.h"
#include "viewer/window/merge_view.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QPushButton>
#include <filesystem>
#include <optional>

namespace
{

class Window : public WindowTest
{
  public:
    Window()
    {
        window.on_shown = [this] { shown = true; };
        window.on_finished = [this](bool success) {
            ++answers;
            answer = success;
        };
    }

    void open(std::initializer_list<std::string_view> contents, bool merge = false)
    {
        open_paths(files(contents), merge);
    }

    void open_paths(const std::vector<std::string>& paths, bool merge = false)
    {
        WindowRequest wanted;
        wanted.request.merge = merge;
        wanted.request.output = scratch / "output";
        wanted.request.contributors = paths;
        wanted.request.names = paths;
        window.open(wanted);
        ASSERT_TRUE(QTest::qWaitFor([this] { return shown; }));
    }

    /** Opens a merge, and waits until it can be worked on. */
    void open_merge(std::initializer_list<std::string_view> contents)
    {
        open(contents, true);
        auto* merge = dynamic_cast<MergeView*>(window.page());
        ASSERT_NE(merge, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([merge] { return merge->merged() != nullptr; }));
    }

    /** Presses a button of the question that is open. */
    void reply(QMessageBox::StandardButton button)
    {
        auto* box = window.findChild<QMessageBox*>();
        ASSERT_NE(box, nullptr);
        QTest::mouseClick(box->button(button), Qt::LeftButton);
    }

    bool shown = false;
    int answers = 0;
    std::optional<bool> answer;
    ViewerWindow window;
};

TEST_F(Window, IsHiddenUntilARequestComesAndTellsWhenItIsShown)
{
    window.warm_up();
    EXPECT_FALSE(window.isVisible());

    open({"a\n", "b\n"});

    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(answers, 0);
}

TEST_F(Window, WarmingUpLeavesItHiddenButFitForTheScreen)
{
    window.warm_up();

    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(window.testAttribute(Qt::WA_DontShowOnScreen));
}

TEST_F(Window, TellsThatItIsShownOnceItsDifferencesAreKnown)
{
    std::string first;
    std::string second;
    for (int line = 0; line < 20'000; ++line) {
        first += std::to_string(line * 7 % 20'000) + " first\n";
        second += std::to_string(line * 11 % 20'000) + " second\n";
    }
    std::size_t differences = 0;
    window.on_shown = [&] {
        shown = true;
        auto* compare = dynamic_cast<CompareView*>(window.page());
        ASSERT_NE(compare, nullptr);
        differences = compare->columns().rows().comparison().difference_count();
    };

    open({first, second});

    EXPECT_EQ(differences, 1U);
}

TEST_F(Window, ALongTextShowsItsFirstLinesUntilItIsRead)
{
    constexpr std::size_t lines = 50'000;
    std::string content;
    for (std::size_t line = 0; line < lines; ++line)
        content += std::to_string(line) + "\n";
    WindowRequest wanted;
    wanted.request.contributors = {scratch.write_file("long", content), "/dev/null"};
    const auto count = [this] {
        return dynamic_cast<CompareView*>(window.page())
            ->columns()
            .column(0)
            .source()
            ->line_count();
    };

    window.open(wanted);

    EXPECT_GT(count(), 1000U);
    EXPECT_LT(count(), lines);
    EXPECT_TRUE(QTest::qWaitFor([&] { return count() == lines; }));
}

TEST_F(Window, ACompareThatWasShownIsASuccessWhenItIsClosed)
{
    open({"a\n", "b\n"});

    window.close();

    EXPECT_EQ(answer, true);
    EXPECT_EQ(answers, 1);
}

TEST_F(Window, AKeyClosesIt)
{
    open({"a\n", "b\n"});

    press(window, "Ctrl+W");

    EXPECT_EQ(answer, true);
}

TEST_F(Window, CancelledWhileItReadsItClosesAsAFailure)
{
    constexpr std::uintmax_t longer_to_read_than_is_waited = 300'000'000;
    const std::string large = scratch.write_file("large", "");
    std::filesystem::resize_file(large, longer_to_read_than_is_waited);
    WindowRequest wanted;
    wanted.request.contributors = {large, "/dev/null"};
    window.open(wanted);

    const auto buttons = window.findChildren<QPushButton*>();
    const auto cancel = std::ranges::find(buttons, QString("Cancel"), &QPushButton::text);
    ASSERT_NE(cancel, buttons.end());
    ASSERT_TRUE(QTest::qWaitFor([&] { return (*cancel)->isVisible(); }));
    QTest::mouseClick(*cancel, Qt::LeftButton);

    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(answer, false);
}

TEST_F(Window, AKeyThatWasHeldBeforeDoesNotCloseIt)
{
    open({"a\n", "b\n"});

    QTest::simulateEvent(window.focusWidget(), true, Qt::Key_W, Qt::ControlModifier, {}, true);

    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(answers, 0);
}

TEST_F(Window, AContributorThatCannotBeShownIsAFailure)
{
    open({"a\n", "bad \xc0\x80\n"});

    window.close();

    EXPECT_EQ(answer, false);
}

TEST_F(Window, TheProblemIsShownWithItsPlace)
{
    open({"a\n", "good\nbad \xc0\x80\n"});
    QStringList texts;
    for (const QLabel* label : window.findChildren<QLabel*>())
        texts.append(label->text());

    EXPECT_TRUE(texts.join('\n').contains("Byte offset 9, line 2."));
}

TEST_F(Window, BeingAbandonedIsAFailureWithoutAQuestion)
{
    open_merge({"1\n", "2\n"});
    dynamic_cast<MergeView&>(*window.page()).take(0);

    window.abandon();

    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(answer, false);
    EXPECT_EQ(answers, 1);
}

TEST_F(Window, AMergeClosedWithoutSavingIsAFailure)
{
    open_merge({"1\n", "2\n"});

    window.close();

    EXPECT_EQ(answer, false);
    EXPECT_FALSE(std::filesystem::exists(scratch / "output"));
}

TEST_F(Window, AMergeThatIsSavedIsASuccessAndCloses)
{
    open_merge({"1\n", "2\n"});

    press(window, "Ctrl+2");
    press(window, "Ctrl+S");

    EXPECT_EQ(answer, true);
    EXPECT_EQ(file_contents(scratch / "output"), "2\n");
}

TEST_F(Window, WorkIsNotLostWithoutAQuestion)
{
    open_merge({"1\n", "2\n"});
    press(window, "Ctrl+2");

    window.close();
    EXPECT_TRUE(window.isVisible());
    reply(QMessageBox::Cancel);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(answers, 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    window.close();
    reply(QMessageBox::Save);

    EXPECT_EQ(answer, true);
    EXPECT_EQ(file_contents(scratch / "output"), "2\n");
}

TEST_F(Window, WorkCanBeDiscarded)
{
    open_merge({"1\n", "2\n"});
    press(window, "Ctrl+2");

    window.close();
    reply(QMessageBox::Discard);

    EXPECT_EQ(answer, false);
    EXPECT_FALSE(std::filesystem::exists(scratch / "output"));
}

TEST_F(Window, DirectoriesAreComparedAndAreASuccess)
{
    std::filesystem::create_directory(scratch / "a");
    std::filesystem::create_directory(scratch / "b");
    open_paths({scratch / "a", scratch / "b"});

    EXPECT_NE(dynamic_cast<FolderView*>(window.page()), nullptr);
    window.close();

    EXPECT_EQ(answer, true);
}

TEST_F(Window, DirectoriesAreNotMerged)
{
    std::filesystem::create_directory(scratch / "a");
    std::filesystem::create_directory(scratch / "b");
    open_paths({scratch / "a", scratch / "b"}, true);

    auto& view = dynamic_cast<MergeView&>(*window.page());
    EXPECT_TRUE(view.notice().text().startsWith("Directories cannot be merged."));
    window.close();

    EXPECT_EQ(answer, false);
}

TEST_F(Window, RemembersChoicesAndItsSize)
{
    open({"a\n", "b\n"});
    press(window, "Alt+Z");
    window.resize(777, 555);
    window.close();

    const ViewerWindow next;

    EXPECT_TRUE(load_view_options().wrap);
    EXPECT_EQ(next.size(), QSize(777, 555));
}

TEST_F(Window, FollowsThePaletteWhileItIsOpen)
{
    open({"a\n", "b\n"});
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);

    window.setPalette(dark);
    const QImage picture = window.page()->grab().toImage();

    auto& columns = dynamic_cast<CompareView&>(*window.page()).columns();
    const QPoint below = columns.column(0).mapTo(window.page(), QPoint(200, 300));
    EXPECT_EQ(picture.pixelColor(below), QColor(Qt::black));
}

TEST_F(Window, ControlsHaveNames)
{
    open({"a\n", "b\n"});

    auto& columns = dynamic_cast<CompareView&>(*window.page()).columns();
    EXPECT_EQ(columns.column(0).accessibleName().toStdString(), scratch / "1");
}

} // namespace
