#pragma once

#include "records/Wall.h"
#include "store/ListModel.h"

/// A row of the wall: a pinned chat, or as many pinned cases as stand side by side.
struct WallRow {
    /// The chat; absent in a row of cases.
    std::optional<WallItem> chat;
    bool removable = true;
    /// Position of the row's first case among all that are shown.
    int first = 0;
    /// The row begins the chats or the cases.
    bool leads = false;

    bool operator==(const WallRow &) const = default;
};

/// The wall from top to bottom, for a view that makes only the rows on display.
class WallRowModel final : public ListModel<WallRow> {
    Q_OBJECT

public:
    enum Role {
        isChat = Qt::UserRole,
        itemId,
        title,
        domains,
        /// The chat can be read, and so continued.
        resumable,
        removable,
        first,
        /// The row begins the chats or the cases.
        leads
    };

    using ListModel::ListModel;

    QHash<int, QByteArray> roleNames() const override;

protected:
    QString identity(const WallRow &row) const override;
    QVariant value(const WallRow &row, int role) const override;
};
