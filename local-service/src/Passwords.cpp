#include "Passwords.h"

#include <sodium.h>

#include <array>
#include <mutex>
#include <stdexcept>

namespace {

/// One at a time, or a burst of sign-ins would take the memory of the whole machine.
std::mutex hashing;

void initialize() {
    static const bool ready = sodium_init() >= 0;
    if (!ready)
        throw std::runtime_error("The cryptographic library cannot be used.");
}

} // namespace

QByteArray Passwords::hash(const QString &password) {
    initialize();
    const auto text = password.toUtf8();
    std::array<char, crypto_pwhash_STRBYTES> hash{};
    const std::lock_guard lock(hashing);
    if (crypto_pwhash_str(
            hash.data(), text.constData(), static_cast<unsigned long long>(text.size()),
            crypto_pwhash_OPSLIMIT_INTERACTIVE, crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0)
        throw std::runtime_error("There is not enough memory to hash a password.");
    return QByteArray(hash.data());
}

bool Passwords::matches(const QByteArray &hash, const QString &password) {
    initialize();
    const auto text = password.toUtf8();
    const std::lock_guard lock(hashing);
    return crypto_pwhash_str_verify(hash.constData(), text.constData(),
                                    static_cast<unsigned long long>(text.size())) == 0;
}

QByteArray Passwords::ofNobody() {
    return QByteArrayLiteral("$argon2id$v=19$m=65536,t=2,p=1$bm9ib2R5IGhhcyB0aGlzIQ$"
                             "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA");
}
