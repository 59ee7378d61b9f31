#pragma once

#include <QUrl>

/// The system's web browser.
class Browser {
public:
    virtual ~Browser() = default;

    /// Hands the address over; false when the system has nothing to open it with.
    virtual bool open(const QUrl &url) = 0;
};
