#include "screens/CaseReaderModel.h"

#include "platform/URLError.h"
#include "presentation/WebURL.h"
#include "screens/ReaderText.h"
#include "service/Endpoints.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>

namespace {

const QString lessonTitle = QStringLiteral("The lesson");

bool isLesson(const CaseEntry::Section &section) {
    return section.title == lessonTitle || section.title == QLatin1String("What can be applied") ||
           section.title == QLatin1String("What you can take");
}

bool isReadAs(const QString &locale, AppLanguage language) {
    if (locale == QLatin1String("zh"))
        return language == AppLanguage::zhHans || language == AppLanguage::zhHant;
    return locale == AppLanguages::rawValue(language);
}

QUrl letter(const QString &subject, const QString &body) {
    return QUrl::fromEncoded("mailto:?subject=" + QUrl::toPercentEncoding(subject) +
                             "&body=" + QUrl::toPercentEncoding(body));
}

} // namespace

CaseReaderModel::CaseReaderModel(QObject *parent) : QObject(parent) {}

void CaseReaderModel::componentComplete() {
    connect(m_store, &AppStore::wallChanged, this, &CaseReaderModel::pinChanged);
    connect(m_store, &AppStore::wallMutationsChanged, this, &CaseReaderModel::pinChanged);
    connect(m_store, &AppStore::wordsChanged, this, [this] {
        fillLists();
        Q_EMIT entryChanged();
    });
    connect(m_store, &AppStore::languageChanged, this, &CaseReaderModel::beginLoad);
    // Who shows the title may have asked for it before the card was set.
    Q_EMIT entryChanged();
    beginLoad();
}

void CaseReaderModel::beginLoad() {
    m_loading.begin([this](std::stop_token stop) { return load(stop); });
}

Task<void> CaseReaderModel::load(std::stop_token stop) {
    setFailed(false);
    const QString library = m_store->libraryKey();
    const QString locale = m_store->locale();
    const API api = m_store->api();
    const QString path = Endpoint::caseEntry(m_card.archive, m_card.id);
    const std::vector<QueryItem> query{{QStringLiteral("locale"), locale}};
    try {
        auto fetching = api.get<CaseEntry>(path, query, stop);
        const CaseEntry entry = co_await fetching;
        if (stop.stop_requested() || m_store->libraryKey() != library)
            co_return;
        show(entry, false);
        m_store->keepCase(entry, m_card.key, locale);
    } catch (const URLError &) {
        if (!stop.stop_requested() && m_store->libraryKey() == library)
            showCopyOrFail(locale);
    } catch (...) {
        if (!stop.stop_requested() && m_store->libraryKey() == library)
            setFailed(true);
    }
}

void CaseReaderModel::showCopyOrFail(const QString &locale) {
    const auto copy = m_store->keptCase(m_card.key, locale);
    if (copy)
        show(*copy, true);
    else
        setFailed(true);
}

void CaseReaderModel::show(const CaseEntry &entry, bool offline) {
    m_entry = entry;
    m_offline = offline;
    fillLists();
    Q_EMIT entryChanged();
    Q_EMIT pinChanged();
}

void CaseReaderModel::setFailed(bool failed) {
    if (m_failed == failed)
        return;
    m_failed = failed;
    Q_EMIT failedChanged();
}

void CaseReaderModel::fillLists() {
    if (!m_entry)
        return;
    QStringList contents;
    QList<ReaderSection> sections;
    qsizetype length = 0;
    qsizetype first = 0;
    for (const auto &section : std::as_const(m_entry->sections)) {
        const int number = static_cast<int>(sections.size()) + 1;
        const auto label = sectionLabel(section.title);
        contents.append(label);
        sections.append({number, label, ReaderText::pieces(section.body)});
        if (length < ReaderText::viewful)
            first = sections.size();
        length += section.body.size();
    }
    m_contents = contents;
    m_firstSections.setItems(sections.first(first));
    m_laterSections.setItems(sections.sliced(first));

    auto sources = m_entry->sources;
    sources.removeIf([](const CaseEntry::Source &source) { return !webURL(source.url); });
    m_sources.setItems(sources);
    m_related.setItems(m_entry->related.value_or(QList<CaseCard>()));
}

QString CaseReaderModel::sectionLabel(const QString &title) const {
    const QString key = QLatin1String("section.") + title;
    const auto label = m_store->text(key);
    return label == key ? title : label;
}

QString CaseReaderModel::languageNote() const {
    if (!m_entry || isReadAs(m_entry->locale, m_store->effectiveLanguage()))
        return QString();
    const auto language = m_entry->locale == QLatin1String("zh") ? QStringLiteral(u"中文")
                                                                 : QStringLiteral("English");
    return m_store->text(QStringLiteral("originalLanguage")) + QLatin1String(": ") + language;
}

QString CaseReaderModel::heroAddress() const {
    if (!m_entry || !m_entry->hero || !webURL(m_entry->hero->url))
        return QString();
    return m_entry->hero->url;
}

QString CaseReaderModel::heroLabel() const {
    if (!m_entry || !m_entry->hero)
        return QString();
    // A link needs a name: an empty one is as good as none.
    const auto label = m_entry->hero->label.value_or(QString());
    return label.isEmpty() ? m_store->text(QStringLiteral("seeAlsoDefault")) : label;
}

const CaseEntry::Section *CaseReaderModel::lessonSection() const {
    if (!m_entry)
        return nullptr;
    const auto &sections = m_entry->sections;
    const auto found = std::find_if(sections.begin(), sections.end(), isLesson);
    return found == sections.end() ? nullptr : &*found;
}

bool CaseReaderModel::hasLesson() const {
    return m_entry && (m_entry->lesson || lessonSection());
}

QString CaseReaderModel::lesson() const {
    if (m_entry && m_entry->lesson)
        return *m_entry->lesson;
    const auto *section = lessonSection();
    return section ? section->body : QString();
}

QString CaseReaderModel::lessonLabel() const {
    if (!hasLesson())
        return QString();
    const auto *section = lessonSection();
    return sectionLabel(section ? section->title : lessonTitle);
}

QString CaseReaderModel::shareAddress() const {
    return m_entry && webURL(m_entry->canonicalUrl) ? m_entry->canonicalUrl : QString();
}

bool CaseReaderModel::isPinned() const {
    return m_entry && m_store->isOnWall(m_entry->card());
}

bool CaseReaderModel::isPinnable() const {
    if (!m_entry)
        return false;
    const auto &changing = m_store->wallMutations();
    return !changing.contains(m_card.key) && !changing.contains(m_entry->key);
}

void CaseReaderModel::togglePin() {
    if (isPinnable())
        m_store->beginToggleWallCase(m_entry->card());
}

void CaseReaderModel::copyAddress() const {
    QGuiApplication::clipboard()->setText(shareAddress());
}

void CaseReaderModel::openInBrowser() const {
    m_store->openAddress(QUrl(shareAddress()));
}

void CaseReaderModel::sendByMail() const {
    m_store->openAddress(letter(title(), shareAddress()));
}

void CaseReaderModel::ask() {
    if (!m_entry)
        return;
    // Giving way may be the end of this model: from there on nothing of it is touched.
    AppStore *const store = m_store;
    const auto card = m_entry->card();
    store->selectOnlyArchive(card.archive);
    store->newChat();
    Q_EMIT asked();
    store->startChat(store->text(QStringLiteral("askSuggestOne")) + card.title, {card});
}
