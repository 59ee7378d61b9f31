#include "RunningService.h"

#include "records/ArchiveStyle.h"

#include <gtest/gtest.h>

namespace {

QStringList ids(const QList<CaseCard> &cards) {
    QStringList ids;
    for (const CaseCard &card : cards)
        ids.append(card.id);
    return ids;
}

TEST(Catalogue, TellsHealthAndArchives) {
    RunningService running;
    const auto origin = QStringLiteral("http://127.0.0.1:%1").arg(running.service.port());
    const auto health = running.read<Health>("/v1/health");
    EXPECT_TRUE(health.ok);
    EXPECT_EQ(health.environment, QStringLiteral("local"));
    EXPECT_EQ(health.chatMode, QStringLiteral("evidence-preview"));
    EXPECT_EQ(health.accountUrl, origin);
    EXPECT_EQ(health.total, 7);

    const auto archives = running.read<Items<Archive>>("/v1/archives?locale=de").items;
    ASSERT_EQ(archives.size(), 2);
    // In the order of display, not in that of the data.
    EXPECT_EQ(archives[0].id, QStringLiteral("foible"));
    EXPECT_EQ(archives[0].domain, ArchiveStyle::domain(QStringLiteral("foible")));
    EXPECT_EQ(archives[0].count, 4);
    EXPECT_EQ(archives[1].count, 3);
}

TEST(Catalogue, TellsTheFilterValues) {
    RunningService running;
    const auto all = running.read<Facets>("/v1/facets?archive=&locale=en");
    EXPECT_EQ(all.categories,
              (QStringList{QStringLiteral("design"), QStringLiteral("finance"),
                           QStringLiteral("science"), QStringLiteral("transport")}));
    EXPECT_EQ(all.years, (QList<qint64>{2007, 1999, 1990, 1941, 1938}));
    EXPECT_EQ(all.decades, (QStringList{QStringLiteral("2000"), QStringLiteral("1990"),
                                        QStringLiteral("1940"), QStringLiteral("before1940")}));

    const auto lumen = running.read<Facets>("/v1/facets?archive=lumen");
    EXPECT_EQ(lumen.categories, QStringList{QStringLiteral("science")});
    EXPECT_EQ(lumen.years, (QList<qint64>{2007, 1990, 1938}));
    EXPECT_TRUE(running.read<Facets>("/v1/facets?archive=makers").decades.isEmpty());

    EXPECT_EQ(running.read<Items<QString>>("/v1/categories").items, all.categories);
    EXPECT_EQ(running.read<Items<QString>>("/v1/categories?archive=lumen").items, lumen.categories);
}

TEST(Catalogue, DeliversCasesAndCards) {
    RunningService running;
    const auto tide = running.read<CaseEntry>("/v1/cases/lumen/tide?locale=fr");
    EXPECT_EQ(tide.key, QStringLiteral("lumen:tide"));
    EXPECT_EQ(tide.locale, QStringLiteral("en"));
    EXPECT_EQ(tide.year, 2007);
    EXPECT_EQ(tide.sections.size(), 1);
    EXPECT_FALSE(tide.lesson);
    EXPECT_EQ(tide.canonicalUrl,
              QStringLiteral("http://127.0.0.1:%1/cases/lumen/tide").arg(running.service.port()));
    // A relation that leads nowhere is left out.
    ASSERT_TRUE(tide.related);
    EXPECT_EQ(ids(*tide.related), (QStringList{QStringLiteral("quay"), QStringLiteral("moss")}));
    EXPECT_EQ(tide.related->first().org, QStringLiteral("Harbour Board"));

    const auto zurich = running.read<CaseEntry>("/v1/cases/foible/zurich");
    EXPECT_EQ(zurich.noLaugh, true);
    EXPECT_FALSE(zurich.related);

    const auto card = running.read<SearchPage>("/v1/search?q=zurich").items.first();
    EXPECT_EQ(card.key, QStringLiteral("foible:zurich"));
    EXPECT_EQ(card.archive, QStringLiteral("foible"));
    EXPECT_EQ(card.title, zurich.title);
    EXPECT_EQ(card.era, QStringLiteral("1999"));
    EXPECT_EQ(card.org, QStringLiteral("Harbour Board"));
}

TEST(Catalogue, ShowsACaseAsASafePage) {
    RunningService running;
    const auto page = running.get("/cases/lumen/moss");
    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(page.get_header_value("Content-Type"), "text/html; charset=utf-8");
    EXPECT_NE(page.get_header_value("Content-Security-Policy").find("default-src 'none'"),
              std::string::npos);
    const auto holds = [&](const char *text) { return page.body.find(text) != std::string::npos; };
    EXPECT_TRUE(holds("<h1>Moss under rain</h1>"));
    EXPECT_TRUE(holds("<p>Nobody had a lantern &lt;b&gt;with &amp; without&lt;/b&gt; oil.</p>"));
    EXPECT_TRUE(holds("<a href=\"https://example.org/yearbook\" rel=\"noreferrer\">Yearbook</a>"));
    EXPECT_TRUE(holds("A trap"));
    EXPECT_FALSE(holds("javascript:"));
}

TEST(Catalogue, NamesTheParameterItRefuses) {
    RunningService running;
    const std::string longQuestion(501, 'a');
    const std::pair<std::string, std::string> refused[] = {
        {"search?archive=unheard", "archive"},
        {"search?archives=lumen,unheard", "archives"},
        {"search?sort=oldest", "sort"},
        {"search?decade=1995", "decade"},
        {"search?decade=%2B990", "decade"},
        {"search?year=0", "year"},
        {"search?year=%2B1990", "year"},
        {"search?offset=-1", "offset"},
        {"search?offset=9223372036854775808", "offset"},
        {"search?limit=101", "limit"},
        {"search?limit=2.0", "limit"},
        {"search?q=" + longQuestion, "q"},
        {"facets?archive=Foible", "archive"},
        {"categories?archive=all", "archive"},
    };
    for (const auto &[address, parameter] : refused) {
        const auto response = running.get("/v1/" + address);
        EXPECT_EQ(response.status, 400) << address;
        EXPECT_EQ(response.body.find(R"({"error":"bad_request","message":)"), 0u) << response.body;
        EXPECT_NE(response.body.find("\\\"" + parameter + "\\\""), std::string::npos) << address;
    }
    EXPECT_EQ(running.get("/v1/search?unheard=1&limit=100").status, 200);
}

} // namespace
