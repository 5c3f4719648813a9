#include "prompt/message_box.h"

#include <QAbstractButton>
#include <QPushButton>

namespace
{

constexpr const char* answer_property = "answer";

QMessageBox::Icon icon_of(PromptType type)
{
    switch (type) {
    case PromptType::error:
        return QMessageBox::Critical;
    case PromptType::warning:
        return QMessageBox::Warning;
    case PromptType::information:
        break;
    }
    return QMessageBox::Information;
}

QMessageBox::ButtonRole role_of(Answer answer)
{
    switch (answer) {
    case Answer::proceed:
        return QMessageBox::AcceptRole;
    case Answer::abort:
        return QMessageBox::RejectRole;
    case Answer::yes:
        return QMessageBox::YesRole;
    case Answer::no:
        break;
    }
    return QMessageBox::NoRole;
}

} // namespace

MessageBox::MessageBox(const PromptRequest& request) : without_button(unanswered(request))
{
    setWindowTitle(QStringLiteral("Quarnfold"));
    setIcon(icon_of(request.type));
    setTextFormat(Qt::PlainText); // a path may hold what looks like markup
    setText(QString::fromLocal8Bit(request.text.c_str()));
    for (const Answer answer : request.answers) {
        QPushButton* button = addButton(QString::fromLatin1(name_of(answer)), role_of(answer));
        button->setProperty(answer_property, static_cast<int>(answer));
        if (answer == request.answers.front())
            setDefaultButton(button);
        if (answer == without_button)
            setEscapeButton(button);
    }
}

Answer MessageBox::answer() const
{
    const QAbstractButton* button = clickedButton();
    return button != nullptr ? static_cast<Answer>(button->property(answer_property).toInt())
                             : without_button;
}
