#include "presentation/Appearance.h"

#include "platform/Preferences.h"
#include "platform/SystemAppearance.h"
#include "presentation/Ink.h"

#include <QJSEngine>

namespace {

const QLatin1String preferenceKey("appearance");

Appearance *made = nullptr;

} // namespace

Appearance::Appearance(Preferences &preferences, SystemAppearance &system, QObject *parent)
    : QObject(parent),
      m_preferences(preferences),
      m_system(system),
      m_choice(choiceNamed(preferences.value(preferenceKey).value_or(QString()))) {
    made = this;
    connect(&m_system, &SystemAppearance::changed, this, &Appearance::apply);
    apply();
}

Appearance::~Appearance() {
    if (made == this)
        made = nullptr;
}

Appearance *Appearance::create(QQmlEngine *, QJSEngine *) {
    QJSEngine::setObjectOwnership(made, QJSEngine::CppOwnership);
    return made;
}

QString Appearance::name(Choice choice) {
    switch (choice) {
    case Choice::light:
        return QStringLiteral("light");
    case Choice::dark:
        return QStringLiteral("dark");
    case Choice::system:
        break;
    }
    return QStringLiteral("system");
}

Appearance::Choice Appearance::choiceNamed(const QString &text) {
    for (const auto choice : {Choice::light, Choice::dark}) {
        if (name(choice) == text)
            return choice;
    }
    return Choice::system;
}

void Appearance::setChoiceName(const QString &text) {
    const auto choice = choiceNamed(text);
    m_preferences.setValue(preferenceKey, name(choice));
    if (choice == m_choice)
        return;
    m_choice = choice;
    apply();
    Q_EMIT choiceChanged();
}

void Appearance::apply() {
    const bool dark = m_choice == Choice::dark || (m_choice == Choice::system && m_system.isDark());
    Ink::shared().setDark(dark);
}
