#include "viewer/window/find_bar.h"

#include "viewer/window/arrow_icon.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStyle>
#include <QToolButton>

FindBar::FindBar(QWidget* parent)
    : QWidget(parent), case_box(tr("Match &case")), wrap_box(tr("&Wrap around"))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    auto* label = new QLabel(tr("Find:"));
    label->setBuddy(&line);
    layout->addWidget(label);
    layout->addWidget(&line, 1);
    const auto add_button = [&](const QIcon& icon, const QString& name, auto action) {
        auto* button = new QToolButton;
        button->setIcon(icon);
        button->setToolTip(name);
        button->setAccessibleName(name);
        button->setAutoRaise(true);
        QObject::connect(button, &QToolButton::clicked, this, action);
        layout->addWidget(button);
    };
    add_button(arrow_icon(ArrowKind::up), tr("Find previous"), [this] { on_find(false); });
    add_button(arrow_icon(ArrowKind::down), tr("Find next"), [this] { on_find(true); });
    layout->addWidget(&case_box);
    layout->addWidget(&wrap_box);
    layout->addWidget(&outcome, 1);
    add_button(style()->standardIcon(QStyle::SP_TitleBarCloseButton), tr("Close"),
               [this] { close_bar(); });
    wrap_box.setChecked(true);
    line.setAccessibleName(tr("Phrase to find"));
    line.setClearButtonEnabled(true);
    const auto changed = [this] {
        outcome.clear();
        if (on_changed)
            on_changed();
    };
    QObject::connect(&line, &QLineEdit::textChanged, this, changed);
    QObject::connect(&case_box, &QCheckBox::toggled, this, changed);
    QObject::connect(&wrap_box, &QCheckBox::toggled, this, changed);
    hide();
}

void FindBar::ask(const QString& begin_with)
{
    if (!begin_with.isEmpty() && !begin_with.contains('\n'))
        line.setText(begin_with);
    show();
    line.setFocus(Qt::ShortcutFocusReason);
    line.selectAll();
    if (on_changed)
        on_changed();
}

void FindBar::tell(bool found)
{
    outcome.setText(found ? QString() : tr("Not found"));
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close_bar();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        on_find(!event->modifiers().testFlag(Qt::ShiftModifier));
    else
        QWidget::keyPressEvent(event);
}

void FindBar::close_bar()
{
    hide();
    if (on_closed)
        on_closed();
}
