#pragma once

#include <QObject>

/// Whether the desktop wants dark windows.
class SystemAppearance : public QObject {
    Q_OBJECT

public:
    virtual bool isDark() const = 0;

Q_SIGNALS:
    void changed();
};
