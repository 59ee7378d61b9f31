#pragma once

#include "records/JsonFields.h"

#include <QString>
#include <QUrl>

#include <optional>

/// One entry of the public site's list of downloads.
struct MacRelease {
    QString platform;
    QString version;
    std::optional<qint64> versionCode;
    std::optional<QString> channel;
    QString url;
    std::optional<bool> signedRelease;
    std::optional<bool> notarized;

    /// Where the release is, if it is one that may be offered: signed, notarized, of the release
    /// channel, and an image in the downloads of the public site.
    std::optional<QUrl> downloadURL() const;

    /// Whether this release comes after a version of three numbers and, where the versions are
    /// equal, its build. False where either version is not three numbers.
    bool isNewer(const QString &than, qint64 build) const;
};

template <>
struct JsonFields<MacRelease> {
    static constexpr auto table = std::make_tuple(
        jsonField("platform", &MacRelease::platform), jsonField("version", &MacRelease::version),
        jsonField("versionCode", &MacRelease::versionCode),
        jsonField("channel", &MacRelease::channel), jsonField("url", &MacRelease::url),
        jsonField("signed", &MacRelease::signedRelease),
        jsonField("notarized", &MacRelease::notarized));
};
