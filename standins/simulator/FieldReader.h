#pragma once

#include <QByteArray>

#include <cstdint>
#include <limits>

namespace simulator {

/// Walks through one of the bridge's "name=value:name=value" texts and demands each word of it.
/// After the first thing that isn't as it should be every call fails and gives nothing.
class FieldReader
{
public:
    explicit FieldReader(QByteArray text) : m_text(std::move(text)) {}

    /// The next characters must be these.
    FieldReader& word(const char* word);
    /// The next characters are these: steps over them and says so, else stays.
    bool tryWord(const char* word);

    /// A whole number within the limits of the type.
    template <class Integer>
    FieldReader& integer(Integer& value)
    {
        value = static_cast<Integer>(
            wholeNumber(std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max()));
        return *this;
    }
    /// A number with an optional point, within the limits of the type.
    template <class Float>
    FieldReader& number(Float& value)
    {
        value = static_cast<Float>(
            decimalNumber(static_cast<double>(std::numeric_limits<Float>::max())));
        return *this;
    }
    /// Everything up to one of the stop characters or the end.
    QByteArray textUntil(const char* stops);

    /// Everything was as it should be so far.
    bool isGood() const { return m_good; }
    /// The same, and nothing is left.
    bool isDone() const { return m_good && m_at == m_text.size(); }
    /// Where reading stands or failed.
    int position() const { return m_at; }

private:
    std::int64_t wholeNumber(std::int64_t least, std::int64_t most);
    double decimalNumber(double most);
    QByteArray span(const char* characters) const;

    QByteArray m_text;
    int m_at = 0;
    bool m_good = true;
};

} // namespace simulator
