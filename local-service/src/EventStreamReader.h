#pragma once

#include <QByteArray>
#include <QList>

#include <string_view>

/// Takes server-sent events out of bytes that may be split anywhere.
class EventStreamReader final {
public:
    /// The data of the events that end with these bytes, in order. Comments and all other fields
    /// are passed over, and so is an event that never ends.
    QList<QByteArray> read(std::string_view bytes);

private:
    void endLine(QList<QByteArray> &events);

    QByteArray m_line;
    /// The lines of data of the event so far, each with its line end.
    QByteArray m_data;
    bool m_afterCarriageReturn = false;
};
