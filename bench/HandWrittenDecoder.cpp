#include "bench/HandWritten.h"

#include <cmath>
#include <simdjson.h>
#include <stdexcept>

namespace {

using Value = simdjson::ondemand::value;

[[noreturn]] void fail() {
    throw std::runtime_error("not the expected JSON");
}

void check(simdjson::error_code error) {
    if (error != simdjson::SUCCESS)
        fail();
}

/// Each required key of a record sets one bit.
void checkSeen(unsigned seen, unsigned count) {
    if (seen != (1u << count) - 1)
        fail();
}

void read(Value value, QString &target) {
    std::string_view text;
    check(value.get_string().get(text));
    target = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void read(Value value, bool &target) {
    check(value.get_bool().get(target));
}

void read(Value value, qint64 &target) {
    std::int64_t number = 0;
    check(value.get_int64().get(number));
    target = number;
}

void read(Value value, Identifier &target) {
    QString text;
    read(value, text);
    const auto identifier = Identifier::parse(text);
    if (!identifier)
        fail();
    target = *identifier;
}

void read(Value value, Date &target) {
    double seconds = 0;
    check(value.get_double().get(seconds));
    target.milliseconds = std::llround(seconds * 1000) + millisecondsTo2001;
}

void read(Value value, CaseCard &target);
void read(Value value, ChatMessage &target);
void read(Value value, Conversation &target);
void read(Value value, LibraryChange &target);
void read(Value value, LibrarySyncState &target);

template <class Element>
void read(Value value, QList<Element> &target);

template <class Wrapped>
void read(Value value, std::optional<Wrapped> &target) {
    if (value.is_null())
        target.reset();
    else
        read(value, target.emplace());
}

template <class Element>
void read(Value value, QList<Element> &target) {
    for (auto element : value.get_array())
        read(element.value(), target.emplaceBack());
}

void read(Value value, CaseCard &target) {
    unsigned seen = 0;
    for (auto result : value.get_object()) {
        simdjson::ondemand::field field;
        check(std::move(result).get(field));
        const auto key = field.key();
        if (key == "id")
            read(field.value(), target.id), seen |= 1u << 0;
        else if (key == "key")
            read(field.value(), target.key), seen |= 1u << 1;
        else if (key == "archive")
            read(field.value(), target.archive), seen |= 1u << 2;
        else if (key == "title")
            read(field.value(), target.title), seen |= 1u << 3;
        else if (key == "summary")
            read(field.value(), target.summary), seen |= 1u << 4;
        else if (key == "category")
            read(field.value(), target.category), seen |= 1u << 5;
        else if (key == "era")
            read(field.value(), target.era), seen |= 1u << 6;
        else if (key == "locale")
            read(field.value(), target.locale), seen |= 1u << 7;
        else if (key == "strong")
            read(field.value(), target.strong);
        else if (key == "note")
            read(field.value(), target.note);
        else if (key == "accessKey")
            read(field.value(), target.accessKey);
        else if (key == "org")
            read(field.value(), target.org);
    }
    checkSeen(seen, 8);
}

void read(Value value, ChatMessage &target) {
    unsigned seen = 0;
    for (auto result : value.get_object()) {
        simdjson::ondemand::field field;
        check(std::move(result).get(field));
        const auto key = field.key();
        if (key == "id")
            read(field.value(), target.id), seen |= 1u << 0;
        else if (key == "role")
            read(field.value(), target.role), seen |= 1u << 1;
        else if (key == "content")
            read(field.value(), target.content), seen |= 1u << 2;
        else if (key == "references")
            read(field.value(), target.references), seen |= 1u << 3;
        else if (key == "mode")
            read(field.value(), target.mode);
    }
    checkSeen(seen, 4);
}

void read(Value value, Conversation &target) {
    unsigned seen = 0;
    for (auto result : value.get_object()) {
        simdjson::ondemand::field field;
        check(std::move(result).get(field));
        const auto key = field.key();
        if (key == "id")
            read(field.value(), target.id), seen |= 1u << 0;
        else if (key == "title")
            read(field.value(), target.title), seen |= 1u << 1;
        else if (key == "messages")
            read(field.value(), target.messages), seen |= 1u << 2;
        else if (key == "updatedAt")
            read(field.value(), target.updatedAt), seen |= 1u << 3;
        else if (key == "archives")
            read(field.value(), target.archives);
        else if (key == "wallID")
            read(field.value(), target.wallID);
    }
    checkSeen(seen, 4);
}

void read(Value value, LibraryChange &target) {
    unsigned seen = 0;
    for (auto result : value.get_object()) {
        simdjson::ondemand::field field;
        check(std::move(result).get(field));
        const auto key = field.key();
        if (key == "opId")
            read(field.value(), target.opId), seen |= 1u << 0;
        else if (key == "kind")
            read(field.value(), target.kind), seen |= 1u << 1;
        else if (key == "key")
            read(field.value(), target.key), seen |= 1u << 2;
        else if (key == "baseVersion")
            read(field.value(), target.baseVersion), seen |= 1u << 3;
        else if (key == "deleted")
            read(field.value(), target.deleted), seen |= 1u << 4;
        else if (key == "card")
            read(field.value(), target.card);
        else if (key == "conversation")
            read(field.value(), target.conversation);
    }
    checkSeen(seen, 5);
}

void read(Value value, QHash<QString, qint64> &target) {
    for (auto result : value.get_object()) {
        simdjson::ondemand::field field;
        check(std::move(result).get(field));
        std::string_view key;
        check(field.unescaped_key().get(key));
        read(field.value(),
             target[QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()))]);
    }
}

void read(Value value, LibrarySyncState &target) {
    unsigned seen = 0;
    for (auto result : value.get_object()) {
        simdjson::ondemand::field field;
        check(std::move(result).get(field));
        const auto key = field.key();
        if (key == "versions")
            read(field.value(), target.versions), seen |= 1u << 0;
        else if (key == "pending")
            read(field.value(), target.pending), seen |= 1u << 1;
    }
    checkSeen(seen, 2);
}

simdjson::ondemand::document open(simdjson::ondemand::parser &parser, QByteArray &text) {
    const auto length = static_cast<std::size_t>(text.size());
    text.reserve(text.size() + static_cast<qsizetype>(simdjson::SIMDJSON_PADDING));
    simdjson::ondemand::document document;
    check(parser.iterate(text.constData(), length, static_cast<std::size_t>(text.capacity()))
              .get(document));
    return document;
}

} // namespace

SearchPage HandWritten::decodeSearchPage(QByteArray text) {
    simdjson::ondemand::parser parser;
    auto document = open(parser, text);
    SearchPage target;
    unsigned seen = 0;
    for (auto result : document.get_object()) {
        simdjson::ondemand::field field;
        check(std::move(result).get(field));
        const auto key = field.key();
        if (key == "items")
            read(field.value(), target.items), seen |= 1u << 0;
        else if (key == "total")
            read(field.value(), target.total), seen |= 1u << 1;
        else if (key == "hasMore")
            read(field.value(), target.hasMore), seen |= 1u << 2;
        else if (key == "offset")
            read(field.value(), target.offset), seen |= 1u << 3;
        else if (key == "limit")
            read(field.value(), target.limit), seen |= 1u << 4;
    }
    checkSeen(seen, 5);
    return target;
}

LocalLibrary HandWritten::decodeLibrary(QByteArray text) {
    simdjson::ondemand::parser parser;
    auto document = open(parser, text);
    LocalLibrary target;
    unsigned seen = 0;
    for (auto result : document.get_object()) {
        simdjson::ondemand::field field;
        check(std::move(result).get(field));
        const auto key = field.key();
        if (key == "saved")
            read(field.value(), target.saved), seen |= 1u << 0;
        else if (key == "conversations")
            read(field.value(), target.conversations), seen |= 1u << 1;
        else if (key == "sync")
            read(field.value(), target.sync);
    }
    checkSeen(seen, 2);
    return target;
}
