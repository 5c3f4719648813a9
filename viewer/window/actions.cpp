#include "viewer/window/actions.h"

#include <QActionGroup>

QAction* add_entry(QMenu& menu, const QString& text, const QList<QKeySequence>& keys,
                   const std::function<void()>& action)
{
    QAction* entry = menu.addAction(text);
    entry->setShortcuts(keys);
    QObject::connect(entry, &QAction::triggered, entry, action);
    return entry;
}

QAction* add_entry_done_once(QMenu& menu, const QString& text, const QList<QKeySequence>& keys,
                             const std::function<void()>& action)
{
    QAction* entry = add_entry(menu, text, keys, action);
    entry->setAutoRepeat(false);
    return entry;
}

QAction* add_switch(QMenu& menu, const QString& text, const QList<QKeySequence>& keys, bool on,
                    const std::function<void(bool)>& action)
{
    QAction* entry = menu.addAction(text);
    entry->setShortcuts(keys);
    entry->setAutoRepeat(false);
    entry->setCheckable(true);
    entry->setChecked(on);
    QObject::connect(entry, &QAction::toggled, entry, action);
    return entry;
}

void add_choices(QMenu& menu, const QStringList& texts, int chosen,
                 const std::function<void(int)>& action)
{
    auto* group = new QActionGroup(&menu);
    for (int index = 0; index < texts.size(); ++index) {
        QAction* entry = menu.addAction(texts.at(index));
        entry->setCheckable(true);
        entry->setChecked(index == chosen);
        group->addAction(entry);
        QObject::connect(entry, &QAction::triggered, entry, [action, index] { action(index); });
    }
} // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the menu owns the group
