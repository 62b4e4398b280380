#include "gui/Icons.h"

#include <QColor>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <array>

/// A static library's resources stay hidden until somebody asks. Outside of any namespace, since
/// the macro declares a function.
static void initGuiResources()
{
    Q_INIT_RESOURCE(gui);
}

namespace Icons {
namespace {

// In the order of Name.
constexpr std::array kFiles{
    "download-weather",
    "settings",
    "connect",
    "disconnect",
    "exit",
    "airport-list",
    "aircraft-editor",
    "open-folder",
    "flight-planner",
    "about",
    "check-version",
    "weather-search",
    "metar-stations-failed",
    "synop-stations-failed",
    "set-weather",
    "test",
    "radar",
    "flights",
    "download-history",
    "clear-weather",
    "basic-settings",
    "load-weather",
    "save-weather",
    "weather-events",
    "show-window",
    "record-flight",
    "restart",
    "copy",
    "new-window-on-top",
    "clear",
    "load-editor",
    "debug-output",
    "data-page",
    "language",
    "add",
    "edit",
    "remove",
    "save",
    "refresh",
    "previous",
    "next",
    "test-connection",
    "page-general",
    "page-startup",
    "page-weather",
    "page-servers",
    "page-interface",
    "page-paths",
    "page-messages",
    "page-recorder",
    "page-units",
    "page-map",
    "page-airac",
    "page-logging",
    "search",
    "checklist",
    "ok",
    "warning",
    "error",
    "info",
    "icon",
};
static_assert(kFiles.size() == static_cast<std::size_t>(Name::Application) + 1);

// Colours of the files: they are readable on light and dark grounds when a file is drawn as it is.
const QByteArray kFileLine = QByteArrayLiteral("#5b6770");
const QByteArray kFileAccent = QByteArrayLiteral("#1f8ac9");
const QByteArray kFileRecord = QByteArrayLiteral("#d6453d");

constexpr QSize kLogoSize{440, 150};

struct Colours
{
    QColor line;
    QColor accent;
    QColor record;
};

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness()
           < palette.color(QPalette::WindowText).lightness();
}

Colours coloursOf(QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    if (mode == QIcon::Disabled || mode == QIcon::Selected) {
        const QColor colour = mode == QIcon::Disabled
                                  ? palette.color(QPalette::Disabled, QPalette::WindowText)
                                  : palette.color(QPalette::HighlightedText);
        return {colour, colour, colour};
    }
    const bool dark = isDark(palette);
    // Menus draw the chosen action as Active on the highlight, which is about as blue as the
    // accent.
    const bool active = mode == QIcon::Active;
    const char* const accent =
        dark ? (active ? "#cfeaff" : "#52b6f5") : (active ? "#0a3a60" : "#1878b8");
    return {palette.color(QPalette::WindowText), QColor(QLatin1String(accent)),
            QColor(QLatin1String(dark ? "#f0625a" : "#cf3a32"))};
}

QByteArray readFile(const QString& path)
{
    initGuiResources();
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QPixmap render(const QByteArray& svg, const QSize& pixels)
{
    QPixmap pixmap(pixels);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(svg);
    if (renderer.isValid()) {
        QPainter painter(&pixmap);
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(pixels)));
    }
    return pixmap;
}

QPixmap renderColoured(const QString& path, const QSize& pixels, QIcon::Mode mode)
{
    if (pixels.isEmpty()) {
        return {};
    }
    const Colours colours = coloursOf(mode);
    const QString key = path + QString::asprintf("|%d|%d", pixels.width(), pixels.height())
                        + colours.line.name(QColor::HexArgb) + colours.accent.name();
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        QByteArray svg = readFile(path);
        svg.replace(kFileLine, colours.line.name().toLatin1());
        svg.replace(kFileAccent, colours.accent.name().toLatin1());
        svg.replace(kFileRecord, colours.record.name().toLatin1());
        pixmap = render(svg, pixels);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

/// Draws one file in the colours of the palette at the time of drawing.
class PaletteIconEngine : public QIconEngine
{
public:
    explicit PaletteIconEngine(QString path) : m_path(std::move(path)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device()->devicePixelRatioF();
        QPixmap drawn = pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state);
        drawn.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect, drawn);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        return renderColoured(m_path, size, mode);
    }
    QString key() const override { return QStringLiteral("CirrilonPaletteIcon"); }
    QIconEngine* clone() const override { return new PaletteIconEngine(*this); }

private:
    QString m_path;
};

} // namespace

QIcon appIcon(Name name)
{
    return QIcon(new PaletteIconEngine(resourcePath(name)));
}

QPixmap appPixmap(Name name, const QSize& size, qreal devicePixelRatio)
{
    QPixmap pixmap = renderColoured(resourcePath(name), (QSizeF(size) * devicePixelRatio).toSize(),
                                    QIcon::Normal);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

QPixmap logo(qreal devicePixelRatio)
{
    QPixmap pixmap = render(readFile(QStringLiteral(":/images/logo_mini")),
                            (QSizeF(kLogoSize) * devicePixelRatio).toSize());
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

QString resourcePath(Name name)
{
    return QLatin1String(":/images/") + QLatin1String(kFiles.at(static_cast<std::size_t>(name)));
}

const std::vector<Name>& all()
{
    static const std::vector<Name> kAll = [] {
        std::vector<Name> names;
        for (std::size_t i = 0; i < kFiles.size(); ++i) {
            names.push_back(static_cast<Name>(i));
        }
        return names;
    }();
    return kAll;
}

} // namespace Icons
