#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QQmlIncubationController>
#include <QTimerEvent>

/// Makes what asynchronous loaders want, a few milliseconds at a time, so that the windows draw and
/// answer meanwhile. Without it such a loader makes everything at once.
class Incubation final : public QObject, public QQmlIncubationController {
protected:
    void incubatingObjectCountChanged(int count) override {
        if (count == 0)
            m_timer.stop();
        else if (!m_timer.isActive())
            m_timer.start(0, this);
    }

    void timerEvent(QTimerEvent *) override {
        constexpr int milliseconds = 4;
        incubateFor(milliseconds);
    }

private:
    QBasicTimer m_timer;
};
