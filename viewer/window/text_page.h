/*
 * What a compare and a merge have in common: contributors side by side, a notice above and a bar
 * for finding beneath them, the caret's place, and the menus for these. A page may have more
 * columns of text than the contributors'.
 */
#pragma once

#include "viewer/window/contributor.h"
#include "viewer/window/find_bar.h"
#include "viewer/window/notice_bar.h"
#include "viewer/window/option_menus.h"
#include "viewer/window/side_by_side.h"
#include "viewer/window/viewer_page.h"

#include <QCoreApplication>
#include <QFileSystemWatcher>
#include <QMenu>
#include <functional>
#include <memory>
#include <vector>

class TextPage : public ViewerPage
{
    Q_DECLARE_TR_FUNCTIONS(TextPage)

  public:
    TextPage(SharedStyle shared, QWidget* parent);

    void set_style(SharedStyle shared) override;
    void take_focus() override;
    void after_shown() override;

    /** The columns, for whoever drives the page. */
    SideBySide& columns() { return side; }
    FindBar& finder() { return find; }
    NoticeBar& notice() { return strip; }

    /** Shows the lines of that number, counted from 1, in the active column. */
    void go_to_line(std::size_t number);
    void find_phrase(bool forward);

    /** Names the contributors while they are being read. */
    void announce(Contributors unread);

    /** Shows contributors that have been read; what they have to do with one another follows from
        a thread. */
    virtual void show_read(Contributors all) = 0;

    /** Waits a few milliseconds for what follows: what is there so soon is in the first picture. */
    virtual void wait_a_little() = 0;

    /** Reads all contributors again, and shows them. */
    void reload();

  protected:
    /** All columns of text, the contributors' first. */
    virtual std::vector<TextColumn*> texts();
    virtual std::size_t active_text() const { return side.active_column(); }
    virtual void select_in(std::size_t text, TextPosition begin, TextPosition end);

    /** The caret of the active text is elsewhere. */
    virtual void caret_moved();

    /** Does what would throw away the user's work, at once or when the user consents. */
    virtual void with_consent(const std::function<void()>& action) { action(); }

    void mark_phrase();
    void add_reload_entry(QMenu& file);
    void fill_view_menu(QMenu& menu);
    void add_close_entry(QMenu& file);
    virtual void fill_edit_menu(QMenu& menu);
    OptionChanges option_changes();

    SharedStyle style;
    Contributors contributors{};
    bool is_read = false; // no contributor is only announced
    NoticeBar strip;
    SideBySide side;
    FindBar find;

  private:
    void ask_for_line();
    void ask_to_reload();
    void watch_files();
    void tell_place();

    std::unique_ptr<QFileSystemWatcher> watcher{}; // made late: it starts a thread
    bool was_shown = false;
};
