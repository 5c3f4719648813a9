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

} // namespace

void FolderModel::set_palette(const ViewerPalette& palette)
{
    beginResetModel();
    colours = palette;
    endResetModel();
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

void FolderModel::apply_filter()
{
    beginResetModel();
    summaries = all.summaries();
    shown.clear();
    for (std::size_t row = 0; row < all.rows.size(); ++row)
        if (is_shown(summaries[row]))
            shown.push_back(row);
    endResetModel();
}

void FolderModel::take(const std::vector<Change>& changes)
{
    for (const auto& [index, row] : changes)
        all.rows[index] = row;
    summaries = all.summaries();
    if (!shown.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

int FolderModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(shown.size());
}

int FolderModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(contributor_names.size()) + 1;
}

QVariant FolderModel::path_data(std::size_t row, int role) const
{
    const FolderRow& entry = all.rows[row];
    constexpr int indent = 4;
    const QString text =
        entry.path.empty() ? tr("(the directory itself)") : file_name(entry.name());
    const bool is_folder = std::ranges::any_of(
        entry.entries, [](const FolderEntry& one) { return one.kind == EntryKind::directory; });
    switch (role) {
    case Qt::DisplayRole:
        return QString(static_cast<qsizetype>(entry.depth()) * indent, QChar(' ')) + text +
               (is_folder ? QStringLiteral("/") : QString());
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
    const std::size_t row = shown[static_cast<std::size_t>(index.row())];
    if (index.column() == 0)
        return path_data(row, role);
    const FolderEntry& entry = all.rows[row].entries[static_cast<std::size_t>(index.column() - 1)];
    if (role == Qt::DisplayRole && holds_differences(row, entry))
        return {};
    return entry_data(entry, role);
}

QVariant FolderModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == 0 ? tr("Path") : contributor_names.value(section - 1);
}
