#pragma once

#include "platform/LatestTask.h"
#include "screens/CaseCardModel.h"
#include "screens/ReaderSectionModel.h"
#include "screens/SourceModel.h"
#include "store/AppStore.h"

#include <QQmlParserStatus>
#include <QtQmlIntegration>

#include <optional>

/// One case on the screen: fetched when the reader appears and again whenever the language changes.
/// Out of reach of the service it is the copy of the last reading. Until there is either, the
/// reader has what the card tells. Leaving the reader ends the request.
class CaseReaderModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(AppStore *store MEMBER m_store REQUIRED FINAL)
    Q_PROPERTY(CaseCard card MEMBER m_card REQUIRED FINAL)
    Q_PROPERTY(bool loaded READ isLoaded NOTIFY entryChanged FINAL)
    Q_PROPERTY(bool failed READ hasFailed NOTIFY failedChanged FINAL)
    Q_PROPERTY(bool offline READ isOffline NOTIFY entryChanged FINAL)
    Q_PROPERTY(QString archive READ archive NOTIFY entryChanged FINAL)
    Q_PROPERTY(QString title READ title NOTIFY entryChanged FINAL)
    Q_PROPERTY(QString summary READ summary NOTIFY entryChanged FINAL)
    Q_PROPERTY(QString languageNote READ languageNote NOTIFY entryChanged FINAL)
    Q_PROPERTY(QString tradeOut READ tradeOut NOTIFY entryChanged FINAL)
    Q_PROPERTY(QString relevance READ relevance NOTIFY entryChanged FINAL)
    Q_PROPERTY(QStringList contents READ contents NOTIFY entryChanged FINAL)
    Q_PROPERTY(QAbstractListModel *firstSections READ firstSections CONSTANT FINAL)
    Q_PROPERTY(QAbstractListModel *laterSections READ laterSections CONSTANT FINAL)
    Q_PROPERTY(QString heroAddress READ heroAddress NOTIFY entryChanged FINAL)
    Q_PROPERTY(QString heroLabel READ heroLabel NOTIFY entryChanged FINAL)
    Q_PROPERTY(QAbstractListModel *sources READ sources CONSTANT FINAL)
    Q_PROPERTY(QAbstractListModel *related READ related CONSTANT FINAL)
    Q_PROPERTY(bool hasRelated READ hasRelated NOTIFY entryChanged FINAL)
    Q_PROPERTY(bool hasLesson READ hasLesson NOTIFY entryChanged FINAL)
    Q_PROPERTY(QString lesson READ lesson NOTIFY entryChanged FINAL)
    Q_PROPERTY(QString lessonLabel READ lessonLabel NOTIFY entryChanged FINAL)
    Q_PROPERTY(QString shareAddress READ shareAddress NOTIFY entryChanged FINAL)
    Q_PROPERTY(bool pinned READ isPinned NOTIFY pinChanged FINAL)
    Q_PROPERTY(bool pinnable READ isPinnable NOTIFY pinChanged FINAL)

public:
    explicit CaseReaderModel(QObject *parent = nullptr);

    bool isLoaded() const { return m_entry.has_value(); }
    /// The last load found nothing to show.
    bool hasFailed() const { return m_failed; }
    /// What is shown is the copy of this machine.
    bool isOffline() const { return m_offline; }

    QString archive() const { return m_entry ? m_entry->archive : m_card.archive; }
    QString title() const { return m_entry ? m_entry->title : m_card.title; }
    QString summary() const { return m_entry ? m_entry->summary : m_card.summary; }
    /// Says in which language the case is, where that is not the one of the interface.
    QString languageNote() const;
    QString tradeOut() const { return m_entry ? m_entry->tradeOut.value_or(QString()) : QString(); }
    QString relevance() const {
        return m_entry ? m_entry->relevance.value_or(QString()) : QString();
    }

    /// The headings of the sections, in the language of the interface where they have one there.
    QStringList contents() const { return m_contents; }
    /// As many sections as fill a view, and the others.
    QAbstractListModel *firstSections() { return &m_firstSections; }
    QAbstractListModel *laterSections() { return &m_laterSections; }
    /// Empty without accompanying material that may be opened.
    QString heroAddress() const;
    QString heroLabel() const;
    /// Those that may be opened.
    QAbstractListModel *sources() { return &m_sources; }
    QAbstractListModel *related() { return &m_related; }
    bool hasRelated() const { return !m_related.items().isEmpty(); }

    bool hasLesson() const;
    QString lesson() const;
    QString lessonLabel() const;

    /// The public address of the case; empty when it has none that may be opened.
    QString shareAddress() const;

    bool isPinned() const;
    /// There is a case, and its place on the wall is not being changed.
    bool isPinnable() const;

    Q_INVOKABLE void beginLoad();
    Q_INVOKABLE void togglePin();
    Q_INVOKABLE void copyAddress() const;
    Q_INVOKABLE void openInBrowser() const;
    Q_INVOKABLE void sendByMail() const;
    /// Asks about the case in a new conversation, limited to its archive.
    Q_INVOKABLE void ask();

    void classBegin() override {}
    void componentComplete() override;

Q_SIGNALS:
    void entryChanged();
    void failedChanged();
    void pinChanged();
    /// The question is about to be put: the reader is to give way to the conversation.
    void asked();

private:
    [[nodiscard]] Task<void> load(std::stop_token stop);
    void show(const CaseEntry &entry, bool offline);
    void showCopyOrFail(const QString &locale);
    void setFailed(bool failed);
    void fillLists();
    /// The title in the language of the interface, or as it is.
    QString sectionLabel(const QString &title) const;
    const CaseEntry::Section *lessonSection() const;

    AppStore *m_store = nullptr;
    CaseCard m_card;
    std::optional<CaseEntry> m_entry;
    bool m_offline = false;
    bool m_failed = false;
    QStringList m_contents;
    ReaderSectionModel m_firstSections;
    ReaderSectionModel m_laterSections;
    SourceModel m_sources;
    CaseCardModel m_related;
    LatestTask m_loading;
};
