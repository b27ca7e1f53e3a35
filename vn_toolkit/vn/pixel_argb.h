#pragma once

#include <cstdint>

namespace vn {

// A 32-bit colour, 0xAARRGGBB as a number. The fields are laid out blue,
// green, red, alpha, which is how QImage::Format_ARGB32 keeps a pixel in
// memory on a little-endian machine, so a scan line can be read as an array
// of these. The default is opaque black.
struct pixel_argb
{
    std::uint8_t blue = 0;
    std::uint8_t green = 0;
    std::uint8_t red = 0;
    std::uint8_t alpha = 255;

    constexpr pixel_argb() = default;
    constexpr pixel_argb(std::uint32_t argb)
        : blue(std::uint8_t(argb))
        , green(std::uint8_t(argb >> 8))
        , red(std::uint8_t(argb >> 16))
        , alpha(std::uint8_t(argb >> 24))
    {}
    constexpr pixel_argb(int r, int g, int b, int a = 255)
        : blue(std::uint8_t(b))
        , green(std::uint8_t(g))
        , red(std::uint8_t(r))
        , alpha(std::uint8_t(a))
    {}

    // pixel_argb(0xFF818885).value() == 0xFF818885
    constexpr std::uint32_t value() const
    {
        return std::uint32_t(alpha) << 24 | std::uint32_t(red) << 16 | std::uint32_t(green) << 8 |
               std::uint32_t(blue);
    }

    friend constexpr bool operator==(const pixel_argb &a, const pixel_argb &b)
    {
        return a.value() == b.value();
    }
    friend constexpr bool operator!=(const pixel_argb &a, const pixel_argb &b) { return !(a == b); }
};

static_assert(sizeof(pixel_argb) == 4, "a pixel_argb must be exactly one 32-bit pixel");

} // namespace vn
