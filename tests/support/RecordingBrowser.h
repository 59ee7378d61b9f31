#pragma once

#include "platform/Browser.h"

#include <QList>

/// Opens nothing and tells what it should have opened.
class RecordingBrowser final : public Browser {
public:
    bool open(const QUrl &url) override {
        m_opened.append(url);
        return m_working;
    }

    const QList<QUrl> &opened() const { return m_opened; }

    /// Whether the system has something to open an address with.
    void setWorking(bool working) { m_working = working; }

private:
    QList<QUrl> m_opened;
    bool m_working = true;
};
