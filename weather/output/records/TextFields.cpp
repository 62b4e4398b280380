#include "weather/output/records/TextFields.h"

#include "aviation/support/NumberText.h"

namespace recordtext {

namespace {

void Append(std::string& text, std::string_view name, const std::string& value)
{
    if (!text.empty()) {
        text += ':';
    }
    if (!name.empty()) {
        text.append(name) += '=';
    }
    text += value;
}

} // namespace

std::string JoinedIntegers(std::initializer_list<IntegerField> fields)
{
    std::string text;
    for (const IntegerField& field : fields) {
        Append(text, field.name, aviation::IntegerText(field.value));
    }
    return text;
}

std::string JoinedFixed(std::initializer_list<FixedField> fields)
{
    std::string text;
    for (const FixedField& field : fields) {
        Append(text, field.name,
               aviation::FixedText(static_cast<double>(field.value), field.precision));
    }
    return text;
}

} // namespace recordtext
