// The menus of a compare, with the keys that such tools share.
#include "viewer/window/actions.h"
#include "viewer/window/arrow_icon.h"
#include "viewer/window/compare_view.h"
#include "viewer/window/option_menus.h"

#include <QMenu>

void CompareView::add_menus(QMenuBar& menus, QToolBar& tools)
{
    QMenu& file = *menus.addMenu(tr("&File"));
    add_entry(file, tr("&Reload"), {QKeySequence("F5")}, [this] { reload(); });
    add_entry(file, tr("S&wap Order"), {QKeySequence("Ctrl+Alt+S")}, [this] { swap_order(); });
    file.addSeparator();
    add_entry(file, tr("&Close"), {QKeySequence("Ctrl+W"), QKeySequence("Ctrl+Q")},
              [this] { on_close_wanted(); });
    fill_edit_menu(*menus.addMenu(tr("&Edit")));
    add_view_options(*menus.addMenu(tr("&View")), option_changes());
    fill_difference_menu(*menus.addMenu(tr("&Differences")), tools);
    add_compare_options(*menus.addMenu(tr("&Ignore")), option_changes());
}

OptionChanges CompareView::option_changes()
{
    return {.current = [this] { return style->options; },
            .change = [this](const ViewOptions& changed) { on_options(changed); }};
}

void CompareView::fill_edit_menu(QMenu& menu)
{
    const auto text = [this]() -> TextColumn& { return side.column(side.active_column()); };
    add_entry(menu, tr("&Copy"), {QKeySequence(QKeySequence::Copy)}, [text] { text().copy(); });
    add_entry(menu, tr("Select &All"), {QKeySequence(QKeySequence::SelectAll)},
              [text] { text().select_all(); });
    menu.addSeparator();
    add_entry(menu, tr("&Find\u2026"), {QKeySequence("Ctrl+F"), QKeySequence("/")},
              [this, text] { find.ask(text().selected_text()); });
    add_entry(menu, tr("Find &Next"), {QKeySequence("F3")}, [this] { find_phrase(true); });
    add_entry(menu, tr("Find &Previous"), {QKeySequence("Shift+F3")},
              [this] { find_phrase(false); });
    menu.addSeparator();
    add_entry(menu, tr("&Go to Line\u2026"), {QKeySequence("Ctrl+G")}, [this] { ask_for_line(); });
}

void CompareView::fill_difference_menu(QMenu& menu, QToolBar& tools)
{
    QAction* previous = add_entry(menu, tr("&Previous Difference"),
                                  {QKeySequence("F7"), QKeySequence("Alt+Up"), QKeySequence("P")},
                                  [this] { go_to_previous(); });
    QAction* next = add_entry(menu, tr("&Next Difference"),
                              {QKeySequence("F8"), QKeySequence("Alt+Down"), QKeySequence("N")},
                              [this] { go_to_next(); });
    add_entry(menu, tr("&First Difference"), {QKeySequence("Alt+Home")}, [this] { go_to_first(); });
    add_entry(menu, tr("&Last Difference"), {QKeySequence("Alt+End")}, [this] { go_to_last(); });
    previous->setIcon(arrow_icon(ArrowKind::up));
    next->setIcon(arrow_icon(ArrowKind::down));
    tools.addAction(previous);
    tools.addAction(next);
}

void CompareView::show_context_menu(std::size_t /*column*/, QPoint global)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fill_edit_menu(*menu);
    menu->popup(global);
}
