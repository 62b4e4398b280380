#include "weather/output/records/TextFields.h"

#include "aviation/support/NumberText.h"

#include <array>
#include <charconv>
#include <utility>

namespace recordtext {

namespace {

void AppendName(std::string& text, std::string_view name)
{
    if (!name.empty()) {
        text.append(name) += '=';
    }
}

} // namespace

void AppendIntegers(std::string& text, std::initializer_list<IntegerField> fields)
{
    std::array<char, 20> digits{}; // the longest value is -9223372036854775808
    bool isFirst = true;
    for (const IntegerField& field : fields) {
        if (!std::exchange(isFirst, false)) {
            text += ':';
        }
        AppendName(text, field.name);
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), field.value);
        text.append(digits.data(), end.ptr);
    }
}

std::string JoinedIntegers(std::initializer_list<IntegerField> fields)
{
    std::string text;
    AppendIntegers(text, fields);
    return text;
}

std::string JoinedFixed(std::initializer_list<FixedField> fields)
{
    std::string text;
    for (const FixedField& field : fields) {
        if (!text.empty()) {
            text += ':';
        }
        AppendName(text, field.name);
        text += aviation::FixedText(static_cast<double>(field.value), field.precision);
    }
    return text;
}

} // namespace recordtext
