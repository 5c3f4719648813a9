#include "viewer/window/accessible_column.h"

#include "tests/viewer/window/window_test.h"
#include "viewer/window/compare_rows.h"
#include "viewer/window/result_editor.h"

namespace
{

class Accessible : public WindowTest
{
  public:
    Accessible()
    {
        make_columns_accessible();
        const auto text =
            std::make_shared<const Text>("one two\r\n\U0001f600 \u00fcber\n", 0, false);
        rows.set_style(style_with());
        rows.show({text, text}, Comparison::before_comparing({text, text}));
        column.set_source(&source);
        column.resize(400, 200);
    }

    QAccessibleTextInterface& text()
    {
        return *QAccessible::queryAccessibleInterface(&column)->textInterface();
    }

    CompareRows rows;
    CompareColumn source{rows, 0};
    TextColumn column{style_with()};
};

TEST_F(Accessible, ATextHasItsCharactersInUtf16)
{
    EXPECT_EQ(text().characterCount(), 15);
    EXPECT_EQ(text().text(0, 15), QString::fromUtf8("one two\n\U0001f600 \u00fcber"));
    EXPECT_EQ(text().text(8, 10), QString::fromUtf8("\U0001f600"));
}

TEST_F(Accessible, TheCaretIsAPlaceInTheText)
{
    text().setCursorPosition(12);

    EXPECT_EQ(column.caret(), (TextPosition{1, 7}));
    EXPECT_EQ(text().cursorPosition(), 12);
}

TEST_F(Accessible, TheSelectionIsToldAndSet)
{
    text().setSelection(0, 4, 7);
    EXPECT_EQ(column.selected_text(), "two");

    int start = -1;
    int end = -1;
    text().selection(0, &start, &end);
    EXPECT_EQ(start, 4);
    EXPECT_EQ(end, 7);
}

TEST_F(Accessible, WordsAndLinesAreFound)
{
    int start = -1;
    int end = -1;

    EXPECT_EQ(text().textAtOffset(5, QAccessible::WordBoundary, &start, &end), "two");
    EXPECT_EQ(start, 4);
    EXPECT_EQ(text().textAtOffset(9, QAccessible::LineBoundary, &start, &end),
              QString::fromUtf8("\U0001f600 \u00fcber"));
    EXPECT_EQ(end, 15);
}

TEST_F(Accessible, ACharacterHasAPlaceOnTheScreen)
{
    const QRect area = text().characterRect(4);

    EXPECT_EQ(text().offsetAtPoint(area.topLeft() + QPoint(1, 1)), 4);
    EXPECT_GT(area.width(), 2);
}

TEST_F(Accessible, OnlyTheResultIsEditable)
{
    ResultEditor editor(style_with());

    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&column)->state().readOnly);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&editor)->state().editable);
}

} // namespace
