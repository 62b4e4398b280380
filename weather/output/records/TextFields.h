#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

/// Building blocks of the bridge's "name=value:name=value" texts.
namespace recordtext {

struct IntegerField
{
    std::string_view name;
    std::int64_t value;
};

struct FixedField
{
    std::string_view name; ///< an empty name prints the bare value
    float value;
    int precision; ///< digits after the point
};

/// The fields with ":" between them; the decimal point doesn't depend on the locale.
std::string joinedIntegers(std::initializer_list<IntegerField> fields);
/// The same at the end of a text that has other fields already.
void appendIntegers(std::string& text, std::initializer_list<IntegerField> fields);
std::string joinedFixed(std::initializer_list<FixedField> fields);

} // namespace recordtext
