#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/// The check of every address from data before it is opened: http or https, with a host, without
/// user and password.
std::optional<QUrl> webURL(const QString &text);
