#include "screens/CaseRequestModel.h"

#include "records/ArchiveStyle.h"

void CaseRequestModel::setStore(AppStore *store) {
    m_store = store;
    connect(store, &AppStore::chatChanged, this, &CaseRequestModel::update);
    connect(store, &AppStore::selectedArchivesChanged, this, &CaseRequestModel::update);
    connect(store, &AppStore::requestedCasesChanged, this, &CaseRequestModel::update);
    connect(store, &AppStore::requestingCasesChanged, this, &CaseRequestModel::update);
    update();
}

QHash<int, QByteArray> CaseRequestModel::roleNames() const {
    return {{archive, "archive"}, {label, "label"}, {open, "open"}};
}

QVariant CaseRequestModel::value(const CaseRequestChoice &choice, int role) const {
    switch (role) {
    case archive:
        return choice.archive;
    case label:
        return choice.taken ? ArchiveStyle::domain(choice.archive) + QStringLiteral(" ✓")
                            : ArchiveStyle::domain(choice.archive);
    case open:
        return !choice.taken && !choice.underWay;
    default:
        return {};
    }
}

void CaseRequestModel::update() {
    const auto selection = m_store->selectedArchives();
    QList<CaseRequestChoice> choices;
    for (const auto &id : ArchiveStyle::ids()) {
        if (!selection.isEmpty() && !selection.contains(id))
            continue;
        const QString request = m_store->chat().id.text + QLatin1Char('|') + id;
        choices.append({id, m_store->requestedCases().contains(request),
                        m_store->requestingCases().contains(request)});
    }
    setItems(choices);
}
