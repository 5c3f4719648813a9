/*
 * The compare of directories: one row for each relative path, whose states come in while contents
 * are compared in a thread. A row opens a compare of its files.
 */
#pragma once

#include "viewer/window/background_job.h"
#include "viewer/window/contributor.h"
#include "viewer/window/folder_model.h"
#include "viewer/window/viewer_page.h"

#include <QCoreApplication>
#include <QMenu>
#include <QTimer>
#include <QTreeView>
#include <memory>
#include <mutex>
#include <set>

class FolderView : public ViewerPage
{
    Q_DECLARE_TR_FUNCTIONS(FolderView)

  public:
    explicit FolderView(SharedStyle shared, QWidget* parent = nullptr);

    void show_folders(Contributors all);

    void set_style(SharedStyle shared) override;
    void add_menus(QMenuBar& menus, QToolBar& tools) override;
    void take_focus() override { table.setFocus(); }
    bool succeeds() const override { return true; }
    void cancel() override;

    QTreeView& rows() { return table; }
    FolderModel& model() { return entries; }

    /** Whether nothing is listed or compared any more. */
    bool is_done() const { return !listing.is_running() && !comparing.is_running(); }

    /** Opens the row at hand: a compare of its files, or what a folder holds. */
    void open_row();
    void go_to_difference(bool forward);
    void reload();

    /** A compare of these files is wanted; what a contributor lacks is the null device. */
    std::function<void(const std::vector<std::string>& paths,
                       const std::vector<std::string>& names)>
        on_open;

  private:
    /** What the thread has compared and the view has not taken yet. */
    struct Arrived {
        std::mutex mutex{};
        std::vector<FolderModel::Change> changes{};
    };

    void take_listing(FolderComparison listed);
    void take_arrived();
    void change_rows(const std::function<void()>& change);
    void tell_counts();
    void lay_out_columns();
    QAction* add_filter(QMenu& menu, const QString& text, const char* key,
                        bool FolderFilter::*field);

    SharedStyle style;
    Contributors contributors{};
    FolderModel entries;
    QTreeView table;
    std::set<std::string> collapsed{}; // paths of folders
    QTimer taking{};
    std::shared_ptr<Arrived> arrived{};
    BackgroundJob<FolderComparison> listing;
    BackgroundJob<bool> comparing;
};
