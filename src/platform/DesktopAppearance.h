#pragma once

#include "platform/SystemAppearance.h"

class QDBusVariant;

/// Follows the desktop portal's colour scheme; without a portal, or where it states no preference,
/// the lightness of the window palette decides.
class DesktopAppearance final : public SystemAppearance {
    Q_OBJECT

public:
    DesktopAppearance();

    bool isDark() const override;

    /// Asks the portal and follows it from then on. Never blocks: a broken portal takes minutes to
    /// answer. To be called once the window is up.
    void follow();

private Q_SLOTS:
    void portalChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    enum class Scheme { undecided, dark, light };

    void setScheme(uint portalValue);

    Scheme m_scheme = Scheme::undecided;
};
