#include "standins/simulator/FieldReader.h"

#include <cmath>
#include <cstring>

namespace simulator {

FieldReader& FieldReader::word(const char* word)
{
    m_good = tryWord(word);
    return *this;
}

bool FieldReader::tryWord(const char* word)
{
    const int length = static_cast<int>(std::strlen(word));
    if (!m_good || std::strncmp(m_text.constData() + m_at, word, std::strlen(word)) != 0) {
        return false;
    }
    m_at += length;
    return true;
}

QByteArray FieldReader::textUntil(const char* stops)
{
    const int begin = m_at;
    while (m_good && m_at < m_text.size() && std::strchr(stops, m_text[m_at]) == nullptr) {
        ++m_at;
    }
    return m_good ? m_text.mid(begin, m_at - begin) : QByteArray();
}

std::int64_t FieldReader::wholeNumber(std::int64_t least, std::int64_t most)
{
    const QByteArray digits = m_good ? span("-0123456789") : QByteArray();
    bool isNumber = false;
    const qlonglong value = digits.toLongLong(&isNumber);
    m_good = m_good && isNumber && value >= least && value <= most;
    if (!m_good) {
        return 0;
    }
    m_at += digits.size();
    return value;
}

double FieldReader::decimalNumber(double most)
{
    const QByteArray digits = m_good ? span("-.0123456789") : QByteArray();
    bool isNumber = false;
    const double value = digits.toDouble(&isNumber);
    m_good = m_good && isNumber && std::abs(value) <= most;
    if (!m_good) {
        return 0.0;
    }
    m_at += digits.size();
    return value;
}

QByteArray FieldReader::span(const char* characters) const
{
    int end = m_at;
    while (end < m_text.size() && m_text[end] != '\0'
           && std::strchr(characters, m_text[end]) != nullptr)
    {
        ++end;
    }
    return m_text.mid(m_at, end - m_at);
}

} // namespace simulator
