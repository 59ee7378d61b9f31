#include "presentation/Ink.h"

#include <QJSEngine>

Ink &Ink::shared() {
    static Ink ink;
    return ink;
}

Ink *Ink::create(QQmlEngine *, QJSEngine *) {
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

void Ink::setDark(bool dark) {
    if (m_dark == dark)
        return;
    m_dark = dark;
    Q_EMIT darkChanged();
}
