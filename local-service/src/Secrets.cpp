#include "Secrets.h"

#include <QCryptographicHash>

#include <array>
#include <stdexcept>

#include <sys/random.h>
#include <unistd.h>

QString Secrets::make() {
    std::array<char, 32> bytes{};
    if (::getentropy(bytes.data(), bytes.size()) != 0)
        throw std::runtime_error("The system has no random bytes.");
    return QString::fromLatin1(QByteArray::fromRawData(bytes.data(), bytes.size()).toHex());
}

QByteArray Secrets::digest(const QByteArray &secret) {
    return QCryptographicHash::hash(secret, QCryptographicHash::Sha256).toHex();
}
