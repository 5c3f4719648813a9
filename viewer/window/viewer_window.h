/*
 * The window that a request opens. It can be made before there is a request, and is then shown
 * quickly: fonts are loaded, menus made. It shows one request in its life and answers once.
 */
#pragma once

#include "viewer/core/request.h"
#include "viewer/window/background_job.h"
#include "viewer/window/contributor.h"
#include "viewer/window/first_picture.h"
#include "viewer/window/held_keys.h"
#include "viewer/window/viewer_page.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <functional>
#include <memory>
#include <string>
#include <sys/types.h>

/** A request, and what else the viewer knows of who made it. */
struct WindowRequest {
    Request request{}; // paths are absolute
    mode_t file_mode_mask = 0;
    std::string activation_token{}; // XDG_ACTIVATION_TOKEN; empty for none
    std::string startup_id{};       // DESKTOP_STARTUP_ID; empty for none
};

class CompareView;
class TextPage;

class ViewerWindow : public QMainWindow
{
    Q_DECLARE_TR_FUNCTIONS(ViewerWindow)

  public:
    ViewerWindow();
    ~ViewerWindow() override;
    ViewerWindow(const ViewerWindow&) = delete;
    ViewerWindow& operator=(const ViewerWindow&) = delete;
    ViewerWindow(ViewerWindow&&) = delete;
    ViewerWindow& operator=(ViewerWindow&&) = delete;

    /** Does, without showing anything, what the first picture would have to wait for. */
    void warm_up();

    /** Shows the request: what it names at once, and its texts as soon as they are read. To be
        called once. */
    void open(const WindowRequest& wanted);

    /** Whoever asked is gone: closes without asking, and answers no. */
    void abandon();

    /** The first picture with the content is on the screen, and what is still to be found out about
        it is known, or takes its time. Once: whoever is told may keep the processor busy. */
    std::function<void()> on_shown;

    /** The answer, once. */
    std::function<void(bool success)> on_finished;

    ViewerPage* page() { return current; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    SharedStyle make_style(const ViewOptions& options) const;
    void apply_options(const ViewOptions& options);
    void show_page(ViewerPage* page);
    void show_instead(ViewerPage* page);
    void open_files(const std::vector<std::string>& paths, const std::vector<std::string>& names,
                    int encoding);
    void open_merge(const WindowRequest& wanted, Contributors unread);
    void start_reading(const Request& request);
    void wait_for_texts();
    void tell_reading();
    void paint_ahead(std::function<void()> then);
    void open_comparison(const WindowRequest& wanted, Contributors unread);
    void open_folders(const WindowRequest& wanted, Contributors unread);
    void take_texts(Contributors read);
    void stop_work();
    void set_busy(bool busy);
    void tell_shown();
    void first_size();
    void come_to_front(const WindowRequest& wanted);
    void painted_first();
    void ask_about_work();
    void finish(bool success);
    void connect_page(ViewerPage& page);

    HeldKeys held_keys{};
    FirstPicture first_picture{*this};
    SharedStyle style;
    CompareView* compare;      // made in advance
    TextPage* reads = nullptr; // what shows the texts when they are read
    ViewerPage* current = nullptr;
    std::vector<std::unique_ptr<ViewerWindow>> others{}; // opened from rows of directories
    QLabel status;
    QLabel place;
    QPushButton stop;
    std::string startup_id{};
    BackgroundJob<Contributors> reading;
    bool is_busy = false;
    bool waits_for_picture = false;
    bool was_shown = false;
    bool abandoned = false;
    bool may_lose_work = false;
    bool finished = false;
};
