#include "screens/CaseCardModel.h"

QHash<int, QByteArray> CaseCardModel::roleNames() const {
    return {{key, "key"},     {caseId, "caseId"},   {archive, "archive"},
            {title, "title"}, {summary, "summary"}, {era, "era"}};
}

QVariant CaseCardModel::value(const CaseCard &card, int role) const {
    switch (role) {
    case key:
        return card.key;
    case caseId:
        return card.id;
    case archive:
        return card.archive;
    case title:
        return card.title;
    case summary:
        return card.summary;
    case era:
        return card.era;
    default:
        return {};
    }
}
