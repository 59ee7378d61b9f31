#pragma once

#include "records/Catalogue.h"
#include "store/ListModel.h"

/// A list of cases in summary.
class CaseCardModel final : public ListModel<CaseCard> {
    Q_OBJECT

public:
    enum Role { key = Qt::UserRole, caseId, archive, title, summary, era, card };

    using ListModel::ListModel;

    QHash<int, QByteArray> roleNames() const override;

protected:
    QString identity(const CaseCard &record) const override { return record.key; }
    QVariant value(const CaseCard &record, int role) const override;
};
