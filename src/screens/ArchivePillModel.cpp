#include "screens/ArchivePillModel.h"

#include "records/ArchiveStyle.h"

void ArchivePillModel::setStore(AppStore *store) {
    m_store = store;
    connect(store, &AppStore::selectedArchivesChanged, this, &ArchivePillModel::update);
    update();
}

void ArchivePillModel::toggle(const QString &archive) {
    if (m_store->isChatting() || m_store->messageCount() > 0)
        return;
    QStringList selection;
    if (!archive.isEmpty()) {
        selection = m_store->selectedArchives();
        if (selection.removeAll(archive) == 0)
            selection.append(archive);
    }
    m_store->setSelectedArchives(selection);
}

QHash<int, QByteArray> ArchivePillModel::roleNames() const {
    return {{archive, "archive"}, {selected, "selected"}};
}

QVariant ArchivePillModel::value(const ArchiveChoice &choice, int role) const {
    switch (role) {
    case archive:
        return choice.archive;
    case selected:
        return choice.selected;
    default:
        return {};
    }
}

void ArchivePillModel::update() {
    const auto selection = m_store->selectedArchives();
    QList<ArchiveChoice> choices{{QString(), selection.isEmpty()}};
    for (const auto &id : ArchiveStyle::ids())
        choices.append({id, selection.contains(id)});
    setItems(choices);
}
