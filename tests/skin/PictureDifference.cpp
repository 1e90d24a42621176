#include "tests/skin/PictureDifference.h"

#include <algorithm>

int channelDistance(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

PictureDifference::PictureDifference(const QImage& actual, const QImage& expected)
    : sameSize(actual.size() == expected.size()), marked(actual.convertToFormat(QImage::Format_RGB32))
{
    allowed = static_cast<qsizetype>(static_cast<double>(qsizetype{actual.width()} * actual.height()) * k_allowed);
    if (!sameSize)
        return;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            const bool differs = channelDistance(actual.pixel(x, y), expected.pixel(x, y)) > k_tolerance;
            const int pale = 192 + qGray(actual.pixel(x, y)) / 4;
            marked.setPixel(x, y, differs ? qRgb(255, 0, 0) : qRgb(pale, pale, pale));
            pixels += differs ? 1 : 0;
        }
    }
}

bool PictureDifference::isSmall() const
{
    return sameSize && pixels <= allowed;
}
