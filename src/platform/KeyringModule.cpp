#include "platform/KeyringModule.h"

#include <QCoreApplication>
#include <QPluginLoader>

std::unique_ptr<Keyring> KeyringModule::open(const QString &label) {
    QPluginLoader loader(QCoreApplication::applicationDirPath() +
                         QStringLiteral("/../lib/quillmere/keyring"));
    auto *module = qobject_cast<KeyringModule *>(loader.instance());
    if (!module) {
        qWarning("The keyring cannot be used: %s", qPrintable(loader.errorString()));
        return nullptr;
    }
    return module->keyring(label);
}
