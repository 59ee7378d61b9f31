#pragma once

#include "platform/CredentialStore.h"

/// The desktop's keyring.
class Keyring : public CredentialStore {
public:
    /// Whether there is one that answers and can keep something, locked or not; known after
    /// prepare().
    virtual bool isAvailable() const = 0;
};
