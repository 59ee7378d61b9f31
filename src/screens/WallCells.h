#pragma once

#include "screens/WallModel.h"

/// A pinned case in its row.
struct WallCell {
    WallItem item;
    bool removable = true;

    bool operator==(const WallCell &) const = default;
};

/// The cases of one row of the wall.
class WallCells : public ListModel<WallCell> {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(WallModel *wall READ wall WRITE setWall NOTIFY wallChanged REQUIRED FINAL)
    Q_PROPERTY(int first READ first WRITE setFirst NOTIFY firstChanged REQUIRED FINAL)

public:
    enum Role {
        itemId = Qt::UserRole,
        title,
        body,
        /// A card that opens the case; without meaning unless `openable`.
        card,
        openable,
        removable
    };

    using ListModel::ListModel;

    WallModel *wall() const { return m_wall; }
    void setWall(WallModel *wall);
    /// Position of the first one among the cases of the wall.
    int first() const { return m_first; }
    void setFirst(int first);

    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void wallChanged();
    void firstChanged();

protected:
    QString identity(const WallCell &cell) const override { return cell.item.id; }
    QVariant value(const WallCell &cell, int role) const override;

private:
    void update();

    WallModel *m_wall = nullptr;
    int m_first = 0;
};
