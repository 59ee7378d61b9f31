#pragma once

#include "platform/FileError.h"
#include "platform/Files.h"

#include <QHash>

#include <optional>

/// Files in memory. A test sees how they are written, and lets reading or writing fail.
class MemoryFiles final : public Files {
public:
    QString baseDirectory() override { return QStringLiteral("/base"); }
    void makePrivateDirectory(const QString &) override {}
    bool exists(const QString &path) override { return m_contents.contains(path); }

    QByteArray read(const QString &path) override {
        if (m_readFailure)
            throw FileError(*m_readFailure);
        if (!exists(path))
            throw FileError(FileError::Code::notFound);
        return m_contents[path];
    }
    void writeAtomically(const QString &path, const QList<QByteArray> &pieces) override {
        if (m_writeFailure)
            throw FileError(*m_writeFailure);
        m_contents[path] = pieces.join();
        m_written.append(path);
    }
    bool lock(const QString &) override { return !m_locked; }
    void setPrivate(const QString &) override {
        if (m_privacyFailure)
            throw FileError(*m_privacyFailure);
    }

    QHash<QString, QByteArray> &contents() { return m_contents; }
    /// The path of every write so far, in order.
    const QList<QString> &written() const { return m_written; }

    /// As if another process had every lock.
    void holdLocks(bool held) { m_locked = held; }

    using Failure = std::optional<FileError::Code>;
    void failReads(Failure failure) { m_readFailure = failure; }
    void failWrites(Failure failure) { m_writeFailure = failure; }
    void failPrivacy(Failure failure) { m_privacyFailure = failure; }

private:
    QHash<QString, QByteArray> m_contents;
    QList<QString> m_written;
    bool m_locked = false;
    Failure m_readFailure;
    Failure m_writeFailure;
    Failure m_privacyFailure;
};
