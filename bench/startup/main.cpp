#include <QDir>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>

int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    // The same choice of renderer as the program's own.
    if (QDir(QStringLiteral("/dev/dri"))
            .entryList({QStringLiteral("renderD*")}, QDir::System | QDir::Files)
            .isEmpty())
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    QQmlApplicationEngine engine;
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/BareWindow/BareWindow.qml")));
    return engine.rootObjects().isEmpty() ? 1 : application.exec();
}
