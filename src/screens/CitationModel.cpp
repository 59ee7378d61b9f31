#include "screens/CitationModel.h"

QHash<int, QByteArray> CitationModel::roleNames() const {
    return {{cited, "cited"},
            {archive, "archive"},
            {title, "title"},
            {reason, "reason"},
            {weak, "weak"}};
}

QVariant CitationModel::value(const CaseCard &record, int role) const {
    switch (role) {
    case cited:
        return QVariant::fromValue(record);
    case archive:
        return record.archive;
    case title:
        return record.title;
    case reason:
        return record.note.value_or(record.summary);
    case weak:
        return record.strong == false;
    default:
        return {};
    }
}
