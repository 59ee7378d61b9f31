#pragma once

#include <QStringList>

/// Keeps the messages of its scope to itself, for tests that want one.
class MessageCatcher final {
public:
    MessageCatcher();
    ~MessageCatcher();
    Q_DISABLE_COPY_MOVE(MessageCatcher)

    const QStringList &messages() const;

private:
    QtMessageHandler m_former;
};
