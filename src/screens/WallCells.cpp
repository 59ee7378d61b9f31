#include "screens/WallCells.h"

void WallCells::setWall(WallModel *wall) {
    if (m_wall == wall)
        return;
    if (m_wall)
        m_wall->disconnect(this);
    m_wall = wall;
    if (m_wall)
        connect(m_wall, &WallModel::casesChanged, this, &WallCells::update);
    Q_EMIT wallChanged();
    update();
}

void WallCells::setFirst(int first) {
    if (m_first == first)
        return;
    m_first = first;
    Q_EMIT firstChanged();
    update();
}

QHash<int, QByteArray> WallCells::roleNames() const {
    return {{itemId, "itemId"}, {title, "title"},       {body, "body"},
            {card, "card"},     {openable, "openable"}, {removable, "removable"}};
}

QVariant WallCells::value(const WallCell &cell, int role) const {
    switch (role) {
    case itemId:
        return cell.item.id;
    case title:
        return cell.item.title.value_or(QString());
    case body:
        return cell.item.body.value_or(QString());
    case card:
        return QVariant::fromValue(cell.item.caseCard().value_or(CaseCard()));
    case openable:
        return cell.item.caseCard().has_value();
    case removable:
        return cell.removable;
    default:
        return {};
    }
}

void WallCells::update() {
    QList<WallCell> cells;
    if (m_wall) {
        for (const auto &item : m_wall->cases().mid(m_first, m_wall->columns()))
            cells.append({item, m_wall->isRemovable(item)});
    }
    setItems(cells);
}
