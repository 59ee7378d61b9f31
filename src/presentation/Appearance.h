#pragma once

#include <QObject>
#include <QtQmlIntegration>

class Preferences;
class QJSEngine;
class QQmlEngine;
class SystemAppearance;

/// The user's choice of appearance, kept under "appearance", and its effect on the palette.
class Appearance final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString choice READ choiceName WRITE setChoiceName NOTIFY choiceChanged FINAL)

public:
    /// In the order in which they are offered.
    enum class Choice { system, light, dark };

    /// There is one, made by the program before its windows.
    Appearance(Preferences &preferences, SystemAppearance &system, QObject *parent = nullptr);
    ~Appearance() override;

    static Appearance *create(QQmlEngine *, QJSEngine *);

    Choice choice() const { return m_choice; }
    QString choiceName() const { return name(m_choice); }
    void setChoiceName(const QString &name);

    static QString name(Choice choice);
    /// A text that is no choice counts as the system's.
    static Choice choiceNamed(const QString &name);

Q_SIGNALS:
    void choiceChanged();

private:
    void apply();

    Preferences &m_preferences;
    SystemAppearance &m_system;
    Choice m_choice;
};
