#include "tests/screens/SampleCase.h"

#include "records/Json.h"
#include "service/Endpoints.h"

using namespace Qt::StringLiterals;

CaseCard SampleCase::card(const QString &id) {
    CaseCard card;
    card.id = id;
    card.key = u"foible:"_s + id;
    card.archive = u"foible"_s;
    card.title = u"The "_s + id;
    card.summary = u"In summary."_s;
    card.category = u"transport"_s;
    card.era = u"1907"_s;
    card.locale = u"en"_s;
    card.note = u"A remark that the case itself does not have."_s;
    return card;
}

QByteArray SampleCase::searchPage(const QStringList &ids, int total, bool hasMore) {
    SearchPage page;
    for (const auto &id : ids)
        page.items.append(card(id));
    page.total = total;
    page.hasMore = hasMore;
    return Json::encode(page);
}

CaseEntry SampleCase::entry(const QString &id) {
    const auto summary = card(id);
    CaseEntry entry;
    entry.id = summary.id;
    entry.key = summary.key;
    entry.archive = summary.archive;
    entry.title = summary.title;
    entry.summary = summary.summary;
    entry.category = summary.category;
    entry.era = summary.era;
    entry.locale = summary.locale;
    entry.canonicalUrl = u"https://foible.example/cases/"_s + id;
    entry.sections = {{u"What happened"_s, u"It fell."_s},
                      {u"A title of its own"_s, u"It was heavy."_s},
                      {u"The lesson"_s, u"Weigh it first."_s}};
    CaseEntry::Source source;
    source.title = u"Report"_s;
    source.url = u"https://reports.example/1"_s;
    entry.sources = {source};
    return entry;
}

QString SampleCase::path(const QString &id) {
    return u'/' + Endpoint::caseEntry(u"foible"_s, id);
}
