#pragma once

#include <QImage>
#include <QString>

#include <algorithm>
#include <cstdlib>

/// Compares pictures of the screen as an eye does, which sees that a button has moved but not how
/// the edge of a letter is smoothed: by the mean colours of blocks.
namespace pictures
{

constexpr int blockSize = 8;
constexpr int mostDifference = 28; ///< of a colour between 0 and 255

/// Returns an empty text if the pictures look alike, otherwise where they differ.
inline QString difference(const QImage& actual, const QImage& expected)
{
    if (actual.isNull() || actual.size() != expected.size())
        return QStringLiteral("the size is %1x%2").arg(actual.width()).arg(actual.height());
    const auto blocks = [](const QImage& image) {
        return image.convertToFormat(QImage::Format_RGB32)
            .scaled(image.size() / blockSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage actualBlocks = blocks(actual);
    const QImage expectedBlocks = blocks(expected);
    int worst = 0;
    QPoint place;
    for (int y = 0; y < actualBlocks.height(); ++y) {
        for (int x = 0; x < actualBlocks.width(); ++x) {
            const QRgb one = actualBlocks.pixel(x, y);
            const QRgb other = expectedBlocks.pixel(x, y);
            const int block =
                std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                          std::abs(qBlue(one) - qBlue(other))});
            if (block > worst) {
                worst = block;
                place = QPoint(x, y) * blockSize;
            }
        }
    }
    if (worst <= mostDifference)
        return {};
    return QStringLiteral("the colours at %1, %2 differ by %3")
        .arg(place.x())
        .arg(place.y())
        .arg(worst);
}

} // namespace pictures
