/*
 * What is to be seen on an Xvfb server, read from its framebuffer file (-fbdir), which costs the
 * server nothing, whenever it tells that something was drawn. Needs a 24-bit screen with a white
 * root. What cannot be done throws std::runtime_error.
 */
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>
#include <xcb/damage.h>
#include <xcb/xcb.h>

/** How many dark strokes begin in a picture's rows, which is a measure of the text in it (a filled
    area has one for each of its rows), and a fingerprint for each of its tiles. */
struct Picture {
    long strokes = 0;
    std::vector<std::uint32_t> tiles{};

    /** Whether it shows the same but for a blinking cursor or a clock. */
    bool resembles(const Picture& other) const;
};

using Pixels = std::vector<std::uint32_t>;

class VirtualScreen
{
  public:
    /** Connects to DISPLAY, whose framebuffer file this is. */
    explicit VirtualScreen(const std::string& framebuffer_file);
    ~VirtualScreen();
    VirtualScreen(const VirtualScreen&) = delete;
    VirtualScreen& operator=(const VirtualScreen&) = delete;
    VirtualScreen(VirtualScreen&&) = delete;
    VirtualScreen& operator=(VirtualScreen&&) = delete;

    /** Takes what is to be seen now, to be looked at later: looking takes the processor from those
        who draw. */
    void take(Pixels& into) const;

    Picture picture(const Pixels& taken) const;

    /** Waits until something was drawn, which then counts as seen; false when nothing was in that
        time. */
    bool wait_for_drawing(std::chrono::milliseconds time);

  private:
    void map_framebuffer(const std::string& path);

    std::unique_ptr<xcb_connection_t, decltype(&::xcb_disconnect)> connection;
    xcb_damage_damage_t damage = 0;
    std::uint8_t damage_event = 0;
    void* mapping = nullptr;
    std::size_t mapping_size = 0;
    const std::uint32_t* pixels = nullptr;
    std::size_t width = 0;
    std::size_t height = 0;
};
