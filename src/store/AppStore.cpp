#include "store/AppStore.h"

#include "BuildSettings.h"
#include "copy/Copy.h"
#include "platform/Browser.h"
#include "platform/Clock.h"
#include "platform/CredentialStore.h"
#include "platform/Preferences.h"
#include "storage/LibraryDisk.h"
#include "storage/TokenVault.h"
#include "store/ErrorText.h"
#include "store/ReadingSize.h"

#include <algorithm>
#include <numeric>

namespace {

const QLatin1String localService("http://127.0.0.1:4310");
const QLatin1String flagship("foible");

QString initialBase(const Preferences &preferences) {
    if (const auto stored = preferences.value(QStringLiteral("server")))
        return *stored;
    const auto built = QLatin1String(BuildSettings::apiUrl);
    return built.isEmpty() ? QString(localService) : QString(built);
}

} // namespace

AppStore::AppStore(Platform platform, QObject *parent)
    : QObject(parent),
      m_platform(platform),
      m_baseString(initialBase(platform.preferences)),
      m_language(AppLanguages::saved(platform.preferences.value(QStringLiteral("uiLanguage")))),
      m_readingSize(ReadingSize::stored(platform.preferences.value(ReadingSize::key))),
      m_growth(platform.clock, [this] {
          const auto last = m_chat.messages.size() - 1;
          m_messages.setItem(last, m_chat.messages[last], {MessageModel::content});
      }) {
    m_chat.title = QStringLiteral("New conversation");
    m_chat.updatedAt = Date::from(platform.clock.now());
    QObject::connect(this, &AppStore::baseStringChanged, this, &AppStore::libraryKeyChanged);
    QObject::connect(this, &AppStore::accountChanged, this, &AppStore::libraryKeyChanged);
    QObject::connect(this, &AppStore::languageChanged, this, &AppStore::wordsChanged);
}

AppStore::~AppStore() {
    m_chatStop.request_stop();
}

double AppStore::archiveTotal() const {
    const auto &archives = m_archives.items();
    return std::accumulate(
        archives.begin(), archives.end(), 0.0,
        [](double sum, const Archive &archive) { return sum + archive.countForQml(); });
}

Archive AppStore::lead() const {
    const auto &archives = m_archives.items();
    const auto found = std::find_if(archives.begin(), archives.end(),
                                    [](const Archive &archive) { return archive.id == flagship; });
    if (found != archives.end())
        return *found;
    return archives.isEmpty() ? Archive() : archives.first();
}

void AppStore::setDestination(const QString &destination) {
    if (m_destination == destination)
        return;
    m_destination = destination;
    Q_EMIT destinationChanged();
}

void AppStore::setLanguage(AppLanguage language) {
    m_platform.preferences.setValue(QStringLiteral("uiLanguage"), AppLanguages::rawValue(language));
    if (m_language == language)
        return;
    const auto before = effectiveLanguage();
    m_language = language;
    retell(before);
    Q_EMIT languageChanged();
}

/// What is kept as a text follows the language, too.
void AppStore::retell(AppLanguage before) {
    const auto after = effectiveLanguage();
    const auto told = [=](std::optional<QString> text) {
        if (text)
            text = Copy::retold(*text, before, after);
        return text;
    };
    publish(m_notice, told(m_notice), &AppStore::noticeChanged);
    publish(m_chatError, told(m_chatError), &AppStore::chatErrorChanged);
    publish(m_wallError, told(m_wallError), &AppStore::wallErrorChanged);
}

void AppStore::setLanguageValue(const QString &rawValue) {
    setLanguage(AppLanguages::saved(rawValue));
}

AppLanguage AppStore::effectiveLanguage() const {
    return AppLanguages::effective(m_language, m_platform.preferences.preferredLanguages());
}

QStringList AppStore::selectedArchives() const {
    QStringList list = m_selectedArchives.values();
    list.sort();
    return list;
}

void AppStore::setSelectedArchives(const QStringList &archives) {
    const QSet<QString> chosen(archives.begin(), archives.end());
    if (m_selectedArchives == chosen)
        return;
    m_selectedArchives = chosen;
    Q_EMIT selectedArchivesChanged();
}

void AppStore::setNotice(const std::optional<QString> &notice) {
    if (m_notice == notice)
        return;
    m_notice = notice;
    Q_EMIT noticeChanged();
}

void AppStore::setConnecting(bool connecting) {
    if (m_connecting == connecting)
        return;
    m_connecting = connecting;
    Q_EMIT connectingChanged();
}

QString AppStore::libraryKey() const {
    const auto user = m_account ? std::optional(m_account->user.id) : std::nullopt;
    // Kept, since every line of an answer asks for it.
    auto &kept = m_keptKey;
    if (kept.key.isEmpty() || kept.server != m_baseString || kept.user != user)
        kept = {m_baseString, user, LibraryDisk::key(m_baseString, user)};
    return kept.key;
}

QString AppStore::requestBase() const {
    return API::validBase(m_baseString).value_or(QString(localService));
}

bool AppStore::areCredentialsInFile() const {
    return m_platform.credentials.isFile();
}

API AppStore::publicSite() const {
    return {QLatin1String(BuildSettings::publicSite), std::nullopt, m_platform.transport};
}

API AppStore::api() const {
    auto token = m_account ? TokenVault::read(m_platform.credentials, m_baseString) : std::nullopt;
    return API(requestBase(), std::move(token), m_platform.transport);
}

Task<void> AppStore::sleep(std::chrono::milliseconds duration, std::stop_token stop) const {
    return m_platform.clock.sleep(duration, std::move(stop));
}

void AppStore::setArchives(const QList<Archive> &archives) {
    if (m_archives.items() == archives)
        return;
    m_archives.setItems(archives);
    Q_EMIT archivesChanged();
}

void AppStore::setAccount(const std::optional<Account> &account) {
    publish(m_account, account, &AppStore::accountChanged);
}

void AppStore::replaceGeneration() {
    m_generation = Identifier::make();
}

QString AppStore::describe(std::exception_ptr error) const {
    return ErrorText::describe(std::move(error), effectiveLanguage());
}
