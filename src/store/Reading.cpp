// What all readers of cases share: their text size, and the copies of what was read.
#include "platform/Browser.h"
#include "platform/Preferences.h"
#include "storage/ReadingCache.h"
#include "store/AppStore.h"
#include "store/ReadingSize.h"

namespace {

/// A copy is of one case in one language.
QString copyKey(const QString &key, const QString &locale) {
    return key + QLatin1Char('|') + locale;
}

} // namespace

void AppStore::setReadingSize(double size) {
    const double limited = ReadingSize::limited(size);
    m_platform.preferences.setValue(ReadingSize::key, QString::number(limited));
    publish(m_readingSize, limited, &AppStore::readingSizeChanged);
}

std::optional<CaseEntry> AppStore::keptCase(const QString &key, const QString &locale) const {
    return ReadingCache::get<CaseEntry>(m_platform.files, libraryKey(), copyKey(key, locale));
}

void AppStore::keepCase(const CaseEntry &entry, const QString &key, const QString &locale) {
    ReadingCache::put(m_platform.files, entry, libraryKey(), copyKey(key, locale));
}

void AppStore::openAddress(const QUrl &address) {
    if (!m_platform.browser.open(address))
        setNotice(text(QStringLiteral("urlError.cannotOpenFile")));
}
