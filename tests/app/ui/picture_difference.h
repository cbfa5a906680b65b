// How far two pictures are apart.
#pragma once

#include <QImage>
#include <algorithm>
#include <array>
#include <cstdlib>

namespace tilora::app {

/// The share of the pixels, from 0 to 1, that anybody would see to be others; 1 for pictures of different sizes. A slightly different edge
/// of a letter, as another version of the font's renderer draws it, does not count.
inline double visibleDifference(const QImage& one, const QImage& other) {
  constexpr int visible = 24;
  if (one.size() != other.size() || one.isNull()) return 1;
  const auto differs = [](QRgb a, QRgb b) {
    const std::array channels = {qRed(a) - qRed(b), qGreen(a) - qGreen(b), qBlue(a) - qBlue(b)};
    return std::any_of(channels.begin(), channels.end(), [](int difference) { return std::abs(difference) > visible; });
  };
  int count = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) count += differs(one.pixel(x, y), other.pixel(x, y)) ? 1 : 0;
  }
  return static_cast<double>(count) / (one.width() * one.height());
}

}  // namespace tilora::app
