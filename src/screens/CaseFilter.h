#pragma once

#include "screens/FilterChoices.h"

#include <QtQmlIntegration>

/// One filter of the browser: its choices and the chosen one. The first choice stands from the
/// beginning.
class CaseFilter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("a part of the browser's model")
    Q_PROPERTY(QAbstractListModel *choices READ choices CONSTANT FINAL)
    Q_PROPERTY(int index READ index WRITE setIndex NOTIFY indexChanged FINAL)
    Q_PROPERTY(bool hasChoice READ hasChoice NOTIFY choicesChanged FINAL)

public:
    explicit CaseFilter(const QString &value = QString());

    QAbstractListModel *choices() { return &m_choices; }
    void setChoices(const QList<FilterChoice> &choices);
    /// There is more than the first choice.
    bool hasChoice() const { return m_choices.items().size() > 1; }

    const QString &value() const { return m_value; }
    void setValue(const QString &value);

    /// The row of the chosen one, or -1.
    int index() const;
    void setIndex(int index);

Q_SIGNALS:
    void valueChanged();
    void indexChanged();
    void choicesChanged();

private:
    FilterChoices m_choices;
    QString m_value;
};
