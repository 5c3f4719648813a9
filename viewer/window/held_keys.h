/*
 * Keys that are down already when a display gives a window the keyboard were meant for another
 * window, perhaps of another request that they have just closed. They, and what the X server makes
 * them repeat, do nothing here until they are let go. Elsewhere than on X a window gets no repeats
 * of keys that it has not seen go down.
 */
#pragma once

#include <QAbstractNativeEventFilter>
#include <QWidget>
#include <bitset>
#include <cstdint>

class HeldKeys : public QAbstractNativeEventFilter
{
  public:
    HeldKeys();
    ~HeldKeys() override;
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;
    HeldKeys(HeldKeys&&) = delete;
    HeldKeys& operator=(HeldKeys&&) = delete;

    /** Has the display tell which keys are down when a window gets the keyboard, which takes two
        answers of the display the first time. */
    void watch(const QWidget& window);

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

  private:
    struct Release {
        std::uint8_t code = 0;
        std::uint32_t time = 0;
    };

    bool drops_release(std::uint8_t code, std::uint32_t time);
    bool drops_press(std::uint8_t code, std::uint32_t time);
    void believe_release(std::uint32_t now);

    WId watched = 0;
    std::bitset<256> modifiers{}; // the codes of keys that do nothing alone
    std::bitset<256> held{};      // since before the keyboard came
    Release released{};           // of a key that is held, perhaps to be repeated
    bool has_got_keyboard = false;
};
