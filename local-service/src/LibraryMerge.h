#pragma once

#include <QByteArray>

#include <optional>

/// What becomes of one item of a library when a device reports a change of it.
namespace LibraryMerge {

enum class Kind { Saved, Conversation };

/// Who wrote an item's words, and the version on which they built: every word since then is theirs.
struct Authorship {
    QByteArray writer;
    qint64 baseVersion = 0;

    bool operator==(const Authorship &) const = default;
};

struct StoredItem {
    qint64 version = 0;
    /// Of a removed item, who wrote what it said.
    Authorship author;
    bool deleted = false;
    /// What the item says, always in the same form, and the moment at which its writer saved it
    /// (milliseconds since 1970, by the writer's clock; nothing for a card).
    QByteArray words;
    qint64 savedAt = 0;
};

struct Change {
    Kind kind = Kind::Saved;
    qint64 baseVersion = 0;
    QByteArray writer;
    bool deleted = false;
    QByteArray words;
    qint64 savedAt = 0;
};

enum class Decision {
    /// The item stays as it is.
    Keep,
    /// The change becomes the item's newest version.
    Write,
    /// The item stays, and the changed text becomes an item of its own.
    KeepBoth,
};

/// `stored` is absent for an item that the service has never seen.
Decision decide(const std::optional<StoredItem> &stored, const Change &change);

/// The author of an item once the change has been written.
Authorship authorAfter(const std::optional<StoredItem> &stored, const Change &change);

} // namespace LibraryMerge
