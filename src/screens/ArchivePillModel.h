#pragma once

#include "store/AppStore.h"
#include "store/ListModel.h"

/// One choice of where to ask.
struct ArchiveChoice {
    /// Empty stands for all archives.
    QString archive;
    bool selected = false;

    bool operator==(const ArchiveChoice &) const = default;
};

/// The archives that a new conversation can be limited to: all of them first, then each by itself.
class ArchivePillModel final : public ListModel<ArchiveChoice> {
    Q_OBJECT

public:
    enum Role { archive = Qt::UserRole, selected };

    using ListModel::ListModel;

    void setStore(AppStore *store);

    /// Takes an archive into the selection or out of it; the empty id empties the selection. A
    /// conversation that has begun keeps its archives.
    void toggle(const QString &archive);

    QHash<int, QByteArray> roleNames() const override;

protected:
    QString identity(const ArchiveChoice &choice) const override { return choice.archive; }
    QVariant value(const ArchiveChoice &choice, int role) const override;

private:
    void update();

    AppStore *m_store = nullptr;
};
