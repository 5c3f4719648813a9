/*
 * The rows of a directory compare for a view: one for each relative path, a column for the path and
 * one for each contributor. Rows may be left out by what they are.
 */
#pragma once

#include "viewer/core/folder_comparison.h"
#include "viewer/window/viewer_palette.h"

#include <QAbstractTableModel>
#include <QCoreApplication>
#include <QStringList>
#include <utility>
#include <vector>

/** Which rows are shown. */
struct FolderFilter {
    bool same = true;
    bool different = true; // kinds that differ, what cannot be read and what is pending too
    bool missing = true;   // in some contributors
};

class FolderModel : public QAbstractTableModel
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

    /** The row of the comparison that a row of the view shows. */
    const FolderRow& row_at(int row) const
    {
        return all.rows[shown[static_cast<std::size_t>(row)]];
    }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    bool is_shown(EntryState state) const;
    QVariant path_data(std::size_t row, int role) const;
    QVariant entry_data(const FolderEntry& entry, int role) const;
    bool holds_differences(std::size_t row, const FolderEntry& entry) const;

    ViewerPalette colours;
    FolderComparison all{};
    QStringList contributor_names{};
    FolderFilter shown_states{};
    std::vector<std::size_t> shown{}; // rows of the comparison
    std::vector<EntryState> summaries{};
};
