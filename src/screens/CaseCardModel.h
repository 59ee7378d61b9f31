#pragma once

#include "records/Catalogue.h"
#include "store/ListModel.h"

/// A list of cases in summary.
class CaseCardModel final : public ListModel<CaseCard> {
    Q_OBJECT

public:
    enum Role { key = Qt::UserRole, caseId, archive, title, summary, era };

    using ListModel::ListModel;

    QHash<int, QByteArray> roleNames() const override;

protected:
    QString identity(const CaseCard &card) const override { return card.key; }
    QVariant value(const CaseCard &card, int role) const override;
};
