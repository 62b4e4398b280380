#include "app/gui/dialogs/SettingsPageWeather.h"

#include "app/base/SettingsValues.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QSpinBox>

SettingsPageWeather::SettingsPageWeather(QWidget* parent) : SettingsPage(parent)
{
    buildUpdates();
    buildWind();
    buildVisibility();
    buildClouds();
}

void SettingsPageWeather::buildUpdates()
{
    QFormLayout* form = addGroup(tr("Updates"));
    const QString seconds = tr("s", "seconds");
    addNumber(form, tr("&Set the weather every:"), {30, 7200, 30, seconds, {}}, option::updateTime);
    addNumber(form, tr("&Download every:"), {60, 21600, 60, seconds, {}},
              option::downloadUpdateTime);
    addNumber(form, tr("&Range of stations:"), {10, 500, 10, tr("NM"), {}}, option::range);
    addChoice(form, tr("&Mode:"),
              {{tr("Direct"), weathermode::kDirect}, {tr("Weather file"), weathermode::kFiles}},
              option::weatherMode);
    addHint(form, tr("The weather is also set after half of the range has been flown."));
    addCheck(form, tr("No update in a&pproach"), option::noUpdateApproach);
    addCheck(form, tr("Leave out S&YNOP reports"), option::synopOff);
    addCheck(form, tr("Lea&ve out upper-air data"), option::gribOff);
}

void SettingsPageWeather::buildWind()
{
    QFormLayout* form = addGroup(tr("Wind"));
    addCheck(form, tr("Gusts &at the surface"), option::gustySurfaceWind);
    auto* control = addCheck(form, tr("Direct &wind control"), option::fsWindDwc);
    auto* turn = addNumber(form, tr("&Turn at most:"), {1, 45, 1, QStringLiteral("\u00B0/s"), {}},
                           option::dwcDegreesPerSecond);
    auto* speed = addNumber(form, tr("C&hange at most:"), {1, 50, 1, QStringLiteral("kt/s"), {}},
                            option::dwcKnotsPerSecond);
    addHint(form, tr("Direct wind control sets the wind at the aircraft once a second. It isn't "
                     "available with SimConnect alone, Prepar3D from version 4 on and FS2020."));
    turn->setEnabled(false);
    speed->setEnabled(false);
    connect(control, &QCheckBox::toggled, turn, &QWidget::setEnabled);
    connect(control, &QCheckBox::toggled, speed, &QWidget::setEnabled);
}

void SettingsPageWeather::buildVisibility()
{
    QFormLayout* form = addGroup(tr("Visibility"));
    const QString metres = tr("m", "metres");
    addNumber(form, tr("&For 9999 or 10SM:"),
              {1000, highestvisibility::kUnlimited, 1000, metres, {}}, option::vis9999);
    auto* lowest = addNumber(form, tr("&Lowest:"),
                             {0, highestvisibility::kUnlimited, 100, metres, {}}, option::visMin);
    auto* highest =
        addNumber(form, tr("Hi&ghest (m):"),
                  {100, highestvisibility::kUnlimited, 1000, {}, tr("unlimited")}, option::visMax);
    addRule(highest, [lowest, highest] {
        return lowest->value() <= highest->value()
                   ? QString()
                   : tr("The lowest visibility is above the highest one.");
    });
}

void SettingsPageWeather::buildClouds()
{
    QFormLayout* cavok = addGroup(tr("Clouds with CAVOK"));
    Choices covers{{tr("no cloud"), cavokcover::kNone}};
    for (int eighths = 1; eighths < cavokcover::kRandom; ++eighths) {
        covers.push_back({QStringLiteral("%1/8").arg(eighths), eighths});
    }
    covers.push_back({tr("random"), cavokcover::kRandom});
    addChoice(cavok, tr("C&over:"), covers, option::cavokCover);
    addNumber(cavok, tr("H&eight (ft):"), {0, cavokheight::kRandom, 500, {}, tr("random")},
              option::cavokHeight);

    QFormLayout* form = addGroup(tr("Clouds"));
    addCheck(form, tr("Tur&bulence around cumulus"), option::turbulenceInCloud);
    addCheck(form, tr("&Icing"), option::icingInClouds);
    addCheck(form, tr("Strat&us as fog"), option::generateStratus);
    addCheck(form, tr("Mi&xed clouds"), option::mixedClouds);
    addCheck(form, tr("&Cirrus if none is reported"), option::generateCirrus);
}
