#include "platform/FileCredentialStore.h"

#include "platform/FileError.h"
#include "platform/Files.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

const QLatin1String itemsKey("items");
const QLatin1String serviceKey("service");
const QLatin1String accountKey("account");
const QLatin1String secretKey("secret");

std::optional<QByteArray> secretOf(const QJsonObject &item) {
    const auto text = item[secretKey].toString().toLatin1();
    const auto decoded =
        QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return std::nullopt;
    // Never a null array, which would read as none.
    return decoded.decoded.isNull() ? QByteArray("") : decoded.decoded;
}

bool isItem(const QJsonValue &value) {
    const auto item = value.toObject();
    return item[serviceKey].isString() && item[accountKey].isString() &&
           item[secretKey].isString() && secretOf(item);
}

auto matches(const QString &service, const QString &account) {
    return [=](const QJsonValue &value) {
        const auto item = value.toObject();
        return item[serviceKey].toString() == service && item[accountKey].toString() == account;
    };
}

} // namespace

Task<void> FileCredentialStore::prepare() {
    co_return;
}

QString FileCredentialStore::path() const {
    return m_directory + QLatin1String("/credentials.json");
}

/// Throws FileError, also for a file of another form.
QJsonArray FileCredentialStore::load() const {
    if (!m_files.exists(path()))
        return {};
    const auto document = QJsonDocument::fromJson(m_files.read(path()));
    const auto items = document.object()[itemsKey];
    const auto array = items.toArray();
    if (!items.isArray() || !std::all_of(array.begin(), array.end(), isItem))
        throw FileError(FileError::Code::unknown);
    return array;
}

void FileCredentialStore::save(const QJsonArray &items) const {
    m_files.makePrivateDirectory(m_directory);
    const QJsonDocument document(QJsonObject{{itemsKey, items}});
    m_files.writeAtomically(path(), {document.toJson(QJsonDocument::Indented)});
    m_files.setPrivate(path());
}

std::optional<QByteArray> FileCredentialStore::find(const QString &service,
                                                    const QString &account) {
    try {
        const auto items = load();
        const auto item = std::find_if(items.begin(), items.end(), matches(service, account));
        return item == items.end() ? std::nullopt : secretOf(item->toObject());
    } catch (const FileError &) {
        return std::nullopt;
    }
}

CredentialStore::Outcome FileCredentialStore::remove(const QString &service,
                                                     const QString &account) {
    try {
        const auto items = load();
        QJsonArray kept;
        std::remove_copy_if(items.begin(), items.end(), std::back_inserter(kept),
                            matches(service, account));
        if (kept.size() == items.size())
            return Outcome::notFound;
        save(kept);
        return Outcome::done;
    } catch (const FileError &) {
        return Outcome::failed;
    }
}

CredentialStore::Outcome FileCredentialStore::add(const QString &service, const QString &account,
                                                  const QByteArray &secret) {
    try {
        auto items = load();
        const auto former = std::find_if(items.begin(), items.end(), matches(service, account));
        if (former != items.end())
            items.erase(former);
        items.append(QJsonObject{{serviceKey, service},
                                 {accountKey, account},
                                 {secretKey, QString::fromLatin1(secret.toBase64())}});
        save(items);
        return Outcome::done;
    } catch (const FileError &) {
        return Outcome::failed;
    }
}
