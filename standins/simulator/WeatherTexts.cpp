#include "standins/simulator/WeatherTexts.h"

#include "standins/simulator/FieldReader.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace simulator {

namespace {

constexpr std::size_t kMostWindLayers = 1000;

void read(FieldReader& reader, VisLayer& layer)
{
    reader.word("UpperAlt=").integer(layer.UpperAlt);
    reader.word(":LowerAlt=").integer(layer.LowerAlt);
    reader.word(":Range=").integer(layer.Range);
}

void read(FieldReader& reader, TempLayer& layer)
{
    reader.word("Alt=").integer(layer.Alt);
    reader.word(":Day=").integer(layer.Day);
    reader.word(":DayNightVar=").integer(layer.DayNightVar);
    reader.word(":Dew=").integer(layer.Dew);
}

void read(FieldReader& reader, WindLayer& layer)
{
    reader.word("UpperAlt=").integer(layer.UpperAlt);
    reader.word(":Speed=").integer(layer.Speed);
    reader.word(":Gust=").integer(layer.Gust);
    reader.word(":Dir=").integer(layer.Dir);
    reader.word(":Turbulence=").integer(layer.Turbulence);
    reader.word(":Shear=").integer(layer.Shear);
    reader.word(":Variance=").integer(layer.Variance);
    reader.word(":SpeedFract=").integer(layer.SpeedFract);
    reader.word(":CapAbove=").integer(layer.CapAbove);
}

void read(FieldReader& reader, CloudLayer& layer)
{
    reader.word("UpperAlt=").integer(layer.UpperAlt);
    reader.word(":LowerAlt=").integer(layer.LowerAlt);
    reader.word(":Dev=").integer(layer.Dev);
    reader.word(":Cover=").integer(layer.Cover);
    reader.word(":Type=").integer(layer.Type);
    reader.word(":Turbulence=").integer(layer.Turbulence);
    reader.word(":Icing=").integer(layer.Icing);
    reader.word(":PrecipBase=").integer(layer.PrecipBase);
    reader.word(":PrecipType=").integer(layer.PrecipType);
    reader.word(":PrecipRate=").integer(layer.PrecipRate);
    reader.word(":TopShape=").integer(layer.TopShape);
}

/// The layers between a section's braces: as many as its count says.
template <class Layers>
void readSection(FieldReader& reader, const char* opening, std::int32_t count, Layers& layers)
{
    reader.word(opening);
    const std::int32_t used = std::clamp(count, 0, static_cast<std::int32_t>(layers.size()));
    for (std::int32_t i = 0; i < used; ++i) {
        read(reader, layers[static_cast<std::size_t>(i)]);
        reader.word("|");
    }
    reader.word("}");
}

void readRecordHead(FieldReader& reader, NewWeather& record)
{
    std::int32_t signature = 0;
    std::int32_t timestamp = 0;
    reader.word("Command=").integer(record.Command).word(":Flag=").integer(record.Flag);
    reader.word(":Signature=").integer(signature).word(":Icao=");
    const QByteArray icao = reader.textUntil(":").left(4);
    std::copy(icao.begin(), icao.end(), record.Icao.begin());
    reader.word(":Dynamic=").integer(record.Dynamic).word(":Seconds=").integer(record.Seconds);
    reader.word(":Lat=").number(record.Lat).word(":Lon=").number(record.Lon);
    reader.word(":Elev=").integer(record.Elev).word(":Timestamp=").integer(timestamp);
    reader.word(":Press=").integer(record.Press).word(":Drift=").integer(record.Drift).word(":");
    record.Signature = static_cast<std::uint32_t>(signature);
    record.Timestamp = static_cast<std::uint32_t>(timestamp);
}

void readValues(FieldReader& reader, XPlaneWeather& weather)
{
    struct Field
    {
        const char* word;
        float* value;
    };
    const Field fields[] = {{"Press=", &weather.Press},
                            {":Vis=", &weather.Vis},
                            {":Temp=", &weather.Temp},
                            {":Dew=", &weather.Dew},
                            {":RainPercent=", &weather.RainPercent},
                            {":ThunderstromPercent=", &weather.ThunderstromPercent},
                            {":WindTurbulencePercent=", &weather.WindTurbulencePercent},
                            {":RateChangePercent=", &weather.RateChangePercent},
                            {":WaveDir=", &weather.WaveDir},
                            {":WaveHeight=", &weather.WaveHeight},
                            {":WaveSpeed=", &weather.WaveSpeed},
                            {":WaveLenght=", &weather.WaveLenght},
                            {":TempTropo=", &weather.TempTropo},
                            {":TropoAltMeter=", &weather.TropoAltMeter}};
    for (const Field& field : fields) {
        reader.word(field.word).number(*field.value);
    }
}

void readClouds(FieldReader& reader, XPlaneWeather& weather)
{
    reader.word("Cloudlayer{");
    for (XPlaneCloud& cloud : weather.Clouds) {
        reader.word("Type=").integer(cloud.Type).word(":Coverage=").number(cloud.Coverage);
        reader.word(":Base=").number(cloud.Base).word(":Top=").number(cloud.Top).word("|");
    }
    reader.word("}:");
}

void readLong(FieldReader& reader, XPlaneWindLayer& layer)
{
    reader.word("Alt=").number(layer.Alt).word(":Dir=").number(layer.Dir);
    reader.word(":Speed=").number(layer.Speed).word(":Turbulence=").number(layer.Turbulence);
    reader.word(":ShearDir=").number(layer.ShearDir);
    reader.word(":ShearSpeed=").number(layer.ShearSpeed);
}

void readShort(FieldReader& reader, XPlaneWindLayer& layer)
{
    reader.number(layer.Alt).word(":").number(layer.Dir).word(":").number(layer.Speed);
    reader.word(":").number(layer.Turbulence).word(":").number(layer.ShearDir);
    reader.word(":").number(layer.ShearSpeed).word(":").number(layer.Further[0]);
    reader.word(":").number(layer.Further[1]);
}

void readWinds(FieldReader& reader, std::vector<XPlaneWindLayer>& layers,
               void (*readLayer)(FieldReader&, XPlaneWindLayer&))
{
    reader.word("WindLayer{");
    while (reader.isGood() && !reader.tryWord("}") && layers.size() < kMostWindLayers) {
        readLayer(reader, layers.emplace_back());
        reader.word("|");
    }
}

} // namespace

std::optional<NewWeather> readWeatherRecord(const QByteArray& text)
{
    FieldReader reader(text);
    NewWeather record;
    readRecordHead(reader, record);
    read(reader, record.Vis);
    reader.word(":nTempCtr=").integer(record.nTempCtr).word(":nWindCtr=").integer(record.nWindCtr);
    reader.word(":nCloudCtr=").integer(record.nCloudCtr);
    reader.word(":nUpperVisCtr=").integer(record.nUpperVisCtr);
    readSection(reader, ":TempLayer{", record.nTempCtr, record.Temp);
    readSection(reader, ":WindLayer{", record.nWindCtr, record.Wind);
    readSection(reader, ":VisLayer{", record.nUpperVisCtr, record.UpperVis);
    readSection(reader, ":CloudLayer{", record.nCloudCtr, record.Cloud);
    return reader.isDone() ? std::optional(record) : std::nullopt;
}

std::optional<XPlaneWeather> readWeatherData(const QByteArray& text, bool withWx)
{
    FieldReader reader(text);
    XPlaneWeather weather;
    readValues(reader, weather);
    if (withWx) {
        reader.word(":WX=");
        weather.WX = reader.textUntil(":").toStdString();
        reader.word(":");
    }
    readClouds(reader, weather);
    readWinds(reader, weather.Winds, withWx ? readShort : readLong);
    return reader.isDone() ? std::optional(weather) : std::nullopt;
}

std::optional<std::vector<XPlaneWindLayer>> readWindLayers(const QByteArray& text)
{
    FieldReader reader(text);
    std::vector<XPlaneWindLayer> layers;
    readWinds(reader, layers, readLong);
    return reader.isDone() ? std::optional(layers) : std::nullopt;
}

std::optional<aviation::weather::Wind> readWind(const QByteArray& text)
{
    FieldReader reader(text);
    aviation::weather::Wind wind;
    reader.word("Dir=").number(wind.Dir).word(":Speed=").number(wind.Speed);
    reader.word(":Gust=").number(wind.Gust);
    return reader.isDone() ? std::optional(wind) : std::nullopt;
}

} // namespace simulator
