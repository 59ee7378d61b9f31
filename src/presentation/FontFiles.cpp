#include "presentation/FontFiles.h"

#include <QDir>
#include <QFontDatabase>
#include <QHash>

#include <cstdlib>
#include <limits>
#include <optional>
#include <vector>

namespace {

struct Instance {
    QString family;
    QString name;
    int weight = 0;
    int secondAxis = 0;
};

struct Collection {
    /// File to family, of every file that is a font.
    QHash<QString, QString> families;
    /// Every "<name>-<weight>-<second axis>.ttf".
    std::vector<Instance> instances;
};

std::optional<Instance> instance(const QString &file, const QString &family) {
    const auto parts = file.chopped(4).split(QLatin1Char('-'));
    bool isInstance = false;
    const int secondAxis = parts.last().toInt(&isInstance);
    if (!isInstance || parts.size() < 3)
        return std::nullopt;
    const auto name = parts.mid(0, parts.size() - 2).join(QLatin1Char('-'));
    return Instance{family, name, parts[parts.size() - 2].toInt(), secondAxis};
}

const Collection &collection() {
    static const Collection all = [] {
        Collection result;
        const auto files = QDir(QStringLiteral(":/Fonts")).entryList({QStringLiteral("*.ttf")});
        for (const auto &file : files) {
            const int id = QFontDatabase::addApplicationFont(QStringLiteral(":/Fonts/") + file);
            const auto families = QFontDatabase::applicationFontFamilies(id);
            if (families.isEmpty())
                continue;
            result.families.insert(file, families.first());
            if (auto found = instance(file, families.first()))
                result.instances.push_back(*std::move(found));
        }
        return result;
    }();
    return all;
}

} // namespace

void FontFiles::registerAll() {
    collection();
}

QString FontFiles::family(const QString &file) {
    return collection().families.value(file);
}

QString FontFiles::family(const QString &name, int weight, int secondAxis) {
    if (const auto withAxes = family(name + QStringLiteral(".ttf")); !withAxes.isEmpty())
        return withAxes;
    const Instance *nearest = nullptr;
    int best = std::numeric_limits<int>::max();
    for (const auto &candidate : collection().instances) {
        if (candidate.name != name)
            continue;
        // A step of 50 in weight is about as visible as one of 10 in width or optical size.
        const int distance =
            std::abs(candidate.weight - weight) / 5 + std::abs(candidate.secondAxis - secondAxis);
        if (distance < best) {
            best = distance;
            nearest = &candidate;
        }
    }
    return nearest ? nearest->family : QString();
}
