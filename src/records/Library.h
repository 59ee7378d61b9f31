#pragma once

#include "records/Conversation.h"

#include <QHash>
#include <QStringBuilder>

#include <optional>

/// One queued local edit. A removal carries neither card nor conversation.
struct LibraryChange {
    /// New for each change, the same through retries; the service reports it back in `accepted`.
    Identifier opId = Identifier::make();
    /// "saved" or "conversation".
    QString kind;
    /// A card's `key`, or a conversation's id as text.
    QString key;
    /// The service's version that the edit was made against; 0 for an item that it does not know.
    qint64 baseVersion = 0;
    bool deleted = false;
    std::optional<CaseCard> card;
    std::optional<Conversation> conversation;

    /// `kind`, "|", `key`.
    QString identity() const { return kind % QLatin1Char('|') % key; }

    bool operator==(const LibraryChange &) const = default;
};

/// One item as the service holds it. A removed item stays as a tombstone that has a version.
struct LibraryRecord {
    QString kind;
    QString key;
    qint64 version = 0;
    bool deleted = false;
    std::optional<CaseCard> card;
    std::optional<Conversation> conversation;

    /// `kind`, "|", `key`.
    QString identity() const { return kind % QLatin1Char('|') % key; }
};

/// A conversation that the service kept twice: the losing copy lives on under `preservedKey`.
struct LibraryConflict {
    QString originalKey;
    QString preservedKey;
};

/// What the author of an accepted change knows by it: the version that the change has made, or,
/// where there was nothing to write, the one that it was built on.
struct AcceptedVersion {
    QString opId;
    qint64 version = 0;
};

/// The reply of a synchronisation: the account's whole library, tombstones included.
struct LibraryReply {
    qint64 revision = 0;
    QList<LibraryRecord> records;
    std::optional<QList<QString>> accepted;
    std::optional<QList<LibraryConflict>> conflicts;
    /// A service need not tell them.
    std::optional<QList<AcceptedVersion>> acceptedVersions;
};

/// The book-keeping of synchronisation.
struct LibrarySyncState {
    /// Identity to the version that the service last reported.
    QHash<QString, qint64> versions;
    /// The queue, oldest first; at most one change for an identity.
    QList<LibraryChange> pending;

    bool operator==(const LibrarySyncState &) const = default;
};

/// The body of a synchronisation request.
struct LibraryUpload {
    QList<LibraryChange> changes;
};

/// What the user keeps on this machine. `sync` stays absent for a guest.
struct LocalLibrary {
    QList<CaseCard> saved;
    QList<Conversation> conversations;
    std::optional<LibrarySyncState> sync;

    bool operator==(const LocalLibrary &) const = default;
};

template <>
struct JsonFields<LibraryChange> {
    static constexpr auto table = std::make_tuple(
        jsonField("opId", &LibraryChange::opId), jsonField("kind", &LibraryChange::kind),
        jsonField("key", &LibraryChange::key),
        jsonField("baseVersion", &LibraryChange::baseVersion),
        jsonField("deleted", &LibraryChange::deleted), jsonField("card", &LibraryChange::card),
        jsonField("conversation", &LibraryChange::conversation));
};

template <>
struct JsonFields<LibraryRecord> {
    static constexpr auto table = std::make_tuple(
        jsonField("kind", &LibraryRecord::kind), jsonField("key", &LibraryRecord::key),
        jsonField("version", &LibraryRecord::version),
        jsonField("deleted", &LibraryRecord::deleted), jsonField("card", &LibraryRecord::card),
        jsonField("conversation", &LibraryRecord::conversation));
};

template <>
struct JsonFields<LibraryConflict> {
    static constexpr auto table =
        std::make_tuple(jsonField("originalKey", &LibraryConflict::originalKey),
                        jsonField("preservedKey", &LibraryConflict::preservedKey));
};

template <>
struct JsonFields<AcceptedVersion> {
    static constexpr auto table = std::make_tuple(jsonField("opId", &AcceptedVersion::opId),
                                                  jsonField("version", &AcceptedVersion::version));
};

template <>
struct JsonFields<LibraryReply> {
    static constexpr auto table =
        std::make_tuple(jsonField("revision", &LibraryReply::revision),
                        jsonField("records", &LibraryReply::records),
                        jsonField("accepted", &LibraryReply::accepted),
                        jsonField("conflicts", &LibraryReply::conflicts),
                        jsonField("acceptedVersions", &LibraryReply::acceptedVersions));
};

template <>
struct JsonFields<LibrarySyncState> {
    static constexpr auto table =
        std::make_tuple(jsonField("versions", &LibrarySyncState::versions),
                        jsonField("pending", &LibrarySyncState::pending));
};

template <>
struct JsonFields<LibraryUpload> {
    static constexpr auto table = std::make_tuple(jsonField("changes", &LibraryUpload::changes));
};

template <>
struct JsonFields<LocalLibrary> {
    static constexpr auto table =
        std::make_tuple(jsonField("saved", &LocalLibrary::saved),
                        jsonField("conversations", &LocalLibrary::conversations),
                        jsonField("sync", &LocalLibrary::sync));
};
