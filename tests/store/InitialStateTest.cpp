#include "storage/LibraryDisk.h"
#include "store/AppStore.h"
#include "tests/support/Await.h"
#include "tests/support/FakeTransport.h"
#include "tests/support/TestPlatform.h"

#include "BuildSettings.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using System = TestPlatform<FakeTransport>;

const auto server = u"server"_s;
const auto builtIn = u"http://127.0.0.1:4310"_s;

} // namespace

TEST(InitialState, ofAFirstStart) {
    System system;
    AppStore store(system.platform());
    const QString configured = QString::fromLatin1(BuildSettings::apiUrl);
    EXPECT_EQ(store.baseString(), configured.isEmpty() ? builtIn : configured);
    EXPECT_EQ(store.destination(), u"home"_s);
    EXPECT_EQ(store.chat().title, u"New conversation"_s);
    EXPECT_EQ(store.lead(), Archive());

    settleEventLoop();
    EXPECT_TRUE(system.transport.requests().empty()) << "nothing starts by itself";
    EXPECT_EQ(system.preferences.value(server), std::nullopt);
    EXPECT_EQ(system.preferences.value(u"uiLanguage"_s), std::nullopt);
}

TEST(InitialState, aStoredServerWinsWhateverItSays) {
    struct Row {
        QString stored;
        QString requestsGoTo;
    };
    const QList<Row> rows = {
        {u"https://stored.example:8443"_s, u"https://stored.example:8443"_s},
        {u"http://localhost:9/"_s, u"http://localhost:9"_s},
        {u"http://elsewhere.example"_s, builtIn},
        {u"https://stored.example/below"_s, builtIn},
        {u"not an address"_s, builtIn},
        {u""_s, builtIn},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.stored.toStdString());
        System system;
        system.preferences.setValue(server, row.stored);
        AppStore store(system.platform());
        EXPECT_EQ(store.baseString(), row.stored);
        EXPECT_EQ(store.libraryKey(), LibraryDisk::key(row.stored, std::nullopt));

        EXPECT_EQ(store.api().url(u"v1/health"_s), QUrl(row.requestsGoTo + u"/v1/health"_s));
        EXPECT_EQ(system.preferences.value(server), row.stored) << "never rewritten";
    }
}

TEST(InitialState, theStoredLanguageIsTakenUp) {
    struct Row {
        std::optional<QString> stored;
        QStringList preferred;
        QString locale;
    };
    const QList<Row> rows = {
        {std::nullopt, {u"ja-JP"_s}, u"ja"_s},
        {u"system"_s, {u"xx"_s, u"pt-PT"_s}, u"pt-BR"_s},
        {u"no such language"_s, {u"xx"_s}, u"en"_s},
        {u"zh-Hant"_s, {u"de"_s}, u"zh-Hant"_s},
    };
    for (const auto &row : rows) {
        System system;
        if (row.stored)
            system.preferences.setValue(u"uiLanguage"_s, *row.stored);
        system.preferences.setPreferredLanguages(row.preferred);
        const AppStore store(system.platform());
        EXPECT_EQ(store.locale(), row.locale);
    }
}
