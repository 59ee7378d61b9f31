#include "store/ArchiveModel.h"

QHash<int, QByteArray> ArchiveModel::roleNames() const {
    return {{archiveId, "archiveId"}, {title, "title"}, {count, "count"}};
}

QVariant ArchiveModel::value(const Archive &archive, int role) const {
    switch (role) {
    case archiveId:
        return archive.id;
    case title:
        return archive.title;
    case count:
        return archive.count;
    default:
        return {};
    }
}
