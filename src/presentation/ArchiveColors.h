#pragma once

#include "records/ArchiveStyle.h"

#include <QColor>
#include <QObject>
#include <QtQmlIntegration>

/// The archives' fixed colours and domains, for QML.
class ArchiveColors final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(ArchiveStyle)
    QML_SINGLETON
    Q_PROPERTY(QStringList ids READ ids CONSTANT FINAL)

public:
    using QObject::QObject;

    /// In display order.
    QStringList ids() const { return ArchiveStyle::ids(); }

    Q_INVOKABLE QColor color(const QString &archive) const {
        return QColor::fromRgb(ArchiveStyle::color(archive));
    }
    Q_INVOKABLE QString domain(const QString &archive) const {
        return ArchiveStyle::domain(archive);
    }
};
