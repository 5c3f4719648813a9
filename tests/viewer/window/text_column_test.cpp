#include "viewer/window/text_column.h"

#include "tests/viewer/window/window_test.h"
#include "viewer/window/compare_rows.h"

#include <QApplication>
#include <QClipboard>

namespace
{

/** One contributor's column with the same text beside it. */
class Column : public WindowTest
{
  public:
    void show(std::string_view content, const ViewOptions& options = {})
    {
        const auto text = std::make_shared<const Text>(std::string(content), 0, false);
        rows.set_style(style_with(options));
        rows.show({text, text}, Comparison::before_comparing({text, text}));
        column.set_style(style_with(options));
        column.set_source(&source);
        column.resize(800, 400);
        column.show();
        column.setFocus();
    }

    CompareRows rows;
    CompareColumn source{rows, 0};
    TextColumn column{style_with()};
};

TEST_F(Column, KeysMoveTheCaret)
{
    show("one two\nthree\n\nfour");

    press(column, "Down");
    press(column, "End");
    EXPECT_EQ(column.caret(), (TextPosition{1, 5}));
    press(column, "Ctrl+Left");
    EXPECT_EQ(column.caret(), (TextPosition{1, 0}));
    press(column, "Ctrl+End");
    EXPECT_EQ(column.caret(), (TextPosition{3, 4}));
    press(column, "PgUp");
    EXPECT_EQ(column.caret().line, 0U);
}

TEST_F(Column, TheCaretKeepsItsPlaceAcrossAShortLine)
{
    show("abcdef\nx\nabcdef");
    press(column, "End");

    press(column, "Down");
    press(column, "Down");

    EXPECT_EQ(column.caret(), (TextPosition{2, 6}));
}

TEST_F(Column, ShiftSelectsAndCopyTakesWhatIsSelected)
{
    show("first\r\nsecond\n");

    press(column, "Shift+Down");
    press(column, "Shift+Right");
    column.copy();

    EXPECT_EQ(QApplication::clipboard()->text(), "first\r\ns");
}

TEST_F(Column, AClickPlacesTheCaretAndADoubleClickSelectsAWord)
{
    show("some words here");
    const QPoint place = column.rectangle_of({0, 7}).center();

    QTest::mouseClick(&column, Qt::LeftButton, {}, place);
    EXPECT_EQ(column.caret(), (TextPosition{0, 7}));
    QTest::mouseDClick(&column, Qt::LeftButton, {}, place);
    EXPECT_EQ(column.selected_text(), "words");
}

TEST_F(Column, DraggingSelects)
{
    show("some words here\nmore");
    QTest::mousePress(&column, Qt::LeftButton, {}, column.rectangle_of({0, 5}).center());
    const QPoint end = column.rectangle_of({1, 2}).center();
    QMouseEvent move(QEvent::MouseMove, end, column.mapToGlobal(end), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);

    QApplication::sendEvent(&column, &move);
    QTest::mouseRelease(&column, Qt::LeftButton, {}, end);

    EXPECT_EQ(column.selected_text(), "words here\nmo");
}

TEST_F(Column, EveryPlaceCanBePainted)
{
    using namespace std::string_view_literals; // for the NUL
    show("tab\there\0\x1b\nמזל טוב\n日本語\n\U0001f600\n"sv, {.white_space = true});
    column.select_all();
    column.set_phrase("e", false);

    EXPECT_FALSE(column.grab().isNull());
}

TEST_F(Column, AnEmptyTextHasAPlaceForNothing)
{
    show("");

    press(column, "Down");
    QTest::mouseClick(&column, Qt::LeftButton);

    EXPECT_EQ(column.caret(), (TextPosition{0, 0}));
    EXPECT_TRUE(column.selected_text().isEmpty());
}

} // namespace
