#include "viewer/window/text_page.h"

#include "viewer/window/actions.h"
#include "viewer/window/text_finder.h"

#include <QFileInfo>
#include <QInputDialog>
#include <algorithm>

TextPage::TextPage(SharedStyle shared, QWidget* parent)
    : ViewerPage(parent), style(std::move(shared)), strip(this), side(style, this), find(this)
{
    side.on_caret_moved = [this](std::size_t) { caret_moved(); };
    side.on_zoom = [this](int steps) { on_options(with_font_growth(style->options, steps)); };
    side.on_context_menu = [this](std::size_t, QPoint global) {
        auto* menu = new QMenu(this);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        TextPage::fill_edit_menu(*menu);
        menu->popup(global);
    };
    find.on_find = [this](bool forward) { find_phrase(forward); };
    find.on_changed = [this] { mark_phrase(); };
    find.on_closed = [this] {
        mark_phrase();
        take_focus();
    };
}

std::vector<TextColumn*> TextPage::texts()
{
    std::vector<TextColumn*> all;
    all.reserve(side.column_count() + 1);
    for (std::size_t index = 0; index < side.column_count(); ++index)
        all.push_back(&side.column(index));
    return all;
}

void TextPage::set_style(SharedStyle shared)
{
    style = std::move(shared);
    side.set_style(style);
}

void TextPage::take_focus()
{
    const auto all = texts();
    if (active_text() < all.size())
        all[active_text()]->setFocus();
}

void TextPage::select_in(std::size_t text, TextPosition begin, TextPosition end)
{
    side.select_in(text, begin, end);
}

void TextPage::caret_moved()
{
    tell_place();
}

void TextPage::tell_place()
{
    const TextColumn* const active = texts()[active_text()];
    const TextColumn& text = *active;
    if (text.source() == nullptr || text.source()->line_count() == 0)
        return;
    const TextPosition place = text.caret();
    const std::size_t number = text.source()->row(text.source()->row_of({place.line, 0})).number;
    const std::string_view before = text.source()->line(place.line).substr(0, place.byte);
    const auto column = QString::fromUtf8(before.data(), static_cast<qsizetype>(before.size()));
    on_place(number == 0
                 ? QString()
                 : tr("Line %1, column %2")
                       .arg(QString::number(number), QString::number(column.toUcs4().size() + 1)));
}

void TextPage::go_to_line(std::size_t number)
{
    const std::size_t text = active_text();
    const RowSource* source = texts()[text]->source();
    if (source == nullptr || source->line_count() == 0)
        return;
    const std::size_t line = std::clamp<std::size_t>(number, 1, source->line_count()) - 1;
    select_in(text, {line, 0}, {line, 0});
    caret_moved();
    take_focus();
}

void TextPage::ask_for_line()
{
    auto* dialog = new QInputDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Go to Line"));
    dialog->setLabelText(tr("Line number:"));
    dialog->setOkButtonText(tr("OK"));
    dialog->setCancelButtonText(tr("Cancel"));
    dialog->setInputMode(QInputDialog::IntInput);
    dialog->setIntRange(1, 2000000000);
    dialog->setIntValue(static_cast<int>(texts()[active_text()]->caret().line) + 1);
    QObject::connect(dialog, &QInputDialog::intValueSelected, this,
                     [this](int number) { go_to_line(static_cast<std::size_t>(number)); });
    dialog->open();
}

void TextPage::mark_phrase()
{
    const QString phrase = find.isVisible() ? find.phrase() : QString();
    for (TextColumn* text : texts())
        text->set_phrase(phrase, find.match_case());
}

void TextPage::find_phrase(bool forward)
{
    if (find.phrase().isEmpty()) {
        find.ask({});
        return;
    }
    const auto all = texts();
    std::vector<const RowSource*> sources;
    sources.reserve(all.size());
    for (const TextColumn* text : all)
        sources.push_back(text->source());
    const TextColumn& text = *all[active_text()];
    const Phrase phrase{find.phrase().toStdString(), find.match_case(), find.wraps(), forward};
    const auto hit = find_in_columns(
        sources, active_text(), forward ? text.selection_end() : text.selection_begin(), phrase);
    find.tell(hit.has_value());
    if (!hit)
        return;
    select_in(hit->column, hit->begin, hit->end);
    caret_moved();
}

void TextPage::after_shown()
{
    was_shown = true;
    watch_files();
}

void TextPage::watch_files()
{
    watcher = std::make_unique<QFileSystemWatcher>();
    for (const Contributor& contributor : contributors)
        watcher->addPath(QString::fromLocal8Bit(contributor.path.c_str()));
    QObject::connect(watcher.get(), &QFileSystemWatcher::fileChanged, this,
                     [this](const QString& path) {
                         strip.offer(tr("%1 has changed on disk.").arg(QFileInfo(path).fileName()),
                                     tr("Reload"), [this] { ask_to_reload(); });
                     });
}

void TextPage::announce(Contributors unread)
{
    is_read = false;
    contributors = std::move(unread);
    side.show_contributors(contributors);
}

void TextPage::reload()
{
    std::vector<std::string> paths;
    std::vector<std::string> names;
    for (const Contributor& contributor : contributors) {
        paths.push_back(contributor.path);
        names.push_back(contributor.name.toLocal8Bit().toStdString());
    }
    if (paths.empty())
        return;
    const std::size_t line = side.top_line();
    show_read(read_contributors(paths, names, contributors.front().encoding));
    wait_a_little();
    side.scroll_to_line(line);
    if (was_shown)
        watch_files();
}

void TextPage::ask_to_reload()
{
    with_consent([this] { reload(); });
}

void TextPage::add_reload_entry(QMenu& file)
{
    add_entry_done_once(file, tr("&Reload"), {QKeySequence("F5")}, [this] { ask_to_reload(); });
}

void TextPage::fill_view_menu(QMenu& menu)
{
    add_view_options(menu, option_changes());
    menu.addSeparator();
    add_entry(menu, tr("Show the Nearest C&ollapsed Lines"), {QKeySequence("Alt+Return")},
              [this] { side.open_nearest_fold(); });
}

void TextPage::add_close_entry(QMenu& file)
{
    add_entry_done_once(file, tr("&Close"), {QKeySequence("Ctrl+W"), QKeySequence("Ctrl+Q")},
                        [this] { on_close_wanted(); });
}

void TextPage::fill_edit_menu(QMenu& menu)
{
    const auto text = [this]() -> TextColumn& { return *texts()[active_text()]; };
    add_entry(menu, tr("&Copy"), {QKeySequence(QKeySequence::Copy)}, [text] { text().copy(); });
    add_entry(menu, tr("Select &All"), {QKeySequence(QKeySequence::SelectAll)},
              [text] { text().select_all(); });
    menu.addSeparator();
    add_entry(menu, tr("&Find\u2026"), {QKeySequence("Ctrl+F")},
              [this, text] { find.ask(text().selected_text()); });
    add_entry(menu, tr("Find &Next"), {QKeySequence("F3")}, [this] { find_phrase(true); });
    add_entry(menu, tr("Find &Previous"), {QKeySequence("Shift+F3")},
              [this] { find_phrase(false); });
    menu.addSeparator();
    add_entry(menu, tr("&Go to Line\u2026"), {QKeySequence("Ctrl+G")}, [this] { ask_for_line(); });
}

OptionChanges TextPage::option_changes()
{
    return {.current = [this] { return style->options; },
            .change = [this](const ViewOptions& changed) { on_options(changed); }};
}
