#pragma once

#include <string>

namespace aviation::weather {

/// Wind as simulators and reports share it: four single-precision values, copied word by word.
struct Wind
{
    float Dir = 0.0F;    ///< degrees true it blows from; 0 also stands for variable
    float Speed = 0.0F;  ///< knots
    float Gust = 0.0F;   ///< knots; 0 no gust, -1 not measured
    float Fourth = 0.0F; ///< always 0 in the decoders, never printed, copied along
};
static_assert(sizeof(Wind) == 16);

/// "Dir=%.02f:Speed=%.02f:Gust=%.02f" with a decimal point in every locale.
std::string windText(const Wind& wind);

} // namespace aviation::weather
