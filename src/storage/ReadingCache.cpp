#include "storage/ReadingCache.h"

#include "platform/Files.h"
#include "records/Json.h"
#include "storage/LibraryDisk.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace {

constexpr auto dates = DateForm::secondsSince2001;

// The codec takes objects alone; a list lies in its file without the object around it.
const QByteArray listOpening = QByteArrayLiteral("{\"items\":");
const QByteArray listClosing = QByteArrayLiteral("}");

template <class Value>
struct Text {
    static QByteArray encode(const Value &value) { return Json::encode(value, dates); }
    static Value decode(const QByteArray &text) { return Json::decode<Value>(text, dates); }
};

template <class Element>
struct Text<QList<Element>> {
    static QByteArray encode(const QList<Element> &list) {
        const auto text = Json::encode(Items<Element>{list}, dates);
        return text.sliced(listOpening.size()).chopped(listClosing.size());
    }
    static QList<Element> decode(const QByteArray &text) {
        return Json::decode<Items<Element>>(listOpening + text + listClosing, dates).items;
    }
};

QString location(Files &files, const QString &scope, const QString &key) {
    const auto directory =
        QFileInfo(LibraryDisk::file(files, scope)).path() + QLatin1String("/cache-") + scope;
    files.makePrivateDirectory(directory);
    const auto digest = QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha256);
    return directory + QLatin1Char('/') + QString::fromLatin1(digest.toHex()) +
           QLatin1String(".json");
}

} // namespace

template <class Value>
std::optional<Value> ReadingCache::get(Files &files, const QString &scope, const QString &key) {
    try {
        return Text<Value>::decode(files.read(location(files, scope, key)));
    } catch (...) {
        return std::nullopt;
    }
}

template <class Value>
void ReadingCache::put(Files &files, const Value &value, const QString &scope, const QString &key) {
    try {
        const auto path = location(files, scope, key);
        files.writeAtomically(path, {Text<Value>::encode(value)});
        files.setPrivate(path);
    } catch (...) {
        // The copy that was there stays.
    }
}

template std::optional<Account> ReadingCache::get(Files &, const QString &, const QString &);
template std::optional<CaseEntry> ReadingCache::get(Files &, const QString &, const QString &);
template std::optional<QList<WallItem>> ReadingCache::get(Files &, const QString &,
                                                          const QString &);
template void ReadingCache::put(Files &, const Account &, const QString &, const QString &);
template void ReadingCache::put(Files &, const CaseEntry &, const QString &, const QString &);
template void ReadingCache::put(Files &, const QList<WallItem> &, const QString &, const QString &);
