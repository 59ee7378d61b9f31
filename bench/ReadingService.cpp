#include "bench/ReadingService.h"

#include "bench/SampleRecords.h"
#include "records/Json.h"

using namespace Qt::StringLiterals;

namespace {

QByteArray cards(qsizetype count) {
    const auto some = SampleRecords::shortCards().items;
    SearchPage page;
    for (qsizetype index = 0; index < count; ++index) {
        page.items.append(some[index % some.size()]);
        page.items.last().id = QString::number(index);
        page.items.last().key = u"foible:"_s + page.items.last().id;
    }
    page.total = count;
    page.limit = count;
    return Json::encode(page);
}

Archive archive(const QString &id) {
    Archive archive;
    archive.id = id;
    archive.domain = id;
    archive.title = id;
    archive.accent = u"#123456"_s;
    return archive;
}

Health health() {
    Health health;
    health.ok = true;
    health.environment = u"bench"_s;
    health.chatMode = u"evidence-preview"_s;
    health.accountUrl = u"https://account.example"_s;
    return health;
}

} // namespace

CaseEntry ReadingService::longCase() {
    constexpr int sections = 8;
    constexpr int paragraphs = 10;
    const auto paragraph =
        u"The committee had been told twice that the steel was too thin for the load, and twice it "
        "had put the matter off until the spring. "_s.repeated(4);
    CaseEntry entry;
    entry.id = u"0"_s;
    entry.key = u"foible:0"_s;
    entry.archive = u"foible"_s;
    entry.title = u"The bridge that was weighed too late"_s;
    entry.summary = u"What was known, and when, and by whom."_s;
    entry.category = u"engineering"_s;
    entry.era = u"1907"_s;
    entry.locale = u"en"_s;
    entry.canonicalUrl = u"https://foible.example/cases/0"_s;
    for (int number = 0; number < sections; ++number) {
        QStringList body;
        body.fill(paragraph, paragraphs);
        entry.sections.append({u"Section "_s + QString::number(number), body.join(u"\n\n"_s)});
    }
    return entry;
}

ReadingService::ReadingService() {
    const auto give = [this](const char *path, const QByteArray &body) {
        m_server.Get(path, [body](const httplib::Request &, httplib::Response &response) {
            response.set_content(body.toStdString(), "application/json");
        });
    };
    give("/v1/health", Json::encode(health()));
    give("/v1/archives", Json::encode(Items<Archive>{{archive(u"many"_s), archive(u"few"_s)}}));
    give("/v1/facets", Json::encode(Facets{}));
    give("/v1/cases/.*", Json::encode(longCase()));
    const auto many = cards(100'000).toStdString();
    const auto few = cards(1'000).toStdString();
    m_server.Get("/v1/search", [=](const httplib::Request &request, httplib::Response &response) {
        const bool all = request.get_param_value("archive") == "many";
        response.set_content(all ? many : few, "application/json");
    });
    m_server.set_tcp_nodelay(true);
    m_port = m_server.bind_to_any_port("127.0.0.1");
    m_thread = std::thread([this] { m_server.listen_after_bind(); });
}

ReadingService::~ReadingService() {
    m_server.stop();
    m_thread.join();
}

QString ReadingService::base() const {
    return u"http://127.0.0.1:%1"_s.arg(m_port);
}
