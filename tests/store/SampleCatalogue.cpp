#include "tests/store/SampleCatalogue.h"

#include "records/Json.h"

using namespace Qt::StringLiterals;

Health SampleCatalogue::health(qint64 total) {
    Health health;
    health.ok = true;
    health.environment = u"test"_s;
    health.chatMode = u"evidence-preview"_s;
    health.accountUrl = u"https://account.example"_s;
    health.total = total;
    return health;
}

QByteArray SampleCatalogue::healthBody(qint64 total) {
    return Json::encode(health(total));
}

Archive SampleCatalogue::archive(const QString &id, qint64 count) {
    Archive archive;
    archive.id = id;
    archive.domain = id + u".example"_s;
    archive.title = u"Title of "_s + id;
    archive.description = u"Description."_s;
    archive.accent = u"#123456"_s;
    archive.count = count;
    return archive;
}

QByteArray SampleCatalogue::archivesBody(const QList<Archive> &archives) {
    return Json::encode(Items<Archive>{archives});
}

QList<Archive> SampleCatalogue::archives() {
    return {archive(u"lumen"_s, 30), archive(u"foible"_s, 40), archive(u"shift"_s, 5)};
}

QByteArray SampleCatalogue::archivesBody() {
    return archivesBody(archives());
}
