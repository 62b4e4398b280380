#include "weather/output/records/TextFields.h"

#include "aviation/support/NumberText.h"

#include <array>
#include <charconv>
#include <utility>

namespace recordtext {

namespace {

void appendName(std::string& text, std::string_view name)
{
    if (!name.empty()) {
        text.append(name) += '=';
    }
}

} // namespace

void appendIntegers(std::string& text, std::initializer_list<IntegerField> fields)
{
    std::array<char, 20> digits{}; // the longest value is -9223372036854775808
    bool isFirst = true;
    for (const IntegerField& field : fields) {
        if (!std::exchange(isFirst, false)) {
            text += ':';
        }
        appendName(text, field.name);
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), field.value);
        text.append(digits.data(), end.ptr);
    }
}

std::string joinedIntegers(std::initializer_list<IntegerField> fields)
{
    std::string text;
    appendIntegers(text, fields);
    return text;
}

std::string joinedFixed(std::initializer_list<FixedField> fields)
{
    std::string text;
    for (const FixedField& field : fields) {
        if (!text.empty()) {
            text += ':';
        }
        appendName(text, field.name);
        text += aviation::fixedText(static_cast<double>(field.value), field.precision);
    }
    return text;
}

} // namespace recordtext
