#include "bench/virtual_screen.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <endian.h>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr std::size_t tile_side = 16;

/** The places of numbers in the header of an X window dump, which are big-endian. */
enum Header : std::size_t {
    header_size = 0,
    pixmap_width = 4,
    pixmap_height = 5,
    bits_per_pixel = 11,
    bytes_per_line = 12,
    colours = 19,
    header_numbers = 25,
};
constexpr std::size_t colour_size = 12;

bool is_dark(std::uint32_t pixel)
{
    constexpr std::uint32_t byte = 0xff;
    constexpr std::uint32_t half = 128 * 8;
    return (pixel >> 16 & byte) * 2 + (pixel >> 8 & byte) * 5 + (pixel & byte) < half;
}

std::uint32_t mixed(std::uint32_t hash, std::uint32_t pixel)
{
    constexpr std::uint32_t prime = 16777619; // of the hash FNV-1a
    return (hash ^ pixel) * prime;
}

} // namespace

bool Picture::resembles(const Picture& other) const
{
    constexpr std::size_t few = 8; // tiles
    std::size_t different = 0;
    for (std::size_t tile = 0; tile < tiles.size(); ++tile)
        if (tiles[tile] != other.tiles[tile])
            ++different;
    return different <= few;
}

VirtualScreen::VirtualScreen(const std::string& framebuffer_file)
    : connection(::xcb_connect(nullptr, nullptr), &::xcb_disconnect)
{
    map_framebuffer(framebuffer_file);
    const auto* extension = ::xcb_get_extension_data(connection.get(), &xcb_damage_id);
    if (::xcb_connection_has_error(connection.get()) != 0 || extension == nullptr ||
        extension->present == 0)
        throw std::runtime_error("no display that tells of drawing");
    damage_event = extension->first_event;
    const auto version = ::xcb_damage_query_version(connection.get(), 1, 1);
    std::free(::xcb_damage_query_version_reply(connection.get(), version, nullptr));
    const auto root = ::xcb_setup_roots_iterator(::xcb_get_setup(connection.get())).data->root;
    damage = ::xcb_generate_id(connection.get());
    ::xcb_damage_create(connection.get(), damage, root, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    ::xcb_flush(connection.get());
}

VirtualScreen::~VirtualScreen()
{
    ::munmap(mapping, mapping_size);
}

void VirtualScreen::map_framebuffer(const std::string& path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (file < 0 || ::fstat(file, &status) != 0)
        throw std::runtime_error(path + ": cannot be read");
    mapping_size = static_cast<std::size_t>(status.st_size);
    mapping = ::mmap(nullptr, mapping_size, PROT_READ, MAP_SHARED, file, 0);
    ::close(file);
    if (mapping == MAP_FAILED)
        throw std::runtime_error(path + ": cannot be mapped");
    std::array<std::uint32_t, header_numbers> header{};
    std::memcpy(header.data(), mapping, sizeof header);
    for (std::uint32_t& number : header)
        number = be32toh(number);
    width = header[pixmap_width];
    height = header[pixmap_height];
    if (header[bits_per_pixel] != 32 || header[bytes_per_line] != width * sizeof *pixels)
        throw std::runtime_error(path + ": not of 24-bit colour");
    const std::size_t start = header[header_size] + header[colours] * colour_size;
    pixels = reinterpret_cast<const std::uint32_t*>(static_cast<const char*>(mapping) + start);
}

void VirtualScreen::take(Pixels& into) const
{
    into.assign(pixels, pixels + width * height);
}

Picture VirtualScreen::picture(const Pixels& taken) const
{
    const std::size_t across = (width + tile_side - 1) / tile_side;
    const std::size_t down = (height + tile_side - 1) / tile_side;
    Picture seen;
    seen.tiles.resize(across * down);
    for (std::size_t y = 0; y < height; ++y) {
        bool was_dark = false;
        for (std::size_t x = 0; x < width; ++x) {
            const std::uint32_t pixel = taken[y * width + x];
            const bool dark = is_dark(pixel);
            std::uint32_t& tile = seen.tiles[y / tile_side * across + x / tile_side];
            tile = mixed(tile, pixel);
            seen.strokes += dark && !was_dark ? 1 : 0;
            was_dark = dark;
        }
    }
    return seen;
}

bool VirtualScreen::wait_for_drawing(std::chrono::milliseconds time)
{
    pollfd entry{::xcb_get_file_descriptor(connection.get()), POLLIN, 0};
    for (bool waited = false;; waited = true) {
        while (auto* event = ::xcb_poll_for_event(connection.get())) {
            const bool drawn = (event->response_type & 0x7f) == damage_event + XCB_DAMAGE_NOTIFY;
            std::free(event);
            if (drawn) {
                ::xcb_damage_subtract(connection.get(), damage, XCB_NONE, XCB_NONE);
                ::xcb_flush(connection.get());
                return true;
            }
        }
        if (::xcb_connection_has_error(connection.get()) != 0)
            throw std::runtime_error("the display has gone");
        if (waited || ::poll(&entry, 1, static_cast<int>(time.count())) <= 0)
            return false;
    }
}
