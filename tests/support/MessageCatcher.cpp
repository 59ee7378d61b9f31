#include "tests/support/MessageCatcher.h"

namespace {

QStringList caught;

void keep(QtMsgType, const QMessageLogContext &, const QString &message) {
    caught.append(message);
}

} // namespace

MessageCatcher::MessageCatcher() {
    caught.clear();
    m_former = qInstallMessageHandler(keep);
}

MessageCatcher::~MessageCatcher() {
    qInstallMessageHandler(m_former);
}

const QStringList &MessageCatcher::messages() const {
    return caught;
}
