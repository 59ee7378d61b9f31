#include "copy/Copy.h"
#include "platform/FileError.h"
#include "platform/URLError.h"
#include "records/ArchiveStyle.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Keys = QSet<QString>;

/// Calls that look up what another line has put together, by their files, and the keys that are
/// written out there.
constexpr auto lookupsOfMadeKeys =
    "CaseReaderModel.cpp ErrorText.cpp ExampleQuestions.cpp FilterLabels.cpp ProfileEditor.qml";
constexpr auto madeKeys =
    "decodingError acctProfile changeEmail changeName changePassword deleteAccount";

/// Kept for what reads the tables besides this program.
constexpr auto keptKeys = "email";

QStringList words(const char *text) {
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

Keys keys(const char *text) {
    const auto list = words(text);
    return {list.begin(), list.end()};
}

Keys keysOf(const Copy::Table &table) {
    return {table.keyBegin(), table.keyEnd()};
}

const Copy::Table &english() {
    return Copy::table(AppLanguage::en);
}

QString read(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The program's sources by their file names, without the folders of the tables themselves.
QHash<QString, QString> sources() {
    QHash<QString, QString> result;
    QDirIterator files(QStringLiteral(QUILLMERE_SOURCES), words("*.qml *.cpp *.h"), QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const auto path = files.next();
        if (!path.contains(QLatin1String("/copy/")) && !path.contains(QLatin1String("/records/")))
            result.insert(files.fileName(), read(path));
    }
    return result;
}

std::string sorted(const Keys &keys) {
    QStringList list(keys.begin(), keys.end());
    list.sort();
    return list.join(QLatin1Char(' ')).toStdString();
}

/// The cases that come with the program, archive by archive.
QHash<QString, QJsonArray> catalogue() {
    QHash<QString, QJsonArray> result;
    for (const auto &archive : ArchiveStyle::ids()) {
        const auto text =
            read(QStringLiteral(QUILLMERE_CASES "/") + archive + QLatin1String(".json"));
        const auto cases = QJsonDocument::fromJson(text.toUtf8())[QStringLiteral("cases")];
        result.insert(archive, cases.toArray());
    }
    return result;
}

/// The keys whose last part is made while the program runs.
Keys families() {
    Keys keys;
    for (const auto &archive : ArchiveStyle::ids()) {
        for (const auto *family : {"archive.ph.", "archive.search.", "archive.sub."})
            keys.insert(QLatin1String(family) + archive);
        for (int example = 0; example <= 8; ++example)
            keys.insert(QStringLiteral("askExamples.%1.%2").arg(archive).arg(example));
    }
    for (const auto *order : {"recent", "year", "significance"})
        keys.insert(QStringLiteral("sort.") + QLatin1String(order));
    for (int code = 0; code <= static_cast<int>(URLError::Code::unknown); ++code)
        keys.insert(QStringLiteral("urlError.") +
                    URLError::name(static_cast<URLError::Code>(code)));
    for (int code = 0; code <= static_cast<int>(FileError::Code::unknown); ++code)
        keys.insert(QStringLiteral("fileError.") +
                    FileError::name(static_cast<FileError::Code>(code)));
    const auto cases = catalogue();
    for (auto archive = cases.begin(); archive != cases.end(); ++archive) {
        const bool ofProfessions = words("foible lumen shift").contains(archive.key());
        const QString family =
            ofProfessions ? QStringLiteral("prof.") : QStringLiteral("cat.%1.").arg(archive.key());
        for (const auto &entry : archive.value()) {
            const auto category = entry[QStringLiteral("category")].toString();
            keys.insert(family + category);
            // While all archives are browsed.
            keys.insert(QStringLiteral("cat..") + category);
            for (const auto &section : entry[QStringLiteral("sections")].toArray())
                keys.insert(QLatin1String("section.") +
                            section[QStringLiteral("title")].toString());
        }
    }
    return keys;
}

QSet<QString> placeholders(const QString &text) {
    static const QRegularExpression pattern(QStringLiteral(R"re(\{[^{}]*\})re"));
    QSet<QString> result;
    for (auto found = pattern.globalMatch(text); found.hasNext();)
        result.insert(found.next().captured());
    return result;
}

} // namespace

TEST(TablesTest, EnglishHoldsWhatTheProgramLooksUpAndNothingElse) {
    static const QRegularExpression call(
        QStringLiteral(R"re(\b(text|textWithNumber|label)(\((?:[^()]++|(?2))*+\)))re"));
    static const QRegularExpression declared(QStringLiteral(R"re(^\(\)|^\(const |^\(key: )re"));
    static const QRegularExpression compared(QStringLiteral(R"re([!=]==?\s*"[^"]*")re"));
    static const QRegularExpression literal(QStringLiteral(R"re("([^"]+)")re"));
    const auto members = families();
    auto needed = members + keys(madeKeys) + keys(keptKeys);
    Keys withoutLiteral;
    QString all;
    const auto texts = sources();
    for (auto source = texts.begin(); source != texts.end(); ++source) {
        all += source.value();
        for (auto found = call.globalMatch(source.value()); found.hasNext();) {
            const auto match = found.next();
            auto arguments = match.captured(2);
            if (declared.match(arguments).hasMatch())
                continue;
            // What a key's beginning is joined with is no key.
            arguments = arguments.section(QLatin1Char('+'), 0, 0).remove(compared);
            auto literals = literal.globalMatch(arguments);
            if (!literals.hasNext() && source.key() != QLatin1String("AppStore.h"))
                withoutLiteral.insert(source.key());
            while (literals.hasNext()) {
                const auto key = literals.next().captured(1);
                const bool isFamily = key.endsWith(QLatin1Char('.'));
                if (isFamily) {
                    EXPECT_TRUE(
                        std::any_of(members.begin(), members.end(),
                                    [&](const auto &member) { return member.startsWith(key); }))
                        << key.toStdString();
                } else {
                    needed.insert(key);
                }
                if (match.captured(1) == QLatin1String("textWithNumber")) {
                    EXPECT_TRUE(english().value(key).contains(QLatin1String("{n}")))
                        << key.toStdString();
                }
            }
        }
    }
    EXPECT_EQ(sorted(withoutLiteral), lookupsOfMadeKeys) << "nobody knows which keys those are";
    for (const auto &made : words(madeKeys) + words("section. urlError. fileError. askExamples. "
                                                    "cat. prof. sort. archive.ph."))
        EXPECT_TRUE(all.contains(QLatin1Char('"') + made)) << made.toStdString();

    const auto held = keysOf(english());
    EXPECT_EQ(sorted(needed - held), "") << "looked up, but in no table";
    EXPECT_EQ(sorted(held - needed), "") << "in the tables, but never looked up";
}

template <class Failure>
void expectSentences(const char *family) {
    constexpr int last = static_cast<int>(Failure::Code::unknown);
    Keys names;
    for (int code = 0; code <= last; ++code) {
        const Failure error(static_cast<typename Failure::Code>(code));
        names.insert(Failure::name(error.code()));
        const auto key = QLatin1String(family) + Failure::name(error.code());
        EXPECT_EQ(english().value(key), error.localizedDescription()) << key.toStdString();
        EXPECT_FALSE(error.localizedDescription().isEmpty()) << key.toStdString();
    }
    EXPECT_EQ(names.size(), last + 1) << "a name twice in " << family;
}

TEST(TablesTest, EveryFailureSaysWhatTheEnglishTableSays) {
    expectSentences<URLError>("urlError.");
    expectSentences<FileError>("fileError.");
    EXPECT_EQ(FileError::ofSystem(123456).code(), FileError::Code::unknown);
}

// Names and signs stand for themselves; all other words of a screen come out of the tables.
TEST(TablesTest, NoScreenSpeaksPastTheTables) {
    static const QRegularExpression shown(QStringLiteral(
        R"re(^\s*(?:text|title|help|placeholder|label|detail|words|Accessible\.name|)re"
        R"re(Accessible\.description):(.*)$)re"));
    static const QRegularExpression lookup(QStringLiteral(R"re(\b(?:text\w*|label)\([^()]*\))re"));
    static const QRegularExpression compared(QStringLiteral(R"re([!=]==?\s*"[^"]*")re"));
    static const QRegularExpression literal(QStringLiteral(R"re("([^"]*\p{L}[^"]*)")re"));
    Keys spoken;
    QDirIterator files(QStringLiteral(QUILLMERE_SOURCES), words("*.qml"), QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        for (const auto &line : read(files.next()).split(QLatin1Char('\n'))) {
            auto value = shown.match(line).captured(1);
            value.remove(lookup).remove(compared);
            for (auto found = literal.globalMatch(value); found.hasNext();)
                spoken.insert(found.next().captured(1));
        }
    }
    EXPECT_EQ(sorted(spoken), "A+ A− G Pro Quillmere.Chat Quillmere\\n.Chat foible");
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
    const auto englishKeys = keysOf(english());
    for (const auto &file : files) {
        ASSERT_TRUE(file.endsWith(QStringLiteral(".json"))) << file.toStdString();
        const auto language = AppLanguages::saved(file.chopped(5));
        ASSERT_NE(language, AppLanguage::system) << file.toStdString();
        const auto &table = Copy::table(language);
        EXPECT_EQ(keysOf(table), englishKeys) << file.toStdString();
        static const QRegularExpression line(QStringLiteral("^ +\"[^\"]+\": \""),
                                             QRegularExpression::MultilineOption);
        EXPECT_EQ(read(QStringLiteral(":/Localized/") + file).count(line), table.size())
            << "a key twice in " << file.toStdString();
        for (auto entry = table.begin(); entry != table.end(); ++entry) {
            EXPECT_FALSE(entry.value().trimmed().isEmpty())
                << file.toStdString() << ' ' << entry.key().toStdString();
            EXPECT_NE(entry.value(), entry.key()) << "would count as missing";
            EXPECT_EQ(placeholders(entry.value()), placeholders(english().value(entry.key())))
                << file.toStdString() << ' ' << entry.key().toStdString();
        }
    }
}

// Whatever else reads like English was forgotten.
TEST(TablesTest, OnlyWordsThatLanguagesShareReadLikeEnglish) {
    const QHash<AppLanguage, Keys> shared{
        {AppLanguage::es, keys("cat..software prof.software")},
        {AppLanguage::fr,
         keys("actions cat..design cat..finance cat..instruments cat..machines cat..services "
              "cat..textiles cat.makers.instruments cat.makers.machines cat.makers.textiles "
              "cat.ventures.finance cat.ventures.services prof.design prof.finance sources "
              "tab.archives wallChatKind wallConversations")},
        {AppLanguage::de, keys("appearanceSystem authName cat..software offline prof.software")},
        {AppLanguage::ptBR, keys("cat..design cat..software prof.design prof.software")},
    };
    for (const auto language : AppLanguages::allCases) {
        if (language == AppLanguage::system || language == AppLanguage::en)
            continue;
        Keys same;
        const auto &table = Copy::table(language);
        for (auto entry = table.begin(); entry != table.end(); ++entry) {
            if (entry.value() == english().value(entry.key()))
                same.insert(entry.key());
        }
        EXPECT_EQ(sorted(same), sorted(shared.value(language)))
            << AppLanguages::rawValue(language).toStdString();
    }
}
