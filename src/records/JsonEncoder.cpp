#include "records/JsonEncoder.h"

#include <algorithm>
#include <array>
#include <cstdio>

void JsonEncoder::Output::grow(std::size_t count) {
    const auto used = m_next ? m_next - m_bytes.constData() : 0;
    const auto wanted = std::max<qsizetype>(used + static_cast<qsizetype>(count),
                                            std::max<qsizetype>(256, m_bytes.size() * 2));
    QByteArray larger(wanted, Qt::Uninitialized);
    std::copy_n(m_bytes.constData(), used, larger.data());
    m_bytes = std::move(larger);
    m_next = m_bytes.data() + used;
    m_end = m_bytes.data() + m_bytes.size();
}

QByteArray JsonEncoder::Output::take() {
    m_bytes.truncate(m_next ? m_next - m_bytes.constData() : 0);
    m_next = m_end = nullptr;
    return std::move(m_bytes);
}

void JsonEncoder::Writer::text(const QString &text) {
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    const auto room = encoder.requiredSpace(text.size());
    if (m_scratch.size() < room)
        m_scratch.resize(std::max(room, m_scratch.size() * 2));
    const char *end = encoder.appendToBuffer(m_scratch.data(), text);
    m_writer.String(m_scratch.constData(),
                    static_cast<rapidjson::SizeType>(end - m_scratch.constData()));
}

void JsonEncoder::write(Writer &writer, const Date &date, DateForm dates) {
    if (dates == DateForm::millisecondsSince1970) {
        writer.json().Int64(date.milliseconds);
        return;
    }
    // Written out of integers: a double would turn .123 into .12299999.
    const auto since2001 = date.milliseconds - millisecondsTo2001;
    const auto magnitude =
        since2001 < 0 ? 0 - static_cast<quint64>(since2001) : static_cast<quint64>(since2001);
    std::array<char, 32> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%s%llu.%03llu", since2001 < 0 ? "-" : "",
                      static_cast<unsigned long long>(magnitude / 1000),
                      static_cast<unsigned long long>(magnitude % 1000));
    writer.json().RawValue(text.data(), static_cast<std::size_t>(length), rapidjson::kNumberType);
}
