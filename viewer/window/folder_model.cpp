#include "viewer/window/folder_model.h"

#include <QLocale>
#include <algorithm>
#include <cstring>

namespace
{

Tint tint_of(EntryState state)
{
    switch (state) {
    case EntryState::different:
        return Tint::changed;
    case EntryState::only_here:
        return Tint::added;
    case EntryState::missing:
        return Tint::removed;
    case EntryState::kinds_differ:
    case EntryState::unreadable:
        return Tint::conflict;
    case EntryState::pending:
    case EntryState::same:
        break;
    }
    return Tint::none;
}

QString file_name(std::string_view name)
{
    return QString::fromLocal8Bit(name.data(), static_cast<qsizetype>(name.size()));
}

/** For each row that of the folder that holds it. */
std::vector<std::optional<std::size_t>> parents_of(const std::vector<FolderRow>& rows)
{
    std::vector<std::optional<std::size_t>> parents;
    parents.reserve(rows.size());
    std::vector<std::size_t> above; // the row at each depth
    for (std::size_t row = 0; row < rows.size(); ++row) {
        above.resize(std::min(above.size(), rows[row].depth()));
        parents.push_back(above.empty() ? std::nullopt : std::optional(above.back()));
        above.push_back(row);
    }
    return parents;
}

} // namespace

void FolderModel::set_palette(const ViewerPalette& palette)
{
    colours = palette;
    tell_data_changed();
}

void FolderModel::show_folders(FolderComparison listed, const QStringList& names)
{
    all = std::move(listed);
    contributor_names = names;
    apply_filter();
}

void FolderModel::set_filter(const FolderFilter& wanted)
{
    shown_states = wanted;
    apply_filter();
}

bool FolderModel::is_shown(EntryState state) const
{
    switch (state) {
    case EntryState::same:
        return shown_states.same;
    case EntryState::only_here:
    case EntryState::missing:
        return shown_states.missing;
    default:
        return shown_states.different;
    }
}

/** Those that the filter is for, and the folders above them. */
std::vector<bool>
FolderModel::shown_rows(const std::vector<std::optional<std::size_t>>& parents) const
{
    std::vector<bool> shown(parents.size());
    for (std::size_t row = parents.size(); row-- > 0;) {
        shown[row] = shown[row] || is_shown(summaries[row]);
        if (shown[row] && parents[row])
            shown[*parents[row]] = true;
    }
    return shown;
}

void FolderModel::apply_filter()
{
    beginResetModel();
    summaries = all.summaries();
    nodes.clear();
    top.clear();
    const auto parents = parents_of(all.rows);
    const std::vector<bool> shown = shown_rows(parents);
    std::vector<std::size_t> node_of(all.rows.size());
    for (std::size_t row = 0; row < all.rows.size(); ++row) {
        if (!shown[row])
            continue;
        Node node{.row = row};
        if (parents[row])
            node.parent = node_of[*parents[row]];
        auto& beside = node.parent ? nodes[*node.parent].below : top;
        node.place = static_cast<int>(beside.size());
        node_of[row] = nodes.size();
        beside.push_back(nodes.size());
        nodes.push_back(std::move(node));
    }
    endResetModel();
}

void FolderModel::take(const std::vector<Change>& changes)
{
    for (const auto& [index, row] : changes)
        all.rows[index] = row;
    summaries = all.summaries();
    tell_data_changed();
}

/** Views paint all that they show again, whatever part of it is named. */
void FolderModel::tell_data_changed()
{
    if (!top.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

QModelIndex FolderModel::index_of(const std::string& path) const
{
    for (std::size_t node = 0; node < nodes.size(); ++node)
        if (all.rows[nodes[node].row].path == path)
            return index_of_node(node);
    return {};
}

QModelIndex FolderModel::next_difference(const QModelIndex& from, bool forward) const
{
    const auto count = static_cast<std::ptrdiff_t>(nodes.size());
    const std::ptrdiff_t step = forward ? 1 : -1;
    const std::ptrdiff_t outside = forward ? -1 : count;
    std::ptrdiff_t node = from.isValid() ? static_cast<std::ptrdiff_t>(from.internalId()) : outside;
    for (node += step; node >= 0 && node < count; node += step) {
        const auto at = static_cast<std::size_t>(node);
        const EntryState state = all.rows[nodes[at].row].state();
        if (state != EntryState::same && state != EntryState::pending)
            return index_of_node(at);
    }
    return {};
}

QModelIndex FolderModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, nodes_below(parent)[static_cast<std::size_t>(row)]);
}

QModelIndex FolderModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || !node_at(index).parent)
        return {};
    return index_of_node(*node_at(index).parent);
}

int FolderModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : static_cast<int>(nodes_below(parent).size());
}

int FolderModel::columnCount(const QModelIndex& /*parent*/) const
{
    return static_cast<int>(contributor_names.size()) + 1;
}

QVariant FolderModel::path_data(std::size_t row, int role) const
{
    const FolderRow& entry = all.rows[row];
    const QString text =
        entry.path.empty() ? tr("(the directory itself)") : file_name(entry.name());
    const bool is_folder = std::ranges::any_of(
        entry.entries, [](const FolderEntry& one) { return one.kind == EntryKind::directory; });
    switch (role) {
    case Qt::DisplayRole:
        return text + (is_folder ? QStringLiteral("/") : QString());
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return file_name(entry.path);
    case Qt::ForegroundRole:
        return tint_of(summaries[row]) == Tint::none ? QVariant()
                                                     : colours.mark(tint_of(summaries[row]));
    default:
        return {};
    }
}

QVariant FolderModel::entry_data(const FolderEntry& entry, int role) const
{
    const auto text = [&]() -> QString {
        switch (entry.state) {
        case EntryState::pending:
            return QStringLiteral("\u2026");
        case EntryState::same:
            return tr("= same");
        case EntryState::different:
            return tr("\u2260 different");
        case EntryState::only_here:
            return tr("+ only here");
        case EntryState::missing:
            return tr("\u2212 missing");
        case EntryState::kinds_differ:
            return entry.kind == EntryKind::directory ? tr("! a directory")
                   : entry.kind == EntryKind::link    ? tr("! a link")
                                                      : tr("! a file");
        case EntryState::unreadable:
            break;
        }
        return tr("! %1").arg(QString::fromLocal8Bit(std::strerror(entry.problem)));
    };
    switch (role) {
    case Qt::DisplayRole:
        return text();
    case Qt::ToolTipRole:
        return entry.kind == EntryKind::file
                   ? QLocale().formattedDataSize(static_cast<qint64>(entry.size))
                   : QVariant();
    case Qt::BackgroundRole:
        return tint_of(entry.state) == Tint::none ? QVariant() : colours.pale(tint_of(entry.state));
    case Qt::ForegroundRole:
        return colours.text;
    default:
        return {};
    }
}

/** Whether an entry is a directory that is everywhere, with other things in it. */
bool FolderModel::holds_differences(std::size_t row, const FolderEntry& entry) const
{
    return entry.kind == EntryKind::directory && entry.state == EntryState::same &&
           summaries[row] != EntryState::same;
}

QVariant FolderModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const std::size_t row = node_at(index).row;
    if (index.column() == 0)
        return path_data(row, role);
    const FolderEntry& entry = all.rows[row].entries[static_cast<std::size_t>(index.column() - 1)];
    if (role == Qt::DisplayRole && holds_differences(row, entry))
        return {};
    return entry_data(entry, role);
}

QVariant FolderModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    return section == 0 ? tr("Path") : contributor_names.value(section - 1);
}
