#include "aviation/Wind.h"

#include "aviation/support/NumberText.h"

namespace aviation::weather {

std::string WindText(const Wind& wind)
{
    return "Dir=" + FixedText(wind.Dir, 2) + ":Speed=" + FixedText(wind.Speed, 2)
           + ":Gust=" + FixedText(wind.Gust, 2);
}

} // namespace aviation::weather
