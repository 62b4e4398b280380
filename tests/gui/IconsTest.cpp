#include "app/gui/Icons.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>

#include <gtest/gtest.h>

#include <set>

namespace {

QPalette paletteOf(const QColor& window, const QColor& text)
{
    QPalette palette(window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(128, 128, 128));
    palette.setColor(QPalette::HighlightedText, QColor(255, 0, 255));
    return palette;
}

/// Sets a palette for the time of a test.
class UsePalette
{
public:
    explicit UsePalette(const QPalette& palette) : m_before(QGuiApplication::palette())
    {
        QGuiApplication::setPalette(palette);
    }
    ~UsePalette() { QGuiApplication::setPalette(m_before); }

private:
    QPalette m_before;
};

bool hasColour(const QImage& image, const QColor& colour)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == colour) {
                return true;
            }
        }
    }
    return false;
}

/// Part of the picture that differs from an empty one.
double inkOf(const QImage& image)
{
    int ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ink += image.pixelColor(x, y).alpha() > 127 ? 1 : 0;
        }
    }
    return static_cast<double>(ink) / (image.width() * image.height());
}

QImage imageOf(Icons::Name name, QIcon::Mode mode = QIcon::Normal)
{
    return Icons::appIcon(name).pixmap(QSize(48, 48), mode).toImage();
}

TEST(Icons, EveryNameHasADrawingOfItsOwn)
{
    std::set<QByteArray> seen;
    for (const Icons::Name name : Icons::all()) {
        const QString path = Icons::resourcePath(name);
        const QImage image = imageOf(name).convertToFormat(QImage::Format_ARGB32);
        EXPECT_GT(inkOf(image), 0.03) << qPrintable(path);
        const QByteArray bytes(reinterpret_cast<const char*>(image.constBits()),
                               static_cast<int>(image.sizeInBytes()));
        EXPECT_TRUE(seen.insert(bytes).second) << "drawn twice: " << qPrintable(path);
    }
    EXPECT_EQ(Icons::resourcePath(Icons::Name::PageLogging),
              QLatin1String(":/images/page-logging"));
    EXPECT_EQ(Icons::resourcePath(Icons::Name::Search), QLatin1String(":/images/search"));
}

TEST(Icons, TheFixedResourceNamesLoadAsPixmaps)
{
    for (const char* path : {":/images/search", ":/images/checklist", ":/images/ok",
                             ":/images/icon", ":/images/logo_mini"})
    {
        EXPECT_FALSE(QPixmap(QLatin1String(path)).isNull()) << path;
    }
}

TEST(Icons, LinesFollowThePaletteAndTheMode)
{
    const QIcon icon = Icons::appIcon(Icons::Name::Connect);
    const auto drawn = [&icon](QIcon::Mode mode) {
        return icon.pixmap(QSize(48, 48), mode).toImage();
    };
    const QColor light(240, 240, 240);
    const QColor dark(20, 21, 22);
    {
        const UsePalette use(paletteOf(light, dark));
        EXPECT_TRUE(hasColour(drawn(QIcon::Normal), dark));
        EXPECT_TRUE(hasColour(drawn(QIcon::Disabled), QColor(128, 128, 128)));
        EXPECT_FALSE(hasColour(drawn(QIcon::Disabled), dark));
        EXPECT_TRUE(hasColour(drawn(QIcon::Selected), QColor(255, 0, 255)));
    }
    const UsePalette use(paletteOf(dark, light));
    EXPECT_TRUE(hasColour(drawn(QIcon::Normal), light));
    EXPECT_FALSE(hasColour(drawn(QIcon::Normal), dark));
}

TEST(Icons, AreSharpAtHigherPixelRatios)
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
