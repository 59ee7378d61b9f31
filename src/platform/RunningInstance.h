#pragma once

#include "platform/Task.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

/// This process among those of the same program. The first one takes the program's name on the
/// session bus; there the desktop and later processes reach it, by the interface that desktop
/// entries with D-Bus activation stand for. All on the main thread, without ever blocking it.
class RunningInstance final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Standing {
        first,
        /// Another process has the name.
        later,
        /// There is no bus that could tell.
        unknown,
    };

    /// `name` is in reverse DNS, as that of the desktop entry.
    RunningInstance(const QDBusConnection &bus, const QString &name);
    ~RunningInstance() override;

    /// Takes the name if it is free. Can be called again. Throws nothing.
    [[nodiscard]] Task<Standing> claim();

    /// Tells the process that has the name what this one was started for: addresses to open, and
    /// the desktop's permission to come to the front, if there is one. False when that process did
    /// not take it. Throws nothing.
    [[nodiscard]] Task<bool> handOver(QStringList addresses, QString activationToken);

    /// On macOS addresses come as events of the application instead; this is to be its filter.
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The program is wanted: to open the addresses, of which there may be none, and to come to the
    /// front, with the desktop's permission if it gave one. The addresses may come from anybody.
    void called(const QStringList &addresses, const QString &activationToken);

public Q_SLOTS:
    // The names are those of the interface.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE void Open(const QStringList &addresses, const QVariantMap &platformData);
    Q_SCRIPTABLE void ActivateAction(const QString &action, const QVariantList &parameter,
                                     const QVariantMap &platformData);

private:
    QDBusConnection m_bus;
    QString m_name;
    QString m_path;
};
