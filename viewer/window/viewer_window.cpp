#include "viewer/window/viewer_window.h"

#include "viewer/window/accessible_column.h"
#include "viewer/window/compare_view.h"
#include "viewer/window/folder_view.h"
#include "viewer/window/merge_view.h"
#include "viewer/window/startup_notification.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr const char* geometry_name = "viewer";
constexpr int columns_of_text = 88; // for which the first size has room, in each column
constexpr int rows_of_text = 46;

/** Texts that are read this soon are in the first picture. The window's manager takes about as long
    to put the window on the screen. */
constexpr std::chrono::milliseconds soon_read{50};

/** Work that takes longer can be cancelled: a button that comes and goes at once would only
 * distract.
 */
constexpr std::chrono::milliseconds noticed_work{100};

/** Work that takes longer does not keep the machine from getting ready for the next request. */
constexpr std::chrono::milliseconds long_work{1000};

QString title_of(const Contributors& contributors)
{
    QStringList names;
    for (const Contributor& contributor : contributors)
        names.append(contributor.name);
    return names.join(QStringLiteral(" \u2013 "));
}

/** Text that needs what most texts need, for warming up. */
Contributors sample()
{
    std::string text;
    for (char character = ' '; character < '\x7f'; ++character)
        text += character;
    const auto one = std::make_shared<const Text>(text + "\nsame\n", 0, false);
    const auto other = std::make_shared<const Text>(text + " \nsame\nmore\n", 0, false);
    const QString name = QString::fromStdString(text);
    return {{.name = name, .facts = describe(*one), .text = one},
            {.name = name, .facts = describe(*other), .text = other}};
}

} // namespace

ViewerWindow::ViewerWindow()
    : style(make_style(load_view_options())),
      compare(new CompareView(style, this)),
      reading([this](Contributors read) { take_texts(std::move(read)); })
{
    make_columns_accessible();
    setCentralWidget(compare);
    connect_page(*compare);
    stop.setText(tr("Cancel"));
    stop.hide();
    QObject::connect(&stop, &QPushButton::clicked, this, [this] { stop_work(); });
    constexpr int inset = 6; // as far from the edge as the columns' headers
    status.setContentsMargins(inset, 0, inset, 0);
    place.setContentsMargins(inset, 0, inset, 0);
    statusBar()->addWidget(&status, 1);
    statusBar()->addPermanentWidget(&stop);
    statusBar()->addPermanentWidget(&place);
    show_page(compare);
    first_size();
}

ViewerWindow::~ViewerWindow()
{
    // The page tells the labels above until it is gone.
    delete takeCentralWidget();
}

SharedStyle ViewerWindow::make_style(const ViewOptions& options) const
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const qreal system_size = font.pointSizeF() > 0 ? font.pointSizeF() : 10;
    font.setPointSizeF(std::max(system_size + options.font_growth, 4.0));
    return std::make_shared<const ViewStyle>(
        ViewStyle{GlyphMetrics(font, devicePixelRatioF(), options.tab_cells),
                  ViewerPalette(palette()), options});
}

void ViewerWindow::connect_page(ViewerPage& page)
{
    page.on_status = [this](const QString& text) { status.setText(text); };
    page.on_place = [this](const QString& text) { place.setText(text); };
    page.on_busy = [this](bool busy) { set_busy(busy); };
    page.on_options = [this](const ViewOptions& options) { apply_options(options); };
    page.on_close_wanted = [this] { close(); };
}

void ViewerWindow::apply_options(const ViewOptions& options)
{
    save_view_options(options);
    style = make_style(options);
    current->set_style(style);
}

void ViewerWindow::show_page(ViewerPage* page)
{
    current = page;
    menuBar()->clear();
    delete findChild<QToolBar*>();
    auto* tools = new QToolBar(tr("Tools"), this);
    tools->setMovable(false);
    tools->setIconSize(QSize(16, 16));
    tools->setContextMenuPolicy(Qt::PreventContextMenu);
    page->add_menus(*menuBar(), *tools);
    addToolBar(tools);
}

void ViewerWindow::first_size()
{
    if (restoreGeometry(load_geometry(geometry_name)))
        return;
    const GlyphMetrics& metrics = style->metrics;
    const QSize room = screen()->availableSize() * 0.9;
    const int width = static_cast<int>(metrics.cell() * (columns_of_text + 8)) * 2;
    const int height = metrics.line_height() * rows_of_text + 150;
    resize(QSize(width, height).boundedTo(room));
}

void ViewerWindow::warm_up()
{
    setWindowTitle(QStringLiteral("\u2013")); // loads what turns titles into the display's text
    compare->show_read(sample());
    compare->wait_a_little();
    setAttribute(Qt::WA_DontShowOnScreen);
    show();
    windowHandle()->setCursor(Qt::ArrowCursor); // loads its picture
    held_keys.watch(*this);
    first_picture.prepare();
    hide();
    setAttribute(Qt::WA_DontShowOnScreen, false);
    compare->show_read({});
}

void ViewerWindow::open(const WindowRequest& wanted)
{
    const Request& request = wanted.request;
    Contributors unread = name_contributors(request.contributors, request.names, request.encoding);
    setWindowTitle(title_of(unread));
    come_to_front(wanted); // the window's manager works while this goes on
    if (!request.merge && std::ranges::all_of(unread, &Contributor::is_directory))
        open_folders(wanted, std::move(unread));
    else if (request.merge)
        open_merge(wanted, std::move(unread));
    else
        open_comparison(wanted, std::move(unread));
    current->take_focus();
}

void ViewerWindow::start_reading(const Request& request)
{
    reading.start([request](const std::stop_token& /*stop*/) {
        return std::optional(
            read_contributors(request.contributors, request.names, request.encoding));
    });
}

/** The window's manager and the reading threads work side by side. */
void ViewerWindow::open_merge(const WindowRequest& wanted, Contributors unread)
{
    start_reading(wanted.request);
    auto* merge = new MergeView(style, this);
    show_instead(merge);
    merge->prepare_merge(std::move(unread), wanted.request.output, wanted.file_mode_mask);
    show_page(merge);
    reads = merge;
    wait_for_texts();
}

void ViewerWindow::wait_for_texts()
{
    reading.wait(soon_read);
    reads->wait_a_little();
    if (reading.is_running())
        tell_reading();
    paint_ahead([] {});
}

void ViewerWindow::tell_reading()
{
    set_busy(true);
    status.setText(tr("Reading\u2026"));
}

void ViewerWindow::paint_ahead(std::function<void()> then)
{
    QTimer::singleShot(0, this, [this, next = std::move(then)] { // once all is laid out
        const bool is_as_prepared = current == compare;
        first_picture.paint_what_changed(is_as_prepared ? centralWidget()->geometry() : rect(),
                                         next);
    });
}

/** Of long texts, the first picture has the first lines. */
void ViewerWindow::open_comparison(const WindowRequest& wanted, Contributors unread)
{
    reads = compare;
    if (auto begun = read_beginnings(unread)) {
        compare->announce(*std::move(begun));
        tell_reading();
        paint_ahead([this, request = wanted.request] { start_reading(request); });
    } else {
        start_reading(wanted.request);
        compare->announce(std::move(unread));
        wait_for_texts();
    }
}

void ViewerWindow::take_texts(Contributors read)
{
    set_busy(false);
    reads->show_read(std::move(read));
    waits_for_picture = true;
    update();
}

void ViewerWindow::open_folders(const WindowRequest& wanted, Contributors unread)
{
    auto* folders = new FolderView(style, this);
    show_instead(folders);
    folders->on_open = [this, encoding = wanted.request.encoding](const auto& paths,
                                                                  const auto& names) {
        open_files(paths, names, encoding);
    };
    folders->show_folders(std::move(unread));
    show_page(folders);
    waits_for_picture = true;
}

/** There is nothing to look at in a window whose texts are not to be read. */
void ViewerWindow::stop_work()
{
    if (reading.is_running())
        close();
    else
        current->cancel();
}

/** The page that was made in advance gives way to another. */
void ViewerWindow::show_instead(ViewerPage* page)
{
    connect_page(*page);
    menuBar()->clear();
    setCentralWidget(page); // deletes the old one
    compare = nullptr;
}

void ViewerWindow::open_files(const std::vector<std::string>& paths,
                              const std::vector<std::string>& names, int encoding)
{
    std::erase_if(others, [](const auto& window) { return window->finished; });
    others.push_back(std::make_unique<ViewerWindow>());
    WindowRequest wanted;
    wanted.request.contributors = paths;
    wanted.request.names = names;
    wanted.request.encoding = encoding;
    others.back()->open(wanted);
}

void ViewerWindow::come_to_front(const WindowRequest& wanted)
{
    if (!wanted.activation_token.empty())
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(wanted.activation_token));
    startup_id = wanted.startup_id;
    name_startup(*this, startup_id);
    held_keys.watch(*this);
    show();
    raise();
    activateWindow();
    send_to_display();
}

void ViewerWindow::paintEvent(QPaintEvent* event)
{
    QMainWindow::paintEvent(event);
    if (!waits_for_picture || first_picture.is_being_painted())
        return;
    waits_for_picture = false;
    QTimer::singleShot(0, this, [this] { painted_first(); }); // once all is painted and flushed
}

void ViewerWindow::painted_first()
{
    was_shown = true;
    end_startup(startup_id);
    current->after_shown();
    if (!is_busy)
        tell_shown();
    else
        QTimer::singleShot(long_work, this, [this] { tell_shown(); });
}

void ViewerWindow::set_busy(bool busy)
{
    is_busy = busy;
    if (!busy)
        stop.hide();
    else
        QTimer::singleShot(noticed_work, this, [this] { stop.setVisible(is_busy); });
    if (was_shown && !busy)
        QTimer::singleShot(0, this, [this] { tell_shown(); }); // once the outcome is painted
}

void ViewerWindow::tell_shown()
{
    if (on_shown)
        std::exchange(on_shown, nullptr)();
}

void ViewerWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && current != nullptr) {
        style = make_style(style->options);
        current->set_style(style);
    }
}

void ViewerWindow::abandon()
{
    abandoned = true;
    close();
}

void ViewerWindow::closeEvent(QCloseEvent* event)
{
    if (current->has_unsaved_work() && !abandoned && !may_lose_work) {
        event->ignore();
        ask_about_work();
        return;
    }
    save_geometry(geometry_name, saveGeometry());
    others.clear();
    event->accept();
    finish(was_shown && !abandoned && current->succeeds());
}

void ViewerWindow::ask_about_work()
{
    auto* box = new QMessageBox(QMessageBox::Question, windowTitle(),
                                tr("The result of the merge is not saved."),
                                QMessageBox::Discard | QMessageBox::Cancel, this);
    box->setInformativeText(current->can_save()
                                ? tr("Save it before closing?")
                                : tr("It cannot be saved yet: conflicts are unresolved."));
    if (current->can_save())
        box->addButton(QMessageBox::Save)->setText(tr("&Save"));
    box->button(QMessageBox::Discard)->setText(tr("&Discard"));
    box->button(QMessageBox::Cancel)->setText(tr("&Cancel"));
    box->setDefaultButton(current->can_save() ? QMessageBox::Save : QMessageBox::Cancel);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QMessageBox::finished, this, [this](int button) {
        if (button == QMessageBox::Save)
            current->save();
        if (button != QMessageBox::Discard)
            return;
        may_lose_work = true;
        close();
    });
    box->open();
}

void ViewerWindow::finish(bool success)
{
    if (finished)
        return;
    finished = true;
    if (on_finished)
        on_finished(success);
}
