#pragma once

#include "records/AppLanguage.h"

#include <QFont>
#include <QObject>
#include <QtQmlIntegration>

class QJSEngine;
class QQmlEngine;

/// The type of one language, as a value: a screen that takes its fonts from Fonts.face is drawn
/// again when the language changes. Sizes are in points of the layout.
class TypeFace {
    Q_GADGET
    QML_ANONYMOUS

public:
    TypeFace() = default;
    /// Takes an effective language.
    explicit TypeFace(AppLanguage language) : m_language(language) {}

    bool isCJK() const { return AppLanguages::isCJK(m_language); }

    /// Headings and controls.
    Q_INVOKABLE QFont archivo(qreal size, int weight = 600, int width = 100) const;

    /// Running text.
    Q_INVOKABLE QFont reading(qreal size, int weight = 400, bool italic = false) const;

    /// Labels and figures, their letters so many points apart. Weights 400, 600 and 700; any other
    /// is the medium one.
    Q_INVOKABLE QFont mono(qreal size, int weight = 500, qreal spacing = 0) const;

    /// Input fields.
    Q_INVOKABLE QFont field(qreal size) const;

    /// An extra line spacing; the tight settings that suit Latin capitals would make CJK lines
    /// touch.
    Q_INVOKABLE qreal leading(qreal spacing) const;

    /// The distance of two baselines of the font with an extra line spacing.
    Q_INVOKABLE qreal lineHeight(const QFont &font, qreal spacing) const;

    bool operator==(const TypeFace &) const = default;

private:
    QStringList withFallbacks(const QString &family) const;

    AppLanguage m_language = AppLanguage::en;
};

/// Text sizes and the type in use, which QML sees as `Fonts`.
class Fonts final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(TypeFace face READ face NOTIFY faceChanged FINAL)
    Q_PROPERTY(qreal label MEMBER label CONSTANT FINAL)
    Q_PROPERTY(qreal caption MEMBER caption CONSTANT FINAL)
    Q_PROPERTY(qreal control MEMBER control CONSTANT FINAL)
    Q_PROPERTY(qreal hint MEMBER hint CONSTANT FINAL)
    Q_PROPERTY(qreal body MEMBER body CONSTANT FINAL)
    Q_PROPERTY(qreal title MEMBER title CONSTANT FINAL)

public:
    static Fonts &shared();
    static Fonts *create(QQmlEngine *, QJSEngine *);

    TypeFace face() const { return m_face; }
    /// Takes an effective language.
    void setLanguage(AppLanguage language);

    qreal label = 11;
    qreal caption = 12;
    qreal control = 13;
    qreal hint = 14;
    qreal body = 17;
    qreal title = 18;

Q_SIGNALS:
    void faceChanged();

private:
    // QML would make one of its own if it could.
    Fonts() = default;

    TypeFace m_face;
};
