#pragma once

/// Lengths on the screen are given in twips, 1440 to the inch: 15 to a pixel of an ordinary screen.
namespace Twips {

inline constexpr int perPixel = 15;

/// Whole pixels in `twips`; a fraction is cut off, towards zero.
constexpr int toPixels(int twips) { return twips / perPixel; }
constexpr int fromPixels(int pixels) { return pixels * perPixel; }

}
