#include "screens/SourceModel.h"

QHash<int, QByteArray> SourceModel::roleNames() const {
    return {{title, "title"}, {address, "address"}};
}

QVariant SourceModel::value(const CaseEntry::Source &source, int role) const {
    switch (role) {
    case title:
        return source.title;
    case address:
        return source.url;
    default:
        return {};
    }
}
