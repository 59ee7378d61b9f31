#include "presentation/SymbolImages.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

constexpr QRgb colour = qRgb(0xE6, 0x00, 0x7E);

QImage draw(const QString &name, const QSize &size) {
    SymbolImages images;
    QSize natural;
    auto image = images.requestImage(name + QStringLiteral("/e6007e"), &natural, size);
    EXPECT_EQ(natural, QSize(24, 24)) << name.toStdString();
    return image.convertToFormat(QImage::Format_ARGB32);
}

/// The share of the picture that is inked at all, and whether every inked point has the colour.
struct Inked {
    double share = 0;
    bool onlyColour = true;
};

Inked inked(const QImage &image) {
    Inked result;
    int points = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb point = image.pixel(x, y);
            // Faint points have lost the exact colour to rounding.
            if (qAlpha(point) < 128)
                continue;
            ++points;
            const auto apart = std::max({std::abs(qRed(point) - qRed(colour)),
                                         std::abs(qGreen(point) - qGreen(colour)),
                                         std::abs(qBlue(point) - qBlue(colour))});
            result.onlyColour = result.onlyColour && apart <= 8;
        }
    }
    result.share = static_cast<double>(points) / (image.width() * image.height());
    return result;
}

} // namespace

TEST(SymbolImagesTest, EverySymbolIsDrawnInItsColourAtEveryScale) {
    const auto files = QDir(QStringLiteral(":/symbols")).entryList({QStringLiteral("*.svg")});
    ASSERT_GT(files.size(), 30);
    for (const auto &file : files) {
        const auto name = file.chopped(4);
        for (const int side : {13, 20, 25, 40, 60}) {
            const auto image = draw(name, {side, side});
            EXPECT_EQ(image.size(), QSize(side, side));
            const auto ink = inked(image);
            EXPECT_GT(ink.share, 0.01) << name.toStdString() << " at " << side;
            EXPECT_LT(ink.share, 0.8) << name.toStdString() << " at " << side;
            EXPECT_TRUE(ink.onlyColour) << name.toStdString() << " at " << side;
        }
        EXPECT_EQ(draw(name, {}).size(), QSize(24, 24));
    }
}

TEST(SymbolImagesTest, AnUnknownNameDrawsNothing) {
    for (const auto *name : {"unknown", "", "../Fonts/x", "xmark.svg", "Xmark"}) {
        const auto image = draw(QString::fromLatin1(name), {20, 20});
        EXPECT_EQ(image.size(), QSize(20, 20)) << name;
        EXPECT_EQ(inked(image).share, 0) << name;
    }
}
