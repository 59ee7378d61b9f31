#pragma once

#include <QAbstractItemModel>
#include <QStringList>

/// What every row of a list has in a role.
inline QStringList column(const QAbstractItemModel &model, int role) {
    QStringList values;
    for (int row = 0; row < model.rowCount(); ++row)
        values.append(model.index(row, 0).data(role).toString());
    return values;
}
