#include "screens/ReaderSectionModel.h"

QHash<int, QByteArray> ReaderSectionModel::roleNames() const {
    return {{number, "number"}, {label, "label"}, {body, "body"}};
}

QVariant ReaderSectionModel::value(const ReaderSection &section, int role) const {
    switch (role) {
    case number:
        return section.number;
    case label:
        return section.label;
    case body:
        return section.body;
    default:
        return {};
    }
}
