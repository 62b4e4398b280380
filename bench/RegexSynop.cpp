#include "bench/RegexSynop.h"

#include "aviation/SynopPatterns.h"
#include "tests/support/Regex.h"

#include <cwchar>
#include <map>

namespace {

using namespace aviation::weather;
using namespace aviation::weather::synoppatterns;

template <class P>
const std::wregex& regexOf()
{
    static const std::wregex regex{std::wstring(P::text())};
    return regex;
}

int numberOf(const std::wstring& text)
{
    return static_cast<int>(std::wcstol(text.c_str(), nullptr, 10));
}

std::int32_t baseOf(int code)
{
    if (code <= 50) {
        return 100 * code;
    }
    if (code < 56) {
        return 0;
    }
    if (code < 81) {
        return 1000 * (code - 50);
    }
    if (code < 90) {
        return 5000 * (code - 74);
    }
    return code < 96 ? 166 * (code - 89) : static_cast<std::int32_t>((code - 94) * 500 * 3.3285);
}

class Chain
{
public:
    explicit Chain(const std::wstring& text) : m_text(text) {}

    RegexSynop run()
    {
        if (m_text.length() < 10) {
            m_out.status = synopstatus::kTooShort;
        } else if (readHeader()) {
            readVisibility();
            readWind();
            readValues();
            readRegional();
            readNational();
        }
        return m_out;
    }

private:
    template <class P>
    bool cut()
    {
        std::wsmatch found;
        if (!std::regex_search(m_text, found, regexOf<P>())) {
            return false;
        }
        m_groups.assign(found.begin(), found.end());
        m_text.erase(0, static_cast<std::size_t>(found.length()));
        m_text.erase(0, m_text.find_first_not_of(L' '));
        m_text.erase(m_text.find_last_not_of(L' ') + 1);
        return true;
    }
    template <class... P>
    void skip()
    {
        (static_cast<void>(cut<P>()), ...);
    }
    std::wstring group(std::size_t at) const { return m_groups[at]; }
    double knots(int speed) const
    {
        return m_out.synop.windUnit < 2 ? speed * 1.943844492 : static_cast<double>(speed);
    }

    bool readHeader()
    {
        if (cut<LandHeader>()) {
            m_out.icao = group(2);
            storeTimeAndUnit(group(1), group(1));
            return true;
        }
        const bool ship = cut<ShipHeader>();
        if (!ship && !cut<MobileHeader>()) {
            m_out.status = synopstatus::kNoHeader;
            return false;
        }
        if (group(1).length() < 2) {
            m_out.status = synopstatus::kOutOfRange;
            return false;
        }
        storeTimeAndUnit(group(1), group(2));
        storePlace();
        m_out.synop.type = ship ? SynopType::Ship : SynopType::Mobile;
        return true;
    }

    void storeTimeAndUnit(const std::wstring& time, const std::wstring& unit)
    {
        const std::wstring group = time.substr(0, 2) + time.substr(2, 2) + L"00Z";
        m_out.synop.timeGroup = {};
        group.copy(m_out.synop.timeGroup.data(), group.size());
        if (unit[4] == L'/') {
            m_out.synop.windUnit = 4;
        } else if (unit[4] < L'4') {
            m_out.synop.windUnit = static_cast<std::uint8_t>(unit[4] - L'0');
        }
    }

    void storePlace()
    {
        m_out.name = group(1);
        m_out.icao = group(3) + group(4);
        const std::map<wchar_t, std::pair<double, double>> signs{
            {L'1', {1, 1}}, {L'3', {-1, 1}}, {L'5', {-1, -1}}, {L'7', {1, -1}}};
        const auto sign = signs.find(group(4)[0]);
        if (sign != signs.end()) {
            m_out.position = {sign->second.first * numberOf(group(3).substr(2)) / 10.0,
                              sign->second.second * numberOf(group(4).substr(1)) / 10.0};
        }
    }

    void readVisibility()
    {
        static const std::map<int, int> kNear{{90, 40},    {91, 50},   {92, 200},  {93, 500},
                                              {94, 1000},  {95, 2000}, {96, 4000}, {97, 10000},
                                              {98, 20000}, {99, 60000}};
        static const int kBases[] = {166, 333, 666, 1000, 2000, 3333, 5000, 6666, 8333, 10000};
        if (!cut<Visibility>()) {
            return;
        }
        m_out.synop.precipitationIndicator = static_cast<std::uint8_t>(numberOf(group(1)));
        if (group(3) != L"/") {
            m_out.surface.cloudsSeen = true;
            m_out.synop.baseCloud.base = kBases[numberOf(group(3))];
        }
        m_out.surface.visibilitySeen = group(4) != L"//";
        const int code = numberOf(group(4));
        if (!m_out.surface.visibilitySeen || (code > 50 && code < 56)) {
            return;
        }
        m_out.surface.visibility = code <= 50   ? code / 10 * 1000
                                   : code <= 80 ? (code - 50) * 1000
                                   : code <= 89 ? (code - 74) * 5000
                                                : kNear.at(code);
    }

    void readWind()
    {
        if (!cut<SurfaceWind>()) {
            return;
        }
        if (group(1) != L"/") {
            const int octas = numberOf(group(1));
            m_out.synop.baseCloud.coverage = static_cast<std::uint8_t>(octas == 9 ? 8 : octas);
        }
        const int direction = numberOf(group(2));
        const int speed = numberOf(group(3));
        if (group(2) != L"//" && group(3) != L"//") {
            m_out.surface.windSeen = true;
            m_out.surface.wind = {static_cast<float>(direction == 99 ? 0 : direction * 10),
                                  static_cast<float>(knots(speed)), -1.0F, 0.0F};
        }
        if (speed == 99 && cut<StrongWind>()) {
            m_out.surface.wind.Speed =
                static_cast<float>(static_cast<int>(knots(numberOf(group(1)))));
            m_out.surface.wind.Gust = -1.0F;
        }
    }

    double pressure() const
    {
        const std::wstring digits = group(1);
        const double hpa =
            digits[3] == L'/' ? numberOf(digits.substr(0, 3)) : numberOf(digits) / 10.0;
        return hpa < 300 ? hpa + 1000 : hpa;
    }

    void readValues()
    {
        if (cut<Temperature>()) {
            const double value = numberOf(group(2)) / 10.0;
            m_out.surface.temperature = static_cast<float>(group(1) == L"1" ? -value : value);
        }
        if (cut<DewPoint>()) {
            const double value = numberOf(group(2)) / 10.0;
            m_out.surface.dewPoint = static_cast<float>(group(1) == L"1" ? -value : value);
            m_out.synop.humidity = group(1) == L"9" ? value : 0.0;
        }
        if (cut<StationPressure>()) {
            m_out.synop.stationPressure = pressure();
        }
        if (cut<SeaLevelPressure>()) {
            m_out.surface.qnh = static_cast<float>(pressure());
        }
        skip<Geopotential, Tendency, Precipitation, PresentWeather>();
        if (cut<CloudForms>()) {
            m_out.synop.lowCode = static_cast<std::uint8_t>(numberOf(group(2)));
            m_out.synop.middleCode = static_cast<std::uint8_t>(numberOf(group(3)));
            m_out.synop.highCode = static_cast<std::uint8_t>(numberOf(group(4)));
            m_out.synop.cloudCodesRead = true;
        }
    }

    void addCloud(int octas, int type, int base)
    {
        Cloud cloud;
        cloud.coverage = static_cast<std::uint8_t>(octas > 8 ? 0 : octas);
        cloud.type = static_cast<std::uint8_t>(type);
        cloud.base = base;
        cloud.altitude = -1;
        m_out.surface.clouds.push_back(cloud);
        m_out.synop.cloudCodesRead = true;
    }

    void readRegional()
    {
        if (cut<Section2>()) {
            skip<Plain0, Plain1, Plain2, Plain3, Plain4, Plain5, Plain6, Plain7, Plain4>();
        }
        if (cut<Section3>()) {
            skip<Plain0, MaximumTemperature, MinimumTemperature, GroundTemperature, SnowTemperature,
                 DailySunshine, Plain2, Plain3, Plain4, HourlySunshine, Plain2, Plain3, Plain4,
                 RegionalPrecipitation, Plain7>();
            while (cut<CloudLayer>()) {
                addCloud(numberOf(group(1)), numberOf(group(2)), baseOf(numberOf(group(3))));
                m_out.surface.cloudsSeen = true;
            }
            while (cut<Supplement>()) {
                if (numberOf(group(1)) == 11) {
                    m_out.surface.wind.Gust = static_cast<float>(knots(numberOf(group(2))));
                }
            }
        }
        if (cut<Section4>()) {
            skip<AnyGroup>();
        }
    }

    void readNational()
    {
        if (!cut<Section5>()) {
            return;
        }
        const double temperature = numberOf(group(1).substr(2)) / 10.0;
        m_out.surface.temperature =
            static_cast<float>(group(1)[1] == L'0' ? temperature : -temperature);
        m_out.synop.seaValue = numberOf(group(2).substr(1)) / 10.0;
        if (cut<SeaSecond>()) {
            const double value = numberOf(group(1).substr(2)) / 10.0;
            m_out.synop.seaSecondValue = group(1)[1] == L'0' ? value : -value;
        }
        skip<National22, National23, National24, National25, National26, National3, National4,
             National5, National7>();
        while (cut<NationalCloud>()) {
            addCloud(numberOf(group(1).substr(1, 1)), 0, baseOf(numberOf(group(1).substr(4))));
        }
        if (cut<Gust10Minutes>()) {
            m_out.synop.gust10Minutes = static_cast<int>(knots(numberOf(group(1).substr(3))));
        }
        for (std::int32_t* gust : {&m_out.synop.gust1, &m_out.synop.gust2}) {
            if (cut<GustPeak>()) {
                *gust = m_out.synop.windUnit < 2 ? m_out.synop.gust10Minutes
                                                 : numberOf(group(1).substr(3));
            }
        }
        skip<PicGroup, BotGroup>();
    }

    std::wstring m_text;
    std::vector<std::wstring> m_groups;
    RegexSynop m_out;
};

} // namespace

RegexSynop decodeSynopByRegex(const std::wstring& reportText)
{
    return Chain(reportText).run();
}
