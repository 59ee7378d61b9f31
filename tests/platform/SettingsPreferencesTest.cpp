#include "platform/SettingsPreferences.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString fileOf(const QString &name) {
    return u"%1/%2/%2.conf"_s.arg(qEnvironmentVariable("XDG_CONFIG_HOME"), name);
}

/// The settings' bytes under a new name, so that nothing still in memory can answer for them.
void copySettings(const QString &from, const QString &to) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(fileOf(to)).path()));
    ASSERT_TRUE(QFile::copy(fileOf(from), fileOf(to)));
}

} // namespace

TEST(SettingsPreferences, valuesSurviveTheProcessAsTheyWere) {
    const QList<std::pair<QString, QString>> values = {
        {u"server"_s, u"http://127.0.0.1:4310"_s},
        {u"uiLanguage"_s, u"zh-Hant"_s},
        {u"appearance"_s, u""_s},
        {u"readingSize"_s, u"1.25"_s},
        {u"odd"_s, u" a, b;c=\"d\" @Invalid() \\ %41 \n é 漢 \U0001F58B "_s},
        {u"at"_s, u"@Variant(x)"_s},
        {u"list"_s, u"a, b"_s},
    };
    {
        SettingsPreferences preferences(u"Round"_s);
        for (const auto &[key, value] : values) {
            EXPECT_EQ(preferences.value(key), std::nullopt);
            preferences.setValue(key, u"earlier"_s);
            preferences.setValue(key, value);
            EXPECT_EQ(preferences.value(key), value);
        }
    }
    copySettings(u"Round"_s, u"Again"_s);
    const SettingsPreferences read(u"Again"_s);
    for (const auto &[key, value] : values)
        EXPECT_EQ(read.value(key), value) << qPrintable(key);
}

TEST(SettingsPreferences, eachNameHasItsOwnAndSharesNothing) {
    SettingsPreferences released(u"Released"_s);
    const SettingsPreferences local(u"Released.Local"_s);
    released.setValue(u"server"_s, u"https://example.org"_s);
    EXPECT_EQ(local.value(u"server"_s), std::nullopt);

    // A file that Qt would otherwise read for every program of the same maker.
    QFile file(u"%1/Shared.conf"_s.arg(qEnvironmentVariable("XDG_CONFIG_HOME")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[General]\nserver=https://elsewhere.example\n");
    file.close();
    EXPECT_EQ(SettingsPreferences(u"Shared"_s).value(u"server"_s), std::nullopt);
}
