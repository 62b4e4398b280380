#include "maps/gui/WidgetRadar.h"

#include "app/base/LogLevel.h"
#include "gui/Icons.h"
#include "gui/NoteLabel.h"

#include <QCheckBox>
#include <QColor>
#include <QDial>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace {

constexpr double kSceneSide = 400.0;
constexpr double kHalfTurn = 180.0;
constexpr int kRefreshMs = 2000;

struct DialRange
{
    int lowest;
    int highest;
    int step;
    int start;
};
constexpr DialRange kRange{5, 200, 5, 40};      // NM
constexpr DialRange kTilt{0, 20000, 500, 4000}; // feet

QDial* makeDial(const char* name, const DialRange& range, QWidget* parent)
{
    constexpr int kStepsPerPage = 4;
    constexpr int kDialInLines = 4;
    auto* dial = new QDial(parent);
    dial->setObjectName(QString::fromLatin1(name));
    dial->setRange(range.lowest, range.highest);
    dial->setSingleStep(range.step);
    dial->setPageStep(range.step * kStepsPerPage);
    dial->setValue(range.start);
    const int side = kDialInLines * dial->fontMetrics().height();
    dial->setFixedSize(side, side);
    return dial;
}

QLabel* makeLabel(const char* name, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace

QColor radarColour(unsigned char density)
{
    constexpr int kMostGreen = 12;
    constexpr int kFull = 255;
    const int v = density;
    const int a = v > kMostGreen ? v * 10 : 0;
    const int b = v > kMostGreen ? kFull : v * 20;
    return a > kFull ? QColor(kFull, 0, v) : QColor(a, b, 0);
}

WidgetRadar::WidgetRadar(QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_scene(new QGraphicsScene(0.0, 0.0, kSceneSide, kSceneSide, this))
    , m_view(new QGraphicsView(m_scene, this))
    , m_range(makeDial("dial_range", kRange, this))
    , m_rangeTitle(makeLabel("label_range", this))
    , m_rangeValue(makeLabel("label_valueRange", this))
    , m_tilt(makeDial("dial_tilt", kTilt, this))
    , m_tiltTitle(makeLabel("label_tilt", this))
    , m_tiltValue(makeLabel("label_valueTilt", this))
    , m_refresh(new QCheckBox(this))
    , m_request(new QPushButton(this))
    , m_note(new NoteLabel(this))
{
    setObjectName(QStringLiteral("WidgetRadar"));
    setWindowIcon(Icons::appIcon(Icons::Name::Radar));
    m_timer.setObjectName(QStringLiteral("timerRefresh"));
    m_timer.setInterval(kRefreshMs);
    buildPicture();
    buildControls();
    turnPicture();
    retranslateUi();
    connect(&m_timer, &QTimer::timeout, this, &WidgetRadar::OnRefreshClouds);
    connect(m_refresh, &QCheckBox::toggled, this, &WidgetRadar::OnSetTimer);
    connect(m_request, &QPushButton::clicked, this, &WidgetRadar::OnRefreshClouds);
}

void WidgetRadar::buildPicture()
{
    constexpr double kWidth = kSceneSide / kColumns;
    constexpr double kHeight = kSceneSide / kRows;
    const QColor empty = radarColour(0);
    for (std::size_t row = 0; row < kRows; ++row) {
        for (std::size_t column = 0; column < kColumns; ++column) {
            m_cells[row][column] = m_scene->addRect(static_cast<double>(column) * kWidth,
                                                    static_cast<double>(row) * kHeight, kWidth,
                                                    kHeight, QPen(empty, 0.0), QBrush(empty));
        }
    }
    m_view->setObjectName(QStringLiteral("graphicsView"));
    m_view->setBackgroundBrush(Qt::black); // a radar screen is dark in every theme
    m_view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setInteractive(false);
    m_view->setFocusPolicy(Qt::NoFocus);
    m_view->setMinimumSize(static_cast<int>(kSceneSide) / 2, static_cast<int>(kSceneSide) / 2);
    m_view->viewport()->installEventFilter(this);
}

void WidgetRadar::addDial(QGridLayout& grid, int column, QDial* dial, QLabel* title, QLabel* value)
{
    grid.addWidget(title, 0, column);
    grid.addWidget(dial, 1, column, Qt::AlignCenter);
    grid.addWidget(value, 2, column);
    title->setBuddy(dial);
    value->setNum(dial->value());
    connect(dial, &QDial::valueChanged, value, qOverload<int>(&QLabel::setNum));
}

void WidgetRadar::buildControls()
{
    m_refresh->setObjectName(QStringLiteral("checkBox_refreshClouds"));
    m_request->setObjectName(QStringLiteral("pushButton_request"));
    auto* controls = new QGridLayout;
    addDial(*controls, 0, m_range, m_rangeTitle, m_rangeValue);
    addDial(*controls, 1, m_tilt, m_tiltTitle, m_tiltValue);
    auto* asking = new QVBoxLayout;
    asking->addStretch();
    asking->addWidget(m_refresh);
    asking->addWidget(m_request);
    asking->addStretch();
    controls->addLayout(asking, 0, 2, 3, 1);
    controls->setColumnStretch(2, 1);
    controls->setHorizontalSpacing(2 * fontMetrics().averageCharWidth());
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_view, 1);
    column->addWidget(m_note);
    column->addLayout(controls);
    const int side = static_cast<int>(kSceneSide);
    resize(side + side / 8, side + side / 2);
}

void WidgetRadar::retranslateUi()
{
    setWindowTitle(tr("WeatherRadar"));
    m_view->setAccessibleName(tr("Clouds around the aircraft"));
    m_rangeTitle->setText(tr("Range"));
    m_range->setAccessibleName(tr("Range"));
    m_range->setToolTip(tr("From the aircraft to a corner of the picture, in NM"));
    m_tiltTitle->setText(tr("Tilt"));
    m_tilt->setAccessibleName(tr("Tilt"));
    m_tilt->setToolTip(
        tr("Height of the air that is looked at above the aircraft, in feet; half as much below"));
    m_refresh->setText(tr("Refresh every two seconds"));
    m_request->setText(tr("request"));
    m_request->setToolTip(tr("Asks the simulator for the clouds once"));
}

void WidgetRadar::OnSetTimer()
{
    if (m_refresh->isChecked()) {
        m_timer.start(kRefreshMs);
    } else {
        m_timer.stop();
    }
}

void WidgetRadar::OnRefreshClouds()
{
    Q_EMIT sigRequestClouds(m_range->value(), m_tilt->value());
}

void WidgetRadar::setCloudsRGB(std::vector<unsigned char>& cloudsRGB)
{
    const std::size_t count = std::min(cloudsRGB.size(), kRows * kColumns);
    m_clouds.assign(cloudsRGB.begin(),
                    std::next(cloudsRGB.begin(), static_cast<std::ptrdiff_t>(count)));
    for (std::size_t i = 0; i < count; ++i) {
        const QColor colour = radarColour(m_clouds[i]);
        QGraphicsRectItem* cell = m_cells[i / kColumns][i % kColumns];
        cell->setBrush(colour);
        cell->setPen(QPen(colour, 0.0));
    }
    const auto highest = std::max_element(m_clouds.begin(), m_clouds.end());
    const int maximum = highest == m_clouds.end() ? 0 : *highest;
    m_rotation = m_heading;
    turnPicture();
    m_note->clear();
    Q_EMIT sigDebugString(QStringLiteral("max RGB:%1").arg(maximum), loglevel::kDebug);
}

/// The whole picture fits the view; what its corners lose while it is turned lies outside the
/// range.
void WidgetRadar::turnPicture()
{
    const QSize space = m_view->viewport()->size();
    const double scale = std::min(space.width(), space.height()) / kSceneSide;
    m_view->setTransform(QTransform().rotate(kHalfTurn + m_rotation).scale(scale, scale));
    m_view->centerOn(m_scene->sceneRect().center());
}

void WidgetRadar::setHeading(double heading)
{
    m_heading = std::isfinite(heading) ? heading : 0.0;
}

void WidgetRadar::setConnected(bool connected)
{
    m_connected = connected;
    showConnection();
}

void WidgetRadar::showNoCloudMap()
{
    m_note->setNote(NoteLabel::Kind::Warning,
                    tr("This connection has no cloud map. SimConnect has one, alone or "
                       "together with FSUIPC."));
}

void WidgetRadar::showFailure(const QString& reason)
{
    m_note->setNote(NoteLabel::Kind::Warning, tr("The simulator gave no clouds: %1").arg(reason));
}

void WidgetRadar::showConnection()
{
    if (!m_connected) {
        m_note->setNote(NoteLabel::Kind::Info,
                        tr("Not connected. The clouds come from the simulator."));
    } else if (m_clouds.empty()) {
        m_note->setNote(NoteLabel::Kind::Info,
                        tr("No picture yet. The button asks for one, the box above it for a new "
                           "one every two seconds."));
    } else {
        m_note->clear();
    }
}

bool WidgetRadar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_view->viewport() && event->type() == QEvent::Resize) {
        turnPicture();
    }
    return QWidget::eventFilter(watched, event);
}

void WidgetRadar::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslateUi();
        showConnection();
    }
}

void WidgetRadar::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    showConnection();
    OnSetTimer();
}

void WidgetRadar::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_timer.stop();
}

void WidgetRadar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}
