#include "screens/CaseCardModel.h"

QHash<int, QByteArray> CaseCardModel::roleNames() const {
    return {{key, "key"},         {caseId, "caseId"}, {archive, "archive"}, {title, "title"},
            {summary, "summary"}, {era, "era"},       {card, "card"}};
}

QVariant CaseCardModel::value(const CaseCard &record, int role) const {
    switch (role) {
    case key:
        return record.key;
    case caseId:
        return record.id;
    case archive:
        return record.archive;
    case title:
        return record.title;
    case summary:
        return record.summary;
    case era:
        return record.era;
    case card:
        return QVariant::fromValue(record);
    default:
        return {};
    }
}
