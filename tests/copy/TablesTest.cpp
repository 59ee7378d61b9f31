#include "copy/Copy.h"
#include "platform/URLError.h"
#include "records/ArchiveStyle.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

/// The keys that the screens and the store look up whole.
constexpr const char *fixedKeys = R"(
accountRequired acctEyebrow acctPlanFree acctProfile acctResend acctResent acctUnverified
acctVerified allArchives allYears appearance appearanceDark appearanceLight appearanceSystem
archive.claim.foible archive.search.foible archive.sub.foible archivesGrowing archivesLocked
askFollowUpPlaceholder askHead askOpenHint askRequested askRequestMore askSend askShuffle
askSigninMessage askSuggestDo askSuggestOne askSuggestSummarise askSuggestWhy askThinking
askThreadNote askTry askUnlimited askWeak authChecking authEmail authJoin authName authOr
authPassword authPasswordRules authSignin before1940 blundersSourced browseAll
browseAllShort browseEmpty browserWaiting browseTitle cancel cardFile categories changeEmail
changeName changePassword chat.new chatContinue chatSaved checking checkUpdate chooseCase
chooseCaseBody clearSearch cmpP1 columnCases connected contents copy currentPassword delete
deleteAccount deleteConfirm deleteWarning done earlierSaved email emailChanged emptyHistory
emptyLibrary exactYear freeLimitAskBody freeOwned freeTitle goMonthly googleContinue
homeAskLine langSystem language loadFailed macUpdateAvailable macUpdateUnknown manageSub
membershipWebHint more moreArchives navSignout newEmail newestIn newName newPassword offline
offlineCopy originalLanguage poweredBy preview privacy profileSavedRefreshFailed quotaLeft
readingSize reconnect reconnecting refreshMembership registerWeb relatedCases removeFromWall
rename retry saveChat saved savedChatMissing saveNeedsAccount saveToWall searchLibrary
seeAlsoDefault service serviceHelp settings shareCase sort sort.recent sort.significance
sort.year sources stop subscribeYearly subTitle syncDone syncNow syncPending syncSigned
tab.account tab.archives tab.ask tab.wall terms tesselAccount tesselBody updateNow upToDate
wallCases wallChatKind wallConversations wallLedeChats wallTitle years you
decodingError libraryInUse newWindow closeWindow quit
)";

const Copy::Table &english() {
    return Copy::table(AppLanguage::en);
}

void expectKey(const QString &key) {
    EXPECT_TRUE(english().contains(key)) << key.toStdString();
}

QSet<QString> placeholders(const QString &text) {
    static const QRegularExpression pattern(QStringLiteral(R"(\{[^{}]*\})"));
    QSet<QString> result;
    for (auto found = pattern.globalMatch(text); found.hasNext();)
        result.insert(found.next().captured());
    return result;
}

QSet<QString> words(const char *text) {
    const auto list = QString::fromLatin1(text).split(QLatin1Char(' '));
    return {list.begin(), list.end()};
}

/// The text of every source, one after the other.
QString allSources() {
    QString all;
    QDirIterator files(QStringLiteral(QUILLMERE_SOURCES),
                       {QStringLiteral("*.qml"), QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            all += QString::fromUtf8(file.readAll());
    }
    return all;
}

struct Use {
    QString function;
    /// A whole key, or the beginning of one when it ends in a dot.
    QString key;
};

/// Every key that stands as a literal in a call of text() or textWithNumber().
QList<Use> usesInSources() {
    static const QRegularExpression call(
        QStringLiteral(R"(\b(text|textWithNumber)\(((?:[^()]|QStringLiteral\([^()]*\))*))"));
    static const QRegularExpression literal(QStringLiteral(R"((==\s*)?"([^"]+)\")"));
    QList<Use> result;
    QDirIterator files(QStringLiteral(QUILLMERE_SOURCES),
                       {QStringLiteral("*.qml"), QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const auto source = QString::fromUtf8(file.readAll());
        for (auto found = call.globalMatch(source); found.hasNext();) {
            const auto match = found.next();
            for (auto text = literal.globalMatch(match.captured(2)); text.hasNext();) {
                const auto part = text.next();
                const bool compared = !part.captured(1).isEmpty();
                if (!compared && part.captured(2) != QStringLiteral("."))
                    result.append({match.captured(1), part.captured(2)});
            }
        }
    }
    return result;
}

} // namespace

TEST(TablesTest, EnglishHoldsEveryKeyThatTheProgramNeeds) {
    const auto keys = QString::fromLatin1(fixedKeys).simplified().split(QLatin1Char(' '));
    for (const auto &key : keys)
        expectKey(key);
    for (const auto &archive : ArchiveStyle::ids()) {
        for (const auto *family : {"archive.ph.", "archive.search.", "archive.sub."})
            expectKey(QString::fromLatin1(family) + archive);
        for (int example = 0; example <= 8; ++example)
            expectKey(QStringLiteral("askExamples.%1.%2").arg(archive).arg(example));
    }
    for (int code = 0; code <= static_cast<int>(URLError::Code::unknown); ++code)
        expectKey(QStringLiteral("urlError.") + URLError::name(static_cast<URLError::Code>(code)));
}

TEST(TablesTest, EnglishHoldsEveryKeyThatTheSourcesName) {
    const auto uses = usesInSources();
    // Fewer would mean that the search no longer finds them.
    EXPECT_GT(uses.size(), 20);
    const auto keys = english().keys();
    for (const auto &use : uses) {
        if (use.key.endsWith(QLatin1Char('.'))) {
            EXPECT_TRUE(std::any_of(keys.begin(), keys.end(), [&](const QString &key) {
                return key.startsWith(use.key);
            })) << use.key.toStdString();
        } else {
            expectKey(use.key);
        }
        if (use.function == QStringLiteral("textWithNumber")) {
            EXPECT_TRUE(english().value(use.key).contains(QStringLiteral("{n}")))
                << use.key.toStdString();
        }
    }
}

TEST(TablesTest, TextsCarryTheirPlaceholders) {
    const std::pair<const char *, QSet<QString>> required[] = {
        {"browseAll", {QStringLiteral("{n}")}},
        {"homeAskLine", {QStringLiteral("{n}")}},
        {"freeOwned", {QStringLiteral("{n}")}},
        {"macUpdateAvailable", {QStringLiteral("{v}")}},
        {"quotaLeft", {QStringLiteral("{left}"), QStringLiteral("{limit}")}},
    };
    QSet<QString> known;
    for (const auto &[key, names] : required) {
        EXPECT_EQ(placeholders(english().value(QString::fromLatin1(key))), names) << key;
        known.unite(names);
    }
    for (const auto &text : english())
        EXPECT_TRUE(known.contains(placeholders(text))) << text.toStdString();
}

// A table that is there at all says everything that English says, with the same placeholders.
TEST(TablesTest, EveryLanguageOffersTheSame) {
    const auto files = QDir(QStringLiteral(":/Localized")).entryList();
    EXPECT_EQ(files.size(), static_cast<qsizetype>(AppLanguages::allCases.size()) - 1);
    const auto englishKeys = QSet<QString>(english().keyBegin(), english().keyEnd());
    for (const auto &file : files) {
        ASSERT_TRUE(file.endsWith(QStringLiteral(".json"))) << file.toStdString();
        const auto language = AppLanguages::saved(file.chopped(5));
        ASSERT_NE(language, AppLanguage::system) << file.toStdString();
        const auto &table = Copy::table(language);
        EXPECT_EQ(QSet<QString>(table.keyBegin(), table.keyEnd()), englishKeys)
            << file.toStdString();
        for (auto entry = table.begin(); entry != table.end(); ++entry) {
            EXPECT_FALSE(entry.value().trimmed().isEmpty())
                << file.toStdString() << ' ' << entry.key().toStdString();
            EXPECT_EQ(placeholders(entry.value()), placeholders(english().value(entry.key())))
                << file.toStdString() << ' ' << entry.key().toStdString();
        }
    }
}

// Whatever else reads like English was forgotten.
TEST(TablesTest, OnlyWordsThatLanguagesShareReadLikeEnglish) {
    const QHash<AppLanguage, QSet<QString>> shared{
        {AppLanguage::es, words("prof.software")},
        {AppLanguage::fr,
         words("cat.makers.instruments cat.makers.machines cat.makers.textiles "
               "cat.ventures.finance cat.ventures.services prof.design prof.finance sources "
               "tab.archives wallChatKind wallConversations")},
        {AppLanguage::de, words("appearanceSystem authName offline prof.software")},
        {AppLanguage::ptBR, words("prof.design prof.software")},
    };
    for (const auto language : AppLanguages::allCases) {
        if (language == AppLanguage::system || language == AppLanguage::en)
            continue;
        QSet<QString> same;
        const auto &table = Copy::table(language);
        for (auto entry = table.begin(); entry != table.end(); ++entry) {
            if (entry.value() == english().value(entry.key()))
                same.insert(entry.key());
        }
        EXPECT_EQ(same, shared.value(language)) << AppLanguages::rawValue(language).toStdString();
    }
}

TEST(TablesTest, NoTextIsLeftThatNobodyLooksUp) {
    // Kept for what reads the tables besides this program.
    const auto kept = QStringLiteral("email");
    const auto sources = allSources();
    for (auto entry = english().begin(); entry != english().end(); ++entry) {
        const auto &key = entry.key();
        const auto family = key.left(key.indexOf(QLatin1Char('.')) + 1);
        const bool used = sources.contains(QLatin1Char('"') + key + QLatin1Char('"')) ||
                          (!family.isEmpty() && sources.contains(QLatin1Char('"') + family));
        EXPECT_TRUE(used || key == kept) << key.toStdString();
    }
}
