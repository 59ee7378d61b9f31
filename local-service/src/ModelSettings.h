#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <chrono>

/// The language model that writes the answers, where the owner of the service has set one.
struct ModelSettings {
    /// The whole address that takes chat completions, http or https.
    QUrl url;
    /// What the model is called there.
    QString name;
    /// Goes to that address as a bearer token, and nowhere else; empty: none.
    QByteArray key;
    /// A model that sends no text for so long has failed. The program itself waits ten seconds
    /// more.
    std::chrono::milliseconds longestSilence = std::chrono::seconds(60);
};
