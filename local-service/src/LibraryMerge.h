#pragma once

#include <QByteArray>

#include <optional>

/// What becomes of one item of a library when a device reports a change of it.
namespace LibraryMerge {

enum class Kind { Saved, Conversation };

struct StoredItem {
    qint64 version = 0;
    /// The version on which the item's last writer built, and who that was.
    qint64 baseVersion = 0;
    QByteArray writer;
    bool deleted = false;
    /// The item as JSON, always in the same form.
    QByteArray content;
};

struct Change {
    Kind kind = Kind::Saved;
    qint64 baseVersion = 0;
    QByteArray writer;
    bool deleted = false;
    QByteArray content;
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

} // namespace LibraryMerge
