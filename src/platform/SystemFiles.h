#pragma once

#include "platform/Files.h"

#include <QHash>

#include <sys/types.h>
#include <sys/uio.h>

/// The system calls that change something, so that a test can let each of them fail.
struct FileCalls {
    int (*makeDirectory)(const char *path, mode_t mode);
    int (*changeMode)(const char *path, mode_t mode);
    int (*createTemporary)(char *pattern, int flags);
    int (*changeOpenMode)(int file, mode_t mode);
    ssize_t (*write)(int file, const iovec *pieces, int count);
    int (*flush)(int file);
    int (*rename)(const char *from, const char *to);

    static const FileCalls &system();
};

/// The files of a POSIX system.
class SystemFiles final : public Files {
public:
    explicit SystemFiles(const FileCalls &calls = FileCalls::system()) : m_calls(calls) {}
    ~SystemFiles() override;
    Q_DISABLE_COPY_MOVE(SystemFiles)

    /// The directory for what programs of this user remember between starts. Not created.
    static QString stateDirectory();

    QString baseDirectory() override;
    void makePrivateDirectory(const QString &path) override;
    bool exists(const QString &path) override;
    QByteArray read(const QString &path) override;
    void writeAtomically(const QString &path, const QList<QByteArray> &pieces) override;
    bool lock(const QString &path) override;
    void setPrivate(const QString &path) override;

private:
    void writeAll(int file, const QList<QByteArray> &pieces) const;
    void flushDirectory(const QByteArray &path) const;

    FileCalls m_calls;
    /// The open file of each lock that is held. The system takes a lock back with its file, also
    /// from a process that crashed.
    QHash<QString, int> m_locks;
};
