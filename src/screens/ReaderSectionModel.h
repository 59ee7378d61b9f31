#pragma once

#include "store/ListModel.h"

/// A section of a case as a reader shows it.
struct ReaderSection {
    /// From 1, in reading order.
    int number = 0;
    /// The heading in the language of the interface, where it has one there.
    QString label;
    /// The text, in pieces with a blank line between them.
    QStringList body;

    bool operator==(const ReaderSection &) const = default;
};

/// The sections of a case, in reading order.
class ReaderSectionModel final : public ListModel<ReaderSection> {
    Q_OBJECT

public:
    enum Role { number = Qt::UserRole, label, body };

    using ListModel::ListModel;

    QHash<int, QByteArray> roleNames() const override;

protected:
    QString identity(const ReaderSection &section) const override {
        return QString::number(section.number);
    }
    QVariant value(const ReaderSection &section, int role) const override;
};
