#include "standins/simulator/Messages.h"

#include <array>

namespace simulator {

namespace {

struct Row
{
    int number;
    const char* name;
};

constexpr std::array kCommands{Row{1, "HELO"}, Row{2, "COFS"}, Row{3, "FSST"},
                               Row{4, "READ"}, Row{5, "WRIT"}, Row{6, "REQUEST"},
                               Row{7, "ANSW"}, Row{8, "NCMD"}, Row{9, "QUIT"}};
constexpr std::array kMessages{Row{message::kHello, "greeting"},
                               Row{message::kAircraft, "aircraft"},
                               Row{message::kFuel, "fuel"},
                               Row{message::kPayload, "payload"},
                               Row{message::kWind, "wind"},
                               Row{message::kWeatherRecord, "weather record"},
                               Row{message::kWeatherText, "weather text"},
                               Row{message::kWeatherData, "weather data"},
                               Row{message::kFileName, "file name"},
                               Row{message::kFile, "file"},
                               Row{message::kWindLayers, "wind layers"},
                               Row{message::kGlobalWindFile, "global wind file"},
                               Row{message::kTurbulenceFile, "turbulence file"},
                               Row{message::kActivateWeather, "activate weather"},
                               Row{message::kVisibility, "visibility"},
                               Row{message::kRadios, "radios"},
                               Row{message::kScreenText, "screen text"},
                               Row{message::kClearWeather, "clear weather"},
                               Row{message::kDateTime, "date and time"},
                               Row{message::kConfigFile, "config file"},
                               Row{message::kClientAddress, "client address"},
                               Row{message::kWeatherDataWx, "weather data with WX"},
                               Row{message::kIsConnected, "connected simulator"},
                               Row{message::kConnectedAnswer, "connected simulator"}};

template <class Rows>
const char* nameOf(const Rows& rows, int number, const char* otherwise)
{
    for (const Row& row : rows) {
        if (row.number == number) {
            return row.name;
        }
    }
    return otherwise;
}

} // namespace

QString messageName(int command, int id)
{
    const QString text = QLatin1String(nameOf(kCommands, command, "NCMD")) + QLatin1Char(' ')
                         + QString::number(id) + QLatin1Char(' ')
                         + QLatin1String(nameOf(kMessages, id, ""));
    return text.trimmed();
}

} // namespace simulator
