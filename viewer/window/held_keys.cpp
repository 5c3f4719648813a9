#include "viewer/window/held_keys.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <utility>
#include <xcb/xcb.h>

namespace
{

template<typename Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

constexpr unsigned event_bits = 0x7f; // the rest tells events that a client sent

void add_to_event_mask(xcb_connection_t* display, xcb_window_t window, std::uint32_t wanted)
{
    const Owned<xcb_get_window_attributes_reply_t> now(
        xcb_get_window_attributes_reply(display, xcb_get_window_attributes(display, window),
                                        nullptr),
        std::free);
    if (!now)
        return;
    const std::uint32_t mask = now->your_event_mask | wanted;
    xcb_change_window_attributes(display, window, XCB_CW_EVENT_MASK, &mask);
}

std::bitset<256> modifiers_of(xcb_connection_t* display)
{
    std::bitset<256> codes;
    const Owned<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(display, xcb_get_modifier_mapping(display), nullptr),
        std::free);
    if (!mapping)
        return codes;
    const xcb_keycode_t* all = xcb_get_modifier_mapping_keycodes(mapping.get());
    const int count = xcb_get_modifier_mapping_keycodes_length(mapping.get());
    for (int index = 0; index < count; ++index)
        codes.set(all[index]);
    return codes;
}

/** Nothing elsewhere than on X. */
xcb_connection_t* display_connection()
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

/** The event has one bit for each code, but for those of the first byte. */
std::bitset<256> keys_down(const xcb_keymap_notify_event_t& event)
{
    constexpr std::size_t bits = 8;
    std::bitset<256> codes;
    for (std::size_t code = bits; code < codes.size(); ++code)
        codes[code] = (event.keys[code / bits - 1] >> code % bits & 1) != 0;
    return codes;
}

} // namespace

HeldKeys::HeldKeys()
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

HeldKeys::~HeldKeys()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

void HeldKeys::watch(const QWidget& window)
{
    xcb_connection_t* display = display_connection();
    if (display == nullptr || window.winId() == watched)
        return;
    watched = window.winId();
    modifiers = modifiers_of(display);
    add_to_event_mask(display, static_cast<xcb_window_t>(window.winId()),
                      XCB_EVENT_MASK_KEYMAP_STATE);
}

bool HeldKeys::nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/)
{
    if (type != "xcb_generic_event_t")
        return false;
    const unsigned kind =
        static_cast<const xcb_generic_event_t*>(message)->response_type & event_bits;
    const bool got_keyboard = std::exchange(has_got_keyboard, kind == XCB_FOCUS_IN);
    const auto& key = *static_cast<const xcb_key_press_event_t*>(message); // if it is one
    switch (kind) {
    case XCB_MAPPING_NOTIFY:
        modifiers = modifiers_of(display_connection());
        return false;
    case XCB_KEYMAP_NOTIFY: // follows the keyboard at once
        if (got_keyboard)
            held = keys_down(*static_cast<const xcb_keymap_notify_event_t*>(message)) & ~modifiers;
        return false;
    case XCB_KEY_RELEASE:
        return drops_release(key.detail, key.time);
    case XCB_KEY_PRESS:
        return drops_press(key.detail, key.time);
    default:
        return false;
    }
}

bool HeldKeys::drops_release(std::uint8_t code, std::uint32_t time)
{
    believe_release(time);
    if (held.test(code))
        released = {code, time};
    return held.test(code);
}

bool HeldKeys::drops_press(std::uint8_t code, std::uint32_t time)
{
    believe_release(time);
    released = {};
    return held.test(code);
}

/** A key that the server makes repeat is released and pressed at one time; one that is not pressed
    again by then has been let go. */
void HeldKeys::believe_release(std::uint32_t now)
{
    if (released.code != 0 && released.time != now)
        held.reset(std::exchange(released, {}).code);
}
