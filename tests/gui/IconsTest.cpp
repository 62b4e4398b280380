#include "gui/Icons.h"

#include "tests/support/Text.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>

#include <gtest/gtest.h>

#include <set>

namespace {

void usePalette(const QColor& window, const QColor& text)
{
    QPalette palette(window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(128, 128, 128));
    palette.setColor(QPalette::HighlightedText, QColor(255, 0, 255));
    QGuiApplication::setPalette(palette);
}

/// Pixels that fulfil a condition.
template <typename Condition>
int countOf(const QImage& image, Condition condition)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += condition(image.pixelColor(x, y)) ? 1 : 0;
        }
    }
    return count;
}

bool hasColour(const QImage& image, const QColor& colour)
{
    return countOf(image, [&colour](const QColor& pixel) { return pixel == colour; }) > 0;
}

QImage imageOf(Icons::Name name, QIcon::Mode mode = QIcon::Normal)
{
    return Icons::appIcon(name).pixmap(QSize(48, 48), mode).toImage();
}

TEST(IconsTest, EveryNameHasADrawingOfItsOwn)
{
    std::set<QByteArray> seen;
    for (const Icons::Name name : Icons::all()) {
        const QString path = Icons::resourcePath(name);
        const QImage image = imageOf(name).convertToFormat(QImage::Format_ARGB32);
        const int ink = countOf(image, [](const QColor& pixel) { return pixel.alpha() > 127; });
        EXPECT_GT(ink, 0.03 * image.width() * image.height()) << qPrintable(path);
        const QByteArray bytes(reinterpret_cast<const char*>(image.constBits()),
                               static_cast<int>(image.sizeInBytes()));
        EXPECT_TRUE(seen.insert(bytes).second) << "drawn twice: " << qPrintable(path);
    }
    for (const QString& path :
         {":/images/search"_q, ":/images/checklist"_q, ":/images/ok"_q, ":/images/icon"_q,
          ":/images/logo_mini"_q, ":/images/page-logging"_q})
    {
        EXPECT_FALSE(QPixmap(path).isNull()) << qPrintable(path);
    }
}

TEST(IconsTest, LinesFollowThePaletteAndTheMode)
{
    const auto drawn = [](QIcon::Mode mode) {
        return imageOf(Icons::Name::Connect, mode);
    };
    const QColor light(240, 240, 240);
    const QColor dark(20, 21, 22);
    const QPalette before = QGuiApplication::palette();
    usePalette(light, dark);
    EXPECT_TRUE(hasColour(drawn(QIcon::Normal), dark));
    EXPECT_TRUE(hasColour(drawn(QIcon::Disabled), QColor(128, 128, 128)));
    EXPECT_FALSE(hasColour(drawn(QIcon::Disabled), dark));
    EXPECT_TRUE(hasColour(drawn(QIcon::Selected), QColor(255, 0, 255)));
    usePalette(dark, light);
    EXPECT_TRUE(hasColour(drawn(QIcon::Normal), light));
    EXPECT_FALSE(hasColour(drawn(QIcon::Normal), dark));
    QGuiApplication::setPalette(before);
}

TEST(IconsTest, AreSharpAtHigherPixelRatios)
{
    QImage image(QSize(48, 48), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2.0);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    Icons::appIcon(Icons::Name::Settings).paint(&painter, QRect(0, 0, 24, 24));
    painter.end();
    image.setDevicePixelRatio(1.0);
    EXPECT_EQ(image, imageOf(Icons::Name::Settings).convertToFormat(image.format()));

    const QPixmap logo = Icons::logo(2.0);
    EXPECT_EQ(logo.size(), QSize(880, 300));
    EXPECT_DOUBLE_EQ(logo.devicePixelRatio(), 2.0);
    EXPECT_EQ(Icons::appPixmap(Icons::Name::Ok, QSize(20, 20), 1.5).size(), QSize(30, 30));
}

} // namespace
