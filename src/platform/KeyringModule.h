#pragma once

#include "platform/Keyring.h"

#include <QtPlugin>

#include <memory>

/// The keyring is a module, since it needs many libraries: to load them with the program would hold
/// up the first window, also where there is no keyring.
class KeyringModule {
public:
    virtual ~KeyringModule() = default;

    /// The label stands before the account in the name under which a keyring shows an item.
    virtual std::unique_ptr<Keyring> keyring(const QString &label) = 0;

    /// Loads the module, which takes milliseconds and may be done on any thread, and makes its
    /// keyring. Absent, with a warning, when the module is not where it was installed.
    static std::unique_ptr<Keyring> open(const QString &label);
};

Q_DECLARE_INTERFACE(KeyringModule, "Quillmere.KeyringModule")
