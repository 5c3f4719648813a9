#include "viewer/window/notice_bar.h"

#include <QHBoxLayout>

NoticeBar::NoticeBar(QWidget* parent) : QWidget(parent)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->addWidget(&label, 1);
    layout->addWidget(&button);
    label.setTextFormat(Qt::PlainText);
    label.setWordWrap(true);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    label.setForegroundRole(QPalette::ToolTipText);
    QObject::connect(&button, &QPushButton::clicked, this, [this] {
        hide();
        if (const auto action = on_pressed)
            action();
    });
    hide();
}

void NoticeBar::tell(const QString& sentence)
{
    label.setText(sentence);
    button.hide();
    show();
}

void NoticeBar::offer(const QString& sentence, const QString& button_text,
                      std::function<void()> action)
{
    label.setText(sentence);
    button.setText(button_text);
    on_pressed = std::move(action);
    button.show();
    show();
}
