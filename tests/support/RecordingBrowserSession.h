#pragma once

#include "platform/BrowserSession.h"

#include <QList>

/// A visit that goes nowhere until the test says how it ends.
class RecordingBrowserSession final : public BrowserSession {
public:
    [[nodiscard]] bool start(const QUrl &url, const QString &,
                             const Completion<QString> &callback) override {
        m_started.append(url);
        m_callbacks.append(callback);
        return m_working;
    }
    void cancel() override {}

    /// Where the visits went, in order.
    const QList<QUrl> &started() const { return m_started; }
    /// Their completions, in the same order. A browser may use them whenever it likes.
    QList<Completion<QString>> &callbacks() { return m_callbacks; }

    void setWorking(bool working) { m_working = working; }

private:
    QList<QUrl> m_started;
    QList<Completion<QString>> m_callbacks;
    bool m_working = true;
};
