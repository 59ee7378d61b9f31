#include "presentation/FontFiles.h"

#include <QDir>
#include <QFontDatabase>
#include <QHash>

#include <cstdlib>
#include <limits>
#include <mutex>
#include <vector>

namespace {

struct Instance {
    QString file;
    QString name;
    int weight = 0;
    int secondAxis = 0;
};

/// Every "<name>-<weight>-<second axis>.ttf".
const std::vector<Instance> &instances() {
    static const std::vector<Instance> all = [] {
        std::vector<Instance> result;
        const auto files = QDir(QStringLiteral(":/Fonts")).entryList({QStringLiteral("*.ttf")});
        for (const auto &file : files) {
            const auto parts = file.chopped(4).split(QLatin1Char('-'));
            bool isInstance = false;
            const int secondAxis = parts.last().toInt(&isInstance);
            if (!isInstance || parts.size() < 3)
                continue;
            const auto name = parts.mid(0, parts.size() - 2).join(QLatin1Char('-'));
            result.push_back({file, name, parts[parts.size() - 2].toInt(), secondAxis});
        }
        return result;
    }();
    return all;
}

} // namespace

QString FontFiles::family(const QString &file) {
    static std::mutex lock;
    static QHash<QString, QString> families;

    const std::lock_guard guard(lock);
    const auto known = families.constFind(file);
    if (known != families.constEnd())
        return *known;
    const int id = QFontDatabase::addApplicationFont(QStringLiteral(":/Fonts/") + file);
    const auto loaded = QFontDatabase::applicationFontFamilies(id);
    return *families.insert(file, loaded.isEmpty() ? QString() : loaded.first());
}

QString FontFiles::family(const QString &name, int weight, int secondAxis) {
    const Instance *nearest = nullptr;
    int best = std::numeric_limits<int>::max();
    for (const auto &instance : instances()) {
        if (instance.name != name)
            continue;
        // A step of 50 in weight is about as visible as one of 10 in width or optical size.
        const int distance =
            std::abs(instance.weight - weight) / 5 + std::abs(instance.secondAxis - secondAxis);
        if (distance < best) {
            best = distance;
            nearest = &instance;
        }
    }
    return nearest ? family(nearest->file) : QString();
}
