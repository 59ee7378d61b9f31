#pragma once

#include <QColor>
#include <QObject>
#include <QtQmlIntegration>

class QJSEngine;
class QQmlEngine;

/// The palette. A colour that has a dark and a light value follows `dark`; every screen that reads
/// it is drawn again when that changes.
class Ink final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ isDark NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor paper0 READ paper0 NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor paper1 READ paper1 NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor paper2 READ paper2 NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor line READ line NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor lineStrong READ lineStrong NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor mute READ mute NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor dim READ dim NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor paper READ paper NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor body READ paper NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor onPaper READ onPaper NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor brand READ brand NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor sheet READ sheet NOTIFY darkChanged FINAL)
    Q_PROPERTY(QColor paperInk READ paperInk CONSTANT FINAL)
    Q_PROPERTY(QColor paperMute READ paperMute CONSTANT FINAL)
    Q_PROPERTY(QColor paperLine READ paperLine CONSTANT FINAL)
    Q_PROPERTY(QColor flagship READ flagship CONSTANT FINAL)
    Q_PROPERTY(QColor online READ online CONSTANT FINAL)
    Q_PROPERTY(QColor failure READ failure CONSTANT FINAL)

public:
    /// The one palette of the process, which QML sees as `Ink`.
    static Ink &shared();
    static Ink *create(QQmlEngine *, QJSEngine *);

    bool isDark() const { return m_dark; }
    void setDark(bool dark);

    QColor paper0() const { return dynamic(0x0E0E11, 0xEBE8E1); }
    QColor paper1() const { return dynamic(0x17171C, 0xF1EEE7); }
    /// The raised ground.
    QColor paper2() const { return dynamic(0x1F1F25, 0xF7F5F0); }
    QColor line() const { return dynamic(0x26262D, 0xDCD8CF); }
    QColor lineStrong() const { return dynamic(0x484852, 0xB9B4A8); }
    QColor mute() const { return dynamic(0x8A8890, 0x77747C); }
    QColor dim() const { return dynamic(0xBAB8BE, 0x4B4A4F); }
    /// The main ink: light on the dark ground, dark on the light one.
    QColor paper() const { return dynamic(0xF4F1EA, 0x141416); }
    QColor onPaper() const { return dynamic(0x0E0E11, 0xF4F1EA); }
    QColor brand() const { return dynamic(0xFFE014, 0x8F7600); }
    QColor sheet() const { return dynamic(0xF4F1EA, 0xFFFDF9); }

    // For the parts that look like paper in both appearances. A sheet is light in both, so its inks
    // do not change.
    QColor paperInk() const { return QColor::fromRgb(0x0E0E11); }
    QColor paperMute() const { return QColor::fromRgb(0x6E6B66); }
    QColor paperLine() const { return QColor::fromRgb(0xD9D5CC); }

    /// The yellow of the flagship archive.
    QColor flagship() const { return QColor::fromRgb(0xFFE014); }
    /// The dot of a connected service.
    QColor online() const { return QColor::fromRgb(0x12805C); }
    /// The words of a failure.
    QColor failure() const { return QColor::fromRgb(0xFF6347); }

Q_SIGNALS:
    void darkChanged();

private:
    // QML would make one of its own if it could.
    Ink() = default;

    QColor dynamic(QRgb dark, QRgb light) const { return QColor::fromRgb(m_dark ? dark : light); }

    bool m_dark = false;
};
