#pragma once

#include "records/Catalogue.h"
#include "store/ListModel.h"

/// The sources of a case, in display order.
class SourceModel final : public ListModel<CaseEntry::Source> {
    Q_OBJECT

public:
    enum Role { title = Qt::UserRole, address };

    using ListModel::ListModel;

    QHash<int, QByteArray> roleNames() const override;

protected:
    QString identity(const CaseEntry::Source &source) const override { return source.url; }
    QVariant value(const CaseEntry::Source &source, int role) const override;
};
