#pragma once

#include "records/JsonFields.h"

#include <QList>
#include <QMetaType>
#include <QString>

#include <optional>

/// One archive of the service.
struct Archive {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id FINAL)
    Q_PROPERTY(QString title MEMBER title FINAL)
    Q_PROPERTY(QString description MEMBER description FINAL)
    Q_PROPERTY(double count READ countForQml FINAL)

public:
    QString id;
    QString domain;
    QString title;
    QString description;
    /// The service's own idea of the colour; the screens draw with ArchiveStyle::color.
    QString accent;
    /// Number of cases.
    qint64 count = 0;

    /// QML's compiler knows no integer of 64 bits.
    double countForQml() const { return static_cast<double>(count); }

    bool operator==(const Archive &) const = default;
};

/// A case in summary. `key` is unique across the archives, `id` inside its archive.
struct CaseCard {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id FINAL)
    Q_PROPERTY(QString key MEMBER key FINAL)
    Q_PROPERTY(QString archive MEMBER archive FINAL)
    Q_PROPERTY(QString title MEMBER title FINAL)
    Q_PROPERTY(QString summary MEMBER summary FINAL)
    Q_PROPERTY(QString category MEMBER category FINAL)
    Q_PROPERTY(QString era MEMBER era FINAL)
    Q_PROPERTY(QString locale MEMBER locale FINAL)

public:
    QString id;
    QString key;
    QString archive;
    QString title;
    QString summary;
    QString category;
    /// Period label, shown as is.
    QString era;
    /// The language in which the service delivered the card.
    QString locale;
    /// Only an explicit false marks a weak citation.
    std::optional<bool> strong;
    std::optional<QString> note;
    /// Opaque; goes back to the service as it came when the card is evidence of a question.
    std::optional<QString> accessKey;
    std::optional<QString> org;

    bool operator==(const CaseCard &) const = default;
};

/// A case in full.
struct CaseEntry {
    struct Hero {
        QString url;
        std::optional<QString> kind;
        std::optional<QString> label;
    };

    struct Section {
        QString title;
        QString body;

        bool operator==(const Section &) const = default;
    };

    struct Source {
        QString title;
        QString url;
        std::optional<QString> publisher;
        /// As text, shown as is.
        std::optional<QString> date;

        bool operator==(const Source &) const = default;
    };

    QString id;
    QString key;
    QString archive;
    QString title;
    QString summary;
    QString category;
    QString era;
    QList<QString> companies;
    /// In reading order.
    QList<Section> sections;
    /// In display order.
    QList<Source> sources;
    QString locale;
    /// The case's public address.
    QString canonicalUrl;
    std::optional<QString> tradeOut;
    std::optional<QString> relevance;
    std::optional<QString> lesson;
    std::optional<Hero> hero;
    std::optional<QList<CaseCard>> related;
    std::optional<QString> stage;
    std::optional<QString> provenance;
    std::optional<bool> noLaugh;
    std::optional<QString> grade;
    std::optional<qint64> year;

    /// The case in summary, without any of the four optional fields of a card.
    CaseCard card() const;
};

/// One page of a search, in the service's order.
struct SearchPage {
    QList<CaseCard> items;
    /// Matches of the whole search.
    qint64 total = 0;
    bool hasMore = false;
    qint64 offset = 0;
    qint64 limit = 0;
};

/// A reply that is nothing but a list.
template <class Element>
struct Items {
    QList<Element> items;
};

/// The service's word on itself. Any decoded Health counts as a connected service, whatever `ok`
/// says.
struct Health {
    Q_GADGET
    Q_PROPERTY(double total READ totalForQml FINAL)

public:
    bool ok = false;
    QString environment;
    QString chatMode;
    QString accountUrl;
    /// Cases over all archives.
    qint64 total = 0;

    double totalForQml() const { return static_cast<double>(total); }

    bool operator==(const Health &) const = default;
};

/// The filter values of an archive.
struct Facets {
    QList<QString> categories;
    /// Exact years that occur.
    QList<qint64> years;
    /// First years of decades as text, or "before1940".
    QList<QString> decades;
};

template <>
struct JsonFields<Archive> {
    static constexpr auto table = std::make_tuple(
        jsonField("id", &Archive::id), jsonField("domain", &Archive::domain),
        jsonField("title", &Archive::title), jsonField("description", &Archive::description),
        jsonField("accent", &Archive::accent), jsonField("count", &Archive::count));
};

template <>
struct JsonFields<CaseCard> {
    static constexpr auto table = std::make_tuple(
        jsonField("id", &CaseCard::id), jsonField("key", &CaseCard::key),
        jsonField("archive", &CaseCard::archive), jsonField("title", &CaseCard::title),
        jsonField("summary", &CaseCard::summary), jsonField("category", &CaseCard::category),
        jsonField("era", &CaseCard::era), jsonField("locale", &CaseCard::locale),
        jsonField("strong", &CaseCard::strong), jsonField("note", &CaseCard::note),
        jsonField("accessKey", &CaseCard::accessKey), jsonField("org", &CaseCard::org));
};

template <>
struct JsonFields<CaseEntry::Hero> {
    static constexpr auto table = std::make_tuple(jsonField("url", &CaseEntry::Hero::url),
                                                  jsonField("kind", &CaseEntry::Hero::kind),
                                                  jsonField("label", &CaseEntry::Hero::label));
};

template <>
struct JsonFields<CaseEntry::Section> {
    static constexpr auto table = std::make_tuple(jsonField("title", &CaseEntry::Section::title),
                                                  jsonField("body", &CaseEntry::Section::body));
};

template <>
struct JsonFields<CaseEntry::Source> {
    static constexpr auto table = std::make_tuple(
        jsonField("title", &CaseEntry::Source::title), jsonField("url", &CaseEntry::Source::url),
        jsonField("publisher", &CaseEntry::Source::publisher),
        jsonField("date", &CaseEntry::Source::date));
};

template <>
struct JsonFields<CaseEntry> {
    static constexpr auto table = std::make_tuple(
        jsonField("id", &CaseEntry::id), jsonField("key", &CaseEntry::key),
        jsonField("archive", &CaseEntry::archive), jsonField("title", &CaseEntry::title),
        jsonField("summary", &CaseEntry::summary), jsonField("category", &CaseEntry::category),
        jsonField("era", &CaseEntry::era), jsonField("companies", &CaseEntry::companies),
        jsonField("sections", &CaseEntry::sections), jsonField("sources", &CaseEntry::sources),
        jsonField("locale", &CaseEntry::locale),
        jsonField("canonicalUrl", &CaseEntry::canonicalUrl),
        jsonField("tradeOut", &CaseEntry::tradeOut), jsonField("relevance", &CaseEntry::relevance),
        jsonField("lesson", &CaseEntry::lesson), jsonField("hero", &CaseEntry::hero),
        jsonField("related", &CaseEntry::related), jsonField("stage", &CaseEntry::stage),
        jsonField("provenance", &CaseEntry::provenance), jsonField("noLaugh", &CaseEntry::noLaugh),
        jsonField("grade", &CaseEntry::grade), jsonField("year", &CaseEntry::year));
};

template <>
struct JsonFields<SearchPage> {
    static constexpr auto table = std::make_tuple(
        jsonField("items", &SearchPage::items), jsonField("total", &SearchPage::total),
        jsonField("hasMore", &SearchPage::hasMore), jsonField("offset", &SearchPage::offset),
        jsonField("limit", &SearchPage::limit));
};

template <class Element>
struct JsonFields<Items<Element>> {
    static constexpr auto table = std::make_tuple(jsonField("items", &Items<Element>::items));
};

template <>
struct JsonFields<Health> {
    static constexpr auto table = std::make_tuple(
        jsonField("ok", &Health::ok), jsonField("environment", &Health::environment),
        jsonField("chatMode", &Health::chatMode), jsonField("accountUrl", &Health::accountUrl),
        jsonField("total", &Health::total));
};

template <>
struct JsonFields<Facets> {
    static constexpr auto table =
        std::make_tuple(jsonField("categories", &Facets::categories),
                        jsonField("years", &Facets::years), jsonField("decades", &Facets::decades));
};

size_t qHash(const Archive &archive, size_t seed = 0);
size_t qHash(const CaseCard &card, size_t seed = 0);
size_t qHash(const CaseEntry::Section &section, size_t seed = 0);
size_t qHash(const CaseEntry::Source &source, size_t seed = 0);
