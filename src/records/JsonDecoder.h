#pragma once

// The decoder itself. Only the source files that instantiate Json::decode include it: the parser's
// header is large.

#include "records/Date.h"
#include "records/Identifier.h"
#include "records/Json.h"
#include "records/JsonNumber.h"

#include <QHash>
#include <QList>

#include <array>
#include <cstdint>
#include <optional>
#include <simdjson.h>
#include <string>
#include <type_traits>

namespace JsonDecoder {

using Value = simdjson::ondemand::value;
using Object = simdjson::ondemand::object;

/// Deeper nesting than this is refused, as untrusted text may not decide how deep the stack grows.
inline constexpr int maximumDepth = 512;

[[noreturn]] inline void fail(const std::string &what) {
    throw DecodingError(what);
}

inline void check(simdjson::error_code error, const char *what) {
    if (error != simdjson::SUCCESS)
        fail(std::string(what) + ": " + simdjson::error_message(error));
}

/// Walks over a value that no record asks for. The parser by itself would skip such a value without
/// looking at it, and a broken text would pass.
void skip(Value value, int depth);

inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

inline QString fromUtf8(std::string_view text) {
    auto result = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    // A mark at the start of a text is a part of it, but QString drops it.
    if (text.starts_with(byteOrderMark))
        result.prepend(QChar(QChar::ByteOrderMark));
    return result;
}

inline void read(Value value, QString &target, DateForm) {
    std::string_view text;
    check(value.get_string().get(text), "expected a text");
    target = fromUtf8(text);
}

inline void read(Value value, bool &target, DateForm) {
    check(value.get_bool().get(target), "expected a boolean");
}

void readInteger(Value value, std::int64_t &target);

inline void read(Value value, qint64 &target, DateForm) {
    std::int64_t number = 0;
    if (value.get_int64().get(number) != simdjson::SUCCESS)
        readInteger(value, number);
    target = number;
}

void read(Value value, Identifier &target, DateForm dates);
void read(Value value, Date &target, DateForm dates);

template <class Element>
void read(Value value, QList<Element> &target, DateForm dates);

template <class Mapped>
void read(Value value, QHash<QString, Mapped> &target, DateForm dates);

template <CodedRecord Record>
void read(Value value, Record &target, DateForm dates);

template <class Wrapped>
void read(Value value, std::optional<Wrapped> &target, DateForm dates) {
    bool isNull = false;
    check(value.is_null().get(isNull), "expected a value");
    if (isNull)
        target.reset();
    else
        read(value, target.emplace(), dates);
}

template <class Element>
void read(Value value, QList<Element> &target, DateForm dates) {
    simdjson::ondemand::array array;
    check(value.get_array().get(array), "expected a list");
    target.clear();
    for (auto result : array) {
        Value element;
        check(std::move(result).get(element), "broken list");
        read(element, target.emplaceBack(), dates);
    }
}

template <class Mapped>
void read(Value value, QHash<QString, Mapped> &target, DateForm dates) {
    Object object;
    check(value.get_object().get(object), "expected an object");
    target.clear();
    for (auto result : object) {
        simdjson::ondemand::field pair;
        check(std::move(result).get(pair), "broken object");
        std::string_view key;
        check(pair.unescaped_key().get(key), "broken key");
        read(pair.value(), target[fromUtf8(key)], dates);
    }
}

template <class Type>
inline constexpr bool isOptional = false;
template <class Wrapped>
inline constexpr bool isOptional<std::optional<Wrapped>> = true;

template <CodedRecord Record>
void readObject(Object object, Record &target, DateForm dates) {
    constexpr auto count =
        std::tuple_size_v<std::remove_cvref_t<decltype(JsonFields<Record>::table)>>;
    std::array<bool, count> seen{};

    for (auto result : object) {
        simdjson::ondemand::field pair;
        check(std::move(result).get(pair), "broken object");
        std::string_view key;
        check(pair.unescaped_key().get(key), "broken key");

        bool known = false;
        std::size_t index = 0;
        forEachField<Record>([&](const auto &field) {
            if (!known && field.key == key) {
                // Of a repeated key only the last value counts.
                if (seen[index])
                    target.*field.member = std::remove_cvref_t<decltype(target.*field.member)>();
                read(pair.value(), target.*field.member, dates);
                seen[index] = true;
                known = true;
            }
            ++index;
        });
        if (!known)
            skip(pair.value(), 0);
    }

    std::size_t index = 0;
    forEachField<Record>([&](const auto &field) {
        using Member = std::remove_cvref_t<decltype(target.*field.member)>;
        if (!isOptional<Member> && !seen[index])
            fail("\"" + std::string(field.key) + "\" is missing");
        ++index;
    });
}

template <CodedRecord Record>
void read(Value value, Record &target, DateForm dates) {
    Object object;
    check(value.get_object().get(object), "expected an object");
    readObject(object, target, dates);
}

/// The whole text, from its first to its last byte.
template <CodedRecord Record>
Record readDocument(QByteArray text, DateForm dates) {
    const auto length = static_cast<std::size_t>(text.size());
    text.reserve(text.size() + static_cast<qsizetype>(simdjson::SIMDJSON_PADDING));
    // Some versions of the parser pass over the mark, others refuse it.
    if (text.startsWith(byteOrderMark.data()))
        fail("a byte order mark");

    simdjson::ondemand::parser parser;
    simdjson::ondemand::document document;
    check(parser.iterate(text.constData(), length, static_cast<std::size_t>(text.capacity()))
              .get(document),
          "not a JSON text");
    Object object;
    check(document.get_object().get(object), "expected an object");
    Record record;
    readObject(object, record, dates);

    const char *rest = nullptr;
    if (document.current_location().get(rest) == simdjson::SUCCESS)
        fail("text after the end");
    return record;
}

} // namespace JsonDecoder

template <class Record>
Record Json::decode(QByteArray text, DateForm dates) {
    return JsonDecoder::readDocument<Record>(std::move(text), dates);
}
