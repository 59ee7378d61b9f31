#include "storage/LibraryDisk.h"

#include "BuildSettings.h"
#include "platform/Files.h"
#include "records/Json.h"

#include <QCryptographicHash>

namespace {

/// Sees to the directory.
QString directory(Files &files) {
    const auto path = files.baseDirectory() + QLatin1Char('/') +
                      LibraryDisk::directoryName(QLatin1String(BuildSettings::bundleId));
    files.makePrivateDirectory(path);
    return path;
}

} // namespace

QString LibraryDisk::directoryName(const QString &bundleIdentifier) {
    return bundleIdentifier == QLatin1String("chat.quillmere.mac")
               ? QStringLiteral("Quillmere")
               : QStringLiteral("Quillmere.Local");
}

QString LibraryDisk::key(const QString &server, const std::optional<QString> &user) {
    const auto text = server + QLatin1Char('|') + user.value_or(QStringLiteral("anonymous"));
    const auto digest = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toHex());
}

QString LibraryDisk::file(Files &files, const QString &key) {
    return directory(files) + QLatin1Char('/') + key + QLatin1String(".json");
}

bool LibraryDisk::claim(Files &files) {
    return files.lock(directory(files) + QLatin1String("/library.lock"));
}

LocalLibrary LibraryDisk::load(Files &files, const QString &key) {
    const auto path = file(files, key);
    if (!files.exists(path))
        return {};
    return Json::decode<LocalLibrary>(files.read(path), DateForm::secondsSince2001);
}

void LibraryDisk::save(Files &files, LibraryEncoder &encoder, const LocalLibrary &library,
                       const QString &key) {
    const auto path = file(files, key);
    files.writeAtomically(path, encoder.encode(library));
    files.setPrivate(path);
}
