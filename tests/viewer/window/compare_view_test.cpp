#include "viewer/window/compare_view.h"

#include "tests/viewer/window/window_test.h"

#include <QMainWindow>
#include <QToolBar>

namespace
{

class Compare : public WindowTest
{
  public:
    Compare()
    {
        view.on_status = [this](const QString& text) { status = text; };
        view.on_place = [this](const QString& text) { place = text; };
        view.on_busy = [this](bool is) { busy = is; };
        view.on_options = [this](const ViewOptions& options) {
            view.set_style(style_with(options));
        };
        view.on_close_wanted = [] {};
        window.setCentralWidget(&view);
        auto* tools = new QToolBar(&window);
        view.add_menus(*window.menuBar(), *tools);
        window.resize(900, 500);
    }
    ~Compare() override { window.takeCentralWidget(); }
    Compare(const Compare&) = delete;
    Compare& operator=(const Compare&) = delete;
    Compare(Compare&&) = delete;
    Compare& operator=(Compare&&) = delete;

    void show(std::initializer_list<std::string_view> contents)
    {
        view.show_read(contributors(contents));
        window.show();
        window.activateWindow();
        view.take_focus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        wait();
    }

    void wait()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !busy; }));
    }

    PaintedRow row(std::size_t index, std::size_t column)
    {
        return view.columns().rows().row(index, column);
    }

    QString status;
    QString place;
    bool busy = false;
    CompareView view{style_with()};
    QMainWindow window;
};

TEST_F(Compare, TellsChangedAddedAndMissingLinesApartBySigns)
{
    show({"same\nold\nsame\ngone\nsame\n", "same\nnew\nsame\nsame\nmore\n"});

    EXPECT_EQ(row(1, 0).sign, QChar(0x2260));
    EXPECT_EQ(row(1, 1).sign, QChar(0x2260));
    EXPECT_EQ(row(3, 0).sign, QChar(0x2212));
    EXPECT_EQ(row(3, 1).sign, QChar(0x2212));
    EXPECT_EQ(row(3, 1).kind, RowKind::gap);
    EXPECT_EQ(row(5, 0).kind, RowKind::gap);
    EXPECT_EQ(row(5, 1).sign, QChar('+'));
    EXPECT_TRUE(row(0, 0).sign.isNull());
}

TEST_F(Compare, ContributorsThatAreNotReadYetAreNotCompared)
{
    view.announce(contributors({"a\n", "b\n"}));

    view.set_style(style_with({.compare = {.ignore_case = true}}));

    EXPECT_EQ(status, "");
    EXPECT_FALSE(busy);
    EXPECT_EQ(view.columns().rows().comparison().difference_count(), 0U);
}

TEST_F(Compare, AKeyThatComesBeforeTheTextsGoesToTheirFirstDifference)
{
    view.announce(contributors({"", ""}));
    view.go_to_next();

    show({"same\na\n", "same\nb\n"});

    EXPECT_EQ(status, "Difference 1 of 1");
}

TEST_F(Compare, MarksTheChangedWords)
{
    show({"an old line\n", "a new line\n"});

    EXPECT_EQ(row(0, 0).strong.front(), (Span{0, 2}));
    EXPECT_FALSE(row(0, 1).strong.empty());
}

TEST_F(Compare, KeysGoThroughTheDifferences)
{
    show({"1\na\n2\nb\n3\nc\n", "1\nA\n2\nB\n3\nC\n"});
    ASSERT_EQ(status, "Differences: 3");

    press(window, "F8");
    EXPECT_EQ(status, "Difference 1 of 3");
    press(window, "N");
    EXPECT_EQ(status, "Difference 2 of 3");
    press(window, "Alt+Down");
    EXPECT_EQ(status, "Difference 3 of 3");
    press(window, "F8");
    EXPECT_EQ(status, "Difference 3 of 3");
    press(window, "P");
    EXPECT_EQ(status, "Difference 2 of 3");
    press(window, "F7");
    EXPECT_EQ(status, "Difference 1 of 3");
    press(window, "Alt+End");
    EXPECT_EQ(status, "Difference 3 of 3");
    press(window, "Alt+Home");
    EXPECT_EQ(status, "Difference 1 of 3");
}

TEST_F(Compare, TheFirstKeyGoesToADifferenceInTheFirstLine)
{
    show({"a\nsame\nb\n", "A\nsame\nB\n"});

    press(window, "F8");

    EXPECT_EQ(status, "Difference 1 of 2");
}

TEST_F(Compare, AClickInADifferenceMakesItTheOneAtHand)
{
    show({"1\na\n2\nb\n", "1\nA\n2\nB\n"});
    TextColumn& column = view.columns().column(1);

    QTest::mouseClick(&column, Qt::LeftButton, {}, column.rectangle_of({3, 0}).center());

    EXPECT_EQ(status, "Difference 2 of 2");
    EXPECT_EQ(place, "Line 4, column 1");
    EXPECT_TRUE(row(3, 0).is_current);
}

TEST_F(Compare, ColumnsScrollTogether)
{
    std::string text;
    for (int line = 0; line < 500; ++line)
        text += "line\n";
    show({text, text, text});

    press(window, "Ctrl+End");

    for (std::size_t column = 0; column < 3; ++column)
        EXPECT_GT(view.columns().column(column).top_row(), 400U);
}

TEST_F(Compare, FindsInAllColumnsAndAround)
{
    show({"x\nneedle\n", "x\ny Needle\n"});

    press(window, "Ctrl+F");
    type(window, "needle");
    press(window, "Return");
    EXPECT_EQ(view.columns().column(0).selected_text(), "needle");
    press(window, "F3");
    EXPECT_EQ(view.columns().active_column(), 1U);
    EXPECT_EQ(view.columns().column(1).selected_text(), "Needle");
    press(window, "F3");
    EXPECT_EQ(view.columns().active_column(), 0U);
    press(window, "Shift+F3");
    EXPECT_EQ(view.columns().active_column(), 1U);
    press(window, "Escape");
    EXPECT_FALSE(view.finder().isVisible());
}

TEST_F(Compare, GoesToALine)
{
    show({"1\n2\n3\n", "1\n2\n3\n"});

    view.go_to_line(3);

    EXPECT_EQ(view.columns().column(0).caret(), (TextPosition{2, 0}));
    EXPECT_EQ(place, "Line 3, column 1");
}

TEST_F(Compare, IgnoringWhiteSpaceComparesAgain)
{
    show({"a b\n", "a  b\n"});
    ASSERT_EQ(status, "Differences: 1");

    view.on_options({.compare = {.white_space = WhiteSpace::amount_ignored}});
    wait();

    EXPECT_EQ(status, "No differences");
    EXPECT_EQ(view.notice().text(), "The contributors differ only in what is ignored.");
}

TEST_F(Compare, SaysPlainlyWhenOnlyLineEndsDiffer)
{
    show({"a\nb\n", "a\r\nb\r\n"});

    EXPECT_TRUE(view.notice().isVisible());
    EXPECT_FALSE(view.notice().text().isEmpty());
    EXPECT_TRUE(row(0, 1).end_differs);
}

TEST_F(Compare, CollapsesEqualStretchesAndOpensThemByAClick)
{
    std::string text;
    for (int line = 0; line < 100; ++line)
        text += std::to_string(line) + "\n";
    show({text + "a\n", text + "b\n"});

    press(window, "Alt+C");
    EXPECT_EQ(row(0, 0).hidden, 97U);
    QTest::mouseClick(&view.columns().column(0), Qt::LeftButton, {}, QPoint(60, 5));

    EXPECT_EQ(view.columns().rows().map().count(), 101U);
}

TEST_F(Compare, WrappedLinesStayBesideTheirGaps)
{
    const std::string words = [] {
        std::string all;
        for (int count = 0; count < 100; ++count)
            all += "word ";
        return all;
    }();
    show({words + "\nend\n", "end\n"});

    press(window, "Alt+Z");

    const std::size_t parts = view.columns().rows().map().seen_at(1);
    EXPECT_GT(parts, 3U);
    for (std::size_t part = 0; part < parts; ++part)
        EXPECT_EQ(row(part, 1).kind, RowKind::gap);
    EXPECT_EQ(row(parts, 0).text, "end");
    EXPECT_EQ(row(parts, 1).text, "end");
}

TEST_F(Compare, SwappingReversesTheOrder)
{
    show({"first\n", "second\n"});

    view.swap_order();
    wait();

    EXPECT_EQ(row(0, 0).text, "second");
}

TEST_F(Compare, OffersToReloadAFileThatHasChanged)
{
    show({"a\n", "a\n"});
    view.after_shown();

    scratch.write_file("1", "other\n");
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.notice().text().contains("changed on disk"); }));
    press(window, "F5");
    wait();

    EXPECT_EQ(row(0, 0).text, "other");
    EXPECT_EQ(status, "Differences: 1");
}

TEST_F(Compare, AContributorThatIsNoTextIsNoSuccess)
{
    show({"a\n", "\xff"});

    EXPECT_FALSE(view.succeeds());
    EXPECT_EQ(status, "Not compared");
}

TEST_F(Compare, EmptyContributorsAreShown)
{
    show({"", ""});
    press(window, "F8");
    press(window, "Down");

    EXPECT_TRUE(view.succeeds());
    EXPECT_EQ(status, "No differences");
}

TEST_F(Compare, TheNextDifferenceCanBeWantedBeforeItIsKnown)
{
    std::string text;
    for (int line = 0; line < 200000; ++line)
        text += std::to_string(line) + "\n";
    show({text + "a\n", text + "b\n"});
    view.reload();
    ASSERT_TRUE(busy);

    press(window, "F8");
    wait();

    EXPECT_EQ(status, "Difference 1 of 1");
}

TEST_F(Compare, ACancelledComparisonCanBeStartedAgain)
{
    show({"a\n", "b\n"});
    view.swap_order();

    view.cancel();

    EXPECT_FALSE(busy);
    EXPECT_EQ(status, "Not compared");
    EXPECT_EQ(view.notice().text(), "The comparison was cancelled.");
}

TEST_F(Compare, ALineInsertedInAChangedBlockStandsOnItsOwn)
{
    show({"same\ncall(alpha, beta);\nsame\n", "same\n// inserted\ncall(alpha, gamma);\nsame\n"});

    EXPECT_EQ(row(1, 0).kind, RowKind::gap);
    EXPECT_EQ(row(1, 0).sign, QChar('+'));
    EXPECT_EQ(row(1, 1).sign, QChar('+'));
    EXPECT_EQ(row(1, 1).tint, Tint::added);
    EXPECT_EQ(row(2, 0).sign, QChar(0x2260));
    EXPECT_EQ(row(2, 1).strong, (std::vector<Span>{{12, 17}}));
    EXPECT_EQ(status, "Differences: 1");
}

TEST_F(Compare, ALineThatOnlyAnotherContributorChangedHasNoSign)
{
    show({"a\nb\n", "A\nb\n", "a\nB\n"});

    EXPECT_EQ(row(0, 1).sign, QChar(0x2260));
    EXPECT_TRUE(row(1, 1).sign.isNull());
    EXPECT_EQ(row(1, 1).tint, Tint::none);
    EXPECT_EQ(row(1, 0).sign, QChar(0x2260));
}

TEST_F(Compare, BesideALineThatTakesMoreRowsIsAGap)
{
    show({std::string(300, 'x') + "\nend\n", "x\nend\n"});

    press(window, "Alt+Z");

    EXPECT_EQ(row(0, 1).kind, RowKind::text);
    EXPECT_EQ(row(1, 0).kind, RowKind::text);
    EXPECT_EQ(row(1, 1).kind, RowKind::gap);
}

TEST_F(Compare, TheEndOfAWrappedLineIsInItsLastRow)
{
    show({std::string(80, 'x') + "\n", "x\n"});

    press(window, "Alt+Z");
    const std::size_t last = view.columns().rows().map().count() - 1;

    ASSERT_GT(last, 0U);
    EXPECT_FALSE(row(0, 0).end.has_value());
    EXPECT_EQ(row(last, 0).end, LineEnd::lf);
}

TEST_F(Compare, NothingRunsWhereAContributorCannotBeShown)
{
    show({"a\n", "b\n"});
    view.swap_order();
    busy = true;

    view.show_read(contributors({"a\n", "bad \xff\n"}));

    EXPECT_FALSE(busy);
    EXPECT_EQ(status, "Not compared");
}

TEST_F(Compare, AKeyShowsCollapsedLinesBelowAndThenAboveTheCaret)
{
    std::string text;
    for (int line = 0; line < 50; ++line)
        text += "line\n";
    show({text + "old\n" + text, text + "new\n" + text});
    press(window, "Alt+C");
    press(window, "F8");
    const auto seen = [this] { return view.columns().rows().map().count(); };
    const std::size_t collapsed = seen();

    press(window, "Alt+Return");
    EXPECT_EQ(seen(), collapsed + 46);
    press(window, "Alt+Return");

    EXPECT_EQ(seen(), 101U);
}

TEST_F(Compare, ReloadingKeepsThePlace)
{
    std::string text;
    for (int line = 0; line < 500; ++line)
        text += "line\n";
    show({text, "more\n" + text});
    view.columns().scroll_to_line(200);

    press(window, "F5");
    wait();

    EXPECT_EQ(view.columns().top_line(), 200U);
}

} // namespace
