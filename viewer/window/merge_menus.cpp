// The menus of a merge.
#include "viewer/window/actions.h"
#include "viewer/window/arrow_icon.h"
#include "viewer/window/merge_view.h"

#include <algorithm>

namespace
{

constexpr std::size_t most_keys = 9; // Ctrl+1 to Ctrl+9

} // namespace

void MergeView::add_menus(QMenuBar& menus, QToolBar& tools)
{
    QMenu& file = *menus.addMenu(tr("&File"));
    save_entry = add_entry_done_once(file, tr("&Save and Close"), {QKeySequence("Ctrl+S")},
                                     [this] { save(); });
    add_reload_entry(file);
    file.addSeparator();
    add_close_entry(file);
    fill_edit_menu(*menus.addMenu(tr("&Edit")));
    fill_view_menu(*menus.addMenu(tr("&View")));
    fill_difference_menu(*menus.addMenu(tr("&Differences")), tools);
    fill_merge_menu(*menus.addMenu(tr("&Merge")), tools);
    tools.addSeparator();
    tools.addAction(save_entry);
    update_entries();
}

void MergeView::fill_edit_menu(QMenu& menu)
{
    undo_entry =
        add_entry(menu, tr("&Undo"), {QKeySequence(QKeySequence::Undo)}, [this] { undo(); });
    redo_entry =
        add_entry(menu, tr("&Redo"), {QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y")},
                  [this] { redo(); });
    menu.addSeparator();
    add_entry(menu, tr("Cu&t"), {QKeySequence(QKeySequence::Cut)}, [this] { pane.editor().cut(); });
    add_entry(menu, tr("&Paste"), {QKeySequence(QKeySequence::Paste)},
              [this] { pane.editor().paste(); });
    TextPage::fill_edit_menu(menu);
    menu.addSeparator();
    add_entry(menu, tr("Next &Pane"), {QKeySequence("F6")}, [this] {
        const auto all = texts();
        all[(active_text() + 1) % all.size()]->setFocus();
    });
}

void MergeView::fill_difference_menu(QMenu& menu, QToolBar& tools)
{
    QAction* previous = add_entry(menu, tr("&Previous Difference"),
                                  {QKeySequence("F7"), QKeySequence("Alt+Up"), QKeySequence("P")},
                                  [this] { go_to_previous(); });
    QAction* next = add_entry(menu, tr("&Next Difference"),
                              {QKeySequence("F8"), QKeySequence("Alt+Down"), QKeySequence("N")},
                              [this] { go_to_next(); });
    menu.addSeparator();
    QAction* before = add_entry(menu, tr("Pre&vious Unresolved"),
                                {QKeySequence("Ctrl+F7"), QKeySequence("Alt+PgUp")},
                                [this] { go_to_previous_unresolved(); });
    QAction* behind = add_entry(menu, tr("N&ext Unresolved"),
                                {QKeySequence("Ctrl+F8"), QKeySequence("Alt+PgDown")},
                                [this] { go_to_next_unresolved(); });
    previous->setIcon(arrow_icon(ArrowKind::up));
    next->setIcon(arrow_icon(ArrowKind::down));
    before->setIconText(tr("Previous Unresolved"));
    behind->setIconText(tr("Next Unresolved"));
    tools.addActions({previous, next});
    tools.addSeparator();
    tools.addActions({before, behind});
}

void MergeView::fill_take_entries(QMenu& menu, QToolBar& tools)
{
    take_entries.clear();
    for (std::size_t index = 0; index < contributors.size(); ++index) {
        const QString digit = QString::number(index + 1);
        QList<QKeySequence> keys;
        if (index < most_keys)
            keys.append(QKeySequence("Ctrl+" + digit));
        QAction* entry = add_entry_done_once(menu, tr("Take %1").arg(numbered_name(index)), keys,
                                             [this, index] { take(index); });
        entry->setIconText(tr("Take %1").arg(digit));
        take_entries.push_back(entry);
        tools.addAction(entry);
    }
    menu.addSeparator();
    for (std::size_t index = 0; index < contributors.size(); ++index) {
        QList<QKeySequence> keys;
        if (index < most_keys)
            keys.append(QKeySequence("Ctrl+Alt+" + QString::number(index + 1)));
        take_entries.push_back(add_entry_done_once(menu,
                                                   tr("Take %1 Too").arg(numbered_name(index)),
                                                   keys, [this, index] { take_also(index); }));
    }
}

void MergeView::fill_merge_menu(QMenu& menu, QToolBar& tools)
{
    tools.addSeparator();
    fill_take_entries(menu, tools);
    menu.addSeparator();
    take_entries.push_back(
        add_entry(menu, tr("Take &None"), {QKeySequence("Ctrl+Alt+0")}, [this] { take_none(); }));
    take_entries.push_back(
        add_entry(menu, tr("Put &Back"), {QKeySequence("Ctrl+Alt+Z")}, [this] { put_back(); }));
    QMenu& unresolved = *menu.addMenu(tr("Take for All &Unresolved"));
    for (std::size_t index = 0; index < contributors.size(); ++index)
        add_entry(unresolved, numbered_name(index), {}, [this, index] {
            if (!result)
                return;
            result->choose_for_unresolved(index);
            pane.result_changed();
            result_changed();
        });
    if (contributors.size() < 3)
        return;
    menu.addSeparator();
    ancestor_entry = add_switch(menu, tr("The First Is the Common &Ancestor"), {}, has_ancestor,
                                [this](bool on) { set_ancestor(on); });
}

void MergeView::update_entries()
{
    if (save_entry == nullptr)
        return;
    save_entry->setEnabled(can_save());
    if (ancestor_entry != nullptr)
        ancestor_entry->setChecked(has_ancestor);
    undo_entry->setEnabled(result && result->can_undo());
    redo_entry->setEnabled(result && result->can_redo());
    const bool takes =
        result && current && result->plan().regions[*current].kind != RegionKind::unchanged;
    for (QAction* entry : take_entries)
        entry->setEnabled(takes);
}
