#include "platform/KeyringModule.h"
#include "platform/SecretServiceStore.h"

#include <QObject>

class SecretServiceModule final : public QObject, public KeyringModule {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Quillmere.KeyringModule")
    Q_INTERFACES(KeyringModule)

public:
    std::unique_ptr<Keyring> keyring(const QString &label) override {
        return std::make_unique<SecretServiceStore>(label);
    }
};

#include "SecretServiceModule.moc"
