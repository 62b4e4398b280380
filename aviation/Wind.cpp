#include "aviation/Wind.h"

#include "aviation/support/NumberText.h"

namespace aviation::weather {

std::string windText(const Wind& wind)
{
    const auto field = [](float value) {
        return fixedText(static_cast<double>(value), 2);
    };
    return "Dir=" + field(wind.Dir) + ":Speed=" + field(wind.Speed) + ":Gust=" + field(wind.Gust);
}

} // namespace aviation::weather
