#pragma once

#include "records/Catalogue.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/// The cases as they are written in the data files, one file for each archive.
namespace CaseData {

struct WrittenArchive {
    QString id;
    QString title;
    QString description;
    QString accent;
};

struct WrittenSection {
    QString title;
    QString body;
    /// What a reader may look for here, in a reader's own words, as in the index of a book. Serves
    /// the search for an answer and is not shown as a part of the case.
    std::optional<QList<QString>> subjects;
};

struct WrittenCase {
    QString id;
    QString title;
    QString summary;
    QString category;
    QString era;
    qint64 year = 0;
    /// From 0 to 100.
    qint64 significance = 0;
    QString org;
    QList<QString> companies;
    QList<WrittenSection> sections;
    QList<CaseEntry::Source> sources;
    std::optional<QString> tradeOut;
    std::optional<QString> relevance;
    std::optional<QString> stage;
    std::optional<QString> provenance;
    std::optional<QString> grade;
    std::optional<bool> noLaugh;
    /// Other cases as archive, slash and id.
    std::optional<QList<QString>> related;
};

/// A later case of the list is a newer one.
struct File {
    WrittenArchive archive;
    QList<WrittenCase> cases;
};

/// The texts of the files that are built into the program.
QList<QByteArray> embedded();

/// Throws DecodingError.
File decode(const QByteArray &text);

} // namespace CaseData

template <>
struct JsonFields<CaseData::WrittenArchive> {
    using Record = CaseData::WrittenArchive;
    static constexpr auto table = std::make_tuple(
        jsonField("id", &Record::id), jsonField("title", &Record::title),
        jsonField("description", &Record::description), jsonField("accent", &Record::accent));
};

template <>
struct JsonFields<CaseData::WrittenSection> {
    using Record = CaseData::WrittenSection;
    static constexpr auto table =
        std::make_tuple(jsonField("title", &Record::title), jsonField("body", &Record::body),
                        jsonField("subjects", &Record::subjects));
};

template <>
struct JsonFields<CaseData::WrittenCase> {
    using Record = CaseData::WrittenCase;
    static constexpr auto table = std::make_tuple(
        jsonField("id", &Record::id), jsonField("title", &Record::title),
        jsonField("summary", &Record::summary), jsonField("category", &Record::category),
        jsonField("era", &Record::era), jsonField("year", &Record::year),
        jsonField("significance", &Record::significance), jsonField("org", &Record::org),
        jsonField("companies", &Record::companies), jsonField("sections", &Record::sections),
        jsonField("sources", &Record::sources), jsonField("tradeOut", &Record::tradeOut),
        jsonField("relevance", &Record::relevance), jsonField("stage", &Record::stage),
        jsonField("provenance", &Record::provenance), jsonField("grade", &Record::grade),
        jsonField("noLaugh", &Record::noLaugh), jsonField("related", &Record::related));
};

template <>
struct JsonFields<CaseData::File> {
    static constexpr auto table = std::make_tuple(jsonField("archive", &CaseData::File::archive),
                                                  jsonField("cases", &CaseData::File::cases));
};
