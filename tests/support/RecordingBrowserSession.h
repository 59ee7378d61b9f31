#pragma once

#include "platform/BrowserSession.h"

#include <QList>

/// A visit that goes nowhere until the test says how it ends.
class RecordingBrowserSession final : public BrowserSession {
public:
    [[nodiscard]] bool start(const QUrl &url, const QString &callbackScheme,
                             const Completion<QString> &callback) override {
        m_started.append(url);
        m_scheme = callbackScheme;
        m_callbacks.append(callback);
        return m_working;
    }
    void cancel() override { ++m_cancellations; }

    /// Where the visits went, in order.
    const QList<QUrl> &started() const { return m_started; }
    const QString &callbackScheme() const { return m_scheme; }
    /// Their completions, in the same order. A browser may use them whenever it likes.
    QList<Completion<QString>> &callbacks() { return m_callbacks; }
    int cancellations() const { return m_cancellations; }

    void setWorking(bool working) { m_working = working; }

private:
    QList<QUrl> m_started;
    QString m_scheme;
    QList<Completion<QString>> m_callbacks;
    int m_cancellations = 0;
    bool m_working = true;
};
