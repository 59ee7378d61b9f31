#pragma once

#include "store/ListModel.h"

/// What a filter can be set to, and how that reads.
struct FilterChoice {
    QString value;
    QString label;

    bool operator==(const FilterChoice &) const = default;
};

/// The choices of one filter, in their order.
class FilterChoices final : public ListModel<FilterChoice> {
    Q_OBJECT

public:
    enum Role { label = Qt::UserRole };

    using ListModel::ListModel;

    QHash<int, QByteArray> roleNames() const override { return {{label, "label"}}; }

protected:
    QString identity(const FilterChoice &choice) const override { return choice.value; }
    QVariant value(const FilterChoice &choice, int role) const override {
        return role == label ? choice.label : QVariant();
    }
};
