#pragma once

#include "platform/LatestTask.h"
#include "screens/ArchiveSelection.h"
#include "screens/CaseFilter.h"
#include "screens/CaseQuery.h"
#include "screens/CaseResults.h"
#include "screens/SavedSearch.h"
#include "store/AppStore.h"

#include <QQmlParserStatus>

/// The cases of one archive, of all of them or of the saved ones, as far as text and filters let
/// them through. Which of these it is stands from the beginning: the screen is made afresh for
/// another destination, language, server or user.
///
/// Typing waits for a pause; everything else searches at once. A search voids the one before it.
/// Leaving the screen ends every request.
class CaseBrowserModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(AppStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
    Q_PROPERTY(QString archive READ archive NOTIFY storeChanged FINAL)
    Q_PROPERTY(bool saved READ isSaved NOTIFY storeChanged FINAL)
    Q_PROPERTY(QString title READ title NOTIFY titleChanged FINAL)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged FINAL)
    Q_PROPERTY(CaseFilter *category READ category CONSTANT FINAL)
    Q_PROPERTY(CaseFilter *decade READ decade CONSTANT FINAL)
    Q_PROPERTY(CaseFilter *year READ year CONSTANT FINAL)
    Q_PROPERTY(CaseFilter *sort READ sort CONSTANT FINAL)
    Q_PROPERTY(ArchiveSelection archives READ archives NOTIFY archivesChanged FINAL)
    Q_PROPERTY(Showing showing READ showing NOTIFY showingChanged FINAL)
    Q_PROPERTY(QAbstractListModel *cards READ cards CONSTANT FINAL)
    Q_PROPERTY(double total READ total NOTIFY totalChanged FINAL)
    Q_PROPERTY(bool hasMore READ hasMore NOTIFY hasMoreChanged FINAL)
    Q_PROPERTY(bool loadingMore READ isLoadingMore NOTIFY loadingMoreChanged FINAL)
    Q_PROPERTY(QString selected READ selected WRITE setSelected NOTIFY selectedChanged FINAL)
    Q_PROPERTY(CaseCard selectedCard READ selectedCard NOTIFY selectedCardChanged FINAL)

public:
    /// What the place of the results shows.
    enum class Showing { Loading, Failed, Nothing, Cards };
    Q_ENUM(Showing)

    explicit CaseBrowserModel(QObject *parent = nullptr);

    AppStore *store() const { return m_store; }
    void setStore(AppStore *store);

    /// The archive that is browsed; empty for all of them and for the saved cases.
    QString archive() const;
    bool isSaved() const { return m_destination == QLatin1String("saved"); }
    QString title() const;

    const QString &text() const { return m_text; }
    void setText(const QString &text);

    // A decade and an exact year exclude each other.
    CaseFilter *category() { return &m_category; }
    CaseFilter *decade() { return &m_decade; }
    CaseFilter *year() { return &m_year; }
    CaseFilter *sort() { return &m_sort; }

    /// What a search of all archives is limited to.
    const ArchiveSelection &archives() const { return m_archives; }
    Q_INVOKABLE void limitToArchive(const QString &archive, bool limited);
    Q_INVOKABLE void searchAllArchives();

    Showing showing() const { return m_showing; }
    QAbstractListModel *cards() { return &m_results.model(); }
    /// Matches of the whole search, as its first page gave them.
    double total() const { return m_total; }
    bool hasMore() const { return m_hasMore; }
    bool isLoadingMore() const { return m_loadingMore; }

    /// Searches again, for a user who was shown a failure.
    Q_INVOKABLE void beginSearch();

    /// Fetches the next page. A failure ends in the store's `notice`; the cards stay.
    Q_INVOKABLE void beginMore();

    /// Key of the case on display. It outlives searches that do not find the case.
    const QString &selected() const { return m_selected; }
    void setSelected(const QString &key);
    /// The case on display as the results have it; an empty record when they do not.
    const CaseCard &selectedCard() const { return m_selectedCard; }

    void classBegin() override {}
    void componentComplete() override;

Q_SIGNALS:
    void storeChanged();
    void titleChanged();
    void textChanged();
    void archivesChanged();
    void showingChanged();
    void totalChanged();
    void hasMoreChanged();
    void loadingMoreChanged();
    void selectedChanged();
    void selectedCardChanged();
    /// The cards of another search have taken the place of those before.
    void replaced();

private:
    void searchAgain();
    [[nodiscard]] Task<void> searchAfterPause(std::stop_token stop);
    [[nodiscard]] Task<void> search(std::stop_token stop);
    void searchSaved();
    [[nodiscard]] Task<void> more(std::stop_token stop);
    [[nodiscard]] Task<void> loadFacets(std::stop_token stop);
    [[nodiscard]] Task<void> loadCategories(std::stop_token stop);

    CaseQuery query() const;
    void show(const CaseQuery &asked, const SearchPage &page);
    void setCategories(const QList<QString> &values);
    void setArchives(const ArchiveSelection &archives);
    void updateSelectedCard();

    /// Tells the screen only of what really is another value.
    template <class Value>
    void publish(Value &field, const std::type_identity_t<Value> &value,
                 void (CaseBrowserModel::*changed)()) {
        if (field == value)
            return;
        field = value;
        Q_EMIT(this->*changed)();
    }

    AppStore *m_store = nullptr;
    QString m_destination;

    QString m_text;
    CaseFilter m_category;
    CaseFilter m_decade;
    CaseFilter m_year;
    CaseFilter m_sort{QStringLiteral("recent")};
    ArchiveSelection m_archives;

    Showing m_showing = Showing::Loading;
    CaseResults m_results;
    /// What the results answer.
    std::optional<CaseQuery> m_answered;
    double m_total = 0;
    bool m_hasMore = false;
    bool m_loadingMore = false;
    QString m_selected;
    CaseCard m_selectedCard;
    SavedSearch m_savedSearch;

    /// Identity of the newest search.
    Identifier m_requestID = Identifier::make();
    LatestTask m_searching;
    LatestTask m_gettingMore;
    LatestTask m_loadingFacets;
};
