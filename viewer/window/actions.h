/*
 * Menu entries with their keys, made short.
 */
#pragma once

#include <QAction>
#include <QKeySequence>
#include <QList>
#include <QMenu>
#include <functional>

/** An entry that does something. The first key is the one shown beside it. */
QAction* add_entry(QMenu& menu, const QString& text, const QList<QKeySequence>& keys,
                   const std::function<void()>& action);

/** The same, done once however long its key is held. For what closes, writes or throws away: a key
    that was meant for another window may still be down when this one comes to the front. */
QAction* add_entry_done_once(QMenu& menu, const QString& text, const QList<QKeySequence>& keys,
                             const std::function<void()>& action);

/** An entry that is on or off. */
QAction* add_switch(QMenu& menu, const QString& text, const QList<QKeySequence>& keys, bool on,
                    const std::function<void(bool)>& action);

/** Entries of which one is on. */
void add_choices(QMenu& menu, const QStringList& texts, int chosen,
                 const std::function<void(int)>& action);
