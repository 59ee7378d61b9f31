#pragma once

#include "records/Catalogue.h"
#include "store/ListModel.h"

/// Cases as an answer cites them.
class CitationModel final : public ListModel<CaseCard> {
    Q_OBJECT

public:
    /// `reason` is the service's word on why the case is cited, or else what it is about.
    enum Role { cited = Qt::UserRole, archive, title, reason, weak };

    using ListModel::ListModel;

    QHash<int, QByteArray> roleNames() const override;

protected:
    QString identity(const CaseCard &record) const override { return record.key; }
    QVariant value(const CaseCard &record, int role) const override;
};
