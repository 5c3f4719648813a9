#include "viewer/attended.h"

#include "platform/ks.h"
#include "viewer/exchange.h"
#include "viewer/launcher_process.h"
#include "viewer/service_line.h"
#include "viewer/window/translations.h"
#include "viewer/window/viewer_window.h"

#include <QApplication>
#include <QLocale>
#include <QSocketNotifier>
#include <array>
#include <exception>
#include <malloc.h>
#include <memory>
#include <optional>
#include <unistd.h>

namespace
{

/** What was needed for a while only: many of these programs wait, or stay open, side by side. */
void give_back_memory()
{
    ::malloc_trim(0);
}

/** One request's course. Whatever it throws on its way ends the program, which answers its launcher
    by the end of the file. */
class Attendance
{
  public:
    Attendance()
    {
        window.warm_up();
        window.on_shown = [] {
            tell_shown();
            give_back_memory();
        };
        window.on_finished = [this](bool success) { guarded([&] { finish(success); }); };
        QObject::connect(&from_service, &QSocketNotifier::activated, &window,
                         [this] { guarded([this] { take_orders(); }); });
        give_back_memory();
        tell_ready();
    }

  private:
    void take_orders()
    {
        if (!orders.read()) {
            from_service.setEnabled(false);
            if (!exchange)
                QCoreApplication::exit(0); // a spare that nobody needs
            return;
        }
        while (auto line = orders.next_line())
            take_order(*line);
    }

    void take_order(const std::string& line)
    {
        if (line == launcher_is_gone) {
            exchange.reset();
            window.abandon();
            QCoreApplication::exit(0);
        } else if (!request_path) {
            request_path = line;
        } else if (!exchange) {
            begin(line);
        }
    }

    void begin(const std::string& response_path)
    {
        exchange.emplace(*request_path, response_path);
        from_launcher = std::make_unique<QSocketNotifier>(exchange->request_descriptor(),
                                                          QSocketNotifier::Read);
        QObject::connect(from_launcher.get(), &QSocketNotifier::activated, &window,
                         [this] { guarded([this] { receive(); }); });
    }

    void receive()
    {
        if (!exchange->read())
            return;
        from_launcher->setEnabled(false);
        const LauncherProcess launcher(*request_path);
        window.open({.request = launcher.decode(exchange->document()),
                     .file_mode_mask = launcher.file_mode_mask(),
                     .activation_token = launcher.variable("XDG_ACTIVATION_TOKEN"),
                     .startup_id = launcher.variable("DESKTOP_STARTUP_ID")});
    }

    void finish(bool success)
    {
        if (!exchange)
            return; // nobody waits any more
        tell_answering();
        exchange->answer(success);
        exchange.reset();
        QCoreApplication::exit(0);
    }

    /** The toolkit's loop must not be left by an exception. */
    template<typename Step>
    void guarded(const Step& step)
    {
        try {
            step();
        } catch (const std::exception& error) {
            tell_reason(error.what());
            QCoreApplication::exit(1);
        }
    }

    ViewerWindow window;
    QSocketNotifier from_service{STDIN_FILENO, QSocketNotifier::Read};
    ServiceOrders orders;
    std::optional<std::string> request_path;
    std::optional<Exchange> exchange;
    std::unique_ptr<QSocketNotifier> from_launcher;
};

std::string product_directory()
{
    std::array<char, 4096> buffer{};
    return ks_product_dir(buffer.data(), 0);
}

} // namespace

int serve_attended(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName("quarnview");
    QCoreApplication::setOrganizationName("quarnfold");
    install_translations(product_directory(), QLocale::system().uiLanguages());
    QApplication::setQuitOnLastWindowClosed(false); // the answer ends it
    const Attendance attendance;
    return QApplication::exec();
}
