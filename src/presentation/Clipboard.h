#pragma once

#include <QClipboard>
#include <QGuiApplication>
#include <QObject>
#include <QtQmlIntegration>

/// The system's clipboard, for QML.
class Clipboard : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Replaces what the clipboard holds by plain text.
    Q_INVOKABLE void setText(const QString &text) { QGuiApplication::clipboard()->setText(text); }
};
