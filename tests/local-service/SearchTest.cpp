#include "RunningService.h"
#include "SearchText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

QStringList list(const char *words) {
    return QString::fromUtf8(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QStringList sorted(QStringList ids) {
    ids.sort();
    return ids;
}

struct Expectation {
    const char *query;
    const char *ids;
};

TEST(Search, OrdersAndFilters) {
    RunningService running;
    const Expectation expectations[] = {
        {"", "zurich hull tide ledger moss quay glass"},
        {"sort=year", "tide zurich hull moss ledger glass quay"},
        {"sort=significance", "ledger moss hull quay glass tide zurich"},
        {"q=&archive=&category=&archives=&decade=&year=&sort=recent&offset=0&locale=zh-Hans",
         "zurich hull tide ledger moss quay glass"},
        {"archive=lumen", "tide moss glass"},
        {"archives=foible", "zurich hull ledger quay"},
        {"archives=lumen,foible,lumen&sort=year", "tide zurich hull moss ledger glass quay"},
        {"archive=foible&archives=lumen,foible", "zurich hull ledger quay"},
        {"archive=foible&archives=lumen", ""},
        {"archives=shift", ""},
        {"category=science", "tide moss glass"},
        {"category=unheard", ""},
        {"decade=1990", "zurich hull moss"},
        {"decade=before1940", "quay glass"},
        {"year=1990", "hull moss"},
        {"year=1990&decade=1940", ""},
        {"archive=foible&category=transport&decade=before1940", "quay"},
        {"limit=2&offset=1", "hull tide"},
        {"offset=9223372036854775807", ""},
    };
    for (const auto &[query, ids] : expectations)
        EXPECT_EQ(running.search(query), list(ids)) << query;
}

TEST(Search, RanksTitleBeforeNamesBeforeSummaryBeforeBody) {
    RunningService running;
    const auto ids = running.search("q=lantern");
    ASSERT_EQ(ids.size(), 5);
    EXPECT_EQ(ids.first(3), list("quay glass ledger"));
    EXPECT_EQ(sorted(ids.last(2)), list("hull moss"));

    EXPECT_EQ(running.search("q=lantern&sort=year"), list("hull moss ledger glass quay"));
    EXPECT_EQ(running.search("q=lantern&sort=significance"), list("ledger moss hull quay glass"));
    EXPECT_EQ(running.search("q=lantern&archive=lumen"), list("glass moss"));
}

TEST(Search, FindsWordsHoweverTheyAreTyped) {
    RunningService running;
    const Expectation expectations[] = {
        {"q=ZURICH", "zurich"},
        {"q=Z%C3%BCrich", "zurich"},
        {"q=zu%CC%88rich", "zurich"},
        {"q=strasse", "zurich"},
        {"q=STRA%C3%9FE", "zurich"},
        {"q=orsted+lodz", "zurich"},
        // The last word may be a beginning, no other one may.
        {"q=lant&sort=year", "hull moss ledger glass quay"},
        {"q=quay+lant", "quay"},
        {"q=lant+quay", ""},
        // All the words, wherever they stand.
        {"q=lantern+works", "glass"},
        {"q=lantern+ledger", "ledger"},
        {"q=lantern+absent", ""},
        // Nothing is an operator.
        {"q=%22quay%22", "quay"},
        {"q=title:quay", ""},
        {"q=quay+OR+glass", ""},
        {"q=NOT+quay", ""},
        {"q=quay*)(%22%5E-%7B%7D%00';--", "quay"},
        // Not a single word is no search at all.
        {"q=%22*+-(&archive=lumen", "tide moss glass"},
    };
    for (const auto &[query, ids] : expectations)
        EXPECT_EQ(running.search(query), list(ids)) << query;
}

TEST(Search, TakesAsManyWordsAsFitIntoAQuestion) {
    RunningService running;
    std::string words = "quay";
    while (words.size() <= 494)
        words += "+quay";
    EXPECT_EQ(running.search("q=" + words), list("quay"));
}

/// All the cases of a search, read page by page.
QStringList readPages(RunningService &running, const std::string &query, qsizetype limit) {
    QStringList ids;
    bool more = true;
    while (more) {
        const auto page =
            running.read<SearchPage>("/v1/search?" + query + "&limit=" + std::to_string(limit) +
                                     "&offset=" + std::to_string(ids.size()));
        EXPECT_EQ(page.limit, limit);
        EXPECT_EQ(page.offset, ids.size());
        for (const auto &card : page.items)
            ids.append(card.id);
        EXPECT_EQ(page.hasMore, ids.size() < page.total) << query;
        more = page.hasMore && !page.items.isEmpty();
    }
    return ids;
}

TEST(Search, PagesNeitherRepeatNorSkip) {
    RunningService running;
    for (const char *question : {"", "q=lantern&", "q=n&"}) {
        for (const char *order : {"recent", "year", "significance"}) {
            const auto query = std::string(question) + "sort=" + order;
            for (const qsizetype limit : {1, 2, 3})
                EXPECT_EQ(readPages(running, query, limit), running.search(query)) << query;
        }
    }
}

TEST(Search, AnswersManyAtOnce) {
    RunningService running;
    std::vector<std::thread> readers;
    readers.reserve(6);
    std::atomic<int> right = 0;
    for (int reader = 0; reader < 6; ++reader) {
        readers.emplace_back([&] {
            auto client = running.client();
            client.set_keep_alive(true);
            for (int round = 0; round < 50; ++round) {
                const auto result = client.Get("/v1/search?q=lantern&sort=year&limit=1");
                if (result && result->body.find("\"id\":\"hull\"") != std::string::npos)
                    ++right;
            }
        });
    }
    for (auto &reader : readers)
        reader.join();
    EXPECT_EQ(right, 300);
}

TEST(SearchText, FoldsToPlainWords) {
    EXPECT_EQ(SearchText::words(QString::fromUtf8("Łódź—ØRSTED's æon, ﬁne №5 x²")),
              list("lodz orsted s aeon fine no5 x2"));
    EXPECT_TRUE(SearchText::words(QString::fromUtf8(" \"'*()\u0301 ")).isEmpty());
}

} // namespace
