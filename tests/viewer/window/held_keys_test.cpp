#include "viewer/window/held_keys.h"

#include "tests/viewer/window/window_test.h"

#include <xcb/xcb.h>

namespace
{

constexpr std::uint8_t some_key = 25;
constexpr std::uint8_t other_key = 26;

/** Passes what an X server sends. */
class Held : public WindowTest
{
  public:
    void get_keyboard(bool key_is_down)
    {
        xcb_focus_in_event_t focus{};
        focus.response_type = XCB_FOCUS_IN;
        drops(&focus);
        tell_keys(key_is_down);
    }

    void tell_keys(bool key_is_down)
    {
        xcb_keymap_notify_event_t keys{};
        keys.response_type = XCB_KEYMAP_NOTIFY;
        if (key_is_down)
            keys.keys[some_key / 8 - 1] = 1U << some_key % 8;
        drops(&keys);
    }

    bool drops_key(std::uint8_t kind, std::uint8_t code, std::uint32_t time)
    {
        xcb_key_press_event_t key{};
        key.response_type = kind;
        key.detail = code;
        key.time = time;
        return drops(&key);
    }

    bool drops_press(std::uint8_t code, std::uint32_t time)
    {
        return drops_key(XCB_KEY_PRESS, code, time);
    }

  private:
    bool drops(void* event)
    {
        return held.nativeEventFilter("xcb_generic_event_t", event, nullptr);
    }

    HeldKeys held;
};

TEST_F(Held, AKeyThatWasDownBeforeIsDropped)
{
    get_keyboard(true);

    EXPECT_TRUE(drops_press(some_key, 10));
}

TEST_F(Held, WhatTheServerMakesItRepeatIsDropped)
{
    get_keyboard(true);

    for (const std::uint32_t time : {10U, 20U}) {
        EXPECT_TRUE(drops_key(XCB_KEY_RELEASE, some_key, time));
        EXPECT_TRUE(drops_press(some_key, time));
    }
}

TEST_F(Held, OnceItIsLetGoItCounts)
{
    get_keyboard(true);

    EXPECT_TRUE(drops_key(XCB_KEY_RELEASE, some_key, 10));
    EXPECT_FALSE(drops_key(XCB_KEY_RELEASE, other_key, 15));

    EXPECT_FALSE(drops_press(some_key, 20));
    EXPECT_FALSE(drops_key(XCB_KEY_RELEASE, some_key, 30));
}

TEST_F(Held, OtherKeysCount)
{
    get_keyboard(true);

    EXPECT_FALSE(drops_press(other_key, 10));
}

TEST_F(Held, WithoutAKeyThatWasDownAllCount)
{
    get_keyboard(false);

    EXPECT_FALSE(drops_press(some_key, 10));
}

TEST_F(Held, AKeyThatIsDownWhenThePointerEntersCounts)
{
    get_keyboard(false);
    tell_keys(true);

    EXPECT_FALSE(drops_press(some_key, 10));
}

} // namespace
