#include "app/gui/DockWidgetData.h"

#include "app/gui/AircraftTexts.h"
#include "gui/Icons.h"
#include "gui/TextFonts.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>

namespace {

QString numberText(double value, int decimals = 0)
{
    return QString::number(value, 'f', decimals);
}

} // namespace

DockWidgetData::DockWidgetData(QWidget* parent)
    : QDockWidget(parent)
    , m_contents(new QWidget(this))
    , m_grid(new QGridLayout(m_contents))
{
    setObjectName(QStringLiteral("DockData"));
    m_grid->setHorizontalSpacing(2 * fontMetrics().averageCharWidth());
    m_grid->setVerticalSpacing(fontMetrics().height() / 4);
    m_grid->setColumnStretch(1, 1);
    buildCycle();
    buildFields();
    buildRadios();
    buildFlight();
    m_grid->setRowStretch(m_grid->rowCount(), 1);
    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(m_contents);
    setWidget(scroll);
    retranslateUi();
    scroll->setMinimumWidth(m_contents->minimumSizeHint().width()
                            + scroll->verticalScrollBar()->sizeHint().width());
}

QLabel* DockWidgetData::label(const char* name)
{
    auto* value = new QLabel(m_contents);
    value->setObjectName(QString::fromLatin1(name));
    value->setTextFormat(Qt::PlainText);
    value->setWordWrap(true);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return value;
}

QLabel* DockWidgetData::titleLabel()
{
    auto* title = new QLabel(m_contents);
    title->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return title;
}

void DockWidgetData::addHeading(Group group)
{
    QLabel*& heading = m_headings[group];
    heading = new QLabel(m_contents);
    heading->setFont(textfonts::bold(font()));
    if (group != kCycle) {
        heading->setContentsMargins(0, fontMetrics().height() / 2, 0, 0);
    }
    m_grid->addWidget(heading, m_grid->rowCount(), 0, 1, 2);
}

void DockWidgetData::addRow(QLabel* title, QWidget* value)
{
    const int row = m_grid->rowCount();
    m_grid->addWidget(title, row, 0);
    m_grid->addWidget(value, row, 1);
}

void DockWidgetData::addField(Field field, const char* name)
{
    m_fields[field] = {titleLabel(), label(name)};
    addRow(m_fields[field].title, m_fields[field].value);
}

void DockWidgetData::buildCycle()
{
    addHeading(kCycle);
    m_simInterface = label("label_sim_interface_info");
    m_updateInterval = label("label_weatherupdateinterval");
    m_info1 = label("label_info1");
    m_jobs = label("label_info_jobs");
    for (QLabel* line : {m_simInterface, m_updateInterval, m_info1, m_jobs}) {
        m_grid->addWidget(line, m_grid->rowCount(), 0, 1, 2);
    }
}

void DockWidgetData::buildFields()
{
    addHeading(kAircraft);
    addField(kName, "label_name");
    addField(kWeight, "label_weight");
    addField(kSimTime, "label_simtime");
    addHeading(kPosition);
    addField(kLatitude, "label_latitude");
    addField(kLongitude, "label_longitude");
    addField(kAltitude, "label_altitude");
    addField(kHeight, "label_height");
    addHeading(kMotion);
    addField(kHeading, "label_heading");
    addField(kTrack, "label_track");
    addField(kVariation, "label_variation");
    addField(kTas, "label_tas");
    addField(kGroundSpeed, "label_groundspeed");
    addField(kVerticalSpeed, "label_verticalspeed");
    addHeading(kAir);
    addField(kWind, "label_wind");
    addField(kTemperature, "label_temperature");
    addField(kVisibility, "label_visibility");
}

void DockWidgetData::buildRadios()
{
    addHeading(kRadios);
    for (Line& line : m_radios) {
        line = {titleLabel(), label("label_radio")};
        addRow(line.title, line.value);
    }
}

void DockWidgetData::buildFlight()
{
    addHeading(kFlight);
    m_flightStatusTitle = titleLabel();
    m_flightStatus = new QLineEdit(m_contents);
    m_flightStatus->setObjectName(QStringLiteral("lineEdit_flightStatus"));
    m_flightStatus->setReadOnly(true);
    m_restart = new QToolButton(m_contents);
    m_restart->setObjectName(QStringLiteral("toolButton_recRestart"));
    m_restart->setIcon(Icons::appIcon(Icons::Name::Restart));
    m_restart->setEnabled(false); // nothing records flights yet
    auto* status = new QWidget(m_contents);
    auto* row = new QHBoxLayout(status);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_flightStatus, 1);
    row->addWidget(m_restart);
    addRow(m_flightStatusTitle, status);
    m_flightTimeTitle = titleLabel();
    m_flightTime = label("label_flightTime");
    addRow(m_flightTimeTitle, m_flightTime);
    m_windTitle = titleLabel();
    m_targetWind = new QLineEdit(m_contents);
    m_targetWind->setObjectName(QStringLiteral("lineEdit_dwc_wind"));
    m_targetWind->setReadOnly(true);
    addRow(m_windTitle, m_targetWind);
    m_flightStatusTitle->setBuddy(m_flightStatus);
    m_windTitle->setBuddy(m_targetWind);
    for (QLabel* title : {m_flightStatusTitle, m_windTitle}) {
        title->setAlignment(Qt::AlignLeft | Qt::AlignVCenter); // beside a frame
    }
}

void DockWidgetData::setWeatherUpdateInterval(const QString& text)
{
    m_updateInterval->setText(text);
}

void DockWidgetData::setInfo1(const QString& text)
{
    m_info1->setText(text);
}

void DockWidgetData::setSimInterfaceInfo(const QString& text)
{
    m_simInterface->setText(text);
}

void DockWidgetData::setJobsInfo(const QString& text)
{
    m_jobs->setText(text);
}

void DockWidgetData::setDwcState(const QString& text, bool enabled)
{
    setTargetWind(text);
    setTargetWindToolTip(text);
    m_targetWind->setEnabled(enabled);
}

void DockWidgetData::setField(Field field, const QString& text)
{
    m_fields[field].value->setText(text);
}

void DockWidgetData::clearData()
{
    for (const Line& line : m_fields) {
        line.value->clear();
    }
    for (const Line& line : m_radios) {
        line.value->clear();
    }
    m_updateInterval->clear();
    m_info1->clear();
    m_jobs->clear();
    setDwcState(QString(), true);
    m_track.clear();
    m_lastPosition = {};
}

void DockWidgetData::setAircraftData(const aviation::structs::AircraftData& aircraft)
{
    const auto feet = [](int value) {
        return tr("%1 ft").arg(value);
    };
    const auto knots = [](int value) {
        return tr("%1 kt").arg(value);
    };
    const double variation = static_cast<double>(aircraft.magneticVariation);
    setField(kName, QString::fromStdWString(aircraft.name));
    setField(kLatitude, QStringLiteral("%1").arg(aircraft.position.latitude()));
    setField(kLongitude, QStringLiteral("%1").arg(aircraft.position.longitude()));
    setField(kAltitude, feet(aircraft.altitude));
    setField(kHeight, feet(aircraft.heightAgl));
    setField(kHeading, aircrafttexts::headingText(aircraft));
    setField(kTrack, groundTrack(aircraft));
    setField(kVariation, numberText(variation, 1) + QStringLiteral("\u00B0"));
    setField(kTas, knots(aircraft.tas));
    setField(kGroundSpeed, knots(aircraft.groundSpeed));
    setField(kVerticalSpeed, tr("%1 ft/min").arg(aircraft.verticalSpeed));
    setField(kWeight, tr("%1 lbs").arg(numberText(static_cast<double>(aircraft.totalWeight))));
    setField(kWind, aircrafttexts::windText(aircraft.wind, variation));
    setField(kTemperature,
             tr("%1 °C").arg(numberText(static_cast<double>(aircraft.temperature), 1)));
    setField(kVisibility, aircrafttexts::visibilityText(aircraft.visibility));
    setField(kSimTime, aircrafttexts::simTimeText(aircraft.simTime));
}

QString DockWidgetData::groundTrack(const aviation::structs::AircraftData& aircraft)
{
    // The simulator doesn't send the track: it is the course between the last two places.
    const bool moved = m_lastPosition.isKnown() && m_lastPosition != aircraft.position;
    if (moved && aircraft.groundSpeed > 0) {
        m_track = aircrafttexts::courseText(aviation::BearingTo(m_lastPosition, aircraft.position),
                                            static_cast<double>(aircraft.magneticVariation));
    }
    m_lastPosition = aircraft.position;
    return m_track.isEmpty() ? QStringLiteral("\u2013") : m_track;
}

void DockWidgetData::setFrequencys(const aviation::structs::RadioFrequencys& radios)
{
    const auto set = [this](Radio radio, const QString& text) {
        m_radios[radio].value->setText(text);
    };
    set(kComm1, aircrafttexts::activeAndStandby(radios.comm1active, radios.comm1standby));
    set(kComm2, aircrafttexts::activeAndStandby(radios.comm2active, radios.comm2standby));
    set(kNav1, aircrafttexts::activeAndStandby(radios.nav1active, radios.nav1standby));
    set(kNav2, aircrafttexts::activeAndStandby(radios.nav2active, radios.nav2standby));
    set(kAdf, QString::number(radios.adf));
    set(kTransponder, QStringLiteral("%1").arg(radios.transponder, 4, 10, QLatin1Char('0')));
}

void DockWidgetData::setFlightStatus(const QString& status, const QColor& background,
                                     const QColor& foreground)
{
    QPalette colours;
    colours.setColor(QPalette::Base, background);
    colours.setColor(QPalette::Text, foreground);
    m_flightStatus->setPalette(colours);
    m_flightStatus->setText(status);
}

void DockWidgetData::setFlightTime(const QTime& time)
{
    m_flightTime->setText(time.toString(QStringLiteral("hh:mm:ss")));
}

void DockWidgetData::setTargetWind(const QString& text)
{
    m_targetWind->setText(text);
    m_targetWind->setCursorPosition(0); // the layers of X-Plane don't fit: the lowest comes first
}

void DockWidgetData::setTargetWindToolTip(const QString& text)
{
    m_targetWind->setToolTip(text.toHtmlEscaped());
}

void DockWidgetData::changeEvent(QEvent* event)
{
    QDockWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslateUi();
    }
}

void DockWidgetData::retranslateUi()
{
    setWindowTitle(tr("Data"));
    widget()->setAccessibleName(tr("Data"));
    const std::array headings{tr("Weather cycle"), tr("Aircraft"), tr("Position"), tr("Motion"),
                              tr("Air"),           tr("Radios"),   tr("Flight")};
    for (int group = 0; group < kGroupCount; ++group) {
        m_headings[group]->setText(headings[group]);
    }
    retranslateFields();
    m_simInterface->setAccessibleName(tr("Simulator and interface"));
    m_updateInterval->setAccessibleName(tr("Next weather update"));
    m_info1->setAccessibleName(tr("Next weather download"));
    m_jobs->setAccessibleName(tr("Waiting jobs"));
    m_flightStatusTitle->setText(tr("Status"));
    m_flightStatus->setAccessibleName(tr("Flight status"));
    m_flightTimeTitle->setText(tr("Flight time"));
    m_restart->setText(tr("Restart"));
    m_restart->setToolTip(tr("Restarts the recorder; recording comes with a later version"));
    m_restart->setAccessibleName(tr("Restart recorder"));
    m_windTitle->setText(tr("Wind set"));
    m_targetWind->setAccessibleName(tr("Wind set by direct wind control"));
}

void DockWidgetData::retranslateFields()
{
    const std::array titles{
        tr("Name"),   tr("Latitude"),     tr("Longitude"),      tr("Altitude"),
        tr("Height"), tr("Heading"),      tr("Ground track"),   tr("Variation"),
        tr("TAS"),    tr("Ground speed"), tr("Vertical speed"), tr("Weight"),
        tr("Wind"),   tr("Temperature"),  tr("Visibility"),     tr("Time (UTC)")};
    for (int field = 0; field < kFieldCount; ++field) {
        m_fields[field].title->setText(titles[field]);
        m_fields[field].value->setAccessibleName(titles[field]);
    }
    const std::array radios{tr("COM 1"), tr("COM 2"), tr("NAV 1"),
                            tr("NAV 2"), tr("ADF"),   tr("Transponder")};
    for (int radio = 0; radio < kRadioCount; ++radio) {
        m_radios[radio].title->setText(radios[radio]);
        m_radios[radio].value->setAccessibleName(radios[radio]);
    }
}
