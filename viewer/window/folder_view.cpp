#include "viewer/window/folder_view.h"

#include "viewer/window/actions.h"
#include "viewer/window/arrow_icon.h"
#include "viewer/window/numbers.h"
#include "viewer/window/option_menus.h"

#include <QHeaderView>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>

namespace
{

constexpr int taking_interval = 60; // ms between looks at what has been compared

/** Rows with some air. */
class RowLook : public QStyledItemDelegate
{
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        constexpr int air = 6;
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, air);
    }
};

bool is_file(const FolderEntry& entry)
{
    return entry.kind == EntryKind::file || entry.kind == EntryKind::link;
}

} // namespace

FolderView::FolderView(SharedStyle shared, QWidget* parent)
    : ViewerPage(parent),
      style(std::move(shared)),
      entries(style->palette),
      table(this),
      listing([this](FolderComparison listed) { take_listing(std::move(listed)); }),
      comparing([this](bool) {
          taking.stop();
          take_arrived();
          change_rows([this] { entries.apply_filter(); });
          on_busy(false);
          tell_counts();
      })
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&table);
    table.setModel(&entries);
    table.setItemDelegate(new RowLook(this));
    table.setExpandsOnDoubleClick(false); // opening a row does it
    table.setUniformRowHeights(true);     // only rows that are seen are asked for
    table.setAllColumnsShowFocus(true);
    table.setAccessibleName(tr("Directories"));
    QObject::connect(&table, &QTreeView::activated, this, [this] { open_row(); });
    QObject::connect(&table, &QTreeView::collapsed, this, [this](const QModelIndex& index) {
        collapsed.insert(entries.row_at(index).path);
    });
    QObject::connect(&table, &QTreeView::expanded, this, [this](const QModelIndex& index) {
        collapsed.erase(entries.row_at(index).path);
    });
    QObject::connect(&taking, &QTimer::timeout, this, [this] { take_arrived(); });
}

void FolderView::show_folders(Contributors all)
{
    contributors = std::move(all);
    reload();
}

void FolderView::reload()
{
    comparing.cancel();
    taking.stop();
    std::vector<std::string> roots;
    for (const Contributor& contributor : contributors)
        roots.push_back(contributor.path);
    on_busy(true);
    on_status(tr("Listing\u2026"));
    listing.start(
        [roots](const std::stop_token& stop) { return std::optional(list_folders(roots, stop)); });
}

void FolderView::take_listing(FolderComparison listed)
{
    QStringList names;
    for (const Contributor& contributor : contributors)
        names.append(contributor.name);
    arrived = std::make_shared<Arrived>();
    comparing.start([listed, into = arrived](const std::stop_token& stop) {
        const auto tell = [&](std::size_t index, const FolderRow& row) {
            const std::lock_guard lock(into->mutex);
            into->changes.emplace_back(index, row);
        };
        compare_contents(listed, tell, stop);
        return std::optional(true);
    });
    change_rows([&] { entries.show_folders(std::move(listed), names); });
    lay_out_columns();
    taking.start(taking_interval);
    tell_counts();
}

void FolderView::take_arrived()
{
    std::vector<FolderModel::Change> changes;
    {
        const std::lock_guard lock(arrived->mutex);
        changes.swap(arrived->changes);
    }
    if (changes.empty())
        return;
    entries.take(changes);
    table.viewport()->update();
    tell_counts();
}

/** Paths need more room than states, which share the rest. */
void FolderView::lay_out_columns()
{
    constexpr double part_of_paths = 0.45;
    QHeaderView& header = *table.header();
    header.setStretchLastSection(false);
    header.setTextElideMode(Qt::ElideMiddle);
    header.setSectionResizeMode(QHeaderView::Stretch);
    header.setSectionResizeMode(0, QHeaderView::Interactive);
    header.resizeSection(0, static_cast<int>(table.width() * part_of_paths));
}

/** What is collapsed stays so, and the row at hand where it is still shown. */
void FolderView::change_rows(const std::function<void()>& change)
{
    const QModelIndex before = table.currentIndex();
    const std::string path = before.isValid() ? entries.row_at(before).path : std::string();
    const std::set<std::string> closed = collapsed;
    change();
    table.expandAll();
    for (const std::string& folder : closed)
        table.collapse(entries.index_of(folder));
    const QModelIndex after = entries.index_of(path);
    table.setCurrentIndex(after.isValid() ? after : entries.index(0, 0));
}

void FolderView::tell_counts()
{
    const StateCounts counts = entries.folders().counts();
    const auto of = [&](EntryState state) { return counts.at(static_cast<std::size_t>(state)); };
    QStringList parts{
        tr("Different: %1").arg(grouped(of(EntryState::different) + of(EntryState::kinds_differ))),
        tr("Only in some: %1").arg(grouped(of(EntryState::only_here) + of(EntryState::missing))),
        tr("Same: %1").arg(grouped(of(EntryState::same)))};
    if (of(EntryState::unreadable) > 0)
        parts.append(tr("Unreadable: %1").arg(grouped(of(EntryState::unreadable))));
    if (of(EntryState::pending) > 0)
        parts.append(tr("Not compared yet: %1").arg(grouped(of(EntryState::pending))));
    on_status(parts.join(QStringLiteral("   ")));
}

void FolderView::cancel()
{
    listing.cancel();
    comparing.cancel();
    taking.stop();
    on_busy(false);
    on_status(tr("Cancelled"));
}

void FolderView::open_row()
{
    const QModelIndex index = table.currentIndex();
    if (!index.isValid())
        return;
    const FolderRow& row = entries.row_at(index);
    const bool opens = std::ranges::any_of(row.entries, is_file) &&
                       std::ranges::all_of(row.entries, [](const FolderEntry& entry) {
                           return is_file(entry) || entry.kind == EntryKind::missing;
                       });
    if (!opens) {
        table.setExpanded(index.siblingAtColumn(0), !table.isExpanded(index.siblingAtColumn(0)));
        return;
    }
    std::vector<std::string> paths;
    std::vector<std::string> names;
    for (std::size_t column = 0; column < contributors.size(); ++column) {
        const Contributor& contributor = contributors[column];
        const bool is_there = is_file(row.entries[column]);
        paths.push_back(is_there ? contributor.path + "/" + row.path : "/dev/null");
        names.push_back(contributor.name.toLocal8Bit().toStdString() + "/" + row.path);
    }
    on_open(paths, names);
}

void FolderView::go_to_difference(bool forward)
{
    const QModelIndex next = entries.next_difference(table.currentIndex(), forward);
    if (next.isValid())
        table.setCurrentIndex(next); // which expands what it is in
}

void FolderView::set_style(SharedStyle shared)
{
    style = std::move(shared);
    entries.set_palette(style->palette);
    table.viewport()->update();
}

QAction* FolderView::add_filter(QMenu& menu, const QString& text, const char* key,
                                bool FolderFilter::*field)
{
    return add_switch(menu, text, {QKeySequence(QLatin1String(key))}, true, [this, field](bool on) {
        FolderFilter filter = entries.filter();
        filter.*field = on;
        change_rows([&] { entries.set_filter(filter); });
    });
}

void FolderView::add_menus(QMenuBar& menus, QToolBar& tools)
{
    QMenu& file = *menus.addMenu(tr("&File"));
    add_entry(file, tr("&Open Row"), {QKeySequence("Ctrl+O")}, [this] { open_row(); });
    add_entry_done_once(file, tr("&Reload"), {QKeySequence("F5")}, [this] { reload(); });
    file.addSeparator();
    add_entry_done_once(file, tr("&Close"), {QKeySequence("Ctrl+W"), QKeySequence("Ctrl+Q")},
                        [this] { on_close_wanted(); });
    QMenu& show = *menus.addMenu(tr("&Show"));
    const QList<QAction*> filters{
        add_filter(show, tr("&Different"), "Ctrl+1", &FolderFilter::different),
        add_filter(show, tr("Only in S&ome"), "Ctrl+2", &FolderFilter::missing),
        add_filter(show, tr("&Same"), "Ctrl+3", &FolderFilter::same)};
    QMenu& differences = *menus.addMenu(tr("&Differences"));
    QAction* previous = add_entry(differences, tr("&Previous Difference"),
                                  {QKeySequence("F7"), QKeySequence("Alt+Up"), QKeySequence("P")},
                                  [this] { go_to_difference(false); });
    QAction* next = add_entry(differences, tr("&Next Difference"),
                              {QKeySequence("F8"), QKeySequence("Alt+Down"), QKeySequence("N")},
                              [this] { go_to_difference(true); });
    previous->setIcon(arrow_icon(ArrowKind::up));
    next->setIcon(arrow_icon(ArrowKind::down));
    tools.addActions({previous, next});
    tools.addSeparator();
    tools.addActions(filters);
}
