#include "service/MacRelease.h"

#include "BuildSettings.h"

#include <QUrl>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString site = QString::fromLatin1(BuildSettings::publicSite);

MacRelease release(const QString &version = u"1.2.3"_s, std::optional<qint64> build = 7) {
    return {u"mac"_s, version, build, {}, u"/downloads/Quillmere-1.2.3.dmg"_s, true, true};
}

} // namespace

TEST(MacRelease, isOfferedOnlyFromThePublicSitesDownloads) {
    EXPECT_EQ(release().downloadURL(), QUrl(site + u"/downloads/Quillmere-1.2.3.dmg"_s));
    const auto host = QUrl(site).host();
    struct Row {
        QString url;
        bool offered;
    };
    for (const auto &row : {
             Row{site + u"/downloads/a_B-1.dmg"_s, true},
             Row{u"downloads/a.dmg"_s, true},
             Row{u"https://elsewhere.example/downloads/a.dmg"_s, false},
             Row{u"http://"_s + host + u"/downloads/a.dmg"_s, false},
             Row{u"https://"_s + host + u":443/downloads/a.dmg"_s, false},
             Row{u"https://user@"_s + host + u"/downloads/a.dmg"_s, false},
             Row{u"/downloads/a.dmg?x=1"_s, false},
             Row{u"/downloads/a.dmg#x"_s, false},
             Row{u"/downloads/more/a.dmg"_s, false},
             Row{u"/downloads/../a.dmg"_s, false},
             Row{u"/elsewhere/a.dmg"_s, false},
             Row{u"/downloads/a.zip"_s, false},
             Row{u"/downloads/a%20b.dmg"_s, false},
             Row{u"/downloads/ä.dmg"_s, false},
             Row{u""_s, false},
         }) {
        auto entry = release();
        entry.url = row.url;
        EXPECT_EQ(entry.downloadURL().has_value(), row.offered) << qPrintable(row.url);
    }
}

TEST(MacRelease, isOfferedOnlyWhenItIsSignedNotarizedAndReleasedForThisSystem) {
    auto entry = release();
    entry.channel = u"release"_s;
    EXPECT_TRUE(entry.downloadURL());
    entry.channel = u"beta"_s;
    EXPECT_FALSE(entry.downloadURL());
    for (const auto member : {&MacRelease::signedRelease, &MacRelease::notarized}) {
        for (const auto &value : {std::optional<bool>(), std::optional(false)}) {
            entry = release();
            entry.*member = value;
            EXPECT_FALSE(entry.downloadURL());
        }
    }
    entry = release();
    entry.platform = u"Mac"_s;
    EXPECT_FALSE(entry.downloadURL());
}

TEST(MacRelease, comesAfterByNumbersAndThenByBuild) {
    struct Row {
        QString version;
        std::optional<qint64> build;
        QString than;
        bool newer;
    };
    for (const auto &row : {
             Row{u"1.10.0"_s, {}, u"1.9.9"_s, true},
             Row{u"1.9.9"_s, 99, u"1.10.0"_s, false},
             Row{u"2.0.0"_s, {}, u"1.99.99"_s, true},
             Row{u"1.2.3"_s, 8, u"1.2.3"_s, true},
             Row{u"1.2.3"_s, 7, u"1.2.3"_s, false},
             Row{u"1.2.3"_s, {}, u"1.2.3"_s, false},
             Row{u"01.2.4"_s, {}, u"1.2.3"_s, true},
             Row{u"1.2"_s, 9, u"1.1.1"_s, false},
             Row{u"1.2.3.4"_s, 9, u"1.1.1"_s, false},
             Row{u"1..3"_s, 9, u"0.1.1"_s, false},
             Row{u"1.+2.3"_s, 9, u"0.1.1"_s, false},
             Row{u"1.2.99999999999999999999"_s, 9, u"0.1.1"_s, false},
             Row{u"9.9.9"_s, 9, u"1.1"_s, false},
         })
        EXPECT_EQ(release(row.version, row.build).isNewer(row.than, 7), row.newer)
            << qPrintable(row.version);
}
