#include "tests/store/StoreTest.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

using Settings = StoreTest;

TEST_F(Settings, aLanguageIsStoredChangesTheWordsAndAsksNobody) {
    store.setLanguage(AppLanguage::system);
    EXPECT_EQ(system.preferences.value(u"uiLanguage"_s), u"system"_s) << "though it was in force";
    const QSignalSpy languages(&store, &AppStore::languageChanged);
    const QSignalSpy words(&store, &AppStore::wordsChanged);
    EXPECT_EQ(store.property("words").value<Words>().number(1234567), u"1,234,567"_s);

    store.setProperty("language", u"de"_s);
    EXPECT_EQ(system.preferences.value(u"uiLanguage"_s), u"de"_s);
    EXPECT_EQ(store.property("language").toString(), u"de"_s);
    EXPECT_EQ(store.property("words").value<Words>(), Words(AppLanguage::de));
    EXPECT_EQ(store.property("words").value<Words>().number(1234567), u"1.234.567"_s);
    EXPECT_EQ(languages.size(), 1);
    EXPECT_EQ(words.size(), 1);

    store.setLanguage(AppLanguage::de);
    EXPECT_EQ(languages.size(), 1);

    store.setLanguageValue(u"no such language"_s);
    EXPECT_EQ(store.language(), AppLanguage::system);
    EXPECT_EQ(system.preferences.value(u"uiLanguage"_s), u"system"_s);
    EXPECT_EQ(store.effectiveLanguage(), AppLanguage::en);

    settleEventLoop();
    EXPECT_TRUE(system.transport.requests().empty());
}

TEST_F(Settings, aTextThatIsKeptFollowsTheLanguage) {
    store.setLanguage(AppLanguage::ja);
    for (const auto *key : {"loadFailed", "urlError.timedOut", "chatSaved"}) {
        const auto text = QString::fromLatin1(key);
        store.setNotice(store.text(text));
        for (const auto language : {AppLanguage::fr, AppLanguage::zhHant, AppLanguage::ja}) {
            store.setLanguage(language);
            EXPECT_EQ(store.notice(), store.text(text)) << key;
        }
    }
    store.setNotice(u"What the service says"_s);
    store.setLanguage(AppLanguage::ko);
    EXPECT_EQ(store.notice(), u"What the service says"_s);
}

TEST_F(Settings, selectedArchivesAreASetShownInOrder) {
    const QSignalSpy changes(&store, &AppStore::selectedArchivesChanged);
    const QStringList sorted{u"foible"_s, u"lumen"_s, u"makers"_s,
                             u"other"_s,  u"shift"_s, u"ventures"_s};
    store.setSelectedArchives(
        {u"shift"_s, u"other"_s, u"lumen"_s, u"shift"_s, u"ventures"_s, u"foible"_s, u"makers"_s});
    EXPECT_EQ(store.selectedArchives(), sorted);
    store.setSelectedArchives(sorted);
    EXPECT_EQ(changes.size(), 1);
    store.selectOnlyArchive(u"foible"_s);
    EXPECT_EQ(store.selectedArchives(), QStringList{u"foible"_s});
    store.setSelectedArchives({});
    EXPECT_TRUE(store.selectedArchives().isEmpty());
    EXPECT_EQ(changes.size(), 3);
    settleEventLoop();
    EXPECT_TRUE(system.transport.requests().empty());
}
