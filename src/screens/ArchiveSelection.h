#pragma once

#include <QMetaType>
#include <QStringList>
#include <QtQmlIntegration>

/// The archives that a search is limited to, as a value; none of them means all.
class ArchiveSelection {
    Q_GADGET
    QML_VALUE_TYPE(archiveSelection)
    Q_PROPERTY(bool all READ isAll FINAL)
    Q_PROPERTY(QString names READ names FINAL)

public:
    /// Sorted.
    const QStringList &ids() const { return m_ids; }

    bool isAll() const { return m_ids.isEmpty(); }
    QString names() const { return m_ids.join(QStringLiteral(", ")); }
    Q_INVOKABLE bool contains(const QString &archive) const { return m_ids.contains(archive); }

    void set(const QString &archive, bool chosen) {
        m_ids.removeAll(archive);
        if (chosen)
            m_ids.append(archive);
        m_ids.sort();
    }

    bool operator==(const ArchiveSelection &) const = default;

private:
    QStringList m_ids;
};
