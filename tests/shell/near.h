#pragma once

#include <QColor>
#include <QImage>
#include <cstdlib>

// What the raster engine makes of edges and of scaled pictures differs a little from processor to processor, by the
// instructions that it finds there.
namespace kestrel::test {

/// How far a part of a pixel (0 to 255) may be from the same one drawn elsewhere.
inline constexpr int RasterSlack = 3;

/// Whether two pixels, colours with their alpha multiplied in, are the same within RasterSlack.
inline bool NearPixel(QRgb one, QRgb other) {
  return std::abs(qRed(one) - qRed(other)) <= RasterSlack && std::abs(qGreen(one) - qGreen(other)) <= RasterSlack &&
         std::abs(qBlue(one) - qBlue(other)) <= RasterSlack && std::abs(qAlpha(one) - qAlpha(other)) <= RasterSlack;
}

/// The same of two colours without transparency.
inline bool NearColour(const QColor& one, const QColor& other) { return NearPixel(one.rgb(), other.rgb()); }

/// Pixels that differ by more than RasterSlack; all of them when the sizes differ. Alpha is multiplied in before, since
/// a pixel of which hardly anything is seen has no colour that could be compared.
inline int PixelsApart(const QImage& one, const QImage& other) {
  if (one.size() != other.size()) return one.width() * one.height();
  const QImage a = one.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  const QImage b = other.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  int apart = 0;
  for (int y = 0; y < a.height(); ++y) {
    const auto* rowA = reinterpret_cast<const QRgb*>(a.constScanLine(y));
    const auto* rowB = reinterpret_cast<const QRgb*>(b.constScanLine(y));
    for (int x = 0; x < a.width(); ++x) apart += NearPixel(rowA[x], rowB[x]) ? 0 : 1;
  }
  return apart;
}

}  // namespace kestrel::test
