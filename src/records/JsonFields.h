#pragma once

#include <QString>
#include <QtCore/qhashfunctions.h>

#include <string_view>
#include <tuple>

/// One key of a record and the member it fills. A member of the type std::optional is an optional
/// key; every other member is required.
template <class Record, class Member>
struct JsonField {
    std::string_view key;
    Member Record::*member;
};

template <class Record, class Member>
constexpr JsonField<Record, Member> jsonField(std::string_view key, Member Record::*member) {
    return {key, member};
}

/// The field table of a record: a static constexpr tuple `table` of JsonField, in the order in
/// which the keys are written. Every coded record specialises this; the decoder, the encoder and
/// the hash are written once over it.
template <class Record>
struct JsonFields;

template <class Record>
concept CodedRecord = requires { JsonFields<Record>::table; };

/// Calls visit(field) for each field of a record, in table order.
template <CodedRecord Record, class Visit>
constexpr void forEachField(Visit &&visit) {
    std::apply([&](const auto &...field) { (visit(field), ...); }, JsonFields<Record>::table);
}

/// The two written forms of a date.
enum class DateForm {
    /// In files: seconds since 2001-01-01T00:00:00 UTC.
    secondsSince2001,
    /// On the wire: milliseconds since 1970-01-01T00:00:00 UTC.
    millisecondsSince1970,
};

/// 2001-01-01T00:00:00 UTC in milliseconds since 1970.
inline constexpr qint64 millisecondsTo2001 = 978307200000;
