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

namespace {

using Keys = QSet<QString>;

/// Where a key is not written out in the call that looks it up, the file where it is, and the keys
/// that it can be. One that ends in a dot stands for the whole family.
struct MadeElsewhere {
    const char *file;
    const char *expression;
    const char *origin;
    const char *keys;
};

constexpr MadeElsewhere madeElsewhere[] = {
    {"CaseReaderModel.cpp", "key", "CaseReaderModel.cpp", "section."},
    {"ErrorText.cpp", "key", "ErrorText.cpp", "urlError. fileError. decodingError"},
    {"ExampleQuestions.cpp", "family + QString::number((m_batch * shown + i) % perArchive)",
     "ExampleQuestions.cpp", "askExamples."},
    {"FilterLabels.cpp", "key", "FilterLabels.cpp", "cat. prof."},
    {"ProfileEditor.qml", "model.titleKey", "ProfileEditorModel.cpp",
     "acctProfile changeEmail changeName changePassword deleteAccount"},
};

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

QString sourceOf(const char *file) {
    QDirIterator files(QStringLiteral(QUILLMERE_SOURCES), {QString::fromLatin1(file)}, QDir::Files,
                       QDirIterator::Subdirectories);
    return files.hasNext() ? read(files.next()) : QString();
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

/// The key itself, or the family's when it ends in a dot.
Keys expanded(const QString &key) {
    if (!key.endsWith(QLatin1Char('.')))
        return {key};
    static const Keys members = families();
    auto keys = members;
    keys.removeIf([&](const QString &member) { return !member.startsWith(key); });
    return keys;
}

/// What a call is given first: up to the comma or bracket that ends it.
QString firstArgument(const QString &source, qsizetype begin) {
    int depth = 0;
    for (auto at = begin; at < source.size(); ++at) {
        const auto character = source.at(at);
        if (depth == 0 && (character == QLatin1Char(',') || character == QLatin1Char(')')))
            return source.mid(begin, at - begin).simplified();
        depth += character == QLatin1Char('(') ? 1 : character == QLatin1Char(')') ? -1 : 0;
    }
    return {};
}

/// What an expression with conditions can come to.
QStringList outcomes(const QString &expression) {
    static const QRegularExpression mark(QStringLiteral(R"re((?<!:)[?:](?!:))re"));
    QStringList result;
    qsizetype begin = 0;
    for (auto found = mark.globalMatch(expression); found.hasNext();) {
        const auto at = found.next().capturedStart();
        if (expression.at(at) == QLatin1Char(':'))
            result.append(expression.mid(begin, at - begin).trimmed());
        begin = at + 1;
    }
    result.append(expression.mid(begin).trimmed());
    return result;
}

struct Lookup {
    QString file;
    QString function;
    QString expression;
};

/// Every outcome of every expression with which the program looks up a text.
QList<Lookup> lookups() {
    static const QRegularExpression call(
        QStringLiteral(R"re(\b(text|textWithNumber|label)\((?!\)))re"));
    static const QRegularExpression wrapped(
        QStringLiteral(R"re((?:QStringLiteral|QLatin1String)\(("[^"]*")\))re"));
    QList<Lookup> result;
    QDirIterator files(QStringLiteral(QUILLMERE_SOURCES), words("*.qml *.cpp *.h"), QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const auto path = files.next();
        if (path.contains(QLatin1String("/copy/")) || path.contains(QLatin1String("/records/")))
            continue;
        const auto source = read(path).replace(wrapped, QStringLiteral("\\1"));
        const bool handsOn = source.contains(QLatin1String("text(const QString &key)")) ||
                             source.contains(QLatin1String("label(key: string)"));
        for (auto found = call.globalMatch(source); found.hasNext();) {
            const auto match = found.next();
            const auto argument = firstArgument(source, match.capturedEnd());
            const bool isDeclaration = argument.startsWith(QLatin1String("const ")) ||
                                       argument.startsWith(QLatin1String("key:"));
            if (isDeclaration || (handsOn && argument == QLatin1String("key")))
                continue;
            for (const auto &outcome : outcomes(argument))
                result.append({files.fileName(), match.captured(1), outcome});
        }
    }
    return result;
}

/// The keys that an expression of a file can come to; none if nothing is known of it.
Keys possibleKeys(const Lookup &lookup) {
    static const QRegularExpression whole(QStringLiteral(R"re(^"([^"]+)"$)re"));
    static const QRegularExpression beginning(QStringLiteral(R"re(^"([^"]+\.)" \+ )re"));
    for (const auto &pattern : {whole, beginning}) {
        if (const auto match = pattern.match(lookup.expression); match.hasMatch())
            return expanded(match.captured(1));
    }
    Keys keys;
    for (const auto &made : madeElsewhere) {
        if (lookup.file != QLatin1String(made.file) ||
            lookup.expression != QLatin1String(made.expression))
            continue;
        for (const auto &key : words(made.keys))
            keys.unite(expanded(key));
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
    Keys needed;
    QSet<const MadeElsewhere *> met;
    for (const auto &lookup : lookups()) {
        const auto keys = possibleKeys(lookup);
        EXPECT_FALSE(keys.isEmpty())
            << "nobody knows which keys this is: " << lookup.file.toStdString() << ' '
            << lookup.expression.toStdString();
        needed.unite(keys);
        for (const auto &made : madeElsewhere) {
            if (lookup.file == QLatin1String(made.file) &&
                lookup.expression == QLatin1String(made.expression))
                met.insert(&made);
        }
        if (lookup.function == QLatin1String("textWithNumber")) {
            for (const auto &key : keys)
                EXPECT_TRUE(english().value(key).contains(QLatin1String("{n}")))
                    << key.toStdString();
        }
    }
    EXPECT_EQ(met.size(), std::size(madeElsewhere)) << "some of these are gone from the sources";
    for (const auto &made : madeElsewhere) {
        for (const auto &key : words(made.keys))
            EXPECT_TRUE(sourceOf(made.origin).contains(QLatin1Char('"') + key))
                << made.origin << ' ' << key.toStdString();
    }

    for (const auto &key : words(keptKeys))
        needed.insert(key);
    const auto held = keysOf(english());
    EXPECT_EQ(sorted(needed - held), "") << "looked up, but in no table";
    EXPECT_EQ(sorted(held - needed), "") << "in the tables, but never looked up";
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
