#include "platform/DesktopAppearance.h"

#include "platform/SessionBus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

namespace {

const auto service = QStringLiteral("org.freedesktop.portal.Desktop");
const auto path = QStringLiteral("/org/freedesktop/portal/desktop");
const auto interface = QStringLiteral("org.freedesktop.portal.Settings");
const auto group = QStringLiteral("org.freedesktop.appearance");
const auto key = QStringLiteral("color-scheme");

/// The portal's Read wraps its answer twice in some versions.
uint unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

} // namespace

DesktopAppearance::DesktopAppearance() = default;

bool DesktopAppearance::isDark() const {
    if (m_scheme != Scheme::undecided)
        return m_scheme == Scheme::dark;
    const auto palette = QGuiApplication::palette();
    return palette.color(QPalette::WindowText).lightness() >
           palette.color(QPalette::Window).lightness();
}

void DesktopAppearance::follow() {
    auto bus = SessionBus::connection();
    if (!bus.isConnected())
        return;
    // Without a sender name: looking up its owner would block, and a forged colour scheme harms
    // nobody.
    bus.connect(QString(), path, interface, QStringLiteral("SettingChanged"), this,
                SLOT(portalChanged(QString, QString, QDBusVariant)));
    auto call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    call.setArguments({group, key});
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError())
            setScheme(unwrapped(QVariant::fromValue(reply.value())));
    });
}

void DesktopAppearance::portalChanged(const QString &changedGroup, const QString &changedKey,
                                      const QDBusVariant &value) {
    if (changedGroup == group && changedKey == key)
        setScheme(unwrapped(value.variant()));
}

void DesktopAppearance::setScheme(uint portalValue) {
    const bool before = isDark();
    m_scheme = portalValue == 1   ? Scheme::dark
               : portalValue == 2 ? Scheme::light
                                  : Scheme::undecided;
    if (isDark() != before)
        Q_EMIT changed();
}
