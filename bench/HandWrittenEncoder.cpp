#include "bench/HandWritten.h"

#include <cstdio>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void write(Writer &writer, const QString &text) {
    const auto bytes = text.toUtf8();
    writer.String(bytes.constData(), static_cast<rapidjson::SizeType>(bytes.size()));
}

void write(Writer &writer, bool flag) {
    writer.Bool(flag);
}
void write(Writer &writer, qint64 number) {
    writer.Int64(number);
}
void write(Writer &writer, const Identifier &identifier) {
    write(writer, identifier.text);
}

void write(Writer &writer, const Date &date) {
    const auto since2001 = date.milliseconds - millisecondsTo2001;
    char text[32];
    const int length =
        std::snprintf(text, sizeof text, "%lld.%03lld", static_cast<long long>(since2001 / 1000),
                      static_cast<long long>(since2001 % 1000));
    writer.RawValue(text, static_cast<std::size_t>(length), rapidjson::kNumberType);
}

void write(Writer &writer, const CaseCard &card);
void write(Writer &writer, const ChatMessage &message);
void write(Writer &writer, const Conversation &conversation);
void write(Writer &writer, const LibraryChange &change);
void write(Writer &writer, const LibrarySyncState &sync);
void write(Writer &writer, const QHash<QString, qint64> &map);

template <class Element>
void write(Writer &writer, const QList<Element> &list);

template <std::size_t size, class Member>
void writeKey(Writer &writer, const char (&key)[size], const Member &member) {
    writer.Key(key, static_cast<rapidjson::SizeType>(size - 1));
    write(writer, member);
}

template <std::size_t size, class Member>
void writeKey(Writer &writer, const char (&key)[size], const std::optional<Member> &member) {
    if (member)
        writeKey(writer, key, *member);
}

template <class Element>
void write(Writer &writer, const QList<Element> &list) {
    writer.StartArray();
    for (const auto &element : list)
        write(writer, element);
    writer.EndArray();
}

void write(Writer &writer, const CaseCard &card) {
    writer.StartObject();
    writeKey(writer, "id", card.id);
    writeKey(writer, "key", card.key);
    writeKey(writer, "archive", card.archive);
    writeKey(writer, "title", card.title);
    writeKey(writer, "summary", card.summary);
    writeKey(writer, "category", card.category);
    writeKey(writer, "era", card.era);
    writeKey(writer, "locale", card.locale);
    writeKey(writer, "strong", card.strong);
    writeKey(writer, "note", card.note);
    writeKey(writer, "accessKey", card.accessKey);
    writeKey(writer, "org", card.org);
    writer.EndObject();
}

void write(Writer &writer, const ChatMessage &message) {
    writer.StartObject();
    writeKey(writer, "id", message.id);
    writeKey(writer, "role", message.role);
    writeKey(writer, "content", message.content);
    writeKey(writer, "references", message.references);
    writeKey(writer, "mode", message.mode);
    writer.EndObject();
}

void write(Writer &writer, const Conversation &conversation) {
    writer.StartObject();
    writeKey(writer, "id", conversation.id);
    writeKey(writer, "title", conversation.title);
    writeKey(writer, "messages", conversation.messages);
    writeKey(writer, "updatedAt", conversation.updatedAt);
    writeKey(writer, "archives", conversation.archives);
    writeKey(writer, "wallID", conversation.wallID);
    writer.EndObject();
}

void write(Writer &writer, const LibraryChange &change) {
    writer.StartObject();
    writeKey(writer, "opId", change.opId);
    writeKey(writer, "kind", change.kind);
    writeKey(writer, "key", change.key);
    writeKey(writer, "baseVersion", change.baseVersion);
    writeKey(writer, "deleted", change.deleted);
    writeKey(writer, "card", change.card);
    writeKey(writer, "conversation", change.conversation);
    writer.EndObject();
}

void write(Writer &writer, const QHash<QString, qint64> &map) {
    writer.StartObject();
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        const auto key = entry.key().toUtf8();
        writer.Key(key.constData(), static_cast<rapidjson::SizeType>(key.size()));
        writer.Int64(entry.value());
    }
    writer.EndObject();
}

void write(Writer &writer, const LibrarySyncState &sync) {
    writer.StartObject();
    writeKey(writer, "versions", sync.versions);
    writeKey(writer, "pending", sync.pending);
    writer.EndObject();
}

QByteArray bytes(const rapidjson::StringBuffer &buffer) {
    return {buffer.GetString(), static_cast<qsizetype>(buffer.GetSize())};
}

} // namespace

QByteArray HandWritten::encode(const SearchPage &page) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    writeKey(writer, "items", page.items);
    writeKey(writer, "total", page.total);
    writeKey(writer, "hasMore", page.hasMore);
    writeKey(writer, "offset", page.offset);
    writeKey(writer, "limit", page.limit);
    writer.EndObject();
    return bytes(buffer);
}

QByteArray HandWritten::encode(const LocalLibrary &library) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    writeKey(writer, "saved", library.saved);
    writeKey(writer, "conversations", library.conversations);
    writeKey(writer, "sync", library.sync);
    writer.EndObject();
    return bytes(buffer);
}
