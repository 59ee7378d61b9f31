#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <sys/stat.h>

/// A directory of this test alone, given out as the place for all programs' data.
class TemporaryHome final {
public:
    TemporaryHome() { qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("data")))); }
    ~TemporaryHome() { qputenv("XDG_DATA_HOME", m_former); }
    Q_DISABLE_COPY_MOVE(TemporaryHome)

    QString path(const QString &name) const { return m_directory.filePath(name); }

private:
    QTemporaryDir m_directory;
    QByteArray m_former = qgetenv("XDG_DATA_HOME");
};

inline int modeOf(const QString &path) {
    struct stat status;
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0
               ? static_cast<int>(status.st_mode & 07777)
               : -1;
}

inline void setMode(const QString &path, int mode) {
    ::chmod(QFile::encodeName(path).constData(), static_cast<mode_t>(mode));
}

inline QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool put(const QString &path, const QByteArray &content) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}
