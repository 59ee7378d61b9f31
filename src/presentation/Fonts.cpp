#include "presentation/Fonts.h"

#include "presentation/FontFiles.h"

#include <QFontMetricsF>
#include <QJSEngine>

#include <algorithm>
#include <cmath>

namespace {

/// One code point has different shapes in the four languages, so the family of the language must
/// come before whatever the system would choose.
QStringList regionalFamilies(AppLanguage language) {
    switch (language) {
    case AppLanguage::zhHans:
        return {QStringLiteral("PingFang SC"), QStringLiteral("Noto Sans CJK SC"),
                QStringLiteral("Source Han Sans SC")};
    case AppLanguage::zhHant:
        return {QStringLiteral("PingFang TC"), QStringLiteral("Noto Sans CJK TC"),
                QStringLiteral("Source Han Sans TC")};
    case AppLanguage::ja:
        return {QStringLiteral("Hiragino Sans"), QStringLiteral("Noto Sans CJK JP"),
                QStringLiteral("Source Han Sans")};
    case AppLanguage::ko:
        return {QStringLiteral("Apple SD Gothic Neo"), QStringLiteral("Noto Sans CJK KR"),
                QStringLiteral("Source Han Sans K")};
    default:
        return {};
    }
}

qreal scaled(qreal size, qreal factor) {
    return std::round(size * factor);
}

QFont font(const QStringList &families, qreal size) {
    QFont result(families);
    result.setPixelSize(std::max(1, static_cast<int>(std::round(size))));
    result.setHintingPreference(QFont::PreferNoHinting);
    return result;
}

} // namespace

QStringList TypeFace::withFallbacks(const QString &family) const {
    QStringList families = regionalFamilies(m_language);
    if (!family.isEmpty())
        families.prepend(family);
    return families;
}

QFont TypeFace::archivo(qreal size, int weight, int width) const {
    if (isCJK())
        size = scaled(size, width < 80 ? 0.82 : 0.88);
    const auto family = FontFiles::family(QStringLiteral("Archivo"), weight, width);
    auto result = font(withFallbacks(family), size);
    // The condensed cuts come with blanks so narrow that words run together on a screen.
    if (width < 80)
        result.setWordSpacing(size * 0.06);
    // The Latin letters carry their weight in the family; a fallback family needs to be told.
    if (isCJK() && weight >= 650)
        result.setWeight(QFont::Bold);
    return result;
}

QFont TypeFace::reading(qreal size, int weight, bool italic) const {
    if (isCJK())
        size = scaled(size, 0.94);
    const auto opticalSize = static_cast<int>(std::clamp(size, 6.0, 72.0));
    const auto name = italic ? QStringLiteral("Newsreader-Italic") : QStringLiteral("Newsreader");
    return font(withFallbacks(FontFiles::family(name, weight, opticalSize)), size);
}

QFont TypeFace::mono(qreal size, int weight) const {
    const auto file = weight == 700   ? QStringLiteral("IBMPlexMono-Bold.ttf")
                      : weight == 600 ? QStringLiteral("IBMPlexMono-SemiBold.ttf")
                      : weight == 400 ? QStringLiteral("IBMPlexMono-Regular.ttf")
                                      : QStringLiteral("IBMPlexMono-Medium.ttf");
    return font(withFallbacks(FontFiles::family(file)), size);
}

QFont TypeFace::field(qreal size) const {
    if (!isCJK())
        return reading(size);
    return font(withFallbacks(QString()), scaled(size, 0.94));
}

qreal TypeFace::leading(qreal spacing) const {
    return isCJK() && spacing < 0 ? 0 : spacing;
}

qreal TypeFace::lineHeight(const QFont &font, qreal spacing) const {
    return QFontMetricsF(font).lineSpacing() + leading(spacing);
}

Fonts &Fonts::shared() {
    static Fonts fonts;
    return fonts;
}

Fonts *Fonts::create(QQmlEngine *, QJSEngine *) {
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

void Fonts::setLanguage(AppLanguage language) {
    const TypeFace face(language);
    if (face == m_face)
        return;
    m_face = face;
    Q_EMIT faceChanged();
}
