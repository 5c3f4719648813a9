/*
 * The rows of a directory compare as a tree for a view: one for each relative path, beneath its
 * folder's; a column for the path and one for each contributor. Rows may be left out by what they
 * are; a folder stays as long as anything in it is shown.
 */
#pragma once

#include "viewer/core/folder_comparison.h"
#include "viewer/window/viewer_palette.h"

#include <QAbstractItemModel>
#include <QCoreApplication>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

/** Which rows are shown. */
struct FolderFilter {
    bool same = true;
    bool different = true; // kinds that differ, what cannot be read and what is pending too
    bool missing = true;   // in some contributors
};

class FolderModel : public QAbstractItemModel
{
    Q_DECLARE_TR_FUNCTIONS(FolderModel)

  public:
    using Change = std::pair<std::size_t, FolderRow>;

    explicit FolderModel(const ViewerPalette& palette) : colours(palette) {}

    void set_palette(const ViewerPalette& palette);
    void show_folders(FolderComparison listed, const QStringList& names);
    void set_filter(const FolderFilter& wanted);
    const FolderFilter& filter() const { return shown_states; }

    /** Takes rows that have been compared. */
    void take(const std::vector<Change>& changes);

    /** Leaves out again what has turned out to be other than is shown. */
    void apply_filter();

    const FolderComparison& folders() const { return all; }

    /** The row of the comparison that an index of the view shows. */
    const FolderRow& row_at(const QModelIndex& index) const { return all.rows[node_at(index).row]; }

    /** Where a path is shown; invalid where it is not. */
    QModelIndex index_of(const std::string& path) const;

    /** The next row that is shown and is a difference itself, whatever is collapsed; from the first
        or the last for an invalid index. */
    QModelIndex next_difference(const QModelIndex& from, bool forward) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    /** A row that is shown. */
    struct Node {
        std::size_t row = 0;                 // of the comparison
        std::optional<std::size_t> parent{}; // node
        int place = 0;                       // among those beneath the parent
        std::vector<std::size_t> below{};    // nodes
    };

    bool is_shown(EntryState state) const;
    std::vector<bool> shown_rows(const std::vector<std::optional<std::size_t>>& parents) const;
    const Node& node_at(const QModelIndex& index) const { return nodes[index.internalId()]; }
    const std::vector<std::size_t>& nodes_below(const QModelIndex& parent) const
    {
        return parent.isValid() ? node_at(parent).below : top;
    }
    QModelIndex index_of_node(std::size_t node) const
    {
        return createIndex(nodes[node].place, 0, node);
    }
    void tell_data_changed();
    QVariant path_data(std::size_t row, int role) const;
    QVariant entry_data(const FolderEntry& entry, int role) const;
    bool holds_differences(std::size_t row, const FolderEntry& entry) const;

    ViewerPalette colours;
    FolderComparison all{};
    QStringList contributor_names{};
    FolderFilter shown_states{};
    std::vector<Node> nodes{};      // in the order of the comparison's rows
    std::vector<std::size_t> top{}; // nodes without a parent
    std::vector<EntryState> summaries{};
};
