#pragma once

#include "platform/SystemAppearance.h"

/// A desktop that is light until the test says otherwise.
class FixedAppearance final : public SystemAppearance {
public:
    bool isDark() const override { return m_dark; }

    void setDark(bool dark) {
        if (m_dark == dark)
            return;
        m_dark = dark;
        Q_EMIT changed();
    }

private:
    bool m_dark = false;
};
