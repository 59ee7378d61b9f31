#include "presentation/Fonts.h"

#include "presentation/FontFiles.h"

#include <QFontMetricsF>
#include <QJSEngine>

#include <algorithm>
#include <cmath>

namespace {

/// From here on type counts as bold: a fallback family has two weights at most.
constexpr int boldFrom = 600;

/// One code point has different shapes in the four languages, so the families of the language must
/// come before whatever the system would choose: first what desktops ship today, then what older
/// ones have. Families that are not there cost nothing.
QStringList regionalFamilies(AppLanguage language) {
#ifdef Q_OS_MACOS
    switch (language) {
    case AppLanguage::zhHans:
        return {QStringLiteral("PingFang SC")};
    case AppLanguage::zhHant:
        return {QStringLiteral("PingFang TC")};
    case AppLanguage::ja:
        return {QStringLiteral("Hiragino Sans")};
    case AppLanguage::ko:
        return {QStringLiteral("Apple SD Gothic Neo")};
    default:
        return {};
    }
#else
    switch (language) {
    case AppLanguage::zhHans:
        return {QStringLiteral("Noto Sans CJK SC"), QStringLiteral("Source Han Sans SC"),
                QStringLiteral("Noto Serif CJK SC"), QStringLiteral("WenQuanYi Zen Hei")};
    case AppLanguage::zhHant:
        return {QStringLiteral("Noto Sans CJK TC"), QStringLiteral("Source Han Sans TC"),
                QStringLiteral("Noto Serif CJK TC"), QStringLiteral("AR PL UMing TW")};
    case AppLanguage::ja:
        return {QStringLiteral("Noto Sans CJK JP"), QStringLiteral("Source Han Sans"),
                QStringLiteral("Noto Serif CJK JP"), QStringLiteral("IPAPGothic")};
    case AppLanguage::ko:
        return {QStringLiteral("Noto Sans CJK KR"), QStringLiteral("Source Han Sans K"),
                QStringLiteral("Noto Serif CJK KR"), QStringLiteral("NanumGothic")};
    default:
        return {};
    }
#endif
}

qreal scaled(qreal size, qreal factor) {
    return std::round(size * factor);
}

QFont font(const QStringList &families, qreal size, int weight) {
    QFont result(families);
    result.setPixelSize(std::max(1, static_cast<int>(std::round(size))));
    result.setWeight(weight < boldFrom ? QFont::Normal : QFont::Bold);
    // The letters keep the shapes and widths that they were drawn with, at any scale factor.
    result.setHintingPreference(QFont::PreferNoHinting);
    return result;
}

/// Before 6.7 the toolkit cannot set axes: there the family itself is cut at the values.
template <int length>
void setAxis([[maybe_unused]] QFont &font, [[maybe_unused]] const char (&tag)[length],
             [[maybe_unused]] qreal value) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    font.setVariableAxis(tag, static_cast<float>(value));
#endif
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
    auto result = font(withFallbacks(family), size, weight);
    setAxis(result, "wght", weight);
    setAxis(result, "wdth", width);
    // The condensed cuts come with blanks so narrow that words run together on a screen.
    if (width < 80)
        result.setWordSpacing(size * 0.06);
    return result;
}

QFont TypeFace::reading(qreal size, int weight, bool italic) const {
    if (isCJK())
        size = scaled(size, 0.94);
    const auto opticalSize = std::clamp(size, 6.0, 72.0);
    const auto name = italic ? QStringLiteral("Newsreader-Italic") : QStringLiteral("Newsreader");
    const auto family = FontFiles::family(name, weight, static_cast<int>(opticalSize));
    auto result = font(withFallbacks(family), size, weight);
    setAxis(result, "wght", weight);
    setAxis(result, "opsz", opticalSize);
    return result;
}

QFont TypeFace::mono(qreal size, int weight, qreal spacing) const {
    const auto file = weight == 700   ? QStringLiteral("IBMPlexMono-Bold.ttf")
                      : weight == 600 ? QStringLiteral("IBMPlexMono-SemiBold.ttf")
                      : weight == 400 ? QStringLiteral("IBMPlexMono-Regular.ttf")
                                      : QStringLiteral("IBMPlexMono-Medium.ttf");
    auto result = font(withFallbacks(FontFiles::family(file)), size, weight);
    if (spacing != 0)
        result.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
    return result;
}

QFont TypeFace::field(qreal size) const {
    if (!isCJK())
        return reading(size);
    return font(withFallbacks(QString()), scaled(size, 0.94), QFont::Normal);
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
