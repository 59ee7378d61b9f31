#include "screens/WallRowModel.h"

#include "screens/DomainList.h"

namespace {

QVariant chatValue(const WallItem &item, int role) {
    const auto chat = item.chat();
    switch (role) {
    case WallRowModel::title:
        return item.title ? *item.title : chat ? chat->question : QString();
    case WallRowModel::domains:
        return chat ? domainList(chat->lit) : QString();
    default:
        return chat.has_value();
    }
}

} // namespace

QHash<int, QByteArray> WallRowModel::roleNames() const {
    return {{isChat, "isChat"},   {itemId, "itemId"},       {title, "title"},
            {domains, "domains"}, {resumable, "resumable"}, {removable, "removable"},
            {first, "first"},     {leads, "leads"}};
}

QString WallRowModel::identity(const WallRow &row) const {
    return row.chat ? QStringLiteral("chat|") + row.chat->id
                    : QStringLiteral("cases|") + QString::number(row.first);
}

QVariant WallRowModel::value(const WallRow &row, int role) const {
    switch (role) {
    case isChat:
        return row.chat.has_value();
    case itemId:
        return row.chat ? row.chat->id : QString();
    case title:
    case domains:
    case resumable:
        return chatValue(row.chat.value_or(WallItem()), role);
    case removable:
        return row.removable;
    case first:
        return row.first;
    case leads:
        return row.leads;
    default:
        return {};
    }
}
