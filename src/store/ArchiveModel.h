#pragma once

#include "records/Catalogue.h"
#include "store/ListModel.h"

/// The archives of the catalogue, in the service's order.
class ArchiveModel final : public ListModel<Archive> {
    Q_OBJECT

public:
    enum Role { archiveId = Qt::UserRole, title, count };

    using ListModel::ListModel;

    QHash<int, QByteArray> roleNames() const override;

protected:
    QString identity(const Archive &archive) const override { return archive.id; }
    QVariant value(const Archive &archive, int role) const override;
};
