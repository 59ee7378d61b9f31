#include "screens/CitationModel.h"

QHash<int, QByteArray> CitationModel::roleNames() const {
    return {{archive, "archive"},
            {title, "title"},
            {summary, "summary"},
            {reason, "reason"},
            {weak, "weak"}};
}

QVariant CitationModel::value(const CaseCard &card, int role) const {
    switch (role) {
    case archive:
        return card.archive;
    case title:
        return card.title;
    case summary:
        return card.summary;
    case reason:
        return card.note.value_or(card.summary);
    case weak:
        return card.strong == false;
    default:
        return {};
    }
}
