#include "Secrets.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

#include <array>

QString Secrets::make() {
    std::array<quint32, 8> words{};
    QRandomGenerator::system()->fillRange(words.data(), qsizetype(words.size()));
    const auto bytes =
        QByteArray::fromRawData(reinterpret_cast<const char *>(words.data()), sizeof words);
    return QString::fromLatin1(bytes.toHex());
}

QByteArray Secrets::digest(const QByteArray &secret) {
    return QCryptographicHash::hash(secret, QCryptographicHash::Sha256).toHex();
}
