#include "viewer/window/startup_notification.h"

#include <QGuiApplication>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

namespace
{

xcb_connection_t* connection()
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* display, std::string_view name)
{
    const auto cookie =
        xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(display, cookie, nullptr), std::free);
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

/** The time of the user's action, which ends an id as "_TIME" and digits; 0 for none. */
std::uint32_t time_of(std::string_view startup_id)
{
    constexpr std::string_view tag = "_TIME";
    const std::size_t at = startup_id.rfind(tag);
    std::uint32_t time = 0;
    if (at != std::string_view::npos)
        std::from_chars(startup_id.data() + at + tag.size(), startup_id.data() + startup_id.size(),
                        time);
    return time;
}

/** The message in pieces of 20 bytes, as the startup notification protocol has it. */
void broadcast(xcb_connection_t* display, const std::string& message)
{
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    const xcb_window_t sender = xcb_generate_id(display);
    xcb_create_window(display, XCB_COPY_FROM_PARENT, sender, root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = sender;
    event.type = atom(display, "_NET_STARTUP_INFO_BEGIN");
    const xcb_atom_t more = atom(display, "_NET_STARTUP_INFO");
    constexpr std::size_t piece = sizeof event.data.data8;
    for (std::size_t at = 0; at <= message.size(); at += piece) { // the final NUL is sent too
        std::memset(event.data.data8, 0, piece);
        std::memcpy(event.data.data8, message.data() + at, std::min(piece, message.size() - at));
        std::array<char, 32> bytes{};
        std::memcpy(bytes.data(), &event, bytes.size());
        xcb_send_event(display, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE, bytes.data());
        event.type = more;
    }
    xcb_destroy_window(display, sender);
    xcb_flush(display);
}

} // namespace

void name_startup(const QWidget& window, const std::string& startup_id)
{
    xcb_connection_t* display = connection();
    if (display == nullptr || startup_id.empty())
        return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    xcb_change_property(display, XCB_PROP_MODE_REPLACE, id, atom(display, "_NET_STARTUP_ID"),
                        atom(display, "UTF8_STRING"), 8,
                        static_cast<std::uint32_t>(startup_id.size()), startup_id.data());
    if (const std::uint32_t time = time_of(startup_id); time != 0)
        xcb_change_property(display, XCB_PROP_MODE_REPLACE, id, atom(display, "_NET_WM_USER_TIME"),
                            XCB_ATOM_CARDINAL, 32, 1, &time);
}

void send_to_display()
{
    if (xcb_connection_t* display = connection(); display != nullptr)
        xcb_flush(display);
}

void end_startup(const std::string& startup_id)
{
    xcb_connection_t* display = connection();
    if (display == nullptr || startup_id.empty())
        return;
    std::string quoted;
    for (const char character : startup_id) {
        if (character == '"' || character == '\\')
            quoted += '\\';
        quoted += character;
    }
    broadcast(display, "remove: ID=\"" + quoted + "\"");
}
