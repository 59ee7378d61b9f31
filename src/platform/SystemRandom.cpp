#include "platform/SystemRandom.h"

#include <sys/random.h>
#include <unistd.h>

std::optional<QByteArray> SystemRandom::bytes(qsizetype count) {
    QByteArray bytes(count, Qt::Uninitialized);
    if (::getentropy(bytes.data(), static_cast<size_t>(count)) != 0)
        return std::nullopt;
    return bytes;
}
