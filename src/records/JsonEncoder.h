#pragma once

// The encoder itself. Only the source files that instantiate Json::encode include it.

#include "records/Date.h"
#include "records/Identifier.h"
#include "records/Json.h"

#include <QHash>
#include <QList>
#include <QStringEncoder>

#include <optional>
#include <rapidjson/writer.h>

namespace JsonEncoder {

/// Where RapidJSON's writer puts its bytes: a QByteArray that grows by doubling.
class Output final {
public:
    using Ch = char;

    void Put(char c) {
        if (m_next == m_end)
            grow(1);
        *m_next++ = c;
    }
    /// Room for `count` bytes, for the PutUnsafe calls that follow.
    void reserve(std::size_t count) {
        if (static_cast<std::size_t>(m_end - m_next) < count)
            grow(count);
    }
    void putUnsafe(char c) { *m_next++ = c; }
    void Flush() {}

    QByteArray take();

private:
    void grow(std::size_t count);

    QByteArray m_bytes;
    char *m_next = nullptr;
    char *m_end = nullptr;
};

inline void PutReserve(Output &output, std::size_t count) {
    output.reserve(count);
}
inline void PutUnsafe(Output &output, char c) {
    output.putUnsafe(c);
}

/// The writer and the scratch space in which a text becomes UTF-8.
class Writer final {
public:
    void text(const QString &text);
    void key(std::string_view key) {
        m_writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
    }

    Output output;
    rapidjson::Writer<Output> &json() { return m_writer; }

private:
    rapidjson::Writer<Output> m_writer{output};
    QByteArray m_scratch;
};

inline void write(Writer &writer, const QString &text, DateForm) {
    writer.text(text);
}
inline void write(Writer &writer, bool flag, DateForm) {
    writer.json().Bool(flag);
}
inline void write(Writer &writer, qint64 number, DateForm) {
    writer.json().Int64(number);
}

inline void write(Writer &writer, const Identifier &identifier, DateForm) {
    writer.text(identifier.text);
}
void write(Writer &writer, const Date &date, DateForm dates);

template <class Element>
void write(Writer &writer, const QList<Element> &list, DateForm dates);

template <class Mapped>
void write(Writer &writer, const QHash<QString, Mapped> &map, DateForm dates);

template <CodedRecord Record>
void write(Writer &writer, const Record &record, DateForm dates) {
    writer.json().StartObject();
    forEachField<Record>([&](const auto &field) {
        const auto &member = record.*field.member;
        if constexpr (requires { member.has_value(); }) {
            if (member.has_value()) {
                writer.key(field.key);
                write(writer, *member, dates);
            }
        } else {
            writer.key(field.key);
            write(writer, member, dates);
        }
    });
    writer.json().EndObject();
}

template <class Element>
void write(Writer &writer, const QList<Element> &list, DateForm dates) {
    writer.json().StartArray();
    for (const auto &element : list)
        write(writer, element, dates);
    writer.json().EndArray();
}

template <class Mapped>
void write(Writer &writer, const QHash<QString, Mapped> &map, DateForm dates) {
    writer.json().StartObject();
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        const auto key = entry.key().toUtf8();
        writer.key({key.constData(), static_cast<std::size_t>(key.size())});
        write(writer, entry.value(), dates);
    }
    writer.json().EndObject();
}

} // namespace JsonEncoder

template <class Record>
QByteArray Json::encode(const Record &record, DateForm dates) {
    JsonEncoder::Writer writer;
    JsonEncoder::write(writer, record, dates);
    return writer.output.take();
}
