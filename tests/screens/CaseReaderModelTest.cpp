#include "screens/CaseReaderModel.h"
#include "screens/ReaderText.h"

#include "copy/Copy.h"
#include "records/ArchiveStyle.h"
#include "service/Endpoints.h"
#include "tests/screens/SampleCase.h"
#include "tests/store/StoreTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

enum class State { waiting, read, readOffline, failed };

class CaseReaderModelTest : public StoreTest {
protected:
    void appear() {
        m_model = std::make_unique<CaseReaderModel>();
        m_model->setProperty("store", QVariant::fromValue(&store));
        m_model->setProperty("card", QVariant::fromValue(SampleCase::card()));
        m_model->componentComplete();
        awaitRequest();
    }

    void awaitRequest() {
        ASSERT_TRUE(eventually([&] { return system.transport.waiting(path()) > 0; }));
    }

    void answer(const CaseEntry &entry) {
        system.transport.answer(path(), 200, Json::encode(entry));
        settleEventLoop();
    }

    void fail(URLError::Code code) {
        system.transport.fail(path(), code);
        settleEventLoop();
    }

    void read(const CaseEntry &entry) {
        appear();
        answer(entry);
        ASSERT_EQ(state(), State::read);
    }

    void reload() {
        m_model->beginLoad();
        awaitRequest();
    }

    State state() const {
        if (m_model->isLoaded())
            return m_model->isOffline() ? State::readOffline : State::read;
        return m_model->hasFailed() ? State::failed : State::waiting;
    }

    static QString path() { return SampleCase::path(); }

    std::unique_ptr<CaseReaderModel> m_model;
};

} // namespace

TEST_F(CaseReaderModelTest, ShowsWhatTheCardTellsUntilTheCaseHasCome) {
    appear();
    EXPECT_EQ(system.transport.requests().back().url.query(), u"locale=en"_s);
    EXPECT_EQ(state(), State::waiting);
    EXPECT_EQ(m_model->title(), u"The bridge"_s);
    EXPECT_EQ(m_model->summary(), u"In summary."_s);
    EXPECT_FALSE(m_model->isPinnable());
    EXPECT_EQ(m_model->shareAddress(), QString());

    auto entry = SampleCase::entry();
    entry.title = u"The bridge, in full"_s;
    answer(entry);
    EXPECT_EQ(state(), State::read);
    EXPECT_EQ(m_model->title(), entry.title);
    EXPECT_EQ(m_model->contents(),
              QStringList({u"What happened"_s, u"A title of its own"_s, u"The lesson"_s}));
}

TEST_F(CaseReaderModelTest, OnlyALostServiceFallsBackToTheCopy) {
    struct Row {
        const char *failure;
        std::optional<URLError::Code> code;
        bool hasCopy;
        State expected;
    };
    const Row rows[] = {
        {"no network, a copy", URLError::Code::notConnectedToInternet, true, State::readOffline},
        {"time-out, a copy", URLError::Code::timedOut, true, State::readOffline},
        {"no network, no copy", URLError::Code::notConnectedToInternet, false, State::failed},
        {"refused by the service, a copy", std::nullopt, true, State::failed},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.failure);
        system.files.contents().clear();
        if (row.hasCopy)
            store.keepCase(SampleCase::entry(), u"foible:bridge"_s, u"en"_s);
        appear();
        if (row.code) {
            fail(*row.code);
        } else {
            system.transport.answer(path(), 404, "{\"error\":\"case_not_found\"}");
            settleEventLoop();
        }
        EXPECT_EQ(state(), row.expected);
        EXPECT_EQ(store.notice(), std::nullopt);
    }
}

TEST_F(CaseReaderModelTest, EachLanguageHasItsOwnCopy) {
    read(SampleCase::entry());
    store.setLanguage(AppLanguage::fr);
    settleEventLoop();
    EXPECT_EQ(system.transport.requests().back().url.query(), u"locale=fr"_s);
    EXPECT_EQ(state(), State::read) << "the page is not blanked meanwhile";
    auto french = SampleCase::entry();
    french.locale = u"fr"_s;
    french.title = u"Le pont"_s;
    answer(french);
    EXPECT_EQ(m_model->title(), u"Le pont"_s);
    EXPECT_EQ(system.files.contents().size(), 2);

    store.setLanguage(AppLanguage::de);
    settleEventLoop();
    fail(URLError::Code::timedOut);
    EXPECT_EQ(m_model->title(), u"Le pont"_s) << "there is no copy in German";
    EXPECT_EQ(state(), State::read);
    EXPECT_TRUE(m_model->hasFailed());

    store.setLanguage(AppLanguage::en);
    settleEventLoop();
    EXPECT_FALSE(m_model->hasFailed());
    fail(URLError::Code::timedOut);
    EXPECT_EQ(m_model->title(), u"The bridge"_s);
    EXPECT_EQ(state(), State::readOffline);

    reload();
    EXPECT_EQ(state(), State::readOffline);
    answer(SampleCase::entry());
    EXPECT_EQ(state(), State::read);
}

TEST_F(CaseReaderModelTest, ALateReplyIsDropped) {
    // Of the language before.
    appear();
    store.setLanguage(AppLanguage::de);
    settleEventLoop();
    EXPECT_EQ(system.transport.waiting(path()), 1) << "the older request was cancelled";

    // Of the account before: neither shown nor kept, and no failure of its own.
    StoreAccess::setAccount(store, u"someone"_s);
    answer(SampleCase::entry());
    EXPECT_EQ(state(), State::waiting);
    EXPECT_TRUE(system.files.contents().isEmpty());
    reload();
    StoreAccess::setAccount(store, std::nullopt);
    fail(URLError::Code::timedOut);
    EXPECT_EQ(state(), State::waiting);

    // Of a reader that has gone, before its first step or after it.
    reload();
    m_model->beginLoad();
    m_model.reset();
    settleEventLoop();
    EXPECT_EQ(system.transport.waiting(path()), 0);
}

TEST_F(CaseReaderModelTest, FindsTheLessonAndItsName) {
    struct Row {
        const char *name;
        std::optional<QString> lesson;
        QList<CaseEntry::Section> sections;
        bool has;
        QString text;
        QString label;
    };
    const QList<CaseEntry::Section> applied = {{u"Before"_s, u"a"_s},
                                               {u"What can be applied"_s, u"b"_s},
                                               {u"What you can take"_s, u"c"_s}};
    const Row rows[] = {
        {"of its own", u"x"_s, {}, true, u"x"_s, u"The lesson"_s},
        {"of its own, named by a section", u"x"_s, applied, true, u"x"_s, u"What can be applied"_s},
        {"empty", u""_s, applied, true, u""_s, u"What can be applied"_s},
        {"of the first section that has one", {}, applied, true, u"b"_s, u"What can be applied"_s},
        {"none", {}, {{u"Before"_s, u"a"_s}}, false, u""_s, u""_s},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        auto entry = SampleCase::entry();
        entry.lesson = row.lesson;
        entry.sections = row.sections;
        read(entry);
        EXPECT_EQ(m_model->hasLesson(), row.has);
        EXPECT_EQ(m_model->lesson(), row.text);
        EXPECT_EQ(m_model->lessonLabel(), row.label);
        EXPECT_EQ(m_model->contents().size(), row.sections.size())
            << "the lesson stays among the sections";
    }
}

TEST_F(CaseReaderModelTest, SaysWhenTheCaseIsInAnotherLanguage) {
    const std::tuple<QString, AppLanguage, QString> rows[] = {
        {u"en"_s, AppLanguage::en, u""_s},          {u"en"_s, AppLanguage::fr, u"English"_s},
        {u"de"_s, AppLanguage::fr, u"English"_s},   {u"zh"_s, AppLanguage::zhHans, u""_s},
        {u"zh"_s, AppLanguage::zhHant, u""_s},      {u"zh"_s, AppLanguage::ja, u"中文"_s},
        {u"zh-Hant"_s, AppLanguage::zhHant, u""_s},
    };
    for (const auto &[locale, language, name] : rows) {
        store.setLanguage(language);
        auto entry = SampleCase::entry();
        entry.locale = locale;
        read(entry);
        const auto prefix = Copy::text(u"originalLanguage"_s, language) + u": "_s;
        EXPECT_EQ(m_model->languageNote(), name.isEmpty() ? name : prefix + name)
            << m_model->languageNote().toStdString();
    }
}

TEST_F(CaseReaderModelTest, OffersOnlyAddressesOfTheWeb) {
    auto entry = SampleCase::entry();
    for (const auto &address :
         {u"ftp://reports.example"_s, u"reports"_s, u"https://u:p@reports.example"_s}) {
        auto source = entry.sources.first();
        source.url = address;
        entry.sources.prepend(source);
    }
    entry.hero = {u"https://media.example/film"_s, {}, u"The film"_s};
    read(entry);
    ASSERT_EQ(m_model->sources()->rowCount(), 1);
    EXPECT_EQ(m_model->sources()->index(0, 0).data(SourceModel::address),
              u"https://reports.example/1"_s);
    EXPECT_EQ(m_model->heroAddress(), u"https://media.example/film"_s);
    EXPECT_EQ(m_model->heroLabel(), u"The film"_s);
    EXPECT_EQ(m_model->shareAddress(), entry.canonicalUrl);

    entry.canonicalUrl = u"javascript:1"_s;
    entry.hero->url = u"file:///etc/passwd"_s;
    entry.hero->label.reset();
    read(entry);
    EXPECT_EQ(m_model->heroAddress(), QString());
    EXPECT_EQ(m_model->heroLabel(), Copy::text(u"seeAlsoDefault"_s, AppLanguage::en));
    EXPECT_EQ(m_model->shareAddress(), QString());
}

TEST_F(CaseReaderModelTest, SharesTheAddressInThreeWays) {
    auto entry = SampleCase::entry();
    entry.title = u"Ice & fire: 50% more?"_s;
    read(entry);
    m_model->copyAddress();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), entry.canonicalUrl);

    m_model->openInBrowser();
    m_model->sendByMail();
    ASSERT_EQ(system.browser.opened().size(), 2);
    EXPECT_EQ(system.browser.opened().first(), QUrl(entry.canonicalUrl));
    EXPECT_EQ(system.browser.opened().last().toEncoded(),
              "mailto:?subject=Ice%20%26%20fire%3A%2050%25%20more%3F"
              "&body=https%3A%2F%2Ffoible.example%2Fcases%2Fbridge");
    EXPECT_EQ(store.notice(), std::nullopt);

    system.browser.setWorking(false);
    m_model->openInBrowser();
    EXPECT_EQ(store.notice(), Copy::text(u"urlError.cannotOpenFile"_s, AppLanguage::en));
}

TEST_F(CaseReaderModelTest, ThePinFollowsTheWall) {
    auto entry = SampleCase::entry();
    entry.key = u"foible:renamed"_s;
    read(entry);
    int changes = 0;
    QObject::connect(m_model.get(), &CaseReaderModel::pinChanged, [&] { ++changes; });
    EXPECT_FALSE(m_model->isPinned());
    EXPECT_TRUE(m_model->isPinnable());

    WallItem item;
    item.id = u"7"_s;
    item.site = ArchiveStyle::domain(entry.archive);
    item.caseId = entry.id;
    StoreAccess::setWall(store, {item});
    EXPECT_TRUE(m_model->isPinned());
    EXPECT_EQ(changes, 1);

    // Of the card that led here, of the case itself, and of somebody else's.
    for (const auto &[key, pinnable] :
         {std::pair(u"foible:bridge"_s, false), {u"foible:renamed"_s, false}, {u"other"_s, true}}) {
        StoreAccess::setWallMutations(store, {key});
        EXPECT_EQ(m_model->isPinnable(), pinnable) << key.toStdString();
    }
    EXPECT_EQ(changes, 4);

    StoreAccess::setWallMutations(store, {});
    m_model->togglePin();
    settleEventLoop();
    EXPECT_EQ(store.notice(), Copy::text(u"saveNeedsAccount"_s, AppLanguage::en));

    StoreAccess::setAccount(store, u"someone"_s);
    m_model->togglePin();
    settleEventLoop();
    EXPECT_FALSE(m_model->isPinnable()) << "while it is on its way";
    system.transport.fail(u'/' + QString(Endpoint::wallCase), URLError::Code::timedOut);
    settleEventLoop();
    EXPECT_TRUE(m_model->isPinnable());
}

TEST_F(CaseReaderModelTest, AskingPutsTheCaseToItsArchiveAndGivesWayFirst) {
    StoreAccess::setAccount(store, u"someone"_s);
    StoreAccess::setSyncing(store);
    read(SampleCase::entry());
    store.setSelectedArchives({u"lumen"_s, u"shift"_s});
    bool wasChatting = true;
    QObject::connect(m_model.get(), &CaseReaderModel::asked, [&] {
        EXPECT_EQ(store.destination(), u"chat"_s);
        wasChatting = store.isChatting();
        m_model.reset();
    });
    m_model->ask();
    EXPECT_FALSE(wasChatting);
    EXPECT_EQ(store.selectedArchives(), QStringList(u"foible"_s));

    settleEventLoop();
    const auto body = QJsonDocument::fromJson(*system.transport.requests().back().body).object();
    EXPECT_EQ(body[u"question"_s].toString(),
              Copy::text(u"askSuggestOne"_s, AppLanguage::en) + u"The bridge"_s);
    EXPECT_EQ(body[u"cases"_s].toArray().size(), 1);
    EXPECT_EQ(body[u"archives"_s].toArray(), QJsonArray{u"foible"_s});
    store.stopChat();
    settleEventLoop();
}

TEST_F(CaseReaderModelTest, TheTextSizeStaysWithinItsLimitsAndIsKept) {
    const std::pair<std::optional<QString>, double> stored[] = {
        {std::nullopt, 18}, {u"21"_s, 21},   {u"17.5"_s, 17.5}, {u"large"_s, 18},
        {u"nan"_s, 18},     {u"1000"_s, 26}, {u"-3"_s, 15},
    };
    for (const auto &[text, size] : stored) {
        TestPlatform<FakeTransport> system;
        if (text)
            system.preferences.setValue(u"readingSize"_s, *text);
        const AppStore store(system.platform());
        EXPECT_EQ(store.readingSize(), size) << text.value_or(u"nothing"_s).toStdString();
    }

    for (const auto &[step, last] : {std::pair(1.0, 26.0), {-1.0, 15.0}}) {
        for (int times = 0; times < 20; ++times)
            store.setReadingSize(store.readingSize() + step);
        EXPECT_EQ(store.readingSize(), last);
        EXPECT_EQ(system.preferences.value(u"readingSize"_s), QString::number(last));
    }
}

TEST(ReaderTextTest, CutsLongTextAtBlankLinesAndLosesNothing) {
    const auto paragraph = u"A sentence of a paragraph. "_s.repeated(30);
    const auto blankLine = u"\n\n"_s;
    QString text = paragraph;
    for (int more = 0; more < 20; ++more)
        text += blankLine + paragraph + u"\n"_s + paragraph;

    const std::pair<QString, qsizetype> cases[] = {
        {QString(), 1},
        {paragraph + blankLine + paragraph, 1},
        {paragraph.repeated(20), 1},
        {text, 11},
        {text + blankLine, 11},
    };
    for (const auto &[whole, count] : cases) {
        const auto pieces = ReaderText::pieces(whole);
        EXPECT_EQ(pieces.join(blankLine), whole);
        EXPECT_EQ(pieces.size(), count);
    }
}
