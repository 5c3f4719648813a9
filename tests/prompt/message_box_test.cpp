// The window, driven by keys and clicks on a platform without a screen.
#include "prompt/message_box.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace
{

const PromptRequest proceed_or_abort{
    .type = PromptType::error, .answers = {Answer::proceed, Answer::abort}, .text = "<b>text</b>"};

QAbstractButton* button_of(const MessageBox& box, const QString& text)
{
    for (QAbstractButton* button : box.buttons())
        if (button->text() == text)
            return button;
    return nullptr;
}

/** Shows the box, lets the user do something, and gives the answer. */
template<typename User>
Answer answer_of(MessageBox& box, User user)
{
    QTimer::singleShot(0, &box, user);
    box.exec();
    return box.answer();
}

TEST(MessageBox, ShowsTheTextAsItIsAndItsType)
{
    const MessageBox box(proceed_or_abort);

    EXPECT_EQ(box.text(), "<b>text</b>");
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
}

TEST(MessageBox, HasAButtonForEachAnswerOfferedAndNoOther)
{
    const MessageBox box({.answers = {Answer::yes, Answer::no}, .text = "x"});

    EXPECT_EQ(box.buttons().size(), 2);
    EXPECT_NE(button_of(box, "Yes"), nullptr);
    EXPECT_NE(button_of(box, "No"), nullptr);
}

TEST(MessageBox, AClickIsTheButtonsAnswer)
{
    MessageBox box(proceed_or_abort);

    EXPECT_EQ(answer_of(box, [&] { QTest::mouseClick(button_of(box, "Abort"), Qt::LeftButton); }),
              Answer::abort);
}

TEST(MessageBox, EnterIsTheFirstAnswer)
{
    MessageBox box(proceed_or_abort);

    EXPECT_EQ(answer_of(box, [&] { QTest::keyClick(&box, Qt::Key_Return); }), Answer::proceed);
}

TEST(MessageBox, EscapeAgreesToNothing)
{
    MessageBox box(proceed_or_abort);

    EXPECT_EQ(answer_of(box, [&] { QTest::keyClick(&box, Qt::Key_Escape); }), Answer::abort);
}

TEST(MessageBox, ClosingTheWindowAgreesToNothing)
{
    MessageBox box({.answers = {Answer::yes, Answer::no}, .text = "x"});

    EXPECT_EQ(answer_of(box, [&] { box.close(); }), Answer::no);
}

TEST(MessageBox, ASingleProceedIsAnsweredByEscapeToo)
{
    MessageBox box({.answers = {Answer::proceed}, .text = "x"});

    EXPECT_EQ(answer_of(box, [&] { QTest::keyClick(&box, Qt::Key_Escape); }), Answer::proceed);
}

} // namespace

int main(int argc, char* argv[])
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
