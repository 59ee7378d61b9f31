#pragma once

#include "records/Catalogue.h"
#include "store/ListModel.h"

/// Cases as an answer cites them.
class CitationModel final : public ListModel<CaseCard> {
    Q_OBJECT

public:
    /// `reason` is the service's word on why the case is cited, or else what it is about.
    enum Role { archive = Qt::UserRole, title, summary, reason, weak };

    using ListModel::ListModel;

    QHash<int, QByteArray> roleNames() const override;

protected:
    QString identity(const CaseCard &card) const override { return card.key; }
    QVariant value(const CaseCard &card, int role) const override;
};
