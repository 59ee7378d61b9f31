#pragma once

#include <QString>
#include <QVariantMap>

class Files;
class QWindow;

/// How the user left a window, for the next one that opens. Kept in a file of its own, since it is
/// no setting that a user chooses.
class WindowMemory final {
public:
    /// The directory need not be there.
    WindowMemory(Files &files, const QString &directory);

    /// Properties for a new main window: nothing at the first start, and never larger than the
    /// screen.
    QVariantMap initialProperties() const;

    /// To be called while the window still has its size. A failure leaves the old memory.
    void keep(const QWindow &window);

private:
    Files &m_files;
    QString m_directory;
    QVariantMap m_left;
};
