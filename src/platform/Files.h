#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// The files of this user on this machine. Every operation is synchronous and throws FileError when
/// it fails.
class Files {
public:
    virtual ~Files() = default;

    /// Nothing larger (bytes) is written, and so nothing larger needs to be read.
    static constexpr qint64 maximumSize = qint64(1) << 30;

    /// The directory for the data of all programs of this user; created when missing.
    virtual QString baseDirectory() = 0;

    /// Sees to a directory that nobody else can enter, whatever it was before and whatever the
    /// umask. Missing parents are created alike; those that exist stay as they are.
    virtual void makePrivateDirectory(const QString &path) = 0;

    /// Whether the name is taken, be it by a file, a directory or a link to nowhere.
    virtual bool exists(const QString &path) = 0;

    /// The whole of a plain file; a symbolic link is not followed.
    virtual QByteArray read(const QString &path) = 0;

    /// Replaces the file by the pieces, joined. A crash leaves the old file or the new one, whole,
    /// and at no time can anybody else read it. When the call has returned, the new file survives a
    /// loss of power. Only a plain file is ever replaced.
    virtual void writeAtomically(const QString &path, const QList<QByteArray> &pieces) = 0;

    /// Takes the lock that goes by the name of this file, for as long as this object lives; the
    /// file itself stays. False while another process has it. Where the system has no lock to give,
    /// nobody is kept out. Throws nothing.
    virtual bool lock(const QString &path) = 0;

    /// Lets nobody but this user read or write the file.
    virtual void setPrivate(const QString &path) = 0;
};
