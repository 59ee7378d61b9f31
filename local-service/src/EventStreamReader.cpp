#include "EventStreamReader.h"

QList<QByteArray> EventStreamReader::read(std::string_view bytes) {
    QList<QByteArray> events;
    for (const char byte : bytes) {
        const bool endsPair = byte == '\n' && m_afterCarriageReturn;
        m_afterCarriageReturn = byte == '\r';
        if (endsPair)
            continue;
        if (byte == '\n' || byte == '\r')
            endLine(events);
        else
            m_line.append(byte);
    }
    return events;
}

void EventStreamReader::endLine(QList<QByteArray> &events) {
    constexpr std::string_view field = "data:";
    if (m_line.isEmpty() && !m_data.isEmpty()) {
        m_data.chop(1);
        events.append(m_data);
        m_data.clear();
    } else if (m_line.startsWith(field.data())) {
        const auto value = m_line.mid(static_cast<qsizetype>(field.size()));
        m_data.append(value.startsWith(' ') ? value.mid(1) : value).append('\n');
    }
    m_line.clear();
}
