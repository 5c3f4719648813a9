#include "viewer/window/first_picture.h"

#include <QBackingStore>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>
#include <utility>
#include <xcb/xcb.h>

namespace
{

/** After it is mapped, a window is asked for its picture at once, unless others hide all of it. */
constexpr std::chrono::milliseconds time_to_be_asked{10};

constexpr unsigned event_bits = 0x7f; // the rest tells events that a client sent

bool is_on_x()
{
    return QGuiApplication::platformName() == "xcb";
}

} // namespace

FirstPicture::FirstPicture(QWidget& window) : shown(window)
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

FirstPicture::~FirstPicture()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

void FirstPicture::prepare()
{
    if (is_on_x() && shown.backingStore() != nullptr)
        paint(shown.rect());
    else
        shown.grab(); // loads what painting needs
}

void FirstPicture::paint_what_changed(const QRegion& changed, std::function<void()> then)
{
    const QBackingStore* store = shown.backingStore();
    if (!is_on_x() || store == nullptr || shown.windowHandle()->isExposed())
        return then();
    paint(store->size() == shown.size() ? changed : shown.rect());
    next = std::move(then);
}

void FirstPicture::paint(const QRegion& region)
{
    QBackingStore* store = shown.backingStore();
    painting = true;
    store->resize(shown.size());
    store->beginPaint(region);
    shown.render(store->paintDevice(), region.boundingRect().topLeft(), region);
    store->endPaint();
    painting = false;
}

bool FirstPicture::nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/)
{
    if (!next || type != "xcb_generic_event_t")
        return false;
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    const auto& mapped = *static_cast<const xcb_map_notify_event_t*>(message); // if it is one
    const auto& exposed = *static_cast<const xcb_expose_event_t*>(message);    // if it is one
    switch (event.response_type & event_bits) {
    case XCB_MAP_NOTIFY: // mostly, its manager's frame is there then
        if (mapped.window == shown.winId())
            put_on_screen(time_to_be_asked);
        return false;
    case XCB_EXPOSE:
        if (exposed.window == shown.winId())
            put_on_screen(std::chrono::milliseconds(0));
        return false;
    default:
        return false;
    }
}

void FirstPicture::put_on_screen(std::chrono::milliseconds rest)
{
    shown.backingStore()->flush(shown.rect());
    QTimer::singleShot(rest, &shown, [this] {
        if (next)
            std::exchange(next, nullptr)();
    });
}
