#include "CaseImport.h"

#include "CaseData.h"
#include "Database.h"
#include "SearchText.h"

#include "records/ArchiveStyle.h"
#include "records/Json.h"

#include <QCryptographicHash>

#include <algorithm>
#include <stdexcept>
#include <tuple>

namespace {

/// To be raised whenever the same texts are to fill the tables in another way.
constexpr auto fillVersion = "1";

/// One case on its way into the tables, with its place in the data.
struct Arrival {
    qsizetype position;
    qsizetype archivePosition;
    const CaseData::WrittenArchive *archive;
    const CaseData::WrittenCase *written;
};

QByteArray fingerprint(const QList<QByteArray> &texts) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(QByteArray(fillVersion));
    for (const QByteArray &text : texts)
        hash.addData(QCryptographicHash::hash(text, QCryptographicHash::Sha256));
    return hash.result().toHex();
}

bool isFilledFrom(const QByteArray &mark, Database::Access &access) {
    auto query = access.prepare("SELECT value FROM settings WHERE name = 'caseData'");
    return query.next() && query.utf8(0) == mark;
}

/// From the newest case to the oldest. What stands at the same place of two archives counts as
/// equally new, and the archives take turns.
QList<Arrival> newestFirst(const QList<CaseData::File> &files) {
    QList<Arrival> arrivals;
    for (const CaseData::File &file : files) {
        const auto archivePosition = ArchiveStyle::ids().indexOf(file.archive.id);
        if (archivePosition < 0)
            throw std::runtime_error("The data names an archive that does not exist.");
        for (qsizetype position = 0; position < file.cases.size(); ++position)
            arrivals.append({position, archivePosition, &file.archive, &file.cases[position]});
    }
    std::sort(arrivals.begin(), arrivals.end(), [](const Arrival &left, const Arrival &right) {
        return std::tie(right.position, left.archivePosition) <
               std::tie(left.position, right.archivePosition);
    });
    return arrivals;
}

/// The case as the reader gets it. Its public address and the related cards are added to each
/// reply.
CaseEntry entry(const Arrival &arrival) {
    const auto &written = *arrival.written;
    CaseEntry entry;
    entry.id = written.id;
    entry.archive = arrival.archive->id;
    entry.key = entry.archive + QLatin1Char(':') + written.id;
    entry.title = written.title;
    entry.summary = written.summary;
    entry.category = written.category;
    entry.era = written.era;
    entry.companies = written.companies;
    for (const auto &section : written.sections)
        entry.sections.append({section.title, section.body});
    entry.sources = written.sources;
    entry.locale = QStringLiteral("en");
    entry.tradeOut = written.tradeOut;
    entry.relevance = written.relevance;
    entry.stage = written.stage;
    entry.provenance = written.provenance;
    entry.noLaugh = written.noLaugh;
    entry.grade = written.grade;
    entry.year = written.year;
    return entry;
}

QString folded(const QString &text) {
    return SearchText::words(text).join(QLatin1Char(' '));
}

QString names(const CaseData::WrittenCase &written) {
    return written.org + QLatin1Char('\n') + written.companies.join(QLatin1Char('\n'));
}

QString body(const CaseData::WrittenCase &written) {
    QStringList parts = {written.category};
    for (const auto &section : written.sections)
        parts << section.title << section.body;
    for (const auto &source : written.sources)
        parts << source.title;
    return parts.join(QLatin1Char('\n'));
}

void insertArchives(Database::Access &access, const QList<CaseData::File> &files) {
    auto insert = access.prepare("INSERT INTO archives (position, id, title, description, accent)"
                                 " VALUES (?, ?, ?, ?, ?)");
    for (const auto &[archive, cases] : files) {
        insert.bind(qint64(ArchiveStyle::ids().indexOf(archive.id)))
            .bind(archive.id)
            .bind(archive.title)
            .bind(archive.description)
            .bind(archive.accent)
            .run();
    }
}

void insertRelated(Database::Access &access, qint64 number, const QList<QString> &related) {
    auto insert = access.prepare("INSERT INTO related_cases (number, position, archive, id)"
                                 " VALUES (?, ?, ?, ?)");
    for (qsizetype position = 0; position < related.size(); ++position) {
        const auto &name = related[position];
        insert.bind(number)
            .bind(qint64(position))
            .bind(name.section(QLatin1Char('/'), 0, 0))
            .bind(name.section(QLatin1Char('/'), 1))
            .run();
    }
}

void insertCases(Database::Access &access, const QList<Arrival> &arrivals) {
    auto insertCase = access.prepare(
        "INSERT INTO cases (number, archive, id, title, summary, category, era, org, year,"
        " significance, entry) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    auto insertWords = access.prepare(
        "INSERT INTO case_words (rowid, title, names, summary, body) VALUES (?, ?, ?, ?, ?)");
    qint64 number = 0;
    for (const Arrival &arrival : arrivals) {
        const auto &written = *arrival.written;
        ++number;
        insertCase.bind(number)
            .bind(arrival.archive->id)
            .bind(written.id)
            .bind(written.title)
            .bind(written.summary)
            .bind(written.category)
            .bind(written.era)
            .bind(written.org)
            .bind(written.year)
            .bind(written.significance)
            .bind(Json::encode(entry(arrival)))
            .run();
        insertWords.bind(number)
            .bind(folded(written.title))
            .bind(folded(names(written)))
            .bind(folded(written.summary))
            .bind(folded(body(written)))
            .run();
        if (written.related)
            insertRelated(access, number, *written.related);
    }
}

} // namespace

bool CaseImport::run(Database &database, const QList<QByteArray> &texts) {
    Database::Access access(database);
    const auto mark = fingerprint(texts);
    if (isFilledFrom(mark, access))
        return false;

    QList<CaseData::File> files;
    for (const QByteArray &text : texts)
        files.append(CaseData::decode(text));
    const auto arrivals = newestFirst(files);

    Database::Transaction transaction(access);
    access.execute("DELETE FROM related_cases;"
                   "INSERT INTO case_words (case_words) VALUES ('delete-all');"
                   "DELETE FROM cases;"
                   "DELETE FROM archives");
    insertArchives(access, files);
    insertCases(access, arrivals);
    access.prepare("INSERT OR REPLACE INTO settings (name, value) VALUES ('caseData', ?)")
        .bind(mark)
        .run();
    transaction.commit();
    return true;
}
